#include "ui/disc_needs.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <set>
#include <system_error>

#include "analysis/video_info.h"
#include "author/size_text.h"

namespace quorvelant {

namespace {

std::uint64_t SizeOf(const std::string& path) {
  std::error_code failed;
  const std::uintmax_t bytes = std::filesystem::file_size(path, failed);
  return failed ? 0 : bytes;
}

double SoundMbits(const MuxAudioStream& stream) {
  const double kbits = stream.Pcm ? static_cast<double>(stream.Traits.SampleRate) *
                                        stream.Traits.Quantisation * stream.Traits.ChannelCount
                                  : stream.Traits.BitRate;
  return kbits / 1000;
}

// By the heads of its files: of a film whose rate varies it is the bound that its encoder kept.
double PeakOf(const MuxInput& input, UserInterface& ui) {
  double picture = 0;
  for (const MuxVideoFile& file : input.Video) {
    const auto info = file.ImageSource ? std::nullopt : GetVideoInfo(file.Path, true, ui);
    picture = std::max(picture, info ? info->Kbps / 1000.0 : 0.0);
  }
  return std::accumulate(input.Audio.begin(), input.Audio.end(), picture,
                         [](double sum, const MuxAudioStream& stream) { return sum + SoundMbits(stream); });
}

std::string LanguageOf(const Track& track, int number) {
  const auto stream = std::ranges::find_if(track.AudioStreams, [number](const AudioStream& one) {
    return !one.Removed && one.StreamNumber == number;
  });
  return stream == track.AudioStreams.end() ? std::string() : stream->Language;
}

void AddItems(const MuxInput& input, const DiscPlan& plan, std::vector<SizeItem>& items) {
  SizeItem film{input.Name, 0};
  for (const MuxVideoFile& file : input.Video) {
    film.Bytes += SizeOf(file.Path);
  }
  items.push_back(film);
  for (const MuxAudioStream& stream : input.Audio) {
    const std::string language =
        LanguageOf(plan.Sources[static_cast<std::size_t>(input.TrackIndex)], stream.StreamNumber);
    items.push_back({fmt::format("the sound {} ({}) of {}", stream.StreamNumber + 1, language, input.Name),
                     std::accumulate(stream.DataBytes.begin(), stream.DataBytes.end(), std::uint64_t{0})});
  }
}

}  // namespace

DiscNeeds NeedsOf(const DiscPlan& plan, UserInterface& ui) {
  DiscNeeds needs;
  needs.Bytes = plan.HasTitles() || !plan.Sets.empty() ? plan.NeededBytes() : 0;
  needs.SourceBytes = plan.VideoBytes + plan.AudioBytes;
  std::set<int> seen;
  const auto look = [&](const DomainPlan& domain) {
    for (const MuxInput& input : domain.Inputs) {
      if (ui.StopRequested() || !seen.insert(input.TrackIndex).second) {
        continue;
      }
      AddItems(input, plan, needs.Items);
      if (const double peak = PeakOf(input, ui); peak > needs.PeakMbits) {
        needs.PeakMbits = peak;
        needs.PeakTrack = input.Name;
      }
    }
  };
  for (const SetPlan& set : plan.Sets) {
    look(set.Menu);
    look(set.Title);
  }
  look(plan.Manager.Menu);
  std::ranges::stable_sort(needs.Items, std::greater<>(), &SizeItem::Bytes);
  return needs;
}

std::string WhatToDrop(const DiscNeeds& needs, std::uint64_t mediumBytes) {
  if (needs.Bytes <= mediumBytes || needs.Items.empty()) {
    return {};
  }
  const std::uint64_t excess = needs.Bytes - mediumBytes;
  const SizeItem* best = &needs.Items.front();
  for (const SizeItem& item : needs.Items) {
    best = item.Bytes >= excess ? &item : best;  // they become smaller
  }
  return fmt::format("{} too much: leave out {} ({})", SizeText(excess), best->Name, SizeText(best->Bytes));
}

}  // namespace quorvelant
