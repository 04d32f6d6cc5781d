// Discs that no player gets through: a project a row, as `check` and `author` tell it by both sets of rules.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/command_form.h"
#include "base/text.h"
#include "check/command_check.h"
#include "check/messages.h"
#include "picture/bmp.h"
#include "support/disc_walk.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"
#include "vm/resolver.h"

namespace quorvelant {
namespace {

// A disc that plays; "|" ends a line.
const std::string Sound = "Item=Audio Play List|StreamNumber=0|Item=Audio Play|AudioFile=";
const std::string Film = "Item=Track|Name=F|Resolution=PAL|Item=Video Play|VideoFile=film.m2v|";
const std::string First = "Item=FirstPGC|Item=PreCommands|Command=JumpSS TitleMenu|";
const std::string Manager =
    "Item=VMG|Item=Language|LU=en|Item=PGC|Name=V|MenuType=TitleMenu|Item=PreCommands|";
const std::string Root = "Item=PGC|Name=R|MenuType=Root|Item=PreCommands|Command=JumpVTS_TT T|";
const std::string Title = "Item=Title|Name=T|Item=PGC|Name=P|Item=PreCommands|Command=NOP|";
const std::string Cell = "Item=Program|Name=G|Item=Cell|Name=C|UsingScene=s|";
const std::string Disc = Film + Sound + "a.ac3|Item=Scene|Name=s|" + First + Manager + "Command=JumpTT T|" +
                         "Item=VTS|Item=Language|LU=en|" + Root + Title + Cell;

std::string Repeat(int count, std::string_view text) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += fmt::format(fmt::runtime(text), i);
  }
  return all;
}

// A second title, and one whose track is another; both end the disc.
const std::string Second = "Item=Title|Name=U|Item=PGC|Name=Q|";
std::string Other(std::string_view film, std::string_view sound) {
  return fmt::format("{}Item=Program|Item=Cell|UsingScene=o|Item=Track|Name=O|{}{}{}|Item=Scene|Name=o|",
                     Second, film, Sound, sound);
}

// Buttons and the marks that show them, on the track; and the commands of the cell.
const std::string SceneLine = "Item=Scene|Name=s|";
const std::string Subtitle =
    "Item=SubPicture Play|File=marks.bmp|Start=00:00:00:00|Duration=00:00:01:00|Forced=Yes|"
    "Conversion(P)=255,255,255|";
const std::string Overlay =
    "Item=SubPicture|StreamNumber=0|" + Subtitle +
    "Item=Highlight Play|Start Time To Video=00:00:00:00|"
    "Duration=00:00:01:00|Item=Button|Name=A|Highlight Area #1=0,0,9,9|Item=Button|Name=B|"
    "Highlight Area #1=20,0,29,9|";
const std::string MenuPlay = "Item=Menu Play|";
const std::string ExitLine = "Button Command=Exit|";
std::string WithButtons(const std::string& commands) {
  return Replace(Disc, SceneLine, Overlay + SceneLine) + commands;
}

struct Row {
  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

  std::string Name;
  std::string From;  // of the disc; empty for its end
  std::string To;
  std::string Found;         // by players' rules; a classic run tells the same and makes the disc
  std::string Classic = {};  // where it tells something else
};

Row InFirst(std::string name, const std::string& command, std::string found) {
  return {std::move(name), First, "Item=FirstPGC|Item=PreCommands|Command=" + command + "|",
          std::move(found)};
}
Row InManager(std::string name, const std::string& command, std::string found) {
  return {std::move(name), "Command=JumpTT T|", "Command=" + command + "|", std::move(found)};
}
Row InTitle(std::string name, const std::string& command, std::string found, const std::string& more = {}) {
  return {std::move(name), "Command=NOP|" + Cell, "Command=" + command + "|" + Cell + more, std::move(found)};
}

