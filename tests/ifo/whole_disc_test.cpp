// Whole small discs, judged by readers nobody here wrote.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "disc_maker.h"
#include "ifo/read_back.h"
#include "model/default_structure.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/nav_figures.h"
#include "support/vob_walk.h"

namespace quorvelant {
namespace {

using testing::IsEmpty;

struct DiscKind {
  const char* Name;
  VideoSample Video;
  std::vector<std::string> (*Sounds)();
};

std::vector<std::string> Silence() {
  return {};
}
std::vector<std::string> OneAc3() {
  return {SampleAc3({.Seconds = 12})};
}
std::vector<std::string> Ac3AndPcm() {
  return {SampleAc3({.Channels = 6, .Kbps = 448, .Seconds = 12}), SampleWav({.Seconds = 12})};
}

std::vector<std::string> MonoAndFineSound() {
  return {SampleAc3({.Channels = 1, .Kbps = 96, .Seconds = 12}), SampleWav({.Bits = 24, .Seconds = 12})};
}

const std::vector<DiscKind> Kinds{
    {"PalClosedGops", {.Frames = 300, .Closed = true}, &OneAc3},
    {"PalWideOpenGops", {.Aspect = "16:9", .Frames = 300, .GopLength = 15}, &Ac3AndPcm},
    {"NtscPulldown", {.Standard = "NTSC", .Frames = 288, .Pulldown = true}, &OneAc3},
    {"NtscInterlaced",
     {.Standard = "NTSC", .Frames = 330, .GopLength = 15, .Closed = true, .Interlaced = true},
     &Silence},
    {"NtscWideLongGops",
     {.Standard = "NTSC", .Aspect = "16:9", .Frames = 360, .GopLength = 18, .BFrames = 2},
     &MonoAndFineSound},
    {"PalIntraOnly",
     {.Frames = 280, .GopLength = 1, .BFrames = 0, .Closed = true, .KbitPerSecond = 6000},
     &OneAc3},
};

class WholeDisc : public testing::TestWithParam<DiscKind> {
 protected:
  // Two title sets: three titles of a film with chapters, and a second film; both menus loop.
  WholeDisc() : maker_(GetParam().Video) {
    const std::string film = SampleVideo(GetParam().Video);
    const auto sounds = GetParam().Sounds();
    const int menu = maker_.AddTrack("Menu", film, {}, {0});
    const int first = maker_.AddTrack("First", film, sounds, {0, 100, 180});
    const int second = maker_.AddTrack("Second", film, sounds, {0});
    maker_.PlaceAll(maker_.TitleMenu(), menu, maker_.Disc.Disc.Item(1)->VTSMenuInfo);
    VTS_P& one = maker_.AddSet();
    maker_.PlaceAll(DiscMaker::RootMenu(one), menu, one.VTSMenuInfo);
    maker_.AddTitle(one, first);
    maker_.AddTitle(one, second);
    VTS_P& two = maker_.AddSet();
    maker_.AddTitle(two, first);
  }

  DiscMaker maker_;
};

TEST_P(WholeDisc, EveryReaderAgrees) {
  const AuthorResult result = maker_.Author();
  ASSERT_EQ(result.Outcome, AuthorOutcome::Done);
  EXPECT_THAT(maker_.Ui.Messages, IsEmpty());
  EXPECT_EQ(result.Titles.size(), 3U);
  EXPECT_EQ(result.Underflows, 0);
  EXPECT_THAT(ReadBack(maker_.Folder, maker_.Ui), IsEmpty());

  const DiscWalk walk = WalkDisc(maker_.Folder);
  EXPECT_THAT(walk.Complaints, IsEmpty());
  EXPECT_EQ(walk.FirstPlay, "menu");
  ASSERT_EQ(walk.Titles.size(), 3U);
  for (const WalkedTitle& title : walk.Titles) {
    EXPECT_TRUE(title.ReachedEnd) << title.Title;
    EXPECT_EQ(title.ChaptersSeen.size(), static_cast<std::size_t>(title.Chapters)) << title.Title;
    EXPECT_EQ(title.After, "menu");
  }
  for (const int set : {1, 2}) {
    EXPECT_THAT(DecodeComplaints(TitleVobs(maker_.Folder, set)), IsEmpty());
  }
  const auto errors = CheckerErrors(maker_.Folder);
  if (!errors) {
    GTEST_SKIP() << "the folder's checker is not at hand";
  }
  EXPECT_THAT(*errors, IsEmpty());
}

TEST_P(WholeDisc, NavigationPacksNameThePlacesThatAreThere) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const bool ntsc = GetParam().Video.Standard == "NTSC";
  const NavTiming timing{ntsc ? 3003 : 3600, ntsc ? 30 : 25};
  CheckNavFigures(WalkVobs(TitleVobs(maker_.Folder, 1)), timing);
  CheckNavFigures(WalkVobs({maker_.Folder + "/VIDEO_TS.VOB"}), timing);
}

INSTANTIATE_TEST_SUITE_P(Kinds, WholeDisc, testing::ValuesIn(Kinds),
                         [](const auto& kind) { return std::string(kind.param.Name); });

std::map<std::string, std::string> FilesOf(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files[entry.path().filename().string()] = TempFolder::Read(entry.path());
  }
  return files;
}

