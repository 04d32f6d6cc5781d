// A small disc: a dry run, a run that stops anywhere, and what it says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "author/output_folder.h"
#include "disc_maker.h"
#include "support/trial.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SmallDisc : public testing::Test {
 protected:
  SmallDisc() { maker_.LoadSmall(2); }
  DiscMaker maker_{{.Width = 352, .Height = 288, .Frames = 60, .Closed = true, .KbitPerSecond = 500}};
};

TEST_F(SmallDisc, ADryRunCountsTheSameAndWritesNothing) {
  const AuthorResult dry = maker_.Author(Rules::Players, true);
  EXPECT_EQ(dry.Outcome, AuthorOutcome::Done);
  EXPECT_FALSE(std::filesystem::exists(maker_.Folder));
  const AuthorResult real = maker_.Author();
  EXPECT_EQ(dry.Bytes, real.Bytes);
  std::uint64_t bytes = 0;
  for (const auto& [name, content] : maker_.Files()) {
    bytes += content.size();
  }
  EXPECT_EQ(real.Bytes, bytes);
  EXPECT_EQ(real.Titles.at(0).Chapters, 2U);
  EXPECT_EQ(real.Titles.at(0).Frames, 60);
}

// Within one unit of work, wherever it is; the destination keeps the disc it held.
TEST_F(SmallDisc, StopsWhereverItIsAsked) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const std::string destination = maker_.Folder;
  const auto former = maker_.Files();
  AuthorOutcome outcome = AuthorOutcome::Stopped;
  int allowed = 0;
  for (; outcome == AuthorOutcome::Stopped; allowed += TrialCount(7, 1)) {
    const auto aside = OutputFolder::Prepare(destination, true, maker_.Ui);
    ASSERT_TRUE(aside);
    maker_.Folder = aside->Path();
    int asked = 0;
    maker_.Ui.StopWhen = [&] { return ++asked > allowed; };
    outcome = maker_.Author().Outcome;
    EXPECT_LE(asked, allowed + 3);
    EXPECT_EQ(std::filesystem::exists(maker_.Folder + "/VIDEO_TS.IFO"), outcome == AuthorOutcome::Done);
  }
  EXPECT_EQ(outcome, AuthorOutcome::Done);
  EXPECT_GT(allowed, static_cast<int>(former.at("VTS_01_1.VOB").size() / SectorBytes));
  EXPECT_FALSE(std::filesystem::exists(maker_.Folder));  // what was written aside
  maker_.Folder = destination;
  EXPECT_TRUE(maker_.Files() == former);
  EXPECT_THAT(maker_.Ui.Messages, IsEmpty());
}

// The commands of a menu's cell are dealt to the buttons of all sets that start within its scene, those of
// the next scene anew.
TEST_F(SmallDisc, CommandsAreDealtToButtonsInTheirOrder) {
  HighlightPlay set;
  set.Buttons.resize(2);
  for (const char* start : {"00:00:01:00", "00:00:00:05", "00:00:02:00"}) {
    set.StartTimeToVideo = start;
    maker_.Disc.Tracks[0].HighlightPlays.push_back(set);
  }
  for (Cell_P& cell : maker_.Disc.Disc.Item(2)->Lang.Item(1)->PGC.Item(1)->PG.Item(1)->Cell) {
    for (const char* hex : {"1", "2", "3"}) {
      cell.ButtonCommands.emplace_back().Commands.emplace_back().CommandHex = hex;
    }
  }
  const DiscPlan plan = PlanDisc(maker_.Disc, Rules::Players, maker_.Ui);
  const auto& sets = plan.Sets.at(0).Menu.Inputs.at(0).Highlights;
  ASSERT_EQ(sets.size(), 3U);
  EXPECT_THAT(sets[0].CommandHex, ElementsAre("1", "2"));
  EXPECT_THAT(sets[1].CommandHex, ElementsAre("3"));
  EXPECT_THAT(sets[2].CommandHex, ElementsAre("1", "2"));
}

TEST_F(SmallDisc, WithoutTitlesNothingIsCompleted) {
  maker_.Disc.Disc.Item(2)->Title.Remove(1);
  EXPECT_EQ(maker_.Author().Outcome, AuthorOutcome::NoTitles);
  ASSERT_EQ(maker_.Ui.Messages.size(), 1U);
  EXPECT_EQ(maker_.Ui.Messages[0].Text,
            "There are NO titles in your DVD - please drag and drop track scenes onto a title PGC");
  EXPECT_FALSE(std::filesystem::exists(maker_.Folder + "/VIDEO_TS.IFO"));
}

}  // namespace
}  // namespace quorvelant
