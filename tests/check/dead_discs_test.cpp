// Each dead disc as `check` and `author` tell it by both sets of rules, and readers that complain of the disc
// made by tradition.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <sstream>

#include "app/command_form.h"
#include "base/text.h"
#include "dead_disc_rows.h"
#include "support/disc_judges.h"
#include "support/disc_walk.h"
#include "support/recording_ui.h"

namespace quorvelant::dead {
namespace {

class DeadDiscs : public testing::TestWithParam<Row> {
 protected:
  // What a command tells: severity, code and place of each finding.
  std::string Told(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin() + 1, Folder / "p.qvp");
    RecordingUi ui;
    ui.Unattended = true;
    std::ostringstream out;
    Status = RunCommandForm(arguments, ui, out, out, [this](const std::string& name) {
      return name.starts_with("XDG_") ? Folder / name : std::string();
    });
    std::string words;
    Texts.clear();
    for (const Message& message : ui.Messages) {
      Texts += Replace(message.Text, Folder / "", "FOLDER/") + "\n";
      const std::string place = Replace(Replace(message.Place, Folder / "", ""), " (F)", "");
      words += fmt::format("{} {} {}|", message.Level == Severity::Error ? "E" : "W", message.Code,
                           place.substr(0, place.find('@')));
    }
    return words;
  }