class SmallDisc : public testing::Test {
 protected:
  SmallDisc() {
    const int track =
        maker_.AddTrack("Film", SampleVideo({.Frames = 60, .Closed = true}), {SampleAc3({})}, {0, 30});
    maker_.AddTitle(maker_.AddSet(), track);
  }
  DiscMaker maker_;
};

TEST_F(SmallDisc, TwiceGivesTheSameBytes) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const auto once = FilesOf(maker_.Folder);
  maker_.Folder = maker_.Temp / "another place";
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  EXPECT_EQ(FilesOf(maker_.Folder), once);
}

TEST_F(SmallDisc, ADryRunCountsTheSameAndWritesNothing) {
  const AuthorResult dry = maker_.Author(Rules::Players, true);
  EXPECT_EQ(dry.Outcome, AuthorOutcome::Done);
  EXPECT_FALSE(std::filesystem::exists(maker_.Folder));
  const AuthorResult real = maker_.Author();
  EXPECT_EQ(dry.Bytes, real.Bytes);
  std::uint64_t bytes = 0;
  for (const auto& entry : std::filesystem::directory_iterator(maker_.Folder)) {
    bytes += entry.file_size();
  }
  EXPECT_EQ(real.Bytes, bytes);
  EXPECT_EQ(real.Titles.at(0).Chapters, 2U);
  EXPECT_EQ(real.Titles.at(0).Frames, 60);
}

TEST_F(SmallDisc, StopsWhereverItIsAsked) {
  int allowed = 0;
  AuthorOutcome outcome = AuthorOutcome::Stopped;
  for (; outcome == AuthorOutcome::Stopped && allowed < 100000; allowed += allowed < 50 ? 1 : 97) {
    int asked = 0;
    maker_.Ui.StopWhen = [&] { return ++asked > allowed; };
    outcome = maker_.Author().Outcome;
    EXPECT_LE(asked, allowed + 2);  // it ends within one unit of work
    EXPECT_TRUE(outcome == AuthorOutcome::Stopped || outcome == AuthorOutcome::Done);
    EXPECT_EQ(std::filesystem::exists(maker_.Folder + "/VIDEO_TS.IFO"), outcome == AuthorOutcome::Done);
  }
  EXPECT_EQ(outcome, AuthorOutcome::Done);
  EXPECT_GT(allowed, 20);
  EXPECT_THAT(maker_.Ui.Messages, IsEmpty());
}

