// The example with a fault a row, and all that `check` finds in it: severity, code, place and the way there.
#include "check/navigation_check.h"

#include <fmt/format.h>

#include <sstream>

#include "check/check.h"
#include "check/nav_of.h"
#include "script/script_reader.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

struct WalkedFault {
  const char* Name;
  std::vector<std::pair<std::string, std::string>> Changes;  // everywhere in the script
  std::string Found;
};

Project Changed(const WalkedFault& fault) {
  std::string script = TempFolder::Read(SourceFile("examples/demo.qvp"));
  std::erase(script, '\r');
  for (const auto& [from, to] : fault.Changes) {
    EXPECT_NE(script.find(from), std::string::npos) << fault.Name;
    for (std::size_t at = 0; (at = script.find(from, at)) != std::string::npos; at += to.size()) {
      script.replace(at, from.size(), to);
    }
  }
  std::istringstream stream(script);
  Project project;
  RecordingUi ui;
  LoadScript(stream, script.size(), SourceFile("examples/demo.qvp"), project, {.Rules = Rules::Players}, ui);
  return project;
}

std::string Prohibited(std::initializer_list<const char*> keys) {
  std::string lines = "\t\t\t\tItem=PGCUOPS\n\t\t\t\t{\n";
  for (const char* key : keys) {
    lines += fmt::format("\t\t\t\t\t{}=Prohibited\n", key);
  }
  return lines + "\t\t\t\t}\n";
}
std::string Commands(const char* list, const char* command) {
  return fmt::format("\t\t\t\tItem={}\n\t\t\t\t{{\n\t\t\t\t\tCommand={}\n\t\t\t\t}}\n", list, command);
}

std::string Words(const Findings& findings) {
  std::string words;
  for (const Message& finding : findings) {
    constexpr std::string_view Letters = "NWE";
    constexpr std::string_view Way = "way there";
    const std::size_t way = finding.Text.find(Way);
    words += fmt::format("{} {} {}", Letters[static_cast<std::size_t>(finding.Level)], finding.Code,
                         finding.Place);
    words += way == std::string::npos ? "|" : finding.Text.substr(way + Way.size()) + "|";
  }
  return words;
}

const std::string TitleMenu = "VMG1.LANGUAGE1.PGC1.PG1.CELL1";
const std::string RootPage = "VTS1.LANGUAGE1.PGC1.PG1.CELL1";
const std::string LastTitleLost = "W unreachable VTS2.TITLE1|";

// Its last button leads to the title of the second set.
WalkedFault LastButton(const char* name, const char* command, const std::string& found) {
  return {name, {{"Button Command=JumpTT VTS2_Title1", std::string("Button Command=") + command}}, found};
}