  TempFolder Folder;
  int Status = ExitDone;
  std::string Texts;
};

// What readers say of a disc that is made all the same: the kind of an error of the checker, or that
// libdvdnav complains. It plays many of the others as it comes, or aborts.
struct Complaint {
  std::string_view Kind;
  std::string_view Of;
};
constexpr std::string_view ByPlayer = "libdvdnav";
constexpr std::array Complaints{
    Complaint{ByPlayer,
              " FirstPlayWithNothing FirstPlayWithNop FirstPlayThatExits FirstPlayThatBreaksOff "
              "FirstPlayThatGoesInCircles FirstPlayThatMayGoBeyondItsList SetWithoutTitles TitleWithoutCells "
              "TitleOfCommands TitleBeyond PartBeyond PartOfAnother SetBeyond "
              "EmptyProgram PartFarBeyond TooManyParts "
              "TooManyLanguages "},
    Complaint{
        "target",
        " NoTitleMenu NoTitleMenuInOneLanguage NoAudioMenu ResumeCellBeyond NoSuchMenuOfTheSet SetBeyond "
        "TitleOfTheSetBeyond TitleBeyond PartBeyond ProgramOfAnother PartOfAnother CellOfAnother "
        "EmptyProgram GoToBeyondTheList PartFarBeyond GoToOfACell "},
    Complaint{
        "domain",
        " CallInFirstPlay TitleOfASetInFirstPlay PartInATitleMenu TitleOfTheDiscInATitle MenuAfterATitle "},
    Complaint{"ptt-offset", " TitleWithoutCells TitleOfCommands "},
    Complaint{"ptt-entry", " TitleThatStartsWithoutCells "},
    Complaint{"missing", " SetWithoutTitles "},
    Complaint{"menu-entry", " TwoTitleMenus "},
    Complaint{"pgc-commands", " TooManyCommands "},
    Complaint{"stream-missing",
              " PlaysAStreamThatIsNotThere AMenuPlaysAStreamThatIsNotThere TwoKindsOfSound "},
    Complaint{"audio-attr", " PcmOfTwoSampleSizes "},
    Complaint{"attr-differs",
              " TwoAspects TwoSizes FullScreenAsWide BitmapAsWide PlaysOfTwoAspects AspectChangesInAFile "
              "NtscOverPal Pall "
              "SizeAsStandard Secam "},
    Complaint{"stamp-before-scr", " PlaysOfTwoBitRates BitRateChangesInAFile "},
    Complaint{"cell-time", " SinglePicture Pall SizeAsStandard Secam "},
    Complaint{"bit-rate", " RateBeyondADisc "},
    Complaint{"profile", " ColoursAt422 "},
    Complaint{"vobu-length", " OneSequence "},
    Complaint{"vobu-start", " NoGroups "},
    Complaint{"overflow", " CrowdedSubtitles "},
};

void HoldAgainstReaders(const std::string& name, const std::string& disc) {
  const auto isOf = [&name](const Complaint& row) { return Contains(row.Of, " " + name + " "); };
  const bool plays = name == "ADiscThatPlays";
  if (plays || isOf(Complaints.front())) {
    EXPECT_EQ(WalkDisc(disc).Complaints.empty(), plays);
  }
  const bool judged = std::any_of(Complaints.begin() + 1, Complaints.end(), isOf);
  if (!HasChecker() || (!judged && !plays)) {
    return;
  }
  const std::string errors = fmt::format("{}", fmt::join(CheckerErrors(disc), ""));
  for (const Complaint& row : Complaints) {
    EXPECT_TRUE(row.Kind == ByPlayer || Contains(errors, fmt::format("[{}]", row.Kind)) == isOf(row))
        << row.Kind << "\n"
        << errors;
  }
}

// Whether all that keeps the disc from being made is where its commands lead.
bool IsForcible(const std::string& found) {
  constexpr std::array Codes{"target-missing", "target-forbidden", "command-loop",
                             "button-idle",    "page-trap",        "buttons-hidden"};
  const auto isOther = [&Codes](std::string_view finding) {
    return finding.starts_with("E ") && std::ranges::none_of(Codes, [&finding](std::string_view code) {
             return finding.starts_with(fmt::format("E {} ", code));
           });
  };
  return Contains(found, "E ") && std::ranges::none_of(Split(found, "|"), isOther);
}

TEST_P(DeadDiscs, AreRefusedForPlayersAndMadeWithAWarningByTradition) {
  const Row& row = GetParam();
  const std::string found = row.Found + row.Late;
  const auto isDead = [](const std::string& told) { return Contains(told, "E "); };
  Write(row, Folder);
  EXPECT_EQ(Told({"check"}), row.Found);
  EXPECT_EQ(Status, isDead(row.Found) ? ExitFailed : ExitDone);
  EXPECT_EQ(Told({"check", "--sources"}), found);
  const std::string players = Folder / "players";
  EXPECT_EQ(Told({"author", "-o", players}), found);
  EXPECT_TRUE(Contains(Texts, row.Says)) << Texts;
  EXPECT_EQ(Status, isDead(found) ? ExitFailed : ExitDone);
  EXPECT_NE(std::filesystem::exists(players), isDead(found));
  if (IsForcible(found)) {
    EXPECT_EQ(Told({"author", "-o", players, "--force-navigation"}), Replace(found, "E ", "W "));
    EXPECT_TRUE(std::filesystem::exists(players));
  } else if (isDead(found)) {
    Told({"author", "-o", players, "--force-navigation"});
    EXPECT_FALSE(std::filesystem::exists(players));
  }

  const std::string told = row.Classic.empty() ? Replace(found, "E ", "W ") : row.Classic;
  const std::string classic = Folder / "classic";
  EXPECT_EQ(Told({"author", "-o", classic, "--rules", "classic"}), told);
  EXPECT_NE(std::filesystem::exists(classic), isDead(told));
  if (!isDead(told)) {
    HoldAgainstReaders(row.Name, classic);
  }
}

TEST(DeadDiscsAtTheChecker, AreJudged) {
  if (!HasChecker()) {
    GTEST_SKIP() << CheckerMissing;
  }
}

const auto NameOf = [](const auto& row) { return row.param.Name; };
INSTANTIATE_TEST_SUITE_P(Structure, DeadDiscs, testing::ValuesIn(StructureRows()), NameOf);
INSTANTIATE_TEST_SUITE_P(Overlays, DeadDiscs, testing::ValuesIn(OverlayRows()), NameOf);
INSTANTIATE_TEST_SUITE_P(Sources, DeadDiscs, testing::ValuesIn(SourceRows()), NameOf);

}  // namespace
}  // namespace quorvelant::dead
