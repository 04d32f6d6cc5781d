#include "check/check.h"

#include <algorithm>
#include <span>
#include <string>
#include <unordered_set>

#include "base/text.h"
#include "check/command_check.h"
#include "check/decoding_check.h"
#include "check/messages.h"
#include "check/mixed_set_check.h"
#include "check/navigation_check.h"
#include "check/overlay_check.h"
#include "check/stream_numbers.h"
#include "check/structure_check.h"
#include "model/keys.h"
#include "model/stream_maps.h"
#include "model/update_my_dvd.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

using Names = std::unordered_set<std::string_view>;

bool IsNone(std::string_view link) {
  return link.empty() || EqualNoCase(link, "none");
}

// Sound of which each file tells that it stays off the disc.
bool IsDts(const AudioStream& stream) {
  return stream.Format == "DTS";
}

bool IsDts(const SubtitleStream& /*stream*/) {
  return false;
}

class ProjectChecker {
 public:
  ProjectChecker(const Project& project, const Rules& rules) : project_(project), rules_(rules) {}

  Findings Run();

 private:
  template <class... Values>
  void Add(const MessageKind& kind, const std::string& place, const Values&... values) {
    findings_.push_back(MessageOf(kind, place, values...));
  }

  template <class Unit>
  void CheckPgcs(const Collection<Unit>& units);
  void CheckLink(const PGC_P& pgc, std::string_view word, const std::string& link, const Names& names);
  void CheckPgc(const PGC_P& pgc, const Names& names);
  void CheckStill(std::int32_t seconds, const std::string& key);
  template <class Stream>
  void CheckNumbers(const std::vector<Stream>& streams, StreamNumbers numbers,
                    std::string (*key)(std::size_t, std::size_t), std::size_t track);
  void CheckStreams(const VTS_P& entry, Tracks& tracks);
  void CheckEntries(const Track& track, std::size_t index);
  template <class Stream>
  void CheckMuxed(const std::vector<Stream>& streams, std::string_view what,
                  std::string (*key)(std::size_t, std::size_t), const TrackListRow& row, const VTS_P& entry);

  const Project& project_;
  Rules rules_;
  Findings findings_;
  std::unordered_set<std::string> told_;   // places of streams that are in the findings
  std::unordered_set<std::string> empty_;  // places of streams that are told as empty
};

// --- names ---

void ProjectChecker::CheckLink(const PGC_P& pgc, std::string_view word, const std::string& link,
                               const Names& names) {
  if (!IsNone(link) && !names.contains(link)) {
    Add(message::PgcLinkMissing, pgc.Key, word, link);
  }
}

void ProjectChecker::CheckPgc(const PGC_P& pgc, const Names& names) {
  CheckLink(pgc, "next", pgc.NextPGC, names);
  CheckLink(pgc, "previous", pgc.PrevPGC, names);
  if (InTitleDomain(pgc.Key) || !Contains(Lower(pgc.GoUpPGC), "resume")) {
    CheckLink(pgc, "go-up", pgc.GoUpPGC, names);
  }
  CheckStill(pgc.StillTime, pgc.Key);
  for (const PG_P* program : Live(pgc.PG)) {
    for (const Cell_P* cell : Live(program->Cell)) {
      CheckStill(cell->StillTime, cell->Key);
      const std::int32_t command = cell->CellCommand;
      if (command < 0 || static_cast<std::size_t>(command) > pgc.CellCommands.size()) {
        Add(message::CellCommandMissing, cell->Key, command, pgc.CellCommands.size());
      }
    }
  }
}

void ProjectChecker::CheckStill(std::int32_t seconds, const std::string& key) {
  if (seconds < 0 || seconds > InfiniteStill) {
    Add(message::StillTimeBeyond, key, InfiniteStill - 1, InfiniteStill, seconds);
  }
}

// Links name PGCs among all languages, or all titles, of their entry.
template <class Unit>
void ProjectChecker::CheckPgcs(const Collection<Unit>& units) {
  Names names;
  for (const Unit* unit : Live(units)) {
    for (const PGC_P* pgc : Live(unit->PGC)) {
      names.insert(pgc->PGCName);
    }
  }
  for (const Unit* unit : Live(units)) {
    for (const PGC_P* pgc : Live(unit->PGC)) {
      CheckPgc(*pgc, names);
    }
  }
}