std::vector<Row> Rows() {
  const std::string twoSubtitles = "Item=SubPicture|StreamNumber=0|" + Subtitle + Subtitle;
  const std::string together = "E subtitles-start-together Track.0.Sub1 (F) entry 2|";
  const std::string noFirst = "E first-play-leads-nowhere FirstPGC|";
  const std::string inFirst = "E target-missing FirstPGC FirstPGC1|";
  const std::string inManager = "E target-missing VMG1.LANGUAGE1.PGC1 Pre1|";
  const std::string inTitle = "E target-missing VTS1.TITLE1.PGC1 Pre1|";
  const std::string noMenu = "E menu-leads-nowhere VTS1.LANGUAGE1.PGC1|";
  const std::string twoOfEach =
      Second + Cell + "Item=Cell|Name=C2|UsingScene=s|" + "Item=Program|Name=G2|Item=Cell|UsingScene=s|";
  const std::string wide = "DisplayMode=Only LetterBox|Item=Video Play|VideoFile=wide.m2v|";
  const std::string film = "Item=Video Play|VideoFile=film.m2v|";
  const std::string cell = "VTS1.TITLE1.PGC1.PG1.CELL1|";
  const std::string dark = "W palette-dark VTS1.TITLE1.PGC1|";
  std::string notMuxed;
  for (int stream = 5; stream <= 32; ++stream) {
    notMuxed += fmt::format("W stream-not-multiplexed Track.0.Sub{}|", stream);
  }
  notMuxed += dark;
  return {
      {"ADiscThatPlays", "", "", ""},
      {"FirstPlayWithNothing", First, "Item=FirstPGC|", noFirst},
      InFirst("FirstPlayWithNop", "NOP", noFirst),
      InFirst("FirstPlayThatExits", "Exit", noFirst),
      InFirst("FirstPlayToItself", "JumpSS FP_DOM", noFirst),
      InFirst("FirstPlayThatBreaksOff", "Break|Command=JumpTT T", noFirst),
      InFirst("FirstPlayThatGoesInCircles", "GoTo 1|Command=JumpTT T", noFirst),
      InFirst("FirstPlayThatGoesOn", "GoTo 2|Command=JumpTT T", ""),
      {"SetWithoutTitles", "", "Item=VTS|", "E set-without-titles VTS2|"},
      {"TitleWithoutCells", "", Second + "Item=Program|", "E title-without-cells VTS1.TITLE2|"},
      {"TitleOfCommands", "", Second + "Item=PreCommands|Command=LinkPGCN P|",
       "E title-without-cells VTS1.TITLE2|"},
      {"TitleThatStartsWithoutCells", "Item=PGC|Name=P|",
       "Item=PGC|Name=N|Item=PreCommands|Command=LinkPGCN P|Item=PGC|Name=P|",
       "E title-starts-without-cells VTS1.TITLE1.PGC1|"},
      {"LanguageWithoutPgcs", Title, "Item=Language|LU=de|" + Title,
       "E language-without-pgcs VTS1.LANGUAGE2|"},
      {"MenuThatLeadsNowhere", Root, "Item=PGC|Name=R|NextPGC=Gone|",
       "W pgc-link-missing VTS1.LANGUAGE1.PGC1|" + noMenu},
      {"MenuOfNothingButNop", Root, "Item=PGC|Name=R|Item=PostCommands|Command=LinkNoLink, button=1|",
       noMenu},
      {"TwoTitleMenus", "Item=VTS|", "Item=PGC|Name=W|MenuType=TitleMenu|StillTime=255|Item=VTS|",
       "W menu-repeated VMG1.LANGUAGE1.PGC2|"},
      {"MenuThatHolds", Root, "Item=PGC|Name=R|StillTime=255|", ""},
      {"MenuWithANext", Root, "Item=PGC|Name=N|NextPGC=R|" + Root, ""},

      {"NoTitleMenu", "MenuType=TitleMenu|", "", inFirst},
      {"NoTitleMenuInOneLanguage", "Item=VTS|", "Item=Language|LU=de|Item=PGC|Name=W|StillTime=255|Item=VTS|",
       Replace(inFirst, "E ", "W ")},
      InTitle("NoAudioMenu", "CallSS RSM=0,AudioMenu", inTitle),
      InTitle("TheRootMenu", "CallSS RSM=1,RootMenu", ""),
      InTitle("ResumeCellBeyond", "CallSS RSM=2,RootMenu", inTitle),
      InManager("NoSuchMenuOfTheSet", "JumpSS vts_1, vts_ttn_1 : AngleMenu", inManager),
      InManager("SetBeyond", "JumpSS vts_2, vts_ttn_1 : RootMenu", inManager),
      InManager("TitleOfTheSetBeyond", "JumpSS vts_1, vts_ttn_2 : RootMenu", inManager),
      InTitle("TitleBeyond", "JumpVTS_PTT ptt_1 @ vts_ttn_2", inTitle),
      InTitle("PartBeyond", "JumpVTS_PTT ptt_2 @ vts_ttn_1", inTitle),
      InTitle("ProgramOfAnother", "LinkPGN G2, button=0", inTitle, twoOfEach),
      InTitle("PartOfAnother", "LinkPTT G2, button=0", inTitle, twoOfEach),
      InTitle("CellOfAnother", "LinkCN C2, button=0", inTitle, twoOfEach),
      InTitle("PgcOfTheSet", "LinkPGCN Q", "", twoOfEach),
      {"PgcOfTitles", "Command=JumpVTS_TT T|", "Command=LinkPGCN Q|", "E command-target-missing VTS1/en/R/-|",
       "E command-target-missing VTS1/en/R/-|"},
      {"ButtonCommand", Cell, Cell + "Item=Menu List|Item=Menu Play|Button Command=RSM|",
       "E target-forbidden VTS1.TITLE1.PGC1.PG1.CELL1 Button1|"},
      {"EmptyProgram", "Command=NOP|" + Cell, "Command=LinkPGN G, button=0|Item=Program|Name=E|" + Cell, "",
       "W target-missing VTS1.TITLE1.PGC1 Pre1|"},

      {"TooManyCommands", "Command=NOP|", Repeat(129, "Command=NOP|"),
       "E too-many-commands VTS1.TITLE1.PGC1|"},
      {"TooManyParts", "",
       "Item=Title|Name=U|" +
           Repeat(11, "Item=PGC|Name=Q{0}|" + Repeat(91, "Item=Program|Item=Cell|UsingScene=s|")),
       "E too-many-parts VTS1.TITLE2|"},
      {"TooManyPgcs", Title, Repeat(999, "Item=PGC|Name=M{}|StillTime=255|") + Title,
       "E too-many-pgcs VTS1.LANGUAGE1|"},
      {"TooManyLanguages", Title, Repeat(99, "Item=Language|LU=en|" + Root) + Title,
       "E too-many-languages VTS1|"},

      {"ColoursAt422", "film.m2v", "422.m2v", "E video-colour-sampling Track.0.Video1|"},
      {"TwoAspects", "", Other(wide, "a.ac3"), "E video-mixed Track.1|"},
      {"TwoSizes", "", Other("Item=Video Play|VideoFile=narrow.m2v|", "a.ac3"), "E video-mixed Track.1|"},
      {"TwoKindsOfSound", "", Other(film, "stereo.wav"), "E audio-mixed Track.1.Audio1|"},
      {"TwoKindsOfPcm", Disc, Replace(Disc, "a.ac3", "mono.wav") + Other(film, "stereo.wav"),
       "W audio-mixed Track.1.Audio1|"},
      {"PlaysAStreamThatIsNotThere", "Name=P|", "Name=P|Item=Audio Stream Decoding|Audio Stream 0 Decodes=5|",
       "E decoding-missing VTS1.TITLE1.PGC1|"},
      {"SubtitlesWithoutEntries", SceneLine, "Item=SubPicture|StreamNumber=0|" + SceneLine,
       "W subpicture-stream-empty Track.0.Sub1|"},
      {"AllSubpictureStreams", Disc,
       Replace(Disc, SceneLine, Repeat(32, "Item=SubPicture|StreamNumber={}|" + Subtitle) + SceneLine), "",
       notMuxed},
      {"TwoSubtitlesAtOnce", Disc, Replace(Disc, SceneLine, twoSubtitles + SceneLine), together,
       dark + Replace(together, "E ", "W ")},
      {"TwoSubtitlesOfAStill", Disc,
       Replace(Replace(Disc, SceneLine, twoSubtitles + SceneLine), "Item=Video Play|VideoFile=film.m2v",
               "Item=Still Play|VideoFile=page.bmp"),
       together, dark + Replace(together, "E ", "W ")},
      {"WideWithoutDisplay", "film.m2v", "wide.m2v", "W wide-letterboxed Track.0|",
       "W wide-without-display Track.0|"},
      {"WideWithButtons", Disc, Replace(WithButtons(MenuPlay + ExitLine + ExitLine), "film.m2v", "wide.m2v"),
       "W wide-without-display Track.0|", "W wide-without-display Track.0|" + dark},
      {"TwoButtonsTwoCommands", Disc, WithButtons(MenuPlay + ExitLine + ExitLine), "", dark},
      {"APlayForEachButton", Disc, WithButtons(MenuPlay + ExitLine + MenuPlay + ExitLine), "", dark},
      {"ButtonWithoutCommand", Disc, WithButtons(MenuPlay + ExitLine), "E buttons-without-command " + cell,
       dark + "W buttons-without-command " + cell},
      {"ATitleWithoutButtonCommands", Disc, WithButtons(""), "W buttons-without-command " + cell,
       dark + "W buttons-without-command " + cell},
      {"CommandWithoutButton", Disc, WithButtons(MenuPlay + ExitLine + ExitLine + ExitLine),
       "W commands-without-button " + cell, dark + "W commands-without-button " + cell},
      {"PlaysAreNoButtons", Disc, WithButtons(MenuPlay + ExitLine + ExitLine + MenuPlay),
       "W button-commands-uneven " + cell, dark + "W button-commands-uneven " + cell},
      {"OneMenuTwoCells", Disc,
       WithButtons(MenuPlay + ExitLine + ExitLine) + "Item=Cell|Name=D|UsingScene=s|" + MenuPlay +
           "Button Command=NOP|Button Command=NOP|",
       "E button-commands-differ VTS1.TITLE1.PGC1.PG1.CELL2|",
       dark + "W button-commands-differ VTS1.TITLE1.PGC1.PG1.CELL2|"},
      {"NoPaletteOfTheProject", Disc,
       WithButtons(MenuPlay + ExitLine + ExitLine) + "Item=Palette|Name=Reds|0=255,0,0|",
       "W palette-missing VTS1.TITLE1.PGC1|", dark},

      InTitle("GoToBeyondTheList", "GoTo 9", Replace(inTitle, "E ", "W ")),
      InTitle("NoNextPgc", "LinkNextPGC", inTitle),
      InTitle("NoGoUpPgc", "LinkGoUpPGC", inTitle),
      InTitle("PartFarBeyond", "JumpVTS_PTT ptt_500 @ vts_ttn_9", inTitle),
      InTitle("NumberBeyond", "Mov GPRM1, 70000", "W command-number-beyond-field VTS1.TITLE1.PGC1 Pre1|"),
      InTitle("BlanksInSetStn", "SetSTN audio = 2", "W command-sets-nothing VTS1.TITLE1.PGC1 Pre1|"),
      InTitle("SystemRegisterOnTheLeft", "If ( SPRM1 == 3 ) NOP",
              "W command-left-no-register VTS1.TITLE1.PGC1 Pre1|"),
      InTitle("LinkAfterAJump", "Exit ; LinkTopPGC", "W command-link-lost VTS1.TITLE1.PGC1 Pre1|"),
      {"FullScreenAsWide", "Name=F|", "Name=F|DisplayMode=Only PanScan|", "W aspect-unlike-domain Track.0|"},
  };
}

