#include "edit/overlays.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <span>
#include <utility>

#include "base/silent_ui.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/source_judge.h"
#include "check/track_times.h"
#include "edit/change.h"
#include "edit/messages.h"
#include "edit/source_paths.h"
#include "edit/subtitle_ticks.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

const Track* FindTrack(const Project& project, std::size_t track) {
  const bool there = track < project.Tracks.Count() && !project.Tracks[track].Removed;
  return there ? &project.Tracks[track] : nullptr;
}

const SubtitleStream* FindStream(const Project& project, std::size_t track, std::size_t stream) {
  const Track* const found = FindTrack(project, track);
  const bool there =
      found != nullptr && stream < found->SubStreams.size() && !found->SubStreams[stream].Removed;
  return there ? &found->SubStreams[stream] : nullptr;
}

const SubPicturePlay* FindEntry(const Project& project, const SubtitlePlace& place) {
  const SubtitleStream* const stream = FindStream(project, place.Track, place.Stream);
  return stream != nullptr && place.Entry < stream->SubPlays.size() ? &stream->SubPlays[place.Entry]
                                                                    : nullptr;
}

Outcome RefuseMissing(std::string_view what, const std::string& key) {
  return Outcome::Refused(MessageOf(message::NoSuchElement, key, what, key));
}

SubPicturePlay& EntryToEdit(Change& change, const SubtitlePlace& place) {
  return change.EditTrack(place.Track).SubStreams[place.Stream].SubPlays[place.Entry];
}

SubtitleClock ClockOf(const Track& track) {
  const TrackTimes times(track);
  return {times.FramesPerSecond, times.Frames};
}

// Buttons are pixels of the subtitle that shows with them, so it shows with subtitles off.
void ForceUnderButtons(const Track& track, SubPicturePlay& entry) {
  entry.Forced =
      entry.Forced || RefuseForcedMark(entry, false, track.HighlightPlays, TrackTimes(track).FramesPerSecond);
}

// Why the subtitle's file makes none, as far as its head tells.
std::optional<Message> RefuseBitmap(const EditSession& session, const Track& track,
                                    const SubPicturePlay& entry) {
  SilentUi nobody;
  SourceJudge judge(session.Work().SourceFolder(), session.RulesInForce(), nobody);
  auto found = judge.Subtitle(entry, {entry.File, entry.File, EqualNoCase(track.Standard, "NTSC")});
  return found && found->Level == Severity::Error ? std::move(found) : RefusePath(entry.File);
}

std::optional<Message> RefusePaletteName(const Project& project, std::string_view name) {
  if (name.empty() || name.find_first_of("\r\n") != std::string_view::npos) {
    return MessageOf(message::PaletteNameless, {});
  }
  return PaletteNameExists(project, name) ? std::optional(MessageOf(message::PaletteNameTaken, {}))
                                          : std::nullopt;
}

// The first index or contrast that no palette has.
std::optional<std::int32_t> BeyondPalette(const FourColors& colors) {
  for (const ColorQuad* quad : {&colors.Index, &colors.Contrast}) {
    const auto* const beyond =
        std::ranges::find_if(*quad, [](std::int32_t value) { return value < 0 || value > 15; });
    if (beyond != quad->end()) {
      return *beyond;
    }
  }
  return std::nullopt;
}

void PutConversion(SubPicturePlay& entry, const FourColors& colors) {
  constexpr Color Rgb = 0xFFFFFF;
  entry.ConversionE2 = colors.Conversion[0] & Rgb;
  entry.ConversionE1 = colors.Conversion[1] & Rgb;
  entry.ConversionP = colors.Conversion[2] & Rgb;
  entry.ConversionBg = colors.Conversion[3] & Rgb;
}

void PutDisplay(SubPicturePlay& entry, const FourColors& colors) {
  entry.ColorE2 = colors.Index[0];
  entry.ColorE1 = colors.Index[1];
  entry.ColorP = colors.Index[2];
  entry.ColorBg = colors.Index[3];
  entry.ContrastE2 = colors.Contrast[0];
  entry.ContrastE1 = colors.Contrast[1];
  entry.ContrastP = colors.Contrast[2];
  entry.ContrastBg = colors.Contrast[3];
}

}  // namespace

std::string ProposedPaletteName(const Project& project) {
  for (std::size_t number = project.Palettes.Count() + 1;; ++number) {
    std::string name = fmt::format("Palette_{}", number);
    if (!PaletteNameExists(project, name)) {
      return name;
    }
  }
}

