#include "ui/button_shade.h"

#include <fmt/format.h>

#include <QBuffer>
#include <QImage>
#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

#include "base/file_text.h"
#include "base/text.h"
#include "check/track_times.h"
#include "edit/change.h"
#include "edit/display_maps.h"
#include "edit/overlays.h"
#include "edit/segments.h"
#include "edit/source_paths.h"
#include "edit/track_viewer.h"
#include "model/keys.h"
#include "model/walk.h"
#include "subpicture/bitmap_window.h"
#include "subpicture/subtitle_times.h"
#include "subpicture/unit_reader.h"

namespace quorvelant {

namespace {

constexpr Color Black = 0;
constexpr std::array<Color, 4> Others{0xFFFFFF, 0x808080, 0xFF0000, 0x00FF00};

bool ShowsIn(const Track& track, ViewMode view, std::int64_t frame) {
  const int rate = TrackTimes(track).FramesPerSecond;
  return std::ranges::any_of(StreamsIn(view, track), [&](std::size_t stream) {
    return EntryAt(track.SubStreams[stream].SubPlays, frame, rate).has_value();
  });
}

// A mode for a new stream that shows in the view, and in others if it can.
std::string_view ModeFor(ViewMode view, const Track& track) {
  const auto views = OfferedViews(track);
  const bool hasLetter = std::ranges::find(views, ViewMode::LetterBox) != views.end();
  switch (view) {
    case ViewMode::Pan:
      return "Pan";
    case ViewMode::LetterBox:
      return "LetterBox";
    case ViewMode::Wide:
      return hasLetter ? "Wide/Letter" : "Wide";
    case ViewMode::Normal:
      break;
  }
  return {};
}

// The first stream of the view; a new one where there is none.
Outcome StreamFor(EditSession& session, std::size_t track, ViewMode view) {
  const auto streams = StreamsIn(view, session.Work().Tracks[track]);
  if (!streams.empty()) {
    return Outcome::Done(SubStreamKey(track, streams.front() + 1));
  }
  Outcome added = AddSubtitles(session, TrackKey(track));
  const std::string_view mode = ModeFor(view, session.Work().Tracks[track]);
  if (!added.IsDone() || mode.empty()) {
    return added;
  }
  const std::string key = added.Key;
  return SetSubtitles(session, key, [mode](SubtitleStream& stream) { stream.DisplayMode = mode; });
}

// The code whose pixels the selection colours: the background's where it can.
PixelCode ShadeCode(const ColorScheme& scheme) {
  for (const PixelCode code :
       {PixelCode::Background, PixelCode::Pattern, PixelCode::Emphasis1, PixelCode::Emphasis2}) {
    if (scheme.SelectionContrast.at(QuadPlace(code)) > 0) {
      return code;
    }
  }
  return PixelCode::Background;
}

SubPicturePlay ShadeEntry(const std::string& file, const ColorScheme& scheme, bool ntsc) {
  SubPicturePlay entry;
  entry.File = file;
  entry.Forced = true;
  entry.X2 = ScreenWidth - 1;
  entry.Y2 = ScreenHeight(ntsc) - 1;
  const PixelCode code = ShadeCode(scheme);
  entry.ConversionBg = code == PixelCode::Background ? Black : Others[0];
  entry.ConversionP = code == PixelCode::Pattern ? Black : Others[1];
  entry.ConversionE1 = code == PixelCode::Emphasis1 ? Black : Others[2];
  entry.ConversionE2 = code == PixelCode::Emphasis2 ? Black : Others[3];
  return entry;
}

// PGCs that play the track show its new streams.
void MapStreams(Change& change, std::size_t track) {
  std::vector<std::tuple<std::size_t, std::string, bool>> playing;
  for (const auto& at : LivePgcs(change.Work())) {
    if (std::ranges::any_of(LiveCells(*at.Chain), [track](const Cell_P* cell) {
          return std::cmp_equal(cell->SegmentUsed, track);
        })) {
      playing.emplace_back(at.EntryNumber, at.Key(), at.In() == Domain::Menu);
    }
  }
  for (const auto& [entry, key, isMenu] : playing) {
    Project& project = change.Touch({Part::OfEntry(entry)});
    MapDisplayModes(*FindPgc(project.Disc, key), project.Tracks[track], isMenu);
  }
}

// A file below the project's folder moves with it.
std::string HeldPath(const EditSession& session, const std::string& path) {
  namespace fs = std::filesystem;
  const std::string source = session.Work().SourceFolder();
  if (!source.empty() && !session.File().empty()) {
    const fs::path held = fs::path(path).lexically_relative(fs::absolute(source).lexically_normal());
    if (!held.empty() && *held.begin() != "..") {
      return held.generic_string();
    }
  }
  return PathFrom(session.Work().ScriptFile, path);
}

std::string ShadeBytes(int lines) {
  QImage image(ScreenWidth, lines, QImage::Format_RGB888);
  image.fill(Qt::black);
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return buffer.data().toStdString();
}

}  // namespace

bool LacksShade(const Track& track, std::int64_t frame) {
  return std::ranges::any_of(OfferedViews(track),
                             [&](ViewMode view) { return !ShowsIn(track, view, frame); });
}

Outcome AddShade(EditSession& session, const ShadeSpan& span, const std::string& file,
                 const ColorScheme& scheme) {
  Change change(session, "New Button");
  const std::size_t streamsBefore = session.Work().Tracks[span.Track].SubStreams.size();
  for (const ViewMode view : OfferedViews(session.Work().Tracks[span.Track])) {
    if (ShowsIn(session.Work().Tracks[span.Track], view, span.Start)) {
      continue;
    }
    Outcome stream = StreamFor(session, span.Track, view);
    const auto key = stream.IsDone() ? ParseSourceKey(stream.Key) : std::nullopt;
    if (!key) {
      return stream;
    }
    const std::size_t number = key->Number - 1;
    const SubPicturePlay entry =
        ShadeEntry(file, scheme, TrackTimes(session.Work().Tracks[span.Track]).IsNtsc());
    if (Outcome made = NewSubtitle(session, {span.Track, number, span.Start}, entry); !made.IsDone()) {
      return made;
    }
    const Track& track = session.Work().Tracks[span.Track];
    const auto place =
        EntryAt(track.SubStreams[number].SubPlays, span.Start, TrackTimes(track).FramesPerSecond);
    // Where it cannot last so long, for another subtitle, it lasts as long as it can.
    static_cast<void>(SetTimes(session, {span.Track, number, *place}, {span.Start, span.Frames}));
  }
  if (session.Work().Tracks[span.Track].SubStreams.size() > streamsBefore) {
    MapStreams(change, span.Track);
  }
  return change.Commit(TrackKey(span.Track));
}

ColorScheme ShadeScheme() {
  constexpr std::int32_t Red = 5;
  constexpr std::int32_t Yellow = 8;
  constexpr std::int32_t Half = 7;
  ColorScheme scheme;
  scheme.SelectionColor.fill(Yellow);
  scheme.SelectionContrast.fill(Half);
  scheme.ActionColor.fill(Red);
  scheme.ActionContrast.fill(Half + 2);
  return scheme;
}

std::string ShadeFile(const EditSession& session, std::size_t track, std::string& why) {
  const Project& project = session.Work();
  std::filesystem::path folder = std::filesystem::path(session.File()).parent_path();
  if (session.File().empty()) {
    for (const VideoPlay& play : project.Tracks[track].VideoPlays) {
      if (!play.Removed && !play.File.empty() && folder.empty()) {
        folder = std::filesystem::path(SystemPath(play.File, project.SourceFolder())).parent_path();
      }
    }
  }
  const int lines = ScreenHeight(TrackTimes(project.Tracks[track]).IsNtsc());
  const std::string content = ShadeBytes(lines);
  for (int number = 0; number < 100; ++number) {
    const std::string name = number == 0 ? fmt::format("button-shade-{}.png", lines)
                                         : fmt::format("button-shade-{}-{}.png", lines, number);
    const std::string path = (folder / name).string();
    std::error_code fault;
    if (!std::filesystem::exists(path, fault)) {
      const int refusal = WriteAside(path, content);
      why = refusal == 0 ? std::string() : path + ": " + std::generic_category().message(refusal);
      return refusal == 0 ? HeldPath(session, path) : std::string();
    }
    if (ReadWhole(path, content.size()) == content) {
      return HeldPath(session, path);
    }
  }
  why = folder.string() + ": no name is free";
  return {};
}

}  // namespace quorvelant
