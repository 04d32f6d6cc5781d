// Whole discs of everything that shows besides motion video: subtitles, slides, stills, and menus on all of
// them, pressed by libdvdnav.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/bmp.h"
#include "base/timecode.h"
#include "disc_maker.h"
#include "ifo/read_back.h"
#include "model/default_structure.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"

namespace quorvelant {
namespace {

using testing::IsEmpty;

struct Shown {
  const char* Name;
  VideoSample Video;
  const char* DisplayMode;
  quorvelant::Rules Rule;
};

// The traditional rules but for the rounding of clocks, which brings packs closer than a sector's time, and
// for the sound that waits behind a whole unit.
Rules ClassicInStep() {
  Rules rules = Rules::Classic;
  rules.OneScrRounding = true;
  rules.AudioBetweenUnitPacks = true;
  return rules;
}

class ShownDisc : public testing::TestWithParam<Shown> {
 protected:
  ShownDisc() : maker_(GetParam().Video) {
    const bool ntsc = GetParam().Video.Standard == "NTSC";
    fps_ = ntsc ? 30 : 25;
    height_ = ntsc ? 480 : 576;
    film_ = SampleVideo(GetParam().Video);
    MakeFilm();
    MakeSlides();
    MakeMenus();
  }

  std::string Bitmap(int width, int height, std::uint32_t color) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        picture.Set(x, y, (x / 8 + y / 8) % 2 == 0 ? color : 0xFFFFFF);
      }
    }
    const Bytes bmp = WriteBmp(picture);
    return maker_.Temp.Write(fmt::format("b{}.bmp", bitmaps_++), std::string(bmp.begin(), bmp.end()));
  }

  std::string Time(int frames) const { return FramesToTimecode(frames, fps_); }

  Track& TrackOf(int index) { return maker_.Disc.Tracks[static_cast<std::size_t>(index)]; }

  void AddSubtitle(int track, std::size_t stream, int start, int frames, bool forced) {
    Track& target = TrackOf(track);
    target.HasSubs = true;
    if (target.SubStreams.size() <= stream) {
      target.SubStreams.resize(stream + 1);
      target.SubStreams.back().StreamNumber = static_cast<std::int32_t>(stream);
    }
    SubPicturePlay play;
    play.ConversionP = 0xFFFFFF;
    play.ColorP = 1;
    play.ContrastP = 15;
    play.ContrastBg = forced ? 0 : 15;
    play.X1 = 100;
    play.Y1 = 100;
    play.File = Bitmap(400, 250, 0x000000);
    play.Start = Time(start);
    play.Duration = Time(frames);
    play.Forced = forced;
    target.SubStreams[stream].SubPlays.push_back(play);
  }

  // Four buttons, two by two.
  void AddButtons(int track, int start, int frames) {
    Track& target = TrackOf(track);
    target.HasHighlights = true;
    target.DisplayMode = GetParam().DisplayMode;
    HighlightPlay& set = target.HighlightPlays.emplace_back();
    set.ButtonModes = {"wide", "letter", "pan"};
    set.StartTimeToVideo = Time(start);
    set.Duration = Time(frames);
    set.SelectionEndTime = Time(0);
    set.ForcedSelect = 1;
    set.Schemes[0].SelectionColor = {1, 2, 3, 4};
    set.Schemes[0].SelectionContrast = {15, 15, 15, 8};
    for (int i = 0; i < 4; ++i) {
      HighlightButton& button = set.Buttons.emplace_back();
      button.Name = fmt::format("B{}", i);
      button.Number = i + 1;
      button.Left = button.Right = fmt::format("B{}", i ^ 1);
      button.Up = button.Down = fmt::format("B{}", i ^ 2);
      const int x = 110 + 200 * (i % 2);
      const int y = 110 + 120 * (i / 2);
      button.Areas.fill({x, x + 150, y, y + 60});
    }
  }

  void Press(PGC_P& chain, std::size_t program, const std::vector<std::string>& commands) {
    Cell_P& cell = *chain.PG.Item(program)->Cell.Item(1);
    for (const std::string& command : commands) {
      AddCommand(cell.ButtonCommands.emplace_back().Commands, "Button", command);
    }
  }

  void MakeFilm() {
    filmTrack_ = maker_.AddTrack("Film", film_, {SampleAc3({.Seconds = 6})}, {0, 60});
    AddSubtitle(filmTrack_, 0, 10, 30, false);
    AddSubtitle(filmTrack_, 0, 60, 50, false);
    AddSubtitle(filmTrack_, 1, 60, 20, true);
  }

  void MakeSlides() {
    slideTrack_ = maker_.AddTrack("Slides", Bitmap(720, height_, 0x4060A0),
                                  {SampleAc3({.Seconds = 6}), SampleWav({.Seconds = 3.5})}, {0, 50, 80});
    Track& slides = TrackOf(slideTrack_);
    slides.TrackType = "SlideShow";
    slides.VideoPlays.emplace_back().File = Bitmap(360, height_ / 2, 0xA02040);
    slides.VideoPlays.emplace_back().File =
        SampleVideo({.Standard = GetParam().Video.Standard, .Aspect = GetParam().Video.Aspect, .Frames = 1});
    for (std::size_t i = 0; i < 3; ++i) {
      slides.VideoPlays[i].SlideDuration = Time(i == 0 ? 50 : 30);
    }
    slides.ExtendSlideForAudio = true;
    slides.ExtendFinalSubtitle = true;
    AddSubtitle(slideTrack_, 0, 20, 20, false);
    AddSubtitle(slideTrack_, 0, 50, 20, false);
    AddSubtitle(slideTrack_, 0, 85, 20, false);
  }

  void MakeMenus() {
    // The title menu: a still that waits for ever, with sound.
    stillTrack_ = maker_.AddTrack("Still", Bitmap(720, height_, 0x208040), {SampleAc3({.Seconds = 3})}, {0});
    TrackOf(stillTrack_).TrackType = "Still";
    AddSubtitle(stillTrack_, 0, 0, 100, true);
    AddButtons(stillTrack_, 0, 100);
    PGC_P& top = maker_.TitleMenu();
    maker_.PlaceAll(top, stillTrack_, maker_.Disc.Disc.Item(1)->VTSMenuInfo);
    top.PG.Item(1)->Cell.Item(1)->StillTime = 255;
    // Pages: slides, each a cell that waits.
    pageTrack_ = maker_.AddTrack("Pages", Bitmap(720, height_, 0x805020), {}, {0, 12});
    Track& pages = TrackOf(pageTrack_);
    pages.TrackType = "SlideShow";
    pages.VideoPlays.emplace_back().File = Bitmap(720, height_, 0x202080);
    pages.VideoPlays[0].SlideDuration = pages.VideoPlays[1].SlideDuration = Time(12);
    for (const int page : {0, 12}) {
      AddSubtitle(pageTrack_, 0, page, 12, true);
      AddButtons(pageTrack_, page, 12);
    }
    VTS_P& one = maker_.AddSet();
    PGC_P& root = DiscMaker::RootMenu(one);
    maker_.PlaceAll(root, pageTrack_, one.VTSMenuInfo);
    for (PG_P& program : root.PG) {
      program.Cell.Item(1)->StillTime = 255;
    }
    maker_.AddTitle(one, slideTrack_);
    // A menu in motion that loops.
    loopTrack_ = maker_.AddTrack("Loop", film_, {}, {0});
    AddSubtitle(loopTrack_, 0, 0, GetParam().Video.Frames, true);
    AddButtons(loopTrack_, 0, GetParam().Video.Frames);
    VTS_P& two = maker_.AddSet();
    PGC_P& loop = DiscMaker::RootMenu(two);
    maker_.PlaceAll(loop, loopTrack_, two.VTSMenuInfo);
    maker_.AddTitle(two, filmTrack_);
    Press(maker_.TitleMenu(), 1,
          {"JumpTT VTS1_Title1", "JumpTT VTS2_Title1", "JumpSS vts_1, vts_ttn_1 : RootMenu",
           "JumpTT VTS1_Title1"});
    PGC_P& firstRoot = DiscMaker::RootMenu(*maker_.Disc.Disc.Item(2));
    Press(firstRoot, 1,
          {"LinkPGN Root1_PG2", "JumpVTS_TT VTS1_Title1", "JumpVTS_PTT VTS1_Title1_PGC1_PG3",
           "LinkPGN Root1_PG1"});
    Press(
        firstRoot, 2,
        {"LinkPGN Root1_PG1", "JumpVTS_PTT VTS1_Title1_PGC1_PG2", "JumpSS TitleMenu", "LinkTopPG, button=2"});
    Press(loop, 1,
          {"JumpVTS_TT VTS2_Title1", "JumpVTS_PTT VTS2_Title1_PGC1_PG2", "JumpSS TitleMenu",
           "LinkTopPG, button=2"});
  }

  DiscMaker maker_;
  std::string film_;
  int fps_ = 25, height_ = 576, bitmaps_ = 0;
  int filmTrack_ = 0, slideTrack_ = 0, stillTrack_ = 0, pageTrack_ = 0, loopTrack_ = 0;
};

