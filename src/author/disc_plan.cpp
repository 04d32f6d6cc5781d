#include "author/disc_plan.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <numeric>

#include "author/disc_size.h"
#include "author/mux_input.h"
#include "check/check_sources.h"
#include "check/disc_limits.h"
#include "check/source_judge.h"
#include "codec/still_encoder.h"
#include "mux/still_source.h"

namespace quorvelant {
namespace {

// A stream whose kind is unknown stands in no table.
AudioMap KnownStreams(AudioMap map) {
  std::erase_if(map, [](const AudioMapRow& row) { return row.Format.empty(); });
  return map;
}

std::uint64_t SizeOf(const std::string& path) {
  std::error_code failed;
  const std::uintmax_t size = std::filesystem::file_size(path, failed);
  return failed ? 0 : size;
}

// Of stills and slides that are shown for a time.
std::int64_t HeldSeconds(const MuxInput& input) {
  std::int64_t frames = 0;
  for (const MuxVideoFile& file : input.Video) {
    frames += file.HoldFlag ? file.HoldFrames : 0;
  }
  return frames / (input.Ntsc ? 30 : 25);
}

void CountSources(const MuxInput& input, DiscPlan& plan) {
  const std::uint64_t before = plan.VideoBytes + plan.AudioBytes;
  for (const MuxVideoFile& file : input.Video) {
    plan.VideoBytes += file.ImageSource ? LargestStillBytes : SizeOf(file.Path);
  }
  // Of the longest stream; without sound nothing is known of a film's length.
  auto seconds = static_cast<double>(HeldSeconds(input));
  for (const MuxAudioStream& stream : input.Audio) {
    const std::uint64_t bytes =
        std::accumulate(stream.DataBytes.begin(), stream.DataBytes.end(), std::uint64_t{0});
    const int kbps = stream.Traits.BitRate;
    seconds = std::max(seconds, kbps > 0 ? static_cast<double>(bytes) / (kbps * 125.0) : 0);
    plan.AudioBytes += bytes;
  }
  plan.TrackSizes.push_back({input.Name, plan.VideoBytes + plan.AudioBytes - before});
  // Twice a second a navigation pack, and after each a pack of every stream that is half full.
  plan.PartPacks += static_cast<std::uint64_t>(seconds * (3.0 + static_cast<double>(input.Audio.size())));
}

DomainPlan PlanDomain(const VTS_P& entry, Domain domain, DiscPlan& plan, SourceJudge& judge,
                      MuxInputNotes& notes) {
  DomainPlan result;
  result.Entry = &entry;
  result.Domain = domain;
  result.List = BuildTrackList(entry, domain, plan.Sources);
  result.Audio = KnownStreams(BuildAudioMap(result.List, plan.Sources, plan.Rules));
  result.Subs = BuildSubMap(result.List, plan.Sources, plan.Rules);
  const MuxInputSource source{*plan.Disc, plan.Sources, entry, domain, judge, plan.Rules};
  for (const TrackListRow& row : result.List) {
    result.Inputs.push_back(MakeMuxInput(source, row.Index, notes));
    CountSources(result.Inputs.back(), plan);
  }
  return result;
}

// The tracks on the disc, each once.
std::map<std::size_t, const MuxInput*> TracksOf(const DiscPlan& plan) {
  std::map<std::size_t, const MuxInput*> tracks;
  const auto add = [&](const DomainPlan& domain) {
    for (std::size_t i = 0; i < domain.List.size(); ++i) {
      tracks.emplace(domain.List[i].Index, &domain.Inputs[i]);
    }
  };
  add(plan.Manager.Menu);
  for (const SetPlan& set : plan.Sets) {
    add(set.Menu);
    add(set.Title);
  }
  return tracks;
}

// Stills whose heads are well: the rest of the bitmap may be missing.
void CheckStills(const DiscPlan& plan, PictureLoader& pictures, SourceJudge& judge, Findings& findings) {
  for (const auto& [index, input] : TracksOf(plan)) {
    for (const MuxVideoFile& file : input->Video) {
      const bool judged = !file.ImageSource || HasErrors(judge.Video({file.Path, {}}).Findings);
      if (auto fault = judged ? std::nullopt : FaultOfStill(*input, file, pictures)) {
        findings.push_back(std::move(*fault));
      }
    }
  }
}

void CheckPlan(DiscPlan& plan, SourceJudge& judge, MuxInputNotes& notes, UserInterface& ui,
               PictureLoader* pictures) {
  Append(plan.Findings, CheckLimits(*plan.Disc, plan.Rules));
  Append(plan.Findings, CheckSources(*plan.Disc, judge,
                                     {.Rules = plan.Rules,
                                      .Ui = ui,
                                      .Pictures = pictures,
                                      .Coded = pictures != nullptr ? &plan.Coded : nullptr,
                                      .OnDisc = &notes.OnDisc}));
  Append(plan.Findings, std::move(notes.Findings));
  if (pictures != nullptr) {
    CheckStills(plan, *pictures, judge, plan.Findings);
  }
  if (auto warning = WarningOfSize(plan)) {
    plan.Findings.push_back(*std::move(warning));
  }
}

}  // namespace

bool DiscPlan::HasTitles() const {
  return std::ranges::any_of(Sets, [](const SetPlan& set) { return !set.Title.Inputs.empty(); });
}

// A full pack carries 2025 bytes of video or 2016 of sound.
std::uint64_t DiscPlan::LeastBytes() const {
  return (VideoBytes / 2025 + AudioBytes / 2016) * SectorBytes;
}

std::uint64_t DiscPlan::NeededBytes() const {
  // The packs that are not full come to one per cent at usual bit rates, where the length is not known.
  const std::uint64_t packs = LeastBytes() / SectorBytes;
  const std::uint64_t tables = (Sets.size() + 1) * 24;  // sectors of IFO and BUP
  return (packs + std::max(packs / 100, PartPacks) + tables) * SectorBytes;
}

DiscPlan PlanDisc(const Project& disc, const Rules& rules, UserInterface& ui, PictureLoader* pictures) {
  DiscPlan plan;
  plan.Disc = &disc;
  plan.Rules = rules;
  plan.Ntsc = disc.Standard() == "NTSC";
  plan.Sources = disc.Tracks;
  SourceJudge judge(disc.SourceFolder(), rules, ui);
  MuxInputNotes notes;
  int number = 0;
  for (const VTS_P& entry : disc.Disc) {
    if (entry.Removed) {
      continue;
    }
    ++number;
    SetPlan set;
    set.EntryNumber = number;
    set.Menu = PlanDomain(entry, Domain::Menu, plan, judge, notes);
    if (number == 1) {
      plan.Manager = std::move(set);
      continue;
    }
    set.Title = PlanDomain(entry, Domain::Title, plan, judge, notes);
    plan.Sets.push_back(std::move(set));
  }
  CheckPlan(plan, judge, notes, ui, pictures);
  plan.Findings = OnceEach(std::move(plan.Findings));
  return plan;
}

}  // namespace quorvelant
