#include "check/mixed_set_check.h"

#include <fmt/format.h>

#include <array>
#include <map>
#include <string>

#include "check/messages.h"
#include "check/source_judge.h"
#include "model/keys.h"
#include "model/stream_maps.h"
#include "model/walk.h"

namespace quorvelant {
namespace {

// AC3 says in each frame how many channels it has; of PCM the domain's attributes tell. Packs repeat them,
// but a player that has set up its converter for 16 bits plays samples of 24 as noise; channels it mixes as
// they come.
bool HasTraits(const AudioTraits& traits) {
  return traits.ChannelCount != 0;
}
bool HasSamplesOf(const AudioTraits& a, const AudioTraits& b) {
  return a.SampleRate == b.SampleRate && a.Quantisation == b.Quantisation;
}
Severity HowUnlike(const AudioStream& a, const AudioStream& b) {
  if (a.Format != b.Format) {
    return Severity::Error;
  }
  if (a.Format != "PCM" || !HasTraits(a.Traits) || !HasTraits(b.Traits)) {
    return Severity::Information;
  }
  if (!HasSamplesOf(a.Traits, b.Traits)) {
    return Severity::Error;
  }
  return a.Traits.ChannelCount == b.Traits.ChannelCount ? Severity::Information : Severity::Warning;
}

bool IsBitmap(const Track& track) {
  const auto plays = Live(track.VideoPlays);
  return !plays.empty() && IsPicture(plays.front()->File);
}

std::string KindOf(const AudioStream& stream) {
  const AudioTraits& traits = stream.Traits;
  return stream.Format == "PCM" && traits.ChannelCount > 0
             ? fmt::format("PCM of {} kHz, {} bits and {} channels", traits.SampleRate, traits.Quantisation,
                           traits.ChannelCount)
             : stream.Format;
}

class DomainChecker {
 public:
  DomainChecker(const Project& project, const VTS_P& entry, Domain domain, Findings& findings)
      : project_(project), entry_(entry), domain_(domain), findings_(findings) {}

  void Run() {
    const TrackList list = BuildTrackList(entry_, domain_, project_.Tracks);
    for (const TrackListRow& row : list) {
      CheckVideo(project_.Tracks[row.Index], row.Index);
      CheckAudio(project_.Tracks[row.Index], row.Index);
    }
    const bool wide = first_[1] != nullptr && first_[1]->Aspect == "16:9";
    if (domain_ == Domain::Title && !wide) {
      CheckPanScan(list);
    }
  }

 private:
  [[nodiscard]] std::string_view Here() const { return domain_ == Domain::Menu ? "menus" : "titles"; }

  // A display mode counts for all titles of the set.
  void CheckPanScan(const TrackList& list) {
    for (const TrackListRow& row : list) {
      const Track& track = project_.Tracks[row.Index];
      if (track.Pan && track.Aspect != "16:9" && track.Coding != "MPEG1") {
        findings_.push_back(MessageOf(message::AspectUnlikeDomain, TrackKey(row.Index), track.TrackName,
                                      track.DisplayMode, entry_.Key));
      }
    }
  }

  // One finding a track: the first of these that differs.
  void CheckVideo(const Track& track, std::size_t index) {
    constexpr std::array Attributes{&Track::Standard, &Track::Aspect, &Track::Resolution};
    bool told = false;
    for (std::size_t i = 0; i < Attributes.size(); ++i) {
      const std::string& value = track.*Attributes.at(i);
      const Track*& first = first_.at(i);
      // MPEG-1 tells the shape of its pixels, which is no aspect.
      if (value.empty() || (Attributes.at(i) == &Track::Aspect && track.Coding == "MPEG1")) {
        continue;
      }
      if (first == nullptr) {
        first = &track;
      } else if (first->*Attributes.at(i) != value && !told) {
        told = true;
        Message& mixed = findings_.emplace_back(MessageOf(message::VideoMixed, TrackKey(index), Here(),
                                                          entry_.Key, first->TrackName,
                                                          first->*Attributes.at(i), track.TrackName, value));
        // Bitmaps have no shape of their own: they show in the domain's.
        const bool bitmap = IsBitmap(track) || IsBitmap(*first);
        const bool shows = bitmap && Attributes.at(i) == &Track::Aspect;
        mixed.Level = shows ? Severity::Warning : Severity::Error;
      }
    }
  }

  void CheckAudio(const Track& track, std::size_t index) {
    for (const auto& [place, stream] : LiveWithIndex(track.AudioStreams)) {
      if (stream.Format.empty()) {
        continue;
      }
      const auto [first, isNew] = streams_.try_emplace(stream.StreamNumber, &stream, &track);
      const AudioStream& other = *first->second.first;
      const Severity unlike = HowUnlike(other, stream);
      if (isNew || unlike == Severity::Information || first->second.second == &track) {
        continue;
      }
      Message& mixed = findings_.emplace_back(MessageOf(
          message::AudioMixed, AudioStreamKey(index, place + 1), Here(), entry_.Key, stream.StreamNumber,
          KindOf(other), first->second.second->TrackName, KindOf(stream), track.TrackName));
      mixed.Level = unlike;
    }
  }

  const Project& project_;
  const VTS_P& entry_;
  Domain domain_;
  Findings& findings_;
  std::array<const Track*, 3> first_{};  // that has the standard, the aspect, the size
  std::map<std::int32_t, std::pair<const AudioStream*, const Track*>> streams_;  // first of each number
};

}  // namespace

Findings CheckMixedSets(const Project& project) {
  Findings findings;
  for (const VTS_P* entry : Live(project.Disc)) {
    for (const Domain domain : {Domain::Menu, Domain::Title}) {
      DomainChecker(project, *entry, domain, findings).Run();
    }
  }
  return findings;
}

}  // namespace quorvelant
