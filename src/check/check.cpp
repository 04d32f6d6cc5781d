#include "check/check.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <unordered_set>

#include "base/random.h"
#include "base/text.h"
#include "model/keys.h"
#include "model/stream_maps.h"
#include "model/update_my_dvd.h"

namespace quorvelant {

namespace {

class Checking {
 public:
  Checking(const Project& project, const LoadResult& load) : project_(project), load_(load) {}

  CheckReport RunLoad();
  CheckReport Run();

 private:
  void Add(Severity level, std::string_view title, std::string text, std::string place);
  void Add(const Message& message);

  void AddLines(std::string_view title, const std::vector<SkippedLine>& lines, std::size_t count,
                std::string_view more);
  void CheckLines();
  void CheckCommandRows();
  void CheckPgc(const PGC_P& pgc, const std::unordered_set<std::string_view>& names);
  template <class Unit>
  void CheckLinks(const Collection<Unit>& units);
  void CheckSources();
  void CheckSource(const std::string& file, const std::string& key, bool leftOut);
  void CheckTrack(std::size_t index);
  template <class Stream>
  void CheckNumbers(const std::vector<Stream>& streams, std::string_view what, std::size_t count,
                    std::string (*key)(std::size_t, std::size_t), std::size_t track);
  void CheckStill(std::int32_t seconds, const std::string& key);
  void CheckButtons(const HighlightPlay& play, const std::string& key);
  void CheckStreams(const VTS_P& entry, Tracks& tracks);
  template <class Stream>
  void CheckMuxed(const std::vector<Stream>& streams, std::string_view what,
                  std::string (*key)(std::size_t, std::size_t), const TrackListRow& row, const VTS_P& entry);

