// Script text, of either dialect, as a project.
#pragma once

#include <cstddef>
#include <functional>
#include <istream>
#include <string>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"
#include "script/source_scanner.h"
#include "vm/check_commands.h"

namespace quorvelant {

// A line that the reader passed over.
struct SkippedLine {
  std::size_t Number = 0;  // from 1
  std::string Text;        // shortened to `MostSkippedText` bytes
  std::string_view Reason;
  bool operator==(const SkippedLine&) const = default;
};
inline constexpr std::size_t MostSkippedText = 200;
// Further ones are counted and not kept.
inline constexpr std::size_t MostSkippedKept = 1000;

inline constexpr std::string_view UnknownLine = "unknown key or item";
inline constexpr std::string_view MisplacedLine = "has no meaning at this place";
inline constexpr std::string_view LineTooLong = "longer than 1 MiB";
inline constexpr std::string_view UnreadableList = "its list of files cannot be read";
inline constexpr std::string_view NumberTooLarge = "the number is larger than the disc has";

struct LoadOptions {
  quorvelant::Rules Rules = {};
  // Looks at the first file of each track and stream; without it they stay unknown.
  const SourceScanner* Scanner = nullptr;
  // The chapter analysis of one track, run on each when the load is to analyse; empty otherwise.
  std::function<void(Project& project, std::size_t track)> AnalyseChapters = {};
};

// How the commands of a script take numbers for names. The own dialect takes them as well, since a script of
// the other one that is converted keeps its own.
constexpr NumericTargets NumbersOf(bool isScenarist) {
  return isScenarist ? NumericTargets::First : NumericTargets::BehindNames;
}

// How a load ended. Only a loaded project without command errors may be authored without a person looking.
struct LoadResult {
  std::string File;     // the script
  bool Loaded = false;  // all building stages were run
  Message Failure;      // why not
  CommandCheck Commands;
  std::vector<Message> Notes;  // what a script names and does not hold: scenes, palettes
  std::vector<SkippedLine> Skipped;
  std::size_t SkippedCount = 0;
  std::vector<SkippedLine> Doubted;  // taken, though the value is not what the key takes
  std::size_t DoubtedCount = 0;
  std::size_t UnclosedCount = 0;  // "{" that the script's end leaves open
  std::size_t UnclosedLine = 0;   // the outermost of them
  std::size_t TakenCount = 0;     // lines that said something
  std::size_t LineCount = 0;
  bool IsScenarist = false;

  bool MayAuthor() const { return Loaded && Commands.Errors.empty(); }
};

// Whether the script was read to its end and is one: only then may anything be written of it.
[[nodiscard]] inline bool IsReadWhole(const LoadResult& load) {
  return load.Loaded && load.TakenCount > 0 && load.UnclosedCount == 0;
}

// Replaces the project by what the script holds. A destination folder that the project has stays unless
// the script names one. Failures are shown through `ui` and leave the project as far as it has been built;
// a mix of video standards leaves the default structure. Any bytes are taken: time and memory grow with
// the script's length alone.
[[nodiscard]] LoadResult LoadScriptFile(const std::string& file, Project& project, const LoadOptions& options,
                                        UserInterface& ui);
// The same from a stream of `length` bytes, 0 when unknown; `name` is the script's path.
LoadResult LoadScript(std::istream& script, std::size_t length, const std::string& name, Project& project,
                      const LoadOptions& options, UserInterface& ui);

}  // namespace quorvelant