TEST_P(ShownDisc, EveryReaderAgreesAndEveryButtonLeadsWhereItSays) {
  const AuthorResult result = maker_.Author(GetParam().Rule);
  ASSERT_EQ(result.Outcome, AuthorOutcome::Done);
  for (const Message& message : maker_.Ui.Messages) {
    ADD_FAILURE() << message.Text << " " << message.Place;
  }
  EXPECT_THAT(ReadBack(maker_.Folder, maker_.Ui), IsEmpty());
  const DiscWalk walk = WalkDisc(maker_.Folder);
  EXPECT_THAT(walk.Complaints, IsEmpty());
  for (const WalkedTitle& title : walk.Titles) {
    EXPECT_TRUE(title.ReachedEnd) << title.Title;
    EXPECT_EQ(title.ChaptersSeen.size(), static_cast<std::size_t>(title.Chapters)) << title.Title;
  }
  struct Way {
    int Title;
    std::vector<int> Buttons;
    const char* Leads;
  };
  for (const Way& way : {Way{0, {1}, "title 1 chapter 1"}, Way{0, {2}, "title 2 chapter 1"},
                         Way{0, {3, 3}, "title 1 chapter 3"}, Way{0, {4}, "title 1 chapter 1"},
                         Way{1, {2}, "title 1 chapter 1"}, Way{1, {3}, "title 1 chapter 3"},
                         Way{1, {1, 2}, "title 1 chapter 2"}, Way{1, {4, 1, 4, 3, 2}, "title 2 chapter 1"},
                         Way{1, {1, 1, 3}, "title 1 chapter 3"}, Way{2, {1}, "title 2 chapter 1"},
                         Way{2, {2}, "title 2 chapter 2"}, Way{2, {3, 2}, "title 2 chapter 1"},
                         Way{2, {4, 2}, "title 2 chapter 2"}}) {
    EXPECT_EQ(PressButtons(maker_.Folder, way.Title, way.Buttons), way.Leads) << way.Title;
  }
  for (const int menu : {0, 1, 2}) {
    for (const auto& [keys, button] :
         {std::pair{"", 1}, {"r", 2}, {"d", 3}, {"dr", 4}, {"rdl", 3}, {"rdu", 2}}) {
      EXPECT_EQ(SelectByArrows(maker_.Folder, menu, keys), button) << menu << keys;
    }
  }
  for (const int set : {1, 2}) {
    EXPECT_THAT(DecodeComplaints(TitleVobs(maker_.Folder, set)), IsEmpty());
  }
  for (const char* menu : {"VIDEO_TS.VOB", "VTS_01_0.VOB", "VTS_02_0.VOB"}) {
    EXPECT_THAT(DecodeComplaints({maker_.Folder + "/" + menu}), IsEmpty()) << menu;
  }
  const auto errors = CheckerErrors(maker_.Folder);
  if (!errors) {
    GTEST_SKIP() << "the folder's checker is not at hand";
  }
  EXPECT_THAT(*errors, IsEmpty());
}

