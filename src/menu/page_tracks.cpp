#include "menu/page_tracks.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "base/random.h"
#include "base/timecode.h"
#include "base/user_interface.h"
#include "disc/video_standard.h"
#include "edit/auto_route.h"
#include "edit/change.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/steps.h"
#include "edit/track_names.h"
#include "menu/letterbox.h"
#include "menu/mark_colors.h"
#include "menu/page_hold.h"
#include "model/display_mode.h"
#include "model/keys.h"
#include "model/walk.h"
#include "picture/picture.h"

namespace quorvelant {

namespace {

constexpr std::int32_t ScreenColumns = 720;
constexpr std::int32_t RestColor = 2;  // of all four pixel kinds while no button shows

struct SchemeColors {
  std::int32_t Selection;
  std::int32_t SelectionContrast;
  std::int32_t Action;
  std::int32_t ActionContrast;
};

// Thumbnails stay to be seen through their marks.
constexpr SchemeColors OfThumbnails{6, 6, 14, 6};
constexpr SchemeColors OfItems{6, 15, 14, 15};
constexpr SchemeColors OfChapterTexts{1, 10, 14, 15};
constexpr SchemeColors OfMain{1, 10, 15, 15};

// The kinds of pixels of a mark that show, and how much: the inside alone, or its soft edges too.
ColorQuad PerPixelKind(std::int32_t emphasis2, std::int32_t emphasis1, std::int32_t background, bool soft) {
  return soft ? ColorQuad{emphasis2, emphasis1, 0, background} : ColorQuad{0, 0, 0, background};
}

ColorQuad Colors(std::int32_t color, bool soft) {
  return PerPixelKind(color, color, color, soft);
}

ColorQuad Contrasts(std::int32_t contrast, bool soft) {
  const auto share = [contrast](int most) {
    return (contrast * most + FullMarkContrast / 2) / FullMarkContrast;
  };
  return PerPixelKind(share(TwoThirdsMarkContrast), share(ThirdMarkContrast), contrast, soft);
}

ColorScheme SchemeOf(const SchemeColors& colors, bool soft) {
  return {.SelectionColor = Colors(colors.Selection, soft),
          .SelectionContrast = Contrasts(colors.SelectionContrast, soft),
          .ActionColor = Colors(colors.Action, soft),
          .ActionContrast = Contrasts(colors.ActionContrast, soft)};
}

bool MarksAreFrames(const PageGroup& group) {
  return std::ranges::any_of(group.Pages, [](const MenuPage& page) {
    return std::ranges::any_of(page.Marks, [](const PageMark& mark) { return mark.Frame > 0; });
  });
}

// Soft marks show in full where they are; a box over a thumbnail stays thin.
std::array<ColorScheme, 3> SchemesOf(const PageGroup& group, const Rules& rules) {
  const MarkColors& marks = MarksOf(rules);
  const bool soft = marks.Emphasis1 != marks.Pattern;
  const auto scheme = [soft](SchemeColors colors, bool inFull) {
    if (soft && inFull) {
      colors.SelectionContrast = colors.ActionContrast = FullMarkContrast;
    }
    return SchemeOf(colors, soft);
  };
  return {scheme(OfThumbnails, MarksAreFrames(group)),
          scheme(group.Kind == PageKind::Chapter ? OfChapterTexts : OfItems, true), scheme(OfMain, true)};
}

bool IsStill(const PageGroup& group) {
  const bool ofOne = group.Kind == PageKind::Root || group.Kind == PageKind::Audio;
  return ofOne || (group.Kind == PageKind::TitleChoice && group.Pages.size() == 1);
}

bool IsItem(const MenuButton& button) {
  return button.Key != menu_key::Main && button.Key != menu_key::Previous && button.Key != menu_key::Next;
}

// What the page track is made from.
struct PageSource {
  const PageGroup& Group;
  std::span<const PageFiles> Files;
  bool Ntsc;
  bool Wide;
  PageHold Hold;
  const quorvelant::Rules& Rules;

