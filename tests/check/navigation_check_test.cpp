// The example with a fault a row, and what the walk finds in it: severity, code and place.
#include "check/navigation_check.h"

#include <fmt/format.h>

#include <sstream>

#include "script/script_reader.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

struct WalkedFault {
  const char* Name;
  std::vector<std::pair<std::string, std::string>> Changes;  // everywhere in the script
  const char* Found;
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

// Every way that the remote has out of a menu.
std::string Prohibited() {
  std::string lines;
  for (const char* key :
       {"TimePlay", "PTTPlay", "TitlePlay", "Stop", "GoUp", "TimeOrPTTSearch", "TopPGOrPrevPGSearch",
        "NextPGSearch", "MenuCall-Title", "MenuCall-Root", "MenuCall-SubPicture", "MenuCall-Audio",
        "MenuCall-Angle", "MenuCall-PTT", "Resume", "StillOff"}) {
    lines += fmt::format("\t\t\t\t\t{}=Prohibited\n", key);
  }
  return lines;
}

std::string Words(const Findings& findings) {
  std::string words;
  for (const Message& finding : findings) {
    constexpr std::string_view Letters = "NWE";
    words += fmt::format("{} {} {}|", Letters[static_cast<std::size_t>(finding.Level)], finding.Code,
                         finding.Place);
  }
  return words;
}

TEST(NavigationCheck, FindsEachFaultAndNothingElse) {
  const std::string root = "Name=VTS2_English_PGC1\n\t\t\t\tMenuType=Root\n";
  const std::string title = "Name=VTS1_Title1_PGC1\n\t\t\t\tPaletteUsed=Menus\n";
  const std::string menu = "Name=VTS1_English_PGC1\n\t\t\t\tPaletteUsed=Menus\n\t\t\t\tMenuType=Root\n";
  const WalkedFault faults[] = {
      {"none", {}, ""},
      {"a button that does nothing",
       {{"Button Command=JumpTT VTS2_Title1", "Button Command=NOP"}},
       "E button-idle VMG1.LANGUAGE1.PGC1.PG1.CELL1 Button1|W unreachable VTS2.TITLE1|"},
      {"a menu that begins again before it shows",
       {{root + "\t\t\t\tItem=PreCommands\n\t\t\t\t{\n\t\t\t\t\tCommand=JumpSS TitleMenu",
         root + "\t\t\t\tItem=PreCommands\n\t\t\t\t{\n\t\t\t\t\tCommand=LinkTopPGC"}},
       "E command-loop VTS2.LANGUAGE1.PGC1 Pre1|"},
      {"marks without contrast",
       {{"Selection Contrast=0, 15, 0, 0", "Selection Contrast=0, 0, 0, 0"},
        {"Action Contrast=0, 15, 0, 0", "Action Contrast=0, 0, 0, 0"}},
       "E buttons-hidden VMG1.LANGUAGE1.PGC1.PG1.CELL1|E buttons-hidden VTS1.LANGUAGE1.PGC1.PG1.CELL1|"},
      {"a set without a root menu", {{root, "Name=VTS2_English_PGC1\n"}}, "N key-dead VTS2.TITLE1|"},
      {"titles with no way on",
       {{"Command=CallSS RSM=0,TitleMenu", "Command=NOP"}},
       "W disc-stops VTS1.TITLE1.PGC1|W disc-stops VTS1.TITLE2.PGC1|W disc-stops VTS2.TITLE1.PGC1|"},
      {"sound that the title has not",
       {{title,
         title + "\t\t\t\tItem=PreCommands\n\t\t\t\t{\n\t\t\t\t\tCommand=SetSTN audio=7\n\t\t\t\t}\n"}},
       "W stream-missing VTS1.TITLE1.PGC1 Pre1|"},
      {"a menu without a way out",
       {{menu, menu + "\t\t\t\tItem=PGCUOPS\n\t\t\t\t{\n" + Prohibited() + "\t\t\t\t}\n"},
        {"Button Command=JumpVTS_PTT VTS1_Title1_PGC1_PG1", "Button Command=mov GPRM1, 1"},
        {"Button Command=JumpVTS_PTT VTS1_Title1_PGC1_PG2", "Button Command=LinkTopPGC"},
        {"Button Command=JumpVTS_PTT VTS1_Title1_PGC1_PG3", "Button Command=LinkTopPGC"},
        {"Button Command=JumpSS TitleMenu", "Button Command=LinkTopPGC"}},
       "E page-trap VTS1.LANGUAGE1.PGC1.PG1.CELL1|"},
  };
  for (const WalkedFault& fault : faults) {
    EXPECT_EQ(Words(CheckNavigation(Changed(fault), Rules::Players, {})), fault.Found) << fault.Name;
  }
}

}  // namespace
}  // namespace quorvelant
