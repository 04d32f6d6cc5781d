// Operations on what shows over a picture: palettes, subtitles and buttons.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/edit_words.h"
#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "desk/edit_button_fields.h"
#include "desk/frame_picture.h"
#include "edit/button_sets.h"
#include "edit/live_sources.h"
#include "edit/operation_ui.h"
#include "edit/overlays.h"
#include "edit/saved_frame.h"
#include "edit/subtitle_along.h"
#include "edit/track_viewer.h"
#include "model/keys.h"
#include "platform/platform_pictures.h"
#include "subpicture/bitmap_window.h"
#include "subpicture/subtitle_times.h"

namespace quorvelant {

namespace {

// --- colours ---

// "#rrggbb", as a project holds it: red in the low byte.
Color ColorOf(const JsonField& field) {
  const std::string text = field.Text();
  std::uint32_t value = 0;
  const char* const end = text.data() + text.size();
  if (text.size() != 7 || text.front() != '#' ||
      std::from_chars(text.data() + 1, end, value, 16).ptr != end) {
    field.Refuse("a colour as #rrggbb");
  }
  return (value >> 16U) | (value & 0xFF00U) | ((value & 0xFFU) << 16U);
}

template <std::size_t Count>
std::array<Color, Count> ColorsIn(const JsonField& field) {
  const std::vector<JsonField> list = field.List(Count);
  if (list.size() != Count) {
    field.Refuse(fmt::format("a list of {} colours", Count));
  }
  std::array<Color, Count> colors{};
  std::ranges::transform(list, colors.begin(), ColorOf);
  return colors;
}

Outcome SpreadFrom(EditSession& session, const SourceKey& stream, const EditLine& line) {
  const bool conversion = line.Has("conversion");
  line.Expect(conversion ? "stream conversion all?" : "stream colors contrast all?");
  FourColors colors;
  if (conversion) {
    colors.Conversion = ColorsIn<4>(line.At("conversion"));
  } else {
    colors.Index = QuadOf(line.At("colors"));
    colors.Contrast = QuadOf(line.At("contrast"));
  }
  return SpreadColors(session, stream.Track, stream.Number - 1, colors,
                      conversion ? SpreadColor::Conversion : SpreadColor::Display, line.FlagIf("all"));
}

// --- subtitles ---

SourceKey SourceOf(const EditDesk& desk, const JsonField& field, SourceKey::Node kind,
                   std::string_view expected) {
  const auto source = LiveSource(desk.Session.Work(), field.Text(), kind);
  if (!source) {
    field.Refuse(expected);
  }
  return *source;
}

SourceKey StreamOf(const EditDesk& desk, const EditLine& line) {
  return SourceOf(desk, line.At("stream"), SourceKey::Node::SubStream, "the key of a subtitle stream");
}

const Track& TrackOf(const EditDesk& desk, const SourceKey& source) {
  return desk.Session.Work().Tracks[source.Track];
}

SubtitlePlace PlaceOf(const EditDesk& desk, const EditLine& line) {
  const SourceKey stream = StreamOf(desk, line);
  return {stream.Track, stream.Number - 1, line.IndexOf("number")};
}

SubtitleMoment MomentOf(const EditDesk& desk, const EditLine& line) {
  const SourceKey stream = StreamOf(desk, line);
  const int rate = TrackTimes(TrackOf(desk, stream)).FramesPerSecond;
  return {stream.Track, stream.Number - 1, FrameOf(line.At("time"), rate)};
}

// What is not said is as in the stream's first subtitle; where there is none, all must be said.
SubPicturePlay SubtitleOf(const EditDesk& desk, const EditLine& line) {
  const SourceKey stream = StreamOf(desk, line);
  const auto& entries = TrackOf(desk, stream).SubStreams[stream.Number - 1].SubPlays;
  if (entries.empty()) {
    line.Expect("stream time file area conversion colors contrast");
  }
  const SubPicturePlay like = entries.empty() ? SubPicturePlay() : entries.front();
  FourColors colors = ColorsOf(like);
  colors.Conversion = line.Has("conversion") ? ColorsIn<4>(line.At("conversion")) : colors.Conversion;
  colors.Index = line.Has("colors") ? QuadOf(line.At("colors")) : colors.Index;
  colors.Contrast = line.Has("contrast") ? QuadOf(line.At("contrast")) : colors.Contrast;
  const std::vector<std::int32_t> area = line.Has("area")
                                             ? NumbersOf(line.At("area"), 4, -ScreenWidth, ScreenWidth - 1)
                                             : std::vector{like.X1, like.Y1, like.X2, like.Y2};
  return {.ConversionE2 = colors.Conversion[0],
          .ConversionE1 = colors.Conversion[1],
          .ConversionP = colors.Conversion[2],
          .ConversionBg = colors.Conversion[3],
          .ColorE2 = colors.Index[0],
          .ColorE1 = colors.Index[1],
          .ColorP = colors.Index[2],
          .ColorBg = colors.Index[3],
          .ContrastE2 = colors.Contrast[0],
          .ContrastE1 = colors.Contrast[1],
          .ContrastP = colors.Contrast[2],
          .ContrastBg = colors.Contrast[3],
          .X1 = area[0],
          .X2 = area[2],
          .Y1 = area[1],
          .Y2 = area[3],
          .SPNumber = {},
          .Start = {},
          .End = {},
          .File = LineTextOf(line.At("file")),
          .Duration = {},
          .StopTime = {}};
}

Outcome SetTimesFrom(EditDesk& desk, const EditLine& line) {
  const SubtitlePlace place = PlaceOf(desk, line);
  const int rate = TrackTimes(desk.Session.Work().Tracks[place.Track]).FramesPerSecond;
  const SubtitleTimes times{.Start = FrameOf(line.At("start"), rate),
                            .Frames = FrameOf(line.At("duration"), rate)};
  return line.FlagIf("along") ? SetTimesAlong(desk.Session, place, times)
                              : SetTimes(desk.Session, place, times);
}

// --- buttons ---

SourceKey SetOf(const EditDesk& desk, const EditLine& line) {
  return SourceOf(desk, line.At("key"), SourceKey::Node::HighStream, "the key of a set of buttons");
}

EditedSet Opened(const Track& track, const SourceKey& key) {
  return OpenSet(track, key.Number - 1, ButtonViewOf(track, OfferedViews(track).front()));
}

// A new set shows as long as the subtitle of the stream does.
EditedSet NewSetOf(const EditDesk& desk, const SourceKey& key, const EditLine& line) {
  const Track& track = TrackOf(desk, key);
  const int rate = TrackTimes(track).FramesPerSecond;
  const std::int64_t frame = line.Has("time") ? FrameOf(line.At("time"), rate) : 0;
  const SubPicturePlay* subtitle = nullptr;
  if (line.Has("stream")) {
    const SourceKey stream = StreamOf(desk, line);
    const auto& entries = TrackOf(desk, stream).SubStreams[stream.Number - 1].SubPlays;
    const auto shown = stream.Track == key.Track ? EntryAt(entries, frame, rate) : std::nullopt;
    if (!shown) {
      line.At("stream").Refuse("a stream of the track with a subtitle at the time");
    }
    subtitle = &entries[*shown];
  }
  return NewSet(track, frame, subtitle);
}

Outcome PutFrom(EditDesk& desk, const EditLine& line) {
  const auto saved = LiveSource(desk.Session.Work(), line.Text("key"), SourceKey::Node::HighStream);
  line.Expect(saved ? "key time? duration? schemes? buttons? forcedSelect? forcedAction?"
                    : "key time? stream? duration? schemes? buttons forcedSelect? forcedAction?");
  const SourceKey key = saved ? *saved
                              : SourceOf(desk, line.At("key"), SourceKey::Node::Track,
                                         "the key of a set of buttons, or of the track for a new set");
  const Track& track = TrackOf(desk, key);
  const EditedSet set = WithFields(saved ? Opened(track, key) : NewSetOf(desk, key, line), track, line);
  return PutButtons(desk.Session, key.Track, set);
}

Outcome RouteFrom(EditDesk& desk, const EditLine& line) {
  constexpr std::array<std::string_view, 2> Routes{"ring", "geometry"};
  const SourceKey key = SetOf(desk, line);
  const Route route = line.Has("route") ? static_cast<Route>(line.At("route").OneOf(Routes))
                                        : OfferedRoutes(desk.Session.RulesInForce()).front();
  return RouteButtons(desk.Session, key.Track, key.Number - 1, route);
}

// --- pictures ---

EditAnswer SaveFrameFrom(EditDesk& desk, const EditLine& line) {
  const JsonField field = line.At("track");
  const std::size_t track = SourceOf(desk, field, SourceKey::Node::Track, "the key of a track").Track;
  const Project& project = desk.Session.Work();
  const int rate = TrackTimes(project.Tracks[track]).FramesPerSecond;
  OperationUi ui(desk.Ui, Consent::None);
  const auto pictures = MakePlatformPictures();
  const auto found = PictureOfTrack(project, track, FrameOf(line.At("time"), rate), *pictures, ui);
  if (!found) {
    return GaveUp(ui);
  }
  ui.TellKept();
  const FrameFile file{
      .Path = LineTextOf(line.At("file")), .Consent = ConsentOf(line), .DryRun = desk.DryRun};
  return {SaveFrameAsTrack(desk.Session, track, found->Picture, file),
          {{"time", FramesToTimecode(found->Frame, rate)}}};
}

// A set without buttons goes away.
Outcome RemoveFrom(EditDesk& desk, const EditLine& line) {
  const SourceKey key = SetOf(desk, line);
  EditedSet set = Opened(TrackOf(desk, key), key);
  set.Buttons.clear();
  return PutButtons(desk.Session, key.Track, set);
}

constexpr std::array Words{
    EditWord{"new-palette", "name? colors",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               const auto name = line.TextIf("name");
               return NewPalette(desk.Session,
                                 name ? std::string(Trim(*name)) : ProposedPaletteName(desk.Session.Work()),
                                 ColorsIn<16>(line.At("colors")));
             }},
    EditWord{"change-palette", "name colors",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return ChangePalette(desk.Session, line.Text("name"), ColorsIn<16>(line.At("colors")));
             }},
    EditWord{"new-subtitle", "stream time file area? conversion? colors? contrast?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return NewSubtitle(desk.Session, MomentOf(desk, line), SubtitleOf(desk, line));
             }},
    EditWord{"replace-bitmap", "stream time file",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return ReplaceBitmap(desk.Session, MomentOf(desk, line), LineTextOf(line.At("file")));
             }},
    EditWord{"subtitle-times", "stream number start duration along?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer { return SetTimesFrom(desk, line); }},
    EditWord{"subtitle-used", "stream number used",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return SetUsed(desk.Session, PlaceOf(desk, line), line.At("used").Flag());
             }},
    EditWord{"subtitle-forced", "stream number forced",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return SetForcedMark(desk.Session, PlaceOf(desk, line), line.At("forced").Flag());
             }},
    EditWord{"spread-colors", "stream conversion? colors? contrast? all?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return SpreadFrom(desk.Session, StreamOf(desk, line), line);
             }},
    EditWord{"save-frame", "track time file",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer { return SaveFrameFrom(desk, line); }},
    EditWord{"put-buttons", "key time? stream? duration? schemes? buttons? forcedSelect? forcedAction?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer { return PutFrom(desk, line); }},
    EditWord{"route-buttons", "key route?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer { return RouteFrom(desk, line); }},
    EditWord{"remove-buttons", "key",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer { return RemoveFrom(desk, line); }},
};

}  // namespace

std::span<const EditWord> OverlayWords() {
  return Words;
}

}  // namespace quorvelant