Outcome NewPalette(EditSession& session, const std::string& name, const PaletteColors& colors) {
  if (auto refusal = RefusePaletteName(session.Work(), name)) {
    return Outcome::Refused(*std::move(refusal));
  }
  Change change(session, "New Palette");
  change.EditPalettes().Add({.Key = name, .PaletteColors = colors});
  return change.Commit(name);
}

Outcome ChangePalette(EditSession& session, std::string_view name, const PaletteColors& colors) {
  const auto live = Live(session.Work().Palettes);
  const auto found = std::ranges::find(live, name, &Palette_P::Key);
  if (found == live.end()) {
    return Outcome::Refused(MessageOf(message::NoSuchElement, {}, "palette", name));
  }
  if ((*found)->PaletteColors == colors) {
    return Outcome::Done(std::string(name));
  }
  Change change(session, "Change Palette");
  UpdatePalette(change.Touch({{PartKind::Palettes}}), name, colors);
  return change.Commit(std::string(name));
}

std::string SubPlayKey(const SubtitlePlace& place) {
  return fmt::format("{}.SubPlay{}", SubStreamKey(place.Track, place.Stream + 1), place.Entry + 1);
}

Outcome NewSubtitle(EditSession& session, const SubtitleMoment& moment, SubPicturePlay settings) {
  if (!moment.Stream) {
    return Outcome::Refused(MessageOf(message::SubtitleStreamMissing, TrackKey(moment.Track)));
  }
  const SubtitleStream* const stream = FindStream(session.Work(), moment.Track, *moment.Stream);
  if (stream == nullptr) {
    return RefuseMissing("subtitle stream", SubStreamKey(moment.Track, *moment.Stream + 1));
  }
  const SubtitleClock clock = ClockOf(session.Work().Tracks[moment.Track]);
  if (auto refusal = RefuseStart(stream->SubPlays, moment.Frame, clock)) {
    return Outcome::Refused(*std::move(refusal));
  }
  if (auto refusal = RefuseBitmap(session, session.Work().Tracks[moment.Track], settings)) {
    return Outcome::Refused(*std::move(refusal));
  }
  settings.Start = FramesToTimecode(moment.Frame, clock.FramesPerSecond);
  settings.StopTime.clear();
  Change change(session, "New Subtitle");
  Track& track = change.EditTrack(moment.Track);
  std::vector<SubPicturePlay>& entries = track.SubStreams[*moment.Stream].SubPlays;
  const std::size_t entry = InsertByStart(entries, std::move(settings), clock.FramesPerSecond);
  ForceUnderButtons(track, entries[entry]);
  track.HasSubs = true;
  return change.Commit(SubPlayKey({moment.Track, *moment.Stream, entry}));
}

Outcome ReplaceBitmap(EditSession& session, const SubtitleMoment& moment, const std::string& file) {
  const auto* stream = moment.Stream ? FindStream(session.Work(), moment.Track, *moment.Stream) : nullptr;
  const auto entry = stream != nullptr ? EntryAt(stream->SubPlays, moment.Frame,
                                                 ClockOf(session.Work().Tracks[moment.Track]).FramesPerSecond)
                                       : std::nullopt;
  if (!entry) {
    return Outcome::Refused(MessageOf(message::SubtitleMissing, TrackKey(moment.Track)));
  }
  const SubtitlePlace place{moment.Track, *moment.Stream, *entry};
  SubPicturePlay replaced = stream->SubPlays[*entry];
  replaced.File = file;
  if (auto refusal = RefuseBitmap(session, session.Work().Tracks[moment.Track], replaced)) {
    return Outcome::Refused(*std::move(refusal));
  }
  if (stream->SubPlays[*entry].File == file) {
    return Outcome::Done(SubPlayKey(place));
  }
  Change change(session, "Replace Bitmap");
  EntryToEdit(change, place).File = file;
  return change.Commit(SubPlayKey(place));
}