std::vector<WalkedFault> DeadMenus() {
  const std::string button = TitleMenu + " Button4: insert, Up, OK|";
  const std::string root = "Name=VTS2_English_PGC1\n\t\t\t\tMenuType=Root\n";
  const std::string menu = "Name=VTS1_English_PGC1\n\t\t\t\tPaletteUsed=Menus\n\t\t\t\tMenuType=Root\n";
  const std::string page = "JumpVTS_PTT VTS1_Title1_PGC1_PG";
  const auto away = Prohibited({"TimePlay", "PTTPlay", "TitlePlay", "Stop", "GoUp", "TimeOrPTTSearch",
                                "TopPGOrPrevPGSearch", "NextPGSearch", "MenuCall-Title", "MenuCall-Root",
                                "MenuCall-SubPicture", "MenuCall-Audio", "MenuCall-Angle", "MenuCall-PTT",
                                "Resume", "StillOff"});
  return {
      {"none", {}, ""},
      LastButton("no such menu", "JumpSS vts_1, vts_ttn_1 : AngleMenu",
                 "E target-missing " + button + LastTitleLost),
      LastButton("a call out of a menu", "CallSS RSM=0,TitleMenu",
                 "E target-forbidden " + button + LastTitleLost),
      LastButton("nothing to come back to", "RSM", "W resume-empty " + button + LastTitleLost),
      LastButton("a button that does nothing", "NOP", "E button-idle " + button + LastTitleLost),
      LastButton("a button whose condition never holds", "If ( GPRM3 == 5 ) LinkTopPGC",
                 "E button-idle " + button + LastTitleLost),
      {"a menu that begins again before it shows",
       {{root + Commands("PreCommands", "JumpSS TitleMenu"), root + Commands("PreCommands", "LinkTopPGC")}},
       "E command-loop VTS2.LANGUAGE1.PGC1 Pre1: insert, Up, OK, Menu|"},
      {"menus that lead to each other",
       {{root + Commands("PreCommands", "JumpSS TitleMenu"),
         root + Commands("PreCommands", "LinkPGCN Other") +
             "\t\t\t}\n\t\t\tItem=PGC\n\t\t\t{\n\t\t\t\tName=Other\n" +
             Commands("PostCommands", "LinkPGCN VTS2_English_PGC1")}},
       "E command-loop VTS2.LANGUAGE1.PGC1 Pre1: insert, Up, OK, Menu|"},
      {"marks without contrast",
       {{"Selection Contrast=0, 15, 0, 0", "Selection Contrast=0, 0, 0, 0"},
        {"Action Contrast=0, 15, 0, 0", "Action Contrast=0, 0, 0, 0"}},
       "E buttons-hidden " + TitleMenu + ": insert|E buttons-hidden " + RootPage + ": insert, OK, Menu|"},
      {"a menu without a way out",
       {{menu, menu + away},
        {"Button Command=" + page + "1", "Button Command=mov GPRM1, 1"},
        {"Button Command=" + page + "2", "Button Command=LinkTopPGC"},
        {"Button Command=" + page + "3", "Button Command=LinkTopPGC"},
        {"Button Command=JumpSS TitleMenu", "Button Command=LinkTopPGC"}},
       "E page-trap " + RootPage + ": insert, OK, Menu|"},
      {"a set without a root menu", {{root, "Name=VTS2_English_PGC1\n"}}, "N key-dead VTS2.TITLE1|"},
  };
}