// A motion menu with two sets of buttons; the commands of its cell are dealt to both.
TEST_F(SmallDisc, ButtonsLeadWhereTheirCommandsSay) {
  const int menu = maker_.AddTrack("Menu", SampleVideo({.Frames = 100, .Closed = true}), {}, {0});
  HighlightPlay set;
  set.StartTimeToVideo = "00:00:00:00";
  set.Duration = "00:00:01:00";
  for (int i = 1; i <= 2; ++i) {
    HighlightButton& button = set.Buttons.emplace_back();
    button.Name = "Button" + std::to_string(i);
    button.Areas.fill({100 * i, 100 * i + 80, 100, 140});
    button.Left = button.Up = "Button1";
    button.Right = button.Down = "Button2";
  }
  maker_.Disc.Tracks[1].HighlightPlays = {set, set};
  maker_.Disc.Tracks[1].HighlightPlays[1].StartTimeToVideo = "00:00:02:00";
  maker_.AddTitle(maker_.AddSet(), 0);
  maker_.PlaceAll(maker_.TitleMenu(), menu, maker_.Disc.Disc.Item(1)->VTSMenuInfo);
  auto& plays = maker_.TitleMenu().PG.Item(1)->Cell.Item(1)->ButtonCommands;
  plays.resize(2);
  AddCommand(plays[0].Commands, "Button", "JumpTT VTS1_Title1");
  AddCommand(plays[0].Commands, "Button", "JumpTT VTS2_Title1");
  AddCommand(plays[1].Commands, "Button", "LinkPGCN Top");
  AddCommand(plays[1].Commands, "Button", "JumpTT VTS2_Title1");
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  EXPECT_EQ(PressButtons(maker_.Folder, 0, {1}), "title 1 chapter 1");
  EXPECT_EQ(PressButtons(maker_.Folder, 0, {2}), "title 2 chapter 1");

  const auto vobus = WalkVobs({maker_.Folder + "/VIDEO_TS.VOB"});
  std::vector<std::uint64_t> status;
  for (const WalkedVobu& vobu : vobus) {
    status.push_back(vobu.Field(141, 2));
  }
  // VOBUs of ten frames: the sets last 25 frames each, from frame 0 and from frame 50.
  EXPECT_THAT(status, testing::ElementsAre(1, 2, 2, 0, 0, 1, 2, 2, 0, 0));
  EXPECT_EQ(vobus[5].Field(143, 4), 25257U + 50 * 3600);
  EXPECT_EQ(vobus[5].Field(187 + 10, 8) >> 48, 0x2004U);       // LinkPGCN
  EXPECT_EQ(vobus[5].Field(187 + 18 + 10, 8) >> 48, 0x3002U);  // JumpTT
  const auto errors = CheckerErrors(maker_.Folder);
  if (!errors) {
    GTEST_SKIP() << "the folder's checker is not at hand";
  }
  EXPECT_THAT(*errors, IsEmpty());
}

TEST_F(SmallDisc, StatusWords) {
  maker_.Author();
  EXPECT_THAT(
      maker_.Ui.StatusWords,
      testing::ElementsAre("Generating VTS 01 LanguageUnits", "Generating VTS 01 Title",
                           "Writing VOBID: 1 of 1", "Generating VIDEO_TS LanguageUnits", "DVD Completed"));
}

TEST_F(SmallDisc, WithoutTitlesNothingIsCompleted) {
  maker_.Disc.Disc.Item(2)->Title.Remove(1);
  EXPECT_EQ(maker_.Author().Outcome, AuthorOutcome::NoTitles);
  ASSERT_EQ(maker_.Ui.Messages.size(), 1U);
  EXPECT_EQ(maker_.Ui.Messages[0].Title, "No Title Error");
  EXPECT_EQ(maker_.Ui.Messages[0].Text,
            "There are NO titles in your DVD - please drag and drop track scenes onto a title PGC");
  EXPECT_FALSE(std::filesystem::exists(maker_.Folder + "/VIDEO_TS.IFO"));
}

TEST_F(SmallDisc, AMissingSourceIsToldBeforeTheFirstSector) {
  maker_.Disc.Tracks[0].VideoPlays[0].File = "C:\\gone\\film.m2v";
  maker_.Disc.Tracks[0].AudioStreams[0].AudioPlays[0].File = maker_.Temp.Path().string();
  EXPECT_EQ(maker_.Author().Outcome, AuthorOutcome::Failed);
  ASSERT_EQ(maker_.Ui.Messages.size(), 2U);
  EXPECT_EQ(maker_.Ui.Messages[0].Text, "The file C:/gone/film.m2v does not exist");
  EXPECT_EQ(maker_.Ui.Messages[0].Place, "Track.0.Video1");
  EXPECT_EQ(maker_.Ui.Messages[1].Text, maker_.Temp.Path().string() + " is not a file");
  EXPECT_EQ(maker_.Ui.Messages[1].Place, "Track.0.Audio1.AudioPlay1");
  EXPECT_FALSE(std::filesystem::exists(maker_.Folder));
}

}  // namespace
}  // namespace quorvelant