Outcome SetTimes(EditSession& session, const SubtitlePlace& place, const SubtitleTimes& times) {
  if (FindEntry(session.Work(), place) == nullptr) {
    return RefuseMissing("subtitle", SubPlayKey(place));
  }
  const Track& track = session.Work().Tracks[place.Track];
  const SubtitleClock clock = ClockOf(track);
  const std::vector<SubPicturePlay>& entries = track.SubStreams[place.Stream].SubPlays;
  if (auto refusal = RefuseTimes(entries, place.Entry, times, clock)) {
    return Outcome::Refused(*std::move(refusal));
  }
  std::vector<SubPicturePlay> changed = entries;
  const std::size_t entry = PutTimes(changed, place.Entry, times, clock.FramesPerSecond);
  ForceUnderButtons(track, changed[entry]);
  const std::string key = SubPlayKey({place.Track, place.Stream, entry});
  if (changed == entries) {
    return Outcome::Done(key);
  }
  Change change(session, "Subtitle Times");
  change.EditTrack(place.Track).SubStreams[place.Stream].SubPlays = std::move(changed);
  return change.Commit(key);
}

Outcome SetUsed(EditSession& session, const SubtitlePlace& place, bool used) {
  const SubPicturePlay* const entry = FindEntry(session.Work(), place);
  if (entry == nullptr) {
    return RefuseMissing("subtitle", SubPlayKey(place));
  }
  if (entry->Used == used) {
    return Outcome::Done(SubPlayKey(place));
  }
  if (auto refusal = used ? RefuseUse(*entry, session.Work().SourceFolder()) : std::nullopt) {
    return Outcome::Refused(*std::move(refusal));
  }
  Change change(session, used ? "Use Subtitle" : "Leave Out Subtitle");
  EntryToEdit(change, place).Used = used;
  return change.Commit(SubPlayKey(place));
}

std::optional<Message> DeselectMissing(EditSession& session, const SubtitlePlace& place) {
  const SubPicturePlay* const entry = FindEntry(session.Work(), place);
  auto refusal = entry != nullptr ? RefuseUse(*entry, session.Work().SourceFolder()) : std::nullopt;
  if (refusal) {
    static_cast<void>(SetUsed(session, place, false));
  }
  return refusal;
}

Outcome SetForcedMark(EditSession& session, const SubtitlePlace& place, bool forced) {
  const SubPicturePlay* const entry = FindEntry(session.Work(), place);
  if (entry == nullptr) {
    return RefuseMissing("subtitle", SubPlayKey(place));
  }
  const Track& track = session.Work().Tracks[place.Track];
  if (auto refusal =
          RefuseForcedMark(*entry, forced, track.HighlightPlays, TrackTimes(track).FramesPerSecond)) {
    return Outcome::Refused(*std::move(refusal));
  }
  if (entry->Forced == forced) {
    return Outcome::Done(SubPlayKey(place));
  }
  Change change(session, "Forced Mark");
  EntryToEdit(change, place).Forced = forced;
  return change.Commit(SubPlayKey(place));
}

FourColors ColorsOf(const SubPicturePlay& entry) {
  return {.Conversion = {entry.ConversionE2, entry.ConversionE1, entry.ConversionP, entry.ConversionBg},
          .Index = {entry.ColorE2, entry.ColorE1, entry.ColorP, entry.ColorBg},
          .Contrast = {entry.ContrastE2, entry.ContrastE1, entry.ContrastP, entry.ContrastBg}};
}

Outcome SpreadColors(EditSession& session, std::size_t track, std::size_t stream, const FourColors& colors,
                     SpreadColor which, bool allStreams) {
  const std::string key = allStreams ? TrackKey(track) : SubStreamKey(track, stream + 1);
  const bool there = allStreams ? FindTrack(session.Work(), track) != nullptr
                                : FindStream(session.Work(), track, stream) != nullptr;
  if (!there) {
    return RefuseMissing(allStreams ? "track" : "subtitle stream", key);
  }
  const bool conversion = which == SpreadColor::Conversion;
  if (const auto beyond = conversion ? std::nullopt : BeyondPalette(colors)) {
    return Outcome::Refused(MessageOf(message::PaletteIndexBeyond, key, *beyond));
  }
  std::vector<SubtitleStream> changed = session.Work().Tracks[track].SubStreams;
  for (std::size_t i = 0; i < changed.size(); ++i) {
    if (changed[i].Removed || (!allStreams && i != stream)) {
      continue;
    }
    for (SubPicturePlay& entry : changed[i].SubPlays) {
      conversion ? PutConversion(entry, colors) : PutDisplay(entry, colors);
    }
  }
  if (changed == session.Work().Tracks[track].SubStreams) {
    return Outcome::Done(key);
  }
  Change change(session, conversion ? "Conversion Colours" : "Display Colours");
  change.EditTrack(track).SubStreams = std::move(changed);
  return change.Commit(key);
}

}  // namespace quorvelant