TEST(ShownDiscFaults, AreFoundBeforeTheFirstSector) {
  DiscMaker maker;
  const std::string slide = maker.Temp.Write("slide.bmp", "BM, and no more");
  const int track = maker.AddTrack("Slides", slide, {}, {0});
  maker.Disc.Tracks[0].TrackType = "SlideShow";
  maker.Disc.Tracks[0].HasSubs = true;
  SubPicturePlay& play = maker.Disc.Tracks[0].SubStreams.emplace_back().SubPlays.emplace_back();
  play.File = "gone.bmp";
  play.Start = play.Duration = "00:00:00:05";
  maker.AddTitle(maker.AddSet(), track);
  EXPECT_EQ(maker.Author().Outcome, AuthorOutcome::Failed);
  ASSERT_EQ(maker.Ui.Messages.size(), 2U);
  EXPECT_EQ(maker.Ui.Messages[0].Place, slide);
  EXPECT_EQ(maker.Ui.Messages[1].Place, "Track.0.Sub1 (Slides) entry 1");
  EXPECT_FALSE(std::filesystem::exists(maker.Folder));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ShownDisc,
    testing::Values(Shown{"Pal", {.Frames = 150, .Closed = true}, "Not Specified", Rules::Players},
                    Shown{"NtscWide",
                          {.Standard = "NTSC", .Aspect = "16:9", .Frames = 150, .Closed = true},
                          "Both PanScan and LetterBox",
                          Rules::Players},
                    Shown{"PalWideClassic",
                          {.Aspect = "16:9", .Frames = 150, .Closed = true},
                          "Only LetterBox",
                          ClassicInStep()},
                    Shown{"NtscClassic",
                          {.Standard = "NTSC", .Frames = 150, .Closed = true},
                          "Not Specified",
                          ClassicInStep()}),
    [](const auto& kind) { return std::string(kind.param.Name); });

}  // namespace
}  // namespace quorvelant
