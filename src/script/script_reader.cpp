#include "script/script_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <utility>

#include "base/random.h"
#include "base/text.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "script/build_project.h"
#include "script/kept_text.h"
#include "script/line_reader.h"
#include "script/messages.h"
#include "script/reader_state.h"
#include "script/vocabulary.h"

namespace quorvelant {

namespace {

// A line longer than this is no header and no item: of it the key alone is looked at.
constexpr std::size_t LongLineBytes = 128;
constexpr std::size_t ProgressSteps = 100;

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::array<std::string_view, 2> WideMarks{"\xFF\xFE", "\xFE\xFF"};

// Everything but a destination that was given before the load.
void ResetProject(Project& project, const std::string& file) {
  Project empty;
  empty.DestinationFolder = std::move(project.DestinationFolder);
  empty.ScriptFile = file;
  empty.FirstPlay = MakePgc(std::string(FirstPgcName), 0, 0, 0, std::string(FirstPgcKey));
  VTS_P manager;
  manager.Key = EntryKey(1);
  manager.VTSName = EntryName(1);
  empty.Disc.Add(std::move(manager));
  project = std::move(empty);
}

// Takes the blanks around the first "=" away.
void CloseUp(std::string& line) {
  const std::size_t equal = line.find('=');
  if (equal == std::string::npos || equal == 0) {
    return;
  }
  const std::size_t value = std::min(line.find_first_not_of(' ', equal + 1), line.size());
  line.erase(equal + 1, value - equal - 1);
  const std::size_t keyEnd = line.find_last_not_of(' ', equal - 1) + 1;
  line.erase(keyEnd, equal - keyEnd);
}

// The lines of one script on their way into the state.
class ScriptLines {
 public:
  ScriptLines(std::istream& script, std::size_t length, ReaderState state, UserInterface& ui,
              LoadResult& result)
      : lines_(script), length_(length), state_(std::move(state)), ui_(ui), result_(result) {}

  // False when the load ends here; the failure has been shown.
  bool ReadLines();
  ReaderState& State() { return state_; }
  std::size_t LineCount() const { return lines_.Number(); }

 private:
  void PrepareLine(std::string_view line);
  void SplitLine(std::string_view trimmed);
  bool ReadPreparedLine();
  SkippedLine LineWith(std::string_view reason) const;
  void Skip(std::string_view reason);
  void Doubt(std::string_view reason);
  [[nodiscard]] bool IsComment() const;
  bool ReadBrace();
  bool ShowProgress();
  bool Fail(const MessageKind& kind, std::string_view value);

