// Whole discs, judged by readers nobody here wrote: two sets with films, and discs of everything that shows
// besides motion video (subtitles, slides, stills, and menus on all of them), pressed by libdvdnav.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "disc_maker.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/nav_figures.h"
#include "support/vob_walk.h"
#include "verify/read_back.h"
#include "verify/verify_disc.h"

namespace quorvelant {
namespace {

using testing::IsEmpty;

struct DiscKind {
  friend void PrintTo(const DiscKind& kind, std::ostream* out) { *out << kind.Name; }

  std::string Name;
  VideoSample Video;
  std::vector<Ac3Sample> Ac3 = {};
  std::vector<WavSample> Wav = {};
  int Chapters = 3;  // of the first title
  // Where buttons are shown as well.
  const char* DisplayMode = nullptr;
  const char* Displays = "";  // of the groups of buttons
  quorvelant::Rules Rule = Rules::Players;
};

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

// The traditional rules but for the rounding of clocks, which brings packs closer than a sector's time, and
// for the sound that waits for a whole unit.
Rules ClassicInStep() {
  Rules rules = Rules::Classic;
  rules.OneScrRounding = true;
  rules.AudioBetweenUnitPacks = true;
  return rules;
}

DiscKind Shown(const char* name, const char* standard, const char* aspect, const char* mode,
               const char* displays, const Rules& rules = Rules::Players) {
  const VideoSample video{.Standard = standard, .Aspect = aspect, .Frames = 150, .Closed = true};
  return {name, video, {}, {}, 0, mode, displays, rules};
}

const std::vector<DiscKind> ShownKinds{
    Shown("Pal", "PAL", "4:3", "Both PanScan and LetterBox", "0"),
    Shown("NtscWide", "NTSC", "16:9", "Both PanScan and LetterBox", "124"),
    Shown("PalWideClassic", "PAL", "16:9", "Only LetterBox", "12", ClassicInStep()),
    Shown("NtscWideClassic", "NTSC", "16:9", "Only PanScan", "14", ClassicInStep()),
};

class WholeDisc : public testing::TestWithParam<DiscKind> {
 protected:
  WholeDisc() : maker_(Video) {
    if (GetParam().DisplayMode == nullptr) {
      LoadFilms();
    } else {
      maker_.LoadShown(GetParam().DisplayMode);
    }
  }

  // The disc of data/films.qvp: three titles of two films with chapters; the menus loop.
  void LoadFilms() {
    std::vector<std::string> files;
    std::ranges::transform(GetParam().Ac3, std::back_inserter(files), &SampleAc3);
    std::ranges::transform(GetParam().Wav, std::back_inserter(files), &SampleWav);
    DiscMaker::Words words{{"SOUNDS", ""}, {"SCENES", ""}, {"PROGRAMS", ""}};
    for (std::size_t i = 0; i < files.size(); ++i) {
      words["SOUNDS"] +=
          fmt::format("Item=Audio Play List\nStreamNumber={}\nItem=Audio Play\nAudioFile={}\n", i, files[i]);
    }
    for (int i = 0; i < GetParam().Chapters; ++i) {
      words["SCENES"] += fmt::format("Item=Scene\nName=First_Scene{}\nSceneTime=@{}\n", i + 1,
                                     i * (Video.Frames / GetParam().Chapters));
      words["PROGRAMS"] +=
          fmt::format("Item=Program\nItem=Cell\nUsingScene=First_Scene{}\nSeamless Flag=Seamless\n", i + 1);
    }
    maker_.Link("film.m2v", SampleVideo(Video));
    maker_.Load("films.qvp", words);
  }

  void ExpectFilms(const AuthorResult& result, const DiscWalk& walk) const {
    EXPECT_EQ(walk.Titles.at(0).Chapters, GetParam().Chapters);
    for (const WalkedTitle& title : walk.Titles) {
      EXPECT_EQ(title.After, "menu");
    }
    for (const auto& [set, films] : {std::pair{1, 2}, {2, 1}}) {
      EXPECT_EQ(Decode(TitleVobs(maker_.Folder, set)).Pictures, films * Video.Frames);
    }
    EXPECT_NEAR(static_cast<double>(result.Titles[0].Frames), Video.Frames * (Video.Pulldown ? 1.25 : 1), 1);
    const NavTiming timing = Video.Standard == "NTSC" ? NavTiming{3003, 30} : NavTiming{3600, 25};
    CheckNavFigures(WalkVobs(TitleVobs(maker_.Folder, 1)), timing);
    CheckNavFigures(WalkVobs({maker_.Folder + "/VIDEO_TS.VOB"}), timing);
  }