  const Project& project_;
  const LoadResult& load_;
  CheckReport report_;
  std::unordered_set<std::string> told_;  // places of streams that were told of already
};

void Checking::Add(Severity level, std::string_view title, std::string text, std::string place) {
  ++(level == Severity::Error ? report_.ErrorCount : report_.WarningCount);
  report_.Messages.push_back({level, std::string(title), std::move(text), std::move(place)});
}
void Checking::Add(const Message& message) {
  Add(message.Level, message.Title, message.Text, message.Place);
}

// The lines that were kept; `more` tells how many of `count` were not.
void Checking::AddLines(std::string_view title, const std::vector<SkippedLine>& lines, std::size_t count,
                        std::string_view more) {
  for (const SkippedLine& line : lines) {
    Add(Severity::Warning, title, fmt::format("{}: \"{}\"", line.Reason, line.Text),
        fmt::format("{}:{}", project_.ScriptFile, line.Number));
  }
  if (count > lines.size()) {
    Add(Severity::Warning, title, fmt::format(fmt::runtime(more), count - lines.size()), project_.ScriptFile);
  }
}

void Checking::CheckLines() {
  if (load_.TakenCount == 0 && load_.Failure.Text.empty()) {
    Add(Severity::Error, NoProjectTitle, std::string(NoProjectText), project_.ScriptFile);
    return;
  }
  AddLines(SkippedLineTitle, load_.Skipped, load_.SkippedCount, "{} more lines were passed over");
  AddLines(DoubtedValueTitle, load_.Doubted, load_.DoubtedCount, "{} more values are doubtful");
  if (load_.UnclosedCount > 0 && load_.Failure.Text.empty()) {
    Add(Severity::Error, UnclosedTitle,
        fmt::format(
            "The script ends within {} open braces; is its end missing? The outermost opens in line {}",
            load_.UnclosedCount, load_.UnclosedLine),
        fmt::format("{}:{}", project_.ScriptFile, load_.LineCount));
  }
  if (!load_.Failure.Text.empty()) {
    Add(load_.Failure);
  }
}

void Checking::CheckCommandRows() {
  for (const CommandError& row : load_.Commands.Errors) {
    Add(Severity::Error, CommandCheckTitle,
        fmt::format("{} names a target that does not exist: \"{}\"", row.Type, row.Command),
        fmt::format("{}/{}/{}/{}", row.VTS, row.TitleOrLanguage, row.PGC, row.CELL));
  }
  for (const Message& warning : load_.Commands.Warnings) {
    Add(warning);
  }
}

// --- names ---

bool IsNone(std::string_view link) {
  return link.empty() || EqualNoCase(link, "none");
}

void Checking::CheckPgc(const PGC_P& pgc, const std::unordered_set<std::string_view>& names) {
  const auto check = [&](std::string_view word, const std::string& link, bool mayResume) {
    const bool resumes = mayResume && Contains(Lower(link), "resume");
    if (!IsNone(link) && !resumes && !names.contains(link)) {
      Add(Severity::Warning, LinkMissingTitle,
          fmt::format("The {} PGC does not exist, so there is no such link: \"{}\"", word, link), pgc.Key);
    }
  };
  check("next", pgc.NextPGC, false);
  check("previous", pgc.PrevPGC, false);
  check("go-up", pgc.GoUpPGC, !InTitleDomain(pgc.Key));
  CheckStill(pgc.StillTime, pgc.Key);
  for (const PG_P& program : pgc.PG) {
    for (const Cell_P& cell : program.Cell) {
      if (program.Removed || cell.Removed) {
        continue;
      }
      CheckStill(cell.StillTime, cell.Key);
      const bool known =
          cell.CellCommand >= 0 && static_cast<std::size_t>(cell.CellCommand) <= pgc.CellCommands.size();
      if (!known) {
        Add(Severity::Warning, CellCommandTitle,
            fmt::format("The cell names cell command {}; the PGC has {}", cell.CellCommand,
                        pgc.CellCommands.size()),
            cell.Key);
      }
    }
  }
}

void Checking::CheckStill(std::int32_t seconds, const std::string& key) {
  if (seconds < 0 || seconds > InfiniteStill) {
    Add(Severity::Error, StillTimeTitle,
        fmt::format("A still lasts 0 to {} seconds, or for ever with {}; not {}", InfiniteStill - 1,
                    InfiniteStill, seconds),
        key);
  }
}

// Links name PGCs among all languages, or all titles, of their entry.
template <class Unit>
void Checking::CheckLinks(const Collection<Unit>& units) {
  std::unordered_set<std::string_view> names;
  for (const Unit& unit : units) {
    for (const PGC_P& pgc : unit.PGC) {
      if (!unit.Removed && !pgc.Removed) {
        names.insert(pgc.PGCName);
      }
    }
  }
  for (const Unit& unit : units) {
    for (const PGC_P& pgc : unit.PGC) {
      if (!unit.Removed && !pgc.Removed) {
        CheckPgc(pgc, names);
      }
    }
  }
}

// --- sources ---

void Checking::CheckSource(const std::string& file, const std::string& key, bool leftOut) {
  if (file.empty() || leftOut) {
    return;
  }
  std::error_code failed;
  if (!std::filesystem::is_regular_file(SystemPath(file, project_.SourceFolder()), failed)) {
    Add(Severity::Error, SourceMissingTitle, fmt::format("The file does not exist: \"{}\"", file), key);
  }
}

void Checking::CheckButtons(const HighlightPlay& play, const std::string& key) {
  std::unordered_set<std::string_view> names;
  for (const HighlightButton& button : play.Buttons) {
    names.insert(button.Name);
  }
  for (const HighlightButton& button : play.Buttons) {
    for (const std::string& link : {button.Up, button.Down, button.Left, button.Right}) {
      if (!link.empty() && !names.contains(link)) {
        Add(Severity::Warning, LinkMissingTitle,
            fmt::format(R"(Button "{}" links to a button that does not exist, so it stays on itself: "{}")",
                        button.Name, link),
            key);
      }
    }
  }
}

template <class Stream>
void Checking::CheckNumbers(const std::vector<Stream>& streams, std::string_view what, std::size_t count,
                            std::string (*key)(std::size_t, std::size_t), std::size_t track) {
  std::unordered_set<std::int32_t> numbers;
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const std::int32_t number = streams[i].StreamNumber;
    if (streams[i].Removed) {
      continue;
    }
    if (number < 0 || static_cast<std::size_t>(number) >= count) {
      Add(Severity::Warning, StreamNumberTitle,
          fmt::format("{} streams have the numbers 0 to {}; not {}", what, count - 1, number),
          key(track, i + 1));
    } else if (!numbers.insert(number).second) {
      Add(Severity::Error, StreamNumberTitle,
          fmt::format("{} stream number {} is an earlier stream's of the same track", what, number),
          key(track, i + 1));
    }
  }
}

void Checking::CheckTrack(std::size_t index) {
  const Track& track = project_.Tracks[index];
  CheckNumbers(track.AudioStreams, "Audio", AudioStreamCount, AudioStreamKey, index);
  CheckNumbers(track.SubStreams, "Subpicture", SubStreamCount, SubStreamKey, index);
  for (std::size_t i = 0; i < track.VideoPlays.size(); ++i) {
    CheckSource(track.VideoPlays[i].File, VideoPlayKey(index, i + 1), false);
  }
  for (std::size_t i = 0; i < track.AudioStreams.size(); ++i) {
    const AudioStream& stream = track.AudioStreams[i];
    for (std::size_t play = 0; play < stream.AudioPlays.size(); ++play) {
      CheckSource(stream.AudioPlays[play].File, AudioPlayKey(index, i + 1, play + 1), stream.Removed);
    }
    if (stream.Format.empty() && !stream.Removed) {
      Add(Severity::Error, SourceUnreadTitle,
          "The name of the first file does not end in .ac3, .wav or .dts, so its kind is unknown",
          AudioStreamKey(index, i + 1));
    }
  }
  for (std::size_t i = 0; i < track.SubStreams.size(); ++i) {
    for (const SubPicturePlay& play : track.SubStreams[i].SubPlays) {
      CheckSource(play.File, SubStreamKey(index, i + 1), track.SubStreams[i].Removed || !play.Used);
    }
  }
  for (std::size_t i = 0; i < track.HighlightPlays.size(); ++i) {
    CheckButtons(track.HighlightPlays[i], HighStreamKey(index, i + 1));
  }
}

void Checking::CheckSources() {
  for (std::size_t i = 0; i < project_.Tracks.Count(); ++i) {
    if (!project_.Tracks[i].Removed) {
      CheckTrack(i);
    }
  }
}

// --- streams ---

template <class Stream>
void Checking::CheckMuxed(const std::vector<Stream>& streams, std::string_view what,
                          std::string (*key)(std::size_t, std::size_t), const TrackListRow& row,
                          const VTS_P& entry) {
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const std::string place = key(row.Index, i + 1);
    if (!streams[i].Removed && !streams[i].MuxThisStream && told_.insert(place + entry.Key).second) {
      Add(Severity::Warning, NotMuxedTitle,
          fmt::format(
              "{} stream {} does not reach the disc in {}: DTS is not multiplexed, and a domain carries "
              "{} AC3 or PCM and {} subpicture streams",
              what, streams[i].StreamNumber, entry.Key, MostMuxedAudio, MostMuxedSubs),
          place);
    }
  }
}