std::vector<WalkedFault> LostTitles() {
  const std::string title = "Name=VTS1_Title1_PGC1\n\t\t\t\tPaletteUsed=Menus\n";
  const std::string firstCell = "UsingScene=First_Scene1\n";
  const std::string titleMenu = "Item=PGC\n\t\t\t{\n\t\t\t\tName=VMG_English_PGC1\n";
  const std::string page =
      "Item=PGC\n\t\t\t{\n\t\t\t\tName=Lost\n\t\t\t\tPaletteUsed=Menus\n\t\t\t\tItem=Program\n\t\t\t\t{"
      "\n\t\t\t\t\tItem=Cell\n"
      "\t\t\t\t\t{\n\t\t\t\t\t\tUsingScene=Menu_Scene1\n\t\t\t\t\t\tCellStillTime=255\n"
      "\t\t\t\t\t}\n\t\t\t\t}\n\t\t\t}\n\t\t\t";
  return {
      {"titles with no way on",
       {{"Command=CallSS RSM=0,TitleMenu", "Command=NOP"}},
       "W disc-stops VTS1.TITLE1.PGC1: insert, OK, end of title 1|"
       "W disc-stops VTS1.TITLE2.PGC1: insert, Down, OK, end of title 2|"
       "W disc-stops VTS2.TITLE1.PGC1: insert, Up, OK, end of title 3|"},
      {"titles that end with Exit", {{"Command=CallSS RSM=0,TitleMenu", "Command=Exit"}}, ""},
      LastButton("a title that no button leads to", "JumpTT VTS1_Title1", LastTitleLost),
      {"a chapter that is jumped over",
       {{"Button Command=JumpVTS_PTT VTS1_Title1_PGC1_PG2",
         "Button Command=JumpVTS_PTT VTS1_Title1_PGC1_PG3"},
        {title, title + Commands("CellCommands", "LinkPGN VTS1_Title1_PGC1_PG3, button=0") +
                    Prohibited({"TopPGOrPrevPGSearch", "NextPGSearch"})},
        {firstCell, firstCell + "\t\t\t\t\t\tCell Command=1\n"}},
       "W unreachable VTS1.TITLE1.PGC1.PG2.CELL1|"},
      {"a menu page that nothing leads to",
       {{titleMenu, page + titleMenu}},
       "W unreachable VMG1.LANGUAGE1.PGC1|"},
      {"streams without a key",
       {{title, title + Prohibited({"AudioStreamChange", "SubPictureStreamChange"})}},
       "W unreachable VTS1.TITLE1|W unreachable VTS1.TITLE1|W unreachable VTS1.TITLE1|"},
      {"sound that the title has not",
       {{title, title + Commands("PreCommands", "SetSTN audio=7")}},
       "W stream-missing VTS1.TITLE1.PGC1 Pre1: insert, OK|"},
      {"subtitles that the title has not",
       {{title, title + Commands("PreCommands", "SetSTN subpicture=9:ON")}},
       "W stream-missing VTS1.TITLE1.PGC1 Pre1: insert, OK|"},
      {"a scene that forbids its buttons",
       {{"Name=Menu_Scene1\n",
         "Name=Menu_Scene1\n\t\t\t\tUOPS\n\t\t\t\t{\n\t\t\t\t\tButtonSelect=Prohibited\n\t\t\t\t}\n"}},
       "E page-trap " + TitleMenu + ": insert|W unreachable VTS1.TITLE1|W unreachable VTS1.TITLE2|" +
           LastTitleLost + "W unreachable VTS1.LANGUAGE1.PGC1|"},
      {"buttons that cannot be chosen for long on a page that stands",
       {{"Forced Select=1", "Forced Select=1\n\t\t\t\tSelection End Time=00:00:01:00"}},
       "E buttons-end " + RootPage + ": insert, OK, Menu, wait|"},
      {"a disc without a title menu",
       {{"MenuType=TitleMenu\n", "\n"},
        {"Command=JumpSS TitleMenu", "Command=JumpSS pgc_1"},
        {"Command=CallSS RSM=0,TitleMenu", "Command=CallSS RSM=0,, pgc_1"}},
       "N key-dead FirstPGC|"},
  };
}

TEST(NavigationCheck, TellsEachFaultWithItsShortestWayAndNothingElse) {
  for (const auto& faults : {DeadMenus(), LostTitles()}) {
    for (const WalkedFault& fault : faults) {
      const Project project = Changed(fault);
      EXPECT_EQ(Words(CheckProject(project, Rules::Players)), fault.Found) << fault.Name;
      for (const Message& finding : CheckProject(project, Rules::Classic)) {
        EXPECT_NE(finding.Level, Severity::Error) << fault.Name << ": " << finding.Text;
      }
    }
  }
}

TEST(NavigationCheck, SaysWhereItWasCut) {
  const Project project = Changed({"none", {}, ""});
  Findings findings;
  AddNavigation(SurveyOf(NavOf(project, Rules::Players), {.Nodes = 5}), NamingOf(project), findings);
  EXPECT_EQ(Words(findings), "N walk-cut |");
  EXPECT_EQ(Words(DiscNavigation(SurveyOf(NavOf(project, Rules::Players), {.Nodes = 5}), true)),
            "N walk-cut |");
}

TEST(NavigationCheck, TakesDiscsOfOthersForWhatPlays) {
  for (const WalkedFault& fault : DeadMenus()) {
    const NavSurvey survey = SurveyOf(NavOf(Changed(fault), Rules::Players));
    const bool plays =
        fault.Found.starts_with("E buttons-hidden") || fault.Found.starts_with("E button-idle");
    EXPECT_EQ(HasErrors(DiscNavigation(survey, true)), fault.Found.find("E ") != std::string::npos)
        << fault.Name;
    EXPECT_EQ(HasErrors(DiscNavigation(survey, false)), fault.Found.find("E ") != std::string::npos && !plays)
        << fault.Name;
  }
}

}  // namespace
}  // namespace quorvelant