class StructureTest : public testing::TestWithParam<Row> {
 protected:
  StructureTest() {
    Link("film.m2v", SampleVideo({.Frames = 25}));
    Link("wide.m2v", SampleVideo({.Aspect = "16:9", .Frames = 25}));
    Link("narrow.m2v", SampleVideo({.Width = 704, .Frames = 25}));
    Folder.Write("422.m2v", BuildStream({.Sequence = {.ChromaFormat = 2}}));
    Link("a.ac3", SampleAc3({.Seconds = 1}));
    Link("stereo.wav", SampleWav({.Seconds = 1}));
    Link("mono.wav", SampleWav({.Channels = 1, .Seconds = 1}));
    const Bytes marks = WriteBmp(Picture(8, 8));
    Folder.Write("marks.bmp", {marks.begin(), marks.end()});
    const Bytes page = WriteBmp(Picture(360, 288));
    Folder.Write("page.bmp", {page.begin(), page.end()});
  }
  void Link(const std::string& name, const std::string& sample) const {
    std::filesystem::create_symlink(sample, Folder.Path() / name);
  }

  void Write(const Row& row) const {
    std::string script = Disc;
    const std::size_t at = row.From.empty() ? script.size() : script.find(row.From);
    ASSERT_NE(at, std::string::npos);
    script.replace(at, row.From.size(), row.To);
    std::ranges::replace(script, '|', '\n');
    Folder.Write("p.qvp", script);
  }

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
    for (const Message& message : ui.Messages) {
      words +=
          fmt::format("{} {} {}|", message.Level == Severity::Error ? "E" : "W", message.Code, message.Place);
    }
    return words;
  }

  TempFolder Folder;
  int Status = ExitDone;
};

