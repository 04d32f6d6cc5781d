// Whole small discs, judged by readers nobody here wrote.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "author/output_folder.h"
#include "disc_maker.h"
#include "model/default_structure.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/nav_figures.h"
#include "support/trial.h"
#include "support/vob_walk.h"
#include "verify/read_back.h"

namespace quorvelant {
namespace {

using testing::IsEmpty;

struct DiscKind {
  std::string Name;
  VideoSample Video;
  std::vector<Ac3Sample> Ac3;
  std::vector<WavSample> Wav = {};
  int Chapters = 3;  // of the first title

  std::vector<std::string> Sounds() const {
    std::vector<std::string> files;
    std::ranges::transform(Ac3, std::back_inserter(files), &SampleAc3);
    std::ranges::transform(Wav, std::back_inserter(files), &SampleWav);
    return files;
  }
};

void PrintTo(const DiscKind& kind, std::ostream* out) {
  *out << kind.Name;
}

constexpr double Long = 12;  // seconds: longer than the films

const std::vector<DiscKind> Kinds{
    {"PalClosedGops", {.Frames = 300, .Closed = true}, {{.Seconds = Long}}},
    {"PalWideOpenGops",
     {.Aspect = "16:9", .Frames = 300, .GopLength = 15},
     {{.Channels = 6, .Kbps = 448, .Seconds = Long}},
     {{.Seconds = Long}}},
    {"NtscPulldown", {.Standard = "NTSC", .Frames = 288, .Pulldown = true}, {{.Seconds = Long}}},
    {"NtscInterlaced",
     {.Standard = "NTSC", .Frames = 330, .GopLength = 15, .Closed = true, .Interlaced = true},
     {}},
    {"NtscWideLongGops",
     {.Standard = "NTSC", .Aspect = "16:9", .Frames = 360, .GopLength = 18, .BFrames = 2},
     {{.Channels = 1, .Kbps = 96, .Seconds = Long}},
     {{.Bits = 24, .Seconds = Long}}},
    {"PalIntraOnly",
     {.Frames = 280, .GopLength = 1, .BFrames = 0, .Closed = true, .KbitPerSecond = 6000},
     {{.Seconds = Long}}},
    {"PalSmallManyChapters",
     {.Width = 352, .Height = 288, .Frames = 1000, .GopLength = 10, .Closed = true, .KbitPerSecond = 800},
     {},
     {},
     99},
};

class WholeDisc : public testing::TestWithParam<DiscKind> {
 protected:
  // Two title sets: three titles of a film with chapters, and a second film; both menus loop.
  WholeDisc() : maker_(GetParam().Video) {
    const std::string film = SampleVideo(GetParam().Video);
    const auto sounds = GetParam().Sounds();
    const int menu = maker_.AddTrack("Menu", film, {}, {0});
    std::vector<std::int32_t> marks;
    for (int i = 0; i < GetParam().Chapters; ++i) {
      marks.push_back(i * (GetParam().Video.Frames / GetParam().Chapters));
    }
    const int first = maker_.AddTrack("First", film, sounds, marks);
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
  EXPECT_EQ(walk.Titles[0].Chapters, GetParam().Chapters);
  const VideoSample& film = GetParam().Video;
  for (const auto& [set, films] : {std::pair{1, 2}, {2, 1}}) {
    const Decoded decoded = Decode(TitleVobs(maker_.Folder, set));
    EXPECT_THAT(decoded.Complaints, IsEmpty());
    EXPECT_EQ(decoded.Pictures, films * film.Frames);
  }
  const bool ntsc = film.Standard == "NTSC";
  EXPECT_NEAR(static_cast<double>(result.Titles[0].Frames), film.Frames * (film.Pulldown ? 1.25 : 1), 1);
  const NavTiming timing{ntsc ? 3003 : 3600, ntsc ? 30 : 25};
  CheckNavFigures(WalkVobs(TitleVobs(maker_.Folder, 1)), timing);
  CheckNavFigures(WalkVobs({maker_.Folder + "/VIDEO_TS.VOB"}), timing);
}

TEST_P(WholeDisc, TheCheckerFindsNothing) {
  if (!HasChecker()) {
    GTEST_SKIP() << CheckerMissing;
  }
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  EXPECT_THAT(CheckerErrors(maker_.Folder), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, WholeDisc, testing::ValuesIn(Kinds),
                         [](const auto& kind) { return kind.param.Name; });

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
    const int track = maker_.AddTrack("Film", SampleVideo(maker_.Video), {SampleAc3({})}, {0, 30});
    maker_.AddTitle(maker_.AddSet(), track);
  }
  DiscMaker maker_{{.Width = 352, .Height = 288, .Frames = 60, .Closed = true, .KbitPerSecond = 500}};
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

// Within one unit of work, wherever it is; the destination keeps the disc it held.
TEST_F(SmallDisc, StopsWhereverItIsAsked) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const std::string destination = maker_.Folder;
  const auto former = FilesOf(destination);
  AuthorOutcome outcome = AuthorOutcome::Stopped;
  int allowed = 0;
  for (; outcome == AuthorOutcome::Stopped; allowed += TrialCount(7, 1)) {
    const auto aside = OutputFolder::Prepare(destination, true, maker_.Ui);
    ASSERT_TRUE(aside);
    maker_.Folder = aside->Path();
    int asked = 0;
    maker_.Ui.StopWhen = [&] { return ++asked > allowed; };
    outcome = maker_.Author().Outcome;
    EXPECT_LE(asked, allowed + 2);
    EXPECT_EQ(std::filesystem::exists(maker_.Folder + "/VIDEO_TS.IFO"), outcome == AuthorOutcome::Done);
  }
  EXPECT_EQ(outcome, AuthorOutcome::Done);
  EXPECT_GT(allowed, static_cast<int>(former.at("VTS_01_1.VOB").size() / SectorBytes));
  EXPECT_TRUE(FilesOf(destination) == former);
  EXPECT_FALSE(std::filesystem::exists(maker_.Folder));  // what was written aside
  EXPECT_THAT(maker_.Ui.Messages, IsEmpty());
}

// The commands of a menu's cell are dealt to the buttons of all sets that start within its scene, those of
// the next scene anew.
TEST_F(SmallDisc, CommandsAreDealtToButtonsInTheirOrder) {
  const int menu = maker_.AddTrack("Menu", SampleVideo(maker_.Video), {}, {0, 40});
  HighlightPlay set;
  set.Buttons.resize(2);
  maker_.Disc.Tracks[1].HighlightPlays = {set, set, set};
  maker_.Disc.Tracks[1].HighlightPlays[0].StartTimeToVideo = "00:00:01:00";
  maker_.Disc.Tracks[1].HighlightPlays[1].StartTimeToVideo = "00:00:00:05";
  maker_.Disc.Tracks[1].HighlightPlays[2].StartTimeToVideo = "00:00:02:00";
  maker_.PlaceAll(maker_.TitleMenu(), menu, maker_.Disc.Disc.Item(1)->VTSMenuInfo);
  for (const std::size_t scene : {1U, 2U}) {
    for (const char* hex : {"1", "2", "3"}) {
      AddCommand(maker_.TitleMenu().PG.Item(scene)->Cell.Item(1)->ButtonCommands.emplace_back().Commands,
                 "Button", "");
      maker_.TitleMenu().PG.Item(scene)->Cell.Item(1)->ButtonCommands.back().Commands[0].CommandHex = hex;
    }
  }
  const DiscPlan plan = PlanDisc(maker_.Disc, Rules::Players, maker_.Ui);
  const auto& sets = plan.Manager.Menu.Inputs.at(0).Highlights;
  ASSERT_EQ(sets.size(), 3U);
  EXPECT_THAT(sets[0].CommandHex, testing::ElementsAre("1", "2"));
  EXPECT_THAT(sets[1].CommandHex, testing::ElementsAre("3"));
  EXPECT_THAT(sets[2].CommandHex, testing::ElementsAre("1", "2"));
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

}  // namespace
}  // namespace quorvelant