  const VideoSample& Video = GetParam().Video;
  DiscMaker maker_;
};

TEST_P(WholeDisc, EveryReaderAgrees) {
  const AuthorResult result = maker_.Author(GetParam().Rule);
  ASSERT_EQ(result.Outcome, AuthorOutcome::Done);
  EXPECT_EQ(result.Underflows, 0);
  EXPECT_THAT(ReadBack(maker_.Folder, maker_.Ui), IsEmpty());
  const VerifyResult verified = VerifyDisc(maker_.Folder, maker_.Ui);
  for (const DiscFinding& finding : verified.Findings.All()) {
    EXPECT_EQ(finding.Kind->Level, Severity::Information) << MessageOfFinding(finding, "").Text;
  }
  for (const Message& message : maker_.Ui.Messages) {
    ADD_FAILURE() << message.Text << " " << message.Place;
  }
  const DiscWalk walk = WalkDisc(maker_.Folder);
  EXPECT_THAT(walk.Complaints, IsEmpty());
  EXPECT_EQ(walk.FirstPlay, "menu");
  EXPECT_EQ(walk.Titles.size(), 3U);
  for (const WalkedTitle& title : walk.Titles) {
    EXPECT_TRUE(title.ReachedEnd) << title.Title;
    EXPECT_EQ(title.ChaptersSeen.size(), static_cast<std::size_t>(title.Chapters)) << title.Title;
  }
  for (const auto& [name, bytes] : maker_.Files()) {
    if (name.ends_with(".VOB")) {
      EXPECT_THAT(Decode({maker_.Folder + "/" + name}).Complaints, IsEmpty()) << name;
    }
  }
  if (GetParam().DisplayMode == nullptr) {
    ExpectFilms(result, walk);
  }
}

TEST_P(WholeDisc, TheCheckerFindsNothing) {
  if (!HasChecker()) {
    GTEST_SKIP() << CheckerMissing;
  }
  ASSERT_EQ(maker_.Author(GetParam().Rule).Outcome, AuthorOutcome::Done);
  EXPECT_THAT(CheckerErrors(maker_.Folder), IsEmpty());
}

class ShownDisc : public WholeDisc {};

TEST_P(ShownDisc, EveryButtonLeadsWhereItSays) {
  ASSERT_EQ(maker_.Author(GetParam().Rule).Outcome, AuthorOutcome::Done);
  const struct {
    int Title;
    std::vector<int> Buttons;
    const char* Leads;
  } ways[] = {{0, {1}, "title 1 chapter 1"},
              {0, {2}, "title 2 chapter 1"},
              {0, {3, 3}, "title 1 chapter 3"},
              {0, {4}, "title 3 chapter 1"},
              {0, {5, 2}, "title 2 chapter 2"},
              {1, {2}, "title 1 chapter 1"},
              {1, {3}, "title 1 chapter 3"},
              {1, {5}, "title 1 chapter 2"},
              {1, {1, 2}, "title 1 chapter 2"},
              {1, {1, 5}, "title 1 chapter 1"},
              {1, {4, 1, 4, 3, 2}, "title 2 chapter 1"},
              {1, {1, 1, 3}, "title 1 chapter 3"},
              {2, {1}, "title 2 chapter 1"},
              {2, {2}, "title 2 chapter 2"},
              {2, {3, 2}, "title 2 chapter 1"},
              {2, {4, 5, 2}, "title 2 chapter 2"},
              {3, {1}, "title 3 chapter 1"},
              {3, {2, 2}, "title 2 chapter 1"},
              {3, {3, 2, 3, 3}, "title 1 chapter 3"},
              {3, {5, 1}, "title 3 chapter 1"}};
  for (const auto& way : ways) {
    EXPECT_EQ(PressButtons(maker_.Folder, way.Title, way.Buttons), way.Leads)
        << way.Title << " " << testing::PrintToString(way.Buttons);
  }
  // Buttons of the still never expire; those of a page that waits expire with its 12 frames by tradition.
  const WalkedVobu still = WalkVobs({maker_.Folder + "/VIDEO_TS.VOB"}).at(0);
  EXPECT_EQ(still.Field(147, 4), 0xFFFFFFFFU);
  EXPECT_EQ(WalkVobs({maker_.Folder + "/VTS_01_0.VOB"}).at(0).Field(147, 4),
            GetParam().Rule.ButtonsOutlastStillTime
                ? 0xFFFFFFFFU
                : 25257U + 12 * (GetParam().Video.Standard == "PAL" ? 3600 : 3003));
  const std::string displays = GetParam().Displays;
  EXPECT_EQ(fmt::format("{:x}", still.Field(155, 2)), fmt::format("{}{:0<3}", displays.size(), displays));
  for (std::size_t group = 0; group < displays.size(); ++group) {
    const char display = displays[group];
    const HighlightArea& area =
        maker_.Disc.Tracks[2].HighlightPlays[0].Buttons[0].Areas.at(display == '4'   ? 2
                                                                    : display == '2' ? 1
                                                                                     : 0);
    const std::uint64_t columns = still.Field(187 + 18 * (36 / displays.size()) * group, 3) & 0x3FFFFF;
    EXPECT_EQ(columns, static_cast<std::uint64_t>(area.X1 << 12 | area.X2)) << display;
  }
}

const auto NameOf = [](const auto& kind) { return kind.param.Name; };
INSTANTIATE_TEST_SUITE_P(Films, WholeDisc, testing::ValuesIn(Kinds), NameOf);
INSTANTIATE_TEST_SUITE_P(Shown, WholeDisc, testing::ValuesIn(ShownKinds), NameOf);
INSTANTIATE_TEST_SUITE_P(Shown, ShownDisc, testing::ValuesIn(ShownKinds), NameOf);

}  // namespace
}  // namespace quorvelant