  [[nodiscard]] int Rate() const { return FramesPerSecond(Ntsc ? "NTSC" : "PAL"); }
  [[nodiscard]] std::string Time(std::int64_t frames) const { return FramesToTimecode(frames, Rate()); }
  [[nodiscard]] std::string StartOf(std::size_t page) const {
    return Time(static_cast<std::int64_t>(page) * Hold.Frames);
  }
};

SubPicturePlay EntryOf(const PageSource& source, std::size_t page, bool letterbox) {
  const MarkColors& marks = MarksOf(source.Rules);
  const std::int32_t height = FullHeight(source.Ntsc);
  const std::string& sublayer = source.Files[page].Sublayer;
  SubPicturePlay entry;
  entry.ConversionP = marks.Pattern;
  entry.ConversionE1 = marks.Emphasis1;
  entry.ConversionE2 = marks.Emphasis2;
  entry.ConversionBg = marks.Background;
  entry.ColorE2 = entry.ColorE1 = entry.ColorP = entry.ColorBg = RestColor;
  entry.X2 = ScreenColumns - 1;
  entry.Y1 = letterbox ? LetterboxLine(0, height) : SublayerRise;
  entry.Y2 = letterbox ? LetterboxLine(height, height) - 1 : height;
  entry.Start = source.StartOf(page);
  entry.End = source.StartOf(page + 1);
  entry.Duration = source.Time(source.Hold.Frames);
  entry.File = letterbox ? LetterboxFileOf(sublayer) : sublayer;
  entry.Forced = true;
  return entry;
}

SubtitleStream StreamOf(const PageSource& source, std::int32_t number, std::string_view mode) {
  SubtitleStream stream;
  stream.StreamName = fmt::format("Subtitle Stream {}", number + 1);
  stream.StreamNumber = number;
  stream.DisplayMode = mode;
  for (std::size_t page = 0; page < source.Files.size(); ++page) {
    stream.SubPlays.push_back(EntryOf(source, page, number > 0));
  }
  return stream;
}

std::vector<SubtitleStream> StreamsOf(const PageSource& source) {
  if (!source.Wide) {
    return {StreamOf(source, 0, "Normal")};
  }
  return {StreamOf(source, 0, "Wide"), StreamOf(source, 1, "LetterBox")};
}

HighlightButton ButtonOf(const MenuButton& button, std::size_t number, const PageSource& source) {
  const HighlightArea area{.X1 = button.X1, .X2 = button.X2, .Y1 = button.Y1, .Y2 = button.Y2};
  HighlightButton made;
  made.Name = fmt::format("Button{}", number);
  made.Number = static_cast<std::int32_t>(number);
  made.ColorScheme = button.ColorScheme;
  made.Areas.fill(area);
  if (source.Wide) {
    const int height = FullHeight(source.Ntsc);
    made.Areas[1].Y1 = LetterboxLine(area.Y1, height);
    made.Areas[1].Y2 = LetterboxLine(area.Y2, height);
  }
  return made;
}

HighlightPlay HighlightOf(const PageSource& source, std::size_t page) {
  const MenuPage& layout = source.Group.Pages[page];
  HighlightPlay play;
  play.ButtonModes = {"wide", "letter", "pan"};
  play.Schemes = SchemesOf(source.Group, source.Rules);
  play.StartTimeToVideo = source.StartOf(page);
  play.Duration = source.Time(source.Hold.Frames);
  play.SelectionEndTime = source.Time(0);
  play.ForcedSelect = 1;
  for (const MenuButton& button : layout.Buttons) {
    play.Buttons.push_back(ButtonOf(button, play.Buttons.size() + 1, source));
  }
  const RemoteReach reach = RemoteReachOf(source.Rules);
  AutoRoute(play.Buttons, reach.Links);
  play.NumericalButtons = static_cast<std::int32_t>(play.Buttons.size());
  if (reach.NumbersAreItems) {
    play.NumericalButtons = static_cast<std::int32_t>(std::ranges::count_if(layout.Buttons, IsItem));
    play.Offset = static_cast<std::int32_t>(layout.FirstItem);
  }
  return play;
}

void FillTrack(Track& track, const std::string& name, const PageSource& source) {
  track.TrackName = name;
  track.ExtendSlideForAudio = track.ExtendFinalSubtitle = false;
  track.Aspect = source.Wide ? "16:9" : "4:3";
  track.DisplayMode = source.Wide ? display_mode::OnlyLetterBox : display_mode::NotSpecified;
  track.Scenes.clear();
  for (std::size_t page = 0; page < source.Files.size(); ++page) {
    VideoPlay& play = track.VideoPlays[page];
    play.SlideDuration = source.Hold.WaitsAlone ? std::string() : source.Time(source.Hold.Frames);
    play.DurationSet = !source.Hold.WaitsAlone;
    track.Scenes.push_back(
        {.Name = fmt::format("{}_Scene{}", name, page + 1),
         .Frame = static_cast<std::int32_t>(static_cast<std::int64_t>(page) * source.Hold.Frames),
         .Uops = {}});
    track.HighlightPlays.push_back(HighlightOf(source, page));
  }
  track.SubStreams = StreamsOf(source);
  track.HasSubs = track.HasHighlights = true;
}

// "Track_3.Subtitle2": what the files of a page are named by.
std::string StemOf(const Track& film, std::size_t filmTrack, const Rules& rules) {
  if (rules.PagesNamedByTrack) {
    return fmt::format("Track_{}", filmTrack + 1);
  }
  const auto videos = Live(film.VideoPlays);
  const std::string path = videos.empty() ? film.TrackName : videos.front()->File;
  const std::size_t slash = path.find_last_of("\\/");
  const std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
  return file.substr(0, file.rfind('.'));
}

std::string PageWord(PageKind kind, std::size_t number) {
  switch (kind) {
    case PageKind::Root:
      return ".Root";
    case PageKind::Audio:
      return ".Audio";
    case PageKind::Subtitle:
      return fmt::format(".Subtitle{}", number);
    case PageKind::Chapter:
      return fmt::format(".Chapter{}", number);
    case PageKind::TitleChoice:
      return fmt::format("VMG_Root{}", number);
  }
  return {};
}

void DropEnd(std::string_view& text, std::string_view end) {
  if (text.ends_with(end)) {
    text.remove_suffix(end.size());
  }
}

}  // namespace

bool IsPageFile(std::string_view name) {
  const bool isBitmap = name.ends_with(".bmp");
  DropEnd(name, ".bmp");
  DropEnd(name, ".LetterBox");
  DropEnd(name, ".SubLayer");
  const std::size_t last = name.find_last_not_of("0123456789");
  const std::string_view words = name.substr(0, last == std::string_view::npos ? 0 : last + 1);
  constexpr std::array<std::string_view, 4> Ends{".Root", ".Audio", ".Subtitle", ".Chapter"};
  return isBitmap && (words == "VMG_Root" ||
                      std::ranges::any_of(Ends, [&](std::string_view end) { return words.ends_with(end); }));
}

std::vector<PageFiles> PageFilesOf(const Project& project, const PageGroup& group, std::size_t filmTrack,
                                   const std::string& folder, const Rules& rules) {
  const std::string stem = group.Kind == PageKind::TitleChoice
                               ? std::string()
                               : StemOf(project.Tracks[filmTrack], filmTrack, rules);
  std::vector<PageFiles> files;
  for (std::size_t number = 1; number <= group.Pages.size(); ++number) {
    const std::string page = fmt::format("{}\\{}{}", folder, stem, PageWord(group.Kind, number));
    files.push_back({.Normal = page + ".bmp", .Sublayer = page + ".SubLayer.bmp"});
  }
  return files;
}

Outcome AddPageTrack(EditSession& session, const PageGroup& group, std::span<const PageFiles> files,
                     std::size_t filmTrack, UserInterface& ui) {
  const Rules& rules = session.RulesInForce();
  const Track& film = session.Work().Tracks[filmTrack];
  const bool ntsc = film.Standard == "NTSC";
  const PageSource source{.Group = group,
                          .Files = files,
                          .Ntsc = ntsc,
                          .Wide = group.IsWide,
                          .Hold = PageHoldOf(IsStill(group), ntsc, rules),
                          .Rules = rules};
  Change change(session, "Add Menu Pages");
  Steps steps;
  const std::size_t index = session.Work().Tracks.Count();
  const std::string name = ProposedTrackName(session.Work());
  const std::string key =
      steps.Do([&] { return NewTrack(session, IsStill(group) ? "Still" : "SlideShow", name); });
  for (std::size_t page = 0; page < files.size(); ++page) {
    const std::string play =
        page == 0 ? VideoPlayKey(index, 1) : steps.Do([&] { return AddPlay(session, VideoListKey(index)); });
    steps.Do([&] { return ImportFile(session, play, files[page].Normal, ui, Consent::None); });
  }
  if (!steps.GoOn()) {
    return steps.Refusal();
  }
  try {
    for (const PageFiles& page : files) {
      if (source.Wide) {
        WriteLetterboxSublayer(SystemPath(page.Sublayer, session.Work().SourceFolder()), rules);
      }
    }
  } catch (const PictureError& error) {
    return Outcome::Refused(error.What());
  }
  FillTrack(change.EditTrack(index), name, source);
  return change.Commit(key);
}

}  // namespace quorvelant
