// A disc of pictures: a still menu and menu pages with buttons, a slideshow with sound, subtitles.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/bmp.h"
#include "base/timecode.h"
#include "disc_maker.h"
#include "ifo/read_back.h"
#include "model/default_structure.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/vob_walk.h"

namespace quorvelant {
namespace {

using testing::IsEmpty;

constexpr Color Paper = 0x808080;
constexpr Color Ink = 0xFFFFFF;

class PictureDisc : public testing::TestWithParam<const char*> {
 protected:
  PictureDisc() : maker_({.Standard = "PAL", .Aspect = GetParam()}) {
    maker_.Disc.Palettes.Add(Palette());
    MakeTitles();
    MakeMenus();
  }

  static Palette_P Palette() {
    Palette_P palette;
    palette.Key = "Default";
    palette.PaletteColors = {0x000000, Ink, 0x00FF00, 0x0000FF};
    return palette;
  }
  std::string Bitmap(const std::string& name, Color color) {
    Picture picture(720, 576);
    for (int y = 0; y < picture.Height; ++y) {
      for (int x = 0; x < picture.Width; ++x) {
        picture.Set(x, y, (x / 80 + y / 80) % 2 == 0 ? color : Paper);
      }
    }
    const Bytes bytes = WriteBmp(picture);
    return maker_.Temp.Write(name + ".bmp", std::string(bytes.begin(), bytes.end()));
  }
  // A track of bitmaps; a scene a picture.
  int PictureTrack(const std::string& name, const char* type, const std::vector<std::int32_t>& frames,
                   const std::vector<std::string>& sounds) {
    std::vector<std::int32_t> scenes;
    std::int32_t start = 0;
    for (const std::int32_t hold : frames) {
      scenes.push_back(start);
      start += hold;
    }
    const int index = maker_.AddTrack(name, Bitmap(name + "1", 0x4060A0), sounds, scenes);
    Track& track = maker_.Disc.Tracks[static_cast<std::size_t>(index)];
    track.TrackType = type;
    for (std::size_t i = 0; i < frames.size(); ++i) {
      if (i > 0) {
        track.VideoPlays.push_back(track.VideoPlays[0]);
        track.VideoPlays[i].File =
            Bitmap(name + std::to_string(i + 1), static_cast<Color>(0x204060 + 0x302010 * i));
      }
      track.VideoPlays[i].SlideDuration = frames[i] == 0 ? "" : FramesToTimecode(frames[i], 25);
    }
    return index;
  }
  // A subpicture on the whole screen.
  SubPicturePlay Overlay(std::int32_t startFrame, std::int32_t frames, bool forced) {
    SubPicturePlay play;
    play.ConversionP = Ink;
    play.ColorP = 1;
    play.ContrastP = 15;
    play.File = Bitmap("overlay", Ink);
    play.Start = FramesToTimecode(startFrame, 25);
    play.Duration = FramesToTimecode(frames, 25);
    play.Forced = forced;
    return play;
  }
  static HighlightPlay Buttons(std::int32_t startFrame, std::int32_t frames, int count) {
    HighlightPlay set;
    set.ButtonModes = {"wide", "letter", "pan"};
    set.StartTimeToVideo = FramesToTimecode(startFrame, 25);
    set.Duration = FramesToTimecode(frames, 25);
    set.ForcedSelect = 1;
    for (int i = 1; i <= count; ++i) {
      HighlightButton& button = set.Buttons.emplace_back();
      button.Name = "Button" + std::to_string(i);
      button.Areas.fill({60 * i, 60 * i + 40, 100, 140});
      button.Left = button.Up = "Button" + std::to_string(i == 1 ? count : i - 1);
      button.Right = button.Down = "Button" + std::to_string(i == count ? 1 : i + 1);
    }
    return set;
  }