// Readers fail at these, but for the first; the others they play as it comes, or never come back from.
constexpr std::array<std::string_view, 10> JudgedByReaders{
    "ADiscThatPlays", "FirstPlayWithNothing", "SetWithoutTitles", "TitleWithoutCells", "TitleBeyond",
    "PartBeyond",     "ProgramOfAnother",     "CellOfAnother",    "SetBeyond",         "TooManyLanguages"};

TEST_P(StructureTest, IsRefusedForPlayersAndMadeWithAWarningByTradition) {
  const Row& row = GetParam();
  const bool dead = row.Found.find("E ") != std::string::npos;
  Write(row);
  EXPECT_EQ(Told({"check"}), row.Found);
  EXPECT_EQ(Status, dead ? ExitFailed : ExitDone);
  const std::string players = Folder / "players";
  EXPECT_EQ(Told({"author", "-o", players}), row.Found);
  EXPECT_EQ(Status, dead ? ExitFailed : ExitDone);
  EXPECT_NE(std::filesystem::exists(players), dead);

  const std::string told = row.Classic.empty() ? Replace(row.Found, "E ", "W ") : row.Classic;
  const std::string classic = Folder / "classic";
  EXPECT_EQ(Told({"author", "-o", classic, "--rules", "classic"}), told);
  EXPECT_NE(std::filesystem::exists(classic), told.find("E ") != std::string::npos);
  if (std::ranges::find(JudgedByReaders, row.Name) != JudgedByReaders.end()) {
    EXPECT_EQ(WalkDisc(classic).Complaints.empty(), !dead);
  }
}

