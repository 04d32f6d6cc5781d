// How the commands open a project.
#pragma once

#include <string>

#include "base/file_text.h"
#include "base/random.h"
#include "base/rules.h"
#include "check/findings.h"
#include "check/messages.h"
#include "check/read_faults.h"
#include "edit/file_scanner.h"
#include "model/project.h"
#include "script/messages.h"
#include "script/script_reader.h"
#include "script/script_writer.h"

namespace quorvelant {

// Writes the project as a script with the comments and line ends of the own one that it was read from. False,
// and said, where one of the two files fails.
[[nodiscard]] inline bool SaveLoaded(const Project& project, const LoadResult& load, const std::string& path,
                                     UserInterface& ui) {
  constexpr std::uint64_t MostBytes = std::uint64_t{1} << 28U;
  const auto original = load.IsScenarist ? std::string() : ReadHead(SystemPath(load.File), MostBytes);
  if (!original) {
    ui.Tell(MessageOf(message::ScriptReadFailed, load.File, load.File));
    return false;
  }
  return SaveDataLike(project, *original, path, ui);
}

// Adds what the load could not read of sources: also a disk that fails once leaves a track without what its
// file says. Where the look at the sources met the same, that has told it.
inline void AppendReadFaults(Findings& findings, const ReadFaults& load) {
  if (Has(findings, message::SourceBroken) || Has(findings, message::SourceMissing)) {
    return;
  }
  for (const Message& fault : load.Told) {
    findings.push_back(MessageOf(message::SourceBroken, fault.Place, fault.Place, fault.Text));
  }
}

}  // namespace quorvelant