  LineReader lines_;
  std::size_t length_;
  std::size_t shown_ = 0;
  ReaderState state_;
  UserInterface& ui_;
  LoadResult& result_;
  std::string untabbed_;  // the line without its tabs, where there are any within
  std::string lower_;
  std::string_view trimmed_;  // without tabs and blanks around, case kept
  std::string_view whole_;    // without tabs
};

// Without tabs: those at its start are the writer's courtesy and cost nothing; others are rare.
void ScriptLines::PrepareLine(std::string_view line) {
  const std::size_t first = line.find_first_not_of('\t');
  line.remove_prefix(std::min(first, line.size()));
  if (std::memchr(line.data(), '\t', line.size()) != nullptr) {
    untabbed_.assign(line);
    std::erase(untabbed_, '\t');
    line = untabbed_;
  }
  whole_ = line;
  trimmed_ = Trim(line);
}

void ScriptLines::SplitLine(std::string_view trimmed) {
  const std::size_t equal = whole_.find('=');
  // "Key = Value" is a person's style; the writer's own values are kept to the last blank.
  const bool spaced = equal != std::string_view::npos && equal > 0 && whole_[equal - 1] == ' ';
  const std::size_t shown =
      trimmed.size() <= LongLineBytes ? trimmed.size() : std::min(trimmed.find('='), LongLineBytes) + 1;
  lower_.assign(trimmed.substr(0, shown));
  if (spaced) {
    CloseUp(lower_);
  }
  std::transform(lower_.begin(), lower_.end(), lower_.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  state_.Line.Lower = lower_;
  if (equal == std::string_view::npos) {
    state_.Line.Value = {};
    return;
  }
  state_.Line.Value = whole_.substr(equal + 1);
  if (spaced) {
    state_.Line.Value = Trim(state_.Line.Value);
  }
}

SkippedLine ScriptLines::LineWith(std::string_view reason) const {
  return {lines_.Number(), std::string(trimmed_.substr(0, MostSkippedText)), reason};
}

void ScriptLines::Skip(std::string_view reason) {
  ++result_.SkippedCount;
  if (result_.Skipped.size() < MostSkippedKept) {
    result_.Skipped.push_back(LineWith(reason));
  }
}

void ScriptLines::Doubt(std::string_view reason) {
  ++result_.DoubtedCount;
  if (result_.Doubted.size() < MostSkippedKept) {
    result_.Doubted.push_back(LineWith(reason));
  }
}

// A person's note in an own script.
bool ScriptLines::IsComment() const {
  return trimmed_.starts_with(CommentMark) && !state_.Traits.IsScenarist;
}

// A brace alone on its line. Items end by themselves, so the braces are counted only to tell of a script
// whose end is missing. A "}" too many is what a project without tracks is written with.
bool ScriptLines::ReadBrace() {
  if (trimmed_ == "{") {
    result_.UnclosedLine = result_.UnclosedCount == 0 ? lines_.Number() : result_.UnclosedLine;
    ++result_.UnclosedCount;
    return true;
  }
  if (trimmed_ == "}") {
    result_.UnclosedCount -= result_.UnclosedCount > 0 ? 1 : 0;
    state_.CloseBlock();
    return true;
  }
  return false;
}

bool ScriptLines::Fail(const MessageKind& kind, std::string_view value) {
  result_.Failure = MessageOf(kind, fmt::format("{}:{}", result_.File, lines_.Number()), value);
  ui_.Tell(result_.Failure);
  return false;
}

// The bar moves each hundredth of the script; a wish to stop is heard as often.
bool ScriptLines::ShowProgress() {
  const std::size_t step = length_ / ProgressSteps + LineReader::MostLineBytes / 16;
  if (lines_.BytesRead() < shown_ + step) {
    return true;
  }
  shown_ = lines_.BytesRead();
  ui_.Progress(static_cast<double>(shown_), static_cast<double>(std::max(length_, shown_)));
  return !ui_.StopRequested() || Fail(message::ScriptStopped, result_.File);
}

bool ScriptLines::ReadPreparedLine() {
  SplitLine(trimmed_);
  if (!ReadLine(state_)) {
    if (!state_.Outcome.TooMany.empty()) {
      return Fail(message::ScriptTooLarge, state_.Outcome.TooMany);
    }
    Skip(state_.Outcome.SkipReason);
    return true;
  }
  ++result_.TakenCount;
  if (!state_.Outcome.Doubt.empty()) {
    Doubt(state_.Outcome.Doubt);
  }
  if (!state_.Outcome.Stage.empty()) {
    ui_.Status(std::exchange(state_.Outcome.Stage, {}));
  }
  return !state_.Outcome.SceneRepeated || Fail(message::SceneRepeated, trimmed_);
}

bool ScriptLines::ReadLines() {
  while (lines_.Next()) {
    std::string_view line = lines_.Line();
    if (lines_.Number() == 1) {
      if (std::any_of(WideMarks.begin(), WideMarks.end(),
                      [line](std::string_view mark) { return line.starts_with(mark); })) {
        return Fail(message::ScriptIsWide, result_.File);
      }
      if (line.starts_with(ByteOrderMark)) {
        line.remove_prefix(ByteOrderMark.size());
      }
    }
    PrepareLine(line);
    if (lines_.TooLong()) {
      Skip(LineTooLong);
    } else if (!trimmed_.empty() && !IsComment() && !ReadBrace() && !ReadPreparedLine()) {
      return false;
    }
    if (!ShowProgress()) {
      return false;
    }
  }
  state_.ClosePalette();
  return !lines_.Broken() || Fail(message::ScriptReadFailed, result_.File);
}

}  // namespace

LoadResult LoadScript(std::istream& script, std::size_t length, const std::string& name, Project& project,
                      const LoadOptions& options, UserInterface& ui) {
  LoadResult result;
  result.File = name;
  ResetProject(project, name);
  ScriptLines lines(script, length, ReaderState(project, options.Rules), ui, result);
  if (lines.ReadLines()) {
    result.Loaded = BuildProject(lines.State(), options, ui, result);
  }
  result.LineCount = lines.LineCount();
  result.IsScenarist = lines.State().Traits.IsScenarist;
  return result;
}

LoadResult LoadScriptFile(const std::string& file, Project& project, const LoadOptions& options,
                          UserInterface& ui) {
  std::error_code failed;
  const std::string path = SystemPath(file);
  std::ifstream script;
  // A folder opens like a file, and a pipe never ends.
  if (std::filesystem::is_regular_file(path, failed)) {
    script.open(path, std::ios::binary);
  }
  if (!script.is_open()) {
    LoadResult result;
    result.File = file;
    result.Failure = MessageOf(message::ScriptUnreadable, file, file);
    ui.Tell(result.Failure);
    return result;
  }
  const std::uintmax_t length = std::filesystem::file_size(path, failed);
  return LoadScript(script, failed ? 0 : static_cast<std::size_t>(length), file, project, options, ui);
}

}  // namespace quorvelant