INSTANTIATE_TEST_SUITE_P(Projects, StructureTest, testing::ValuesIn(Rows()),
                         [](const auto& row) { return row.param.Name; });

// The page for users says in its last column where each command that moves may stand.
TEST(CommandsPage, SaysWhereEachCommandIsAllowed) {
  constexpr std::array<std::string_view, 4> Domains{"First Play", "manager menus", "set menus", "titles"};
  std::ifstream page(SourceFile("docs/commands.md"));
  int judged = 0;
  for (std::string line; std::getline(page, line);) {
    const auto cells = Split(line, "|");
    if (!line.starts_with("| `") || cells.size() != 6) {
      continue;
    }
    VMICommand_P command;
    command.FullCommand = Split(line, "`")[1];
    command.CommandHex = Split(line, "`")[3];
    for (const std::string_view domain : Domains) {
      Project project;
      PGC_P chain;
      chain.PreCommands.push_back(command);
      Lang_P language;
      Title_P title;
      domain == Domains.front() ? void(project.FirstPlay = chain)
      : domain == "titles"      ? void(title.PGC.Add(chain))
                                : void(language.PGC.Add(chain));
      VTS_P& manager = project.Disc.Add({});
      VTS_P& set = project.Disc.Add({});
      (domain == "manager menus" ? manager : set).Lang.Add(language);
      set.Title.Add(title);
      const bool allowed = Contains(cells[4], domain) || Trim(cells[4]) == "all";
      EXPECT_EQ(Has(CheckCommandTargets(project), message::TargetForbidden), !allowed)
          << command.FullCommand << " in " << domain;
      ++judged;
    }
  }
  EXPECT_GE(judged, 80);
}

}  // namespace
}  // namespace quorvelant