  void MakeTitles() {
    VTS_P& set = maker_.AddSet();
    const int slides = PictureTrack("Slides", "SlideShow", {50, 75, 60}, {SampleAc3({.Seconds = 7})});
    maker_.AddTitle(set, slides);
    const int film =
        maker_.AddTrack("Film", SampleVideo({.Aspect = GetParam(), .Frames = 150, .Closed = true}),
                        {SampleAc3({.Seconds = 6})}, {0, 70});
    Track& track = maker_.Disc.Tracks[static_cast<std::size_t>(film)];
    track.HasSubs = true;
    for (int number = 0; number < 2; ++number) {
      SubtitleStream& stream = track.SubStreams.emplace_back();
      stream.StreamNumber = number;
      stream.SubPlays = {Overlay(10 + number, 30, false), Overlay(80, 40, false)};
    }
    maker_.AddTitle(set, film);
  }
  void MakeMenus() {
    // The title menu waits for ever; the root menu has two pages that wait.
    const int top = PictureTrack("TopPicture", "Still", {0}, {});
    AddOverlay(top, {Overlay(0, 25, true)}, {Buttons(0, 25, 3)});
    maker_.PlaceAll(maker_.TitleMenu(), top, maker_.Disc.Disc.Item(1)->VTSMenuInfo);
    Cell_P& waits = *maker_.TitleMenu().PG.Item(1)->Cell.Item(1);
    waits.StillTime = 255;
    Deal(waits, {"JumpTT VTS1_Title1", "JumpTT VTS1_Title2", "JumpSS vts_1, vts_ttn_1 : RootMenu"});

    VTS_P& set = *maker_.Disc.Disc.Item(2);
    const int pages = PictureTrack("Pages", "SlideShow", {36, 36}, {});
    AddOverlay(pages, {Overlay(0, 36, true), Overlay(36, 36, true)}, {Buttons(0, 36, 2), Buttons(36, 36, 2)});
    maker_.PlaceAll(DiscMaker::RootMenu(set), pages, set.VTSMenuInfo);
    for (std::size_t page = 1; page <= 2; ++page) {
      Cell_P& cell = *DiscMaker::RootMenu(set).PG.Item(page)->Cell.Item(1);
      cell.StillTime = 255;
      Deal(cell, page == 1
                     ? std::vector<std::string>{"JumpVTS_PTT VTS1_Title1_PGC1_PG2", "LinkPGN Root1_PG2"}
                     : std::vector<std::string>{"JumpVTS_PTT VTS1_Title2_PGC1_PG2", "LinkPGN Root1_PG1"});
    }
  }
  void AddOverlay(int index, const std::vector<SubPicturePlay>& overlays,
                  const std::vector<HighlightPlay>& sets) {
    Track& track = maker_.Disc.Tracks[static_cast<std::size_t>(index)];
    track.HasSubs = true;
    track.SubStreams.emplace_back().SubPlays = overlays;
    track.HasHighlights = true;
    track.HighlightPlays = sets;
  }
  static void Deal(Cell_P& cell, const std::vector<std::string>& commands) {
    for (const std::string& command : commands) {
      AddCommand(cell.ButtonCommands.emplace_back().Commands, "Button", command);
    }
  }

  DiscMaker maker_;
};

TEST_P(PictureDisc, EveryReaderAgreesAndButtonsLeadOn) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  EXPECT_THAT(maker_.Ui.Messages, IsEmpty());
  EXPECT_THAT(ReadBack(maker_.Folder, maker_.Ui), IsEmpty());
  const DiscWalk walk = WalkDisc(maker_.Folder);
  EXPECT_THAT(walk.Complaints, IsEmpty());
  EXPECT_EQ(walk.FirstPlay, "menu");
  for (const WalkedTitle& title : walk.Titles) {
    EXPECT_TRUE(title.ReachedEnd) << title.Title;
    EXPECT_EQ(title.ChaptersSeen.size(), static_cast<std::size_t>(title.Chapters)) << title.Title;
  }
  EXPECT_EQ(PressButtons(maker_.Folder, 0, {1}), "title 1 chapter 1");
  EXPECT_EQ(PressButtons(maker_.Folder, 0, {2}), "title 2 chapter 1");
  EXPECT_EQ(PressButtons(maker_.Folder, 0, {3, 1}), "title 1 chapter 2");
  EXPECT_EQ(PressButtons(maker_.Folder, 1, {2, 1}), "title 2 chapter 2");
  EXPECT_EQ(PressButtons(maker_.Folder, 1, {2, 2, 1}), "title 1 chapter 2");
  EXPECT_THAT(DecodeComplaints(TitleVobs(maker_.Folder, 1)), IsEmpty());
  const auto errors = CheckerErrors(maker_.Folder);
  if (!errors) {
    GTEST_SKIP() << "the folder's checker is not at hand";
  }
  EXPECT_THAT(*errors, IsEmpty());
}

TEST_P(PictureDisc, ButtonsOutlastThePagesThatWait) {
  for (const auto& [rules, end] :
       {std::pair{Rules::Players, 0xFFFFFFFFU}, {Rules::Classic, 25257U + 36 * 3600}}) {
    ASSERT_EQ(maker_.Author(rules).Outcome, AuthorOutcome::Done);
    const auto pages = WalkVobs({maker_.Folder + "/VTS_01_0.VOB"});
    EXPECT_EQ(pages.at(0).Field(141, 2), 1U);
    EXPECT_EQ(pages.at(0).Field(147, 4), end);
    const auto top = WalkVobs({maker_.Folder + "/VIDEO_TS.VOB"});
    ASSERT_EQ(top.size(), 1U);
    EXPECT_EQ(top.at(0).Field(147, 8), 0xFFFFFFFF'FFFFFFFFU);
    EXPECT_EQ(top.at(0).Field(161, 1), 1U);
  }
}

INSTANTIATE_TEST_SUITE_P(Aspects, PictureDisc, testing::Values("4:3", "16:9"), [](const auto& aspect) {
  return std::string(aspect.param) == "4:3" ? "Normal" : "Wide";
});

}  // namespace
}  // namespace quorvelant