void Checking::CheckStreams(const VTS_P& entry, Tracks& tracks) {
  for (const Domain domain : {Domain::Menu, Domain::Title}) {
    const TrackList list = BuildTrackList(entry, domain, tracks);
    BuildAudioMap(list, tracks);
    BuildSubMap(list, tracks);
    for (const TrackListRow& row : list) {
      const Track& track = tracks[row.Index];
      CheckMuxed(track.AudioStreams, "Audio", AudioStreamKey, row, entry);
      CheckMuxed(track.SubStreams, "Subpicture", SubStreamKey, row, entry);
    }
  }
  if (const auto box = ShowStreamMaps(entry, project_.Tracks).Box) {
    Add(box->Level, box->Title, box->Text, entry.Key);
  }
}

CheckReport Checking::RunLoad() {
  CheckLines();
  CheckCommandRows();
  std::for_each(load_.Notes.begin(), load_.Notes.end(), [this](const Message& note) { Add(note); });
  return report_;
}

CheckReport Checking::Run() {
  RunLoad();
  Tracks tracks = project_.Tracks;  // building a map marks the streams
  for (const VTS_P& entry : project_.Disc) {
    if (!entry.Removed) {
      CheckLinks(entry.Lang);
      CheckLinks(entry.Title);
    }
  }
  CheckSources();
  for (const VTS_P& entry : project_.Disc) {
    if (!entry.Removed) {
      CheckStreams(entry, tracks);
    }
  }
  return std::move(report_);
}

}  // namespace

CheckReport CheckLoad(const Project& project, const LoadResult& load) {
  return Checking(project, load).RunLoad();
}

CheckReport CheckProject(const Project& project, const LoadResult& load) {
  return Checking(project, load).Run();
}

bool SaveErrorList(const std::vector<CommandError>& rows, UserInterface& ui) {
  const auto path = ui.AskText(ErrorDumpTitle, ErrorDumpFilter, "");
  if (!path || path->empty()) {
    return false;
  }
  std::ofstream file(SystemPath(*path), std::ios::binary | std::ios::trunc);
  for (const CommandError& row : rows) {
    file << ErrorLine(row) << "\r\n";
  }
  file.close();
  if (file.fail()) {
    TellError(ui, CommandCheckTitle, std::string(ErrorDumpFailedText) + *path, *path);
    return false;
  }
  return true;
}

}  // namespace quorvelant