// --- streams ---

template <class Stream>
void ProjectChecker::CheckNumbers(const std::vector<Stream>& streams, StreamNumbers numbers,
                                  std::string (*key)(std::size_t, std::size_t), std::size_t track) {
  for (std::size_t i = 0; i < streams.size(); ++i) {
    if (streams[i].Removed) {
      continue;
    }
    if (auto refusal = numbers.WhyRefused(streams[i].StreamNumber, key(track, i + 1))) {
      findings_.push_back(std::move(*refusal));
    }
  }
}

template <class Stream>
void ProjectChecker::CheckMuxed(const std::vector<Stream>& streams, std::string_view what,
                                std::string (*key)(std::size_t, std::size_t), const TrackListRow& row,
                                const VTS_P& entry) {
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const std::string place = key(row.Index, i + 1);
    if (!streams[i].Removed && !streams[i].MuxThisStream && !IsDts(streams[i]) &&
        told_.insert(place + entry.Key).second) {
      Add(message::StreamNotMuxed, place, what, streams[i].StreamNumber, entry.Key, MostCarried(rules_).Audio,
          MostCarried(rules_).Subs);
    }
  }
}

void ProjectChecker::CheckEntries(const Track& track, std::size_t index) {
  for (const auto& [place, stream] : LiveWithIndex(track.SubStreams)) {
    const bool empty = std::ranges::none_of(stream.SubPlays, &SubPicturePlay::Used);
    const std::string key = SubStreamKey(index, place + 1);
    if (empty && stream.MuxThisStream && empty_.insert(key).second) {
      Add(message::SubStreamEmpty, key, stream.StreamNumber, track.TrackName);
    }
  }
}

void ProjectChecker::CheckStreams(const VTS_P& entry, Tracks& tracks) {
  for (const Domain domain : {Domain::Menu, Domain::Title}) {
    const TrackList list = BuildTrackList(entry, domain, tracks);
    BuildAudioMap(list, tracks, rules_);
    BuildSubMap(list, tracks, rules_);
    for (const TrackListRow& row : list) {
      const Track& track = tracks[row.Index];
      CheckMuxed(track.AudioStreams, "Audio", AudioStreamKey, row, entry);
      CheckMuxed(track.SubStreams, "Subpicture", SubStreamKey, row, entry);
      CheckEntries(track, row.Index);
    }
  }
  if (auto box = ShowStreamMaps(entry, project_.Tracks).Box) {
    box->Place = entry.Key;
    findings_.push_back(std::move(*box));
  }
}

Findings ProjectChecker::Run() {
  for (const VTS_P* entry : Live(project_.Disc)) {
    CheckPgcs(entry->Lang);
    CheckPgcs(entry->Title);
  }
  for (std::size_t i = 0; i < project_.Tracks.Count(); ++i) {
    if (const Track& track = project_.Tracks[i]; !track.Removed) {
      CheckNumbers(track.AudioStreams, StreamNumbers::OfAudio(), AudioStreamKey, i);
      CheckNumbers(track.SubStreams, StreamNumbers::OfSubpictures(), SubStreamKey, i);
    }
  }
  Tracks tracks = project_.Tracks;  // building a map marks the streams
  for (const VTS_P* entry : Live(project_.Disc)) {
    CheckStreams(*entry, tracks);
  }
  return std::move(findings_);
}

}  // namespace

Findings CheckNamesAndStreams(const Project& project, const Rules& rules) {
  return ProjectChecker(project, rules).Run();
}

Findings CheckProject(const Project& project, const Rules& rules) {
  Findings findings = CheckNamesAndStreams(project, rules);
  const std::size_t ofAllRules = findings.size();  // what follows is an error by players' rules alone
  Append(findings, CheckMixedSets(project));
  Append(findings, CheckDecoding(project));
  Append(findings, CheckStructure(project));
  Append(findings, CheckCommandTargets(project));
  Append(findings, CheckDisplays(project, rules));
  Append(findings, CheckPalettes(project, rules));
  Append(findings, CheckButtonCommands(project));
  CheckNavigation(project, rules, findings);
  LevelByRules(std::span(findings).subspan(ofAllRules), rules);
  return findings;
}

}  // namespace quorvelant
