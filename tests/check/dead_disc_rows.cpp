#include "dead_disc_rows.h"

#include <fmt/format.h>

#include "base/text.h"

namespace quorvelant::dead {
namespace {

// A disc that plays; "|" ends a line.
const std::string Sound = "Item=Audio Play List|StreamNumber=0|Item=Audio Play|AudioFile=";
const std::string Film = "Item=Track|Name=F|Resolution=PAL|Item=Video Play|VideoFile=film.m2v|";
const std::string First = "Item=FirstPGC|Item=PreCommands|Command=JumpSS TitleMenu|";
const std::string Manager =
    "Item=VMG|Item=Language|LU=en|Item=PGC|Name=V|MenuType=TitleMenu|Item=PreCommands|";
const std::string Root = "Item=PGC|Name=R|MenuType=Root|Item=PreCommands|Command=JumpVTS_TT T|";
const std::string Ends = "Item=PostCommands|Command=Exit|";
const std::string Title = "Item=Title|Name=T|Item=PGC|Name=P|" + Ends + "Item=PreCommands|Command=NOP|";
const std::string Cell = "Item=Program|Name=G|Item=Cell|Name=C|UsingScene=s|";
}  // namespace

const std::string Disc = Film + Sound + "a.ac3|Item=Scene|Name=s|" + First + Manager + "Command=JumpTT T|" +
                         "Item=VTS|Item=Language|LU=en|" + Root + Title + Cell;

const std::string SceneLine = "Item=Scene|Name=s|";

namespace {

std::string Repeat(int count, std::string_view text) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += fmt::format(fmt::runtime(text), i);
  }
  return all;
}

// The disc with a second title, to which the first one leads; and with one whose track is another.
const std::string Second = "Item=Title|Name=U|Item=PGC|Name=Q|";
std::string WithSecond(const std::string& more, const std::string& disc = Disc) {
  return Replace(disc, Ends, "Item=PostCommands|Command=JumpVTS_TT U|") + Second + Ends + more;
}
std::string WithOther(std::string_view film, std::string_view sound, const std::string& disc = Disc) {
  return WithSecond(
      fmt::format("Item=Program|Item=Cell|UsingScene=o|Item=Track|Name=O|{}{}{}|Item=Scene|Name=o|", film,
                  Sound, sound),
      disc);
}

// Buttons and the marks that show them, on the track; and the commands of the cell.
const std::string Subtitle =
    "Item=SubPicture Play|File=marks.bmp|Start=00:00:00:00|Duration=00:00:01:00|Forced=Yes|"
    "Conversion(P)=255,255,255|";
const std::string Overlay =
    "Item=SubPicture|StreamNumber=0|" + Subtitle +
    "Item=Highlight Play|Start Time To Video=00:00:00:00|"
    "Duration=00:00:01:00|Color Scheme 1|Selection Contrast=15,15,15,15|Item=Button|Name=A|Highlight Area "
    "#1=0,0,9,9|Item=Button|Name=B|"
    "Highlight Area #1=20,0,29,9|";
const std::string MenuPlay = "Item=Menu Play|";
const std::string ExitLine = "Button Command=Exit|";
std::string WithButtons(const std::string& commands) {
  return Replace(Disc, SceneLine, Overlay + SceneLine) + commands;
}

Row InFirst(std::string name, const std::string& command, std::string found) {
  return {std::move(name), First, "Item=FirstPGC|Item=PreCommands|Command=" + command + "|",
          std::move(found)};
}
Row InManager(std::string name, const std::string& command, std::string found) {
  return {std::move(name), "Command=JumpTT T|", "Command=" + command + "|", std::move(found)};
}
Row InTitle(std::string name, const std::string& command, std::string found) {
  return {std::move(name), "Command=NOP|" + Cell, "Command=" + command + "|" + Cell, std::move(found)};
}
// With a second title, whose programs have two cells and one.
Row InFirstOfTwo(std::string name, const std::string& command, std::string found) {
  const std::string programs =
      Cell + "Item=Cell|Name=C2|UsingScene=s|" + "Item=Program|Name=G2|Item=Cell|UsingScene=s|";
  return {std::move(name), Disc, Replace(WithSecond(programs), "Command=NOP|", "Command=" + command + "|"),
          std::move(found)};
}

// Told by `author` and by `check --sources` alone.
Row ReadWhole(std::string name, std::string from, std::string to, std::string found,
              std::string classic = {}) {
  return {std::move(name), std::move(from), std::move(to), "", std::move(classic), std::move(found)};
}

}  // namespace

// What shows over the film, and its scenes.
std::vector<Row> OverlayRows() {
  const std::string subtitle = Overlay.substr(0, Overlay.find("Item=Highlight"));
  const std::string dark = "W palette-dark VTS1.TITLE1.PGC1|";
  const std::string doubtful = "W doubtful-value p.qvp:";
  const std::string marks =
      SceneLine + "Item=Scene|Name=n|SceneTime=00:00:00:13|Item=Scene|Name=o|SceneTime=00:00:00:18|";
  const std::string both = "Item=Cell|Name=N|UsingScene=n|Item=Cell|Name=O|UsingScene=o|";
  const std::string crowd =
      "Item=SubPicture|StreamNumber=0|" +
      Repeat(20, "Item=SubPicture Play|File=noise.bmp|Start=00:00:00:{:02}|Duration=00:00:00:01|");
  return {
      ReadWhole("TwoMarksInAGop", Disc, Replace(Disc, SceneLine, marks) + both, "E mark-opens-no-cell |"),
      ReadWhole("CrowdedSubtitles", SceneLine, crowd + SceneLine, "E subtitles-overfill noise.bmp|",
                dark + "W subtitles-overfill noise.bmp|"),
      ReadWhole("SmoothedSubtitle", SceneLine, Replace(subtitle, "marks", "smooth") + SceneLine,
                "W subtitle-odd-pixels Track.0.Sub1 entry 1|",
                dark + "W subtitle-odd-pixels Track.0.Sub1 entry 1|"),
      ReadWhole("ButtonsAfterTheStill", Disc,
                Replace(Replace(WithButtons(MenuPlay + ExitLine + ExitLine), "Video Play|VideoFile=film.m2v",
                                "Still Play|VideoFile=page.bmp"),
                        "Item=Highlight Play|Start Time To Video=00:00:00:00",
                        "Item=Highlight Play|Start Time To Video=00:00:09:00"),
                "E buttons-never-show Track.0|", dark + "W buttons-never-show Track.0|"),
      {"AColourThatNoKeyTakes", SceneLine, Replace(subtitle, "255,255,255", "#ffffff") + SceneLine,
       doubtful + "17|", doubtful + "17|" + dark},
      {"OriginAndDisplayArea", SceneLine, subtitle + "Origin=80,480|DisplayArea=0,2,719,573|" + SceneLine,
       doubtful + "19|", doubtful + "19|" + dark},
  };
}
std::vector<Row> StructureRows() {
  const std::string twoSubtitles = "Item=SubPicture|StreamNumber=0|" + Subtitle + Subtitle;
  const std::string together = "E subtitles-start-together Track.0.Sub1 entry 2|";
  const std::string noFirst = "E first-play-leads-nowhere FirstPGC|";
  const std::string inFirst = "E target-missing FirstPGC FirstPGC1|";
  const std::string inManager = "E target-missing VMG1.LANGUAGE1.PGC1 Pre1|";
  const std::string inTitle = "E target-missing VTS1.TITLE1.PGC1 Pre1|";
  const std::string noScene = "E scene-unknown VTS1.TITLE1.PGC1.PG1.CELL2|";
  const std::string noMenu = "E menu-leads-nowhere VTS1.LANGUAGE1.PGC1|";
  const std::string wide = "DisplayMode=Only LetterBox|Item=Video Play|VideoFile=wide.m2v|";
  const std::string film = "Item=Video Play|VideoFile=film.m2v|";
  const std::string cell = "VTS1.TITLE1.PGC1.PG1.CELL1|";
  const std::string dark = "W palette-dark VTS1.TITLE1.PGC1|";
  std::string noKeys;  // of the remote, that leave a menu
  for (const char* key : {"TimePlay", "TitlePlay", "GoUp", "TopPGOrPrevPGSearch", "NextPGSearch",
                          "MenuCall-Title", "MenuCall-Root", "Resume", "StillOff"}) {
    noKeys += fmt::format("{}=Prohibited|", key);
  }
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
      InFirst("FirstPlayThatMayGoBeyondItsList", "If ( GPRM0 == 0 ) GoTo 9|Command=JumpTT T", inFirst),
      InFirst("FirstPlayThatGoesToItsPostCommands", "GoTo 9|Item=PostCommands|Command=JumpTT T",
              Replace(inFirst, "E ", "W ")),
      {"SetWithoutTitles", "", "Item=VTS|", "E set-without-titles VTS2|"},
      {"TitleWithoutCells", Disc, WithSecond("Item=Program|"), "E title-without-cells VTS1.TITLE2|"},
      {"TitleOfCommands", Disc, WithSecond("Item=PreCommands|Command=LinkPGCN P|"),
       "E title-without-cells VTS1.TITLE2|"},
      {"TitleThatStartsWithoutCells", "Item=PGC|Name=P|",
       "Item=PGC|Name=N|Item=PreCommands|Command=LinkPGCN P|Item=PGC|Name=P|",
       "E title-starts-without-cells VTS1.TITLE1.PGC1|"},
      {"LanguageWithoutPgcs", Title, "Item=Language|LU=de|" + Title,
       "E language-without-pgcs VTS1.LANGUAGE2|"},
      {"MenuThatLeadsNowhere", Root, "Item=PGC|Name=R|MenuType=Root|NextPGC=Gone|",
       "W pgc-link-missing VTS1.LANGUAGE1.PGC1|" + noMenu},
      {"MenuOfNothingButNop", Root,
       "Item=PGC|Name=R|MenuType=Root|Item=PostCommands|Command=LinkNoLink, button=1|", noMenu},
      {"MenuWithoutCellsToItsTop", Root, "Item=PGC|Name=R|MenuType=Root|Item=PreCommands|Command=LinkTopPGC|",
       "E command-loop VTS1.LANGUAGE1.PGC1 Pre1|"},
      {"MenuWithoutCellsToItself", Root,
       "Item=PGC|Name=R|MenuType=Root|Item=PostCommands|Command=LinkPGCN R|",
       "E command-loop VTS1.LANGUAGE1.PGC1 Post1|"},
      {"MenuWithoutCellsAfterItself", Root, "Item=PGC|Name=R|MenuType=Root|NextPGC=R|",
       "E command-loop VTS1.LANGUAGE1.PGC1|"},
      {"MenuWithoutCellsToAnother", Root, "Item=PGC|Name=N|Item=PreCommands|Command=LinkPGCN R|" + Root, ""},
      {"TwoTitleMenus", "Item=VTS|", "Item=PGC|Name=W|MenuType=TitleMenu|StillTime=255|Item=VTS|",
       "W menu-repeated VMG1.LANGUAGE1.PGC2|"},
      {"MenuThatHolds", Root, "Item=PGC|Name=R|MenuType=Root|StillTime=255|" + Cell, ""},
      {"MenuWithANext", Root, "Item=PGC|Name=N|NextPGC=R|" + Root, ""},

      {"NoTitleMenu", "MenuType=TitleMenu|", "", inFirst},
      {"NoTitleMenuInOneLanguage", "Item=VTS|", "Item=Language|LU=de|Item=PGC|Name=W|StillTime=255|Item=VTS|",
       inFirst},
      InTitle("NoAudioMenu", "CallSS RSM=0,AudioMenu", inTitle),
      {"TheRootMenu", "Command=Exit|", "Command=CallSS RSM=1,RootMenu|", ""},
      {"ResumeCellBeyond", "Command=Exit|", "Command=CallSS RSM=2,RootMenu|",
       "E target-missing VTS1.TITLE1.PGC1 Post1|"},
      InManager("NoSuchMenuOfTheSet", "JumpSS vts_1, vts_ttn_1 : AngleMenu", inManager),
      InManager("SetBeyond", "JumpSS vts_2, vts_ttn_1 : RootMenu", inManager),
      InManager("TitleOfTheSetBeyond", "JumpSS vts_1, vts_ttn_2 : RootMenu", inManager),
      InTitle("TitleBeyond", "JumpVTS_PTT ptt_1 @ vts_ttn_2", inTitle),
      InTitle("PartBeyond", "JumpVTS_PTT ptt_2 @ vts_ttn_1", inTitle),
      InFirstOfTwo("ProgramOfAnother", "LinkPGN G2, button=0", inTitle),
      InFirstOfTwo("PartOfAnother", "LinkPTT G2, button=0", inTitle),
      InFirstOfTwo("CellOfAnother", "LinkCN C2, button=0", inTitle),
      {"PgcOfTheSet", Disc, Replace(WithSecond(Cell), "JumpVTS_TT U", "LinkPGCN Q"), "",
       "W unreachable VTS1.TITLE2|"},
      {"PgcOfTitles", "Command=JumpVTS_TT T|", "Command=LinkPGCN Q|", "E command-target-missing VTS1/en/R/-|",
       "E command-target-missing VTS1/en/R/-|"},
      InFirst("CallInFirstPlay", "CallSS RSM=0,TitleMenu", "E target-forbidden FirstPGC FirstPGC1|"),
      InFirst("TitleOfASetInFirstPlay", "JumpVTS_TT T", "E target-forbidden FirstPGC FirstPGC1|"),
      InManager("PartInATitleMenu", "JumpVTS_PTT ptt_1 @ vts_ttn_1",
                "E target-forbidden VMG1.LANGUAGE1.PGC1 Pre1|"),
      InTitle("TitleOfTheDiscInATitle", "JumpTT T", "E target-forbidden VTS1.TITLE1.PGC1 Pre1|"),
      {"MenuAfterATitle", "Command=Exit|", "Command=JumpSS TitleMenu|",
       "E target-forbidden VTS1.TITLE1.PGC1 Post1|"},
      {"ButtonCommand", Cell, Cell + "Item=Menu List|Item=Menu Play|Button Command=RSM|",
       "E target-forbidden VTS1.TITLE1.PGC1.PG1.CELL1 Button1|W commands-without-button " + cell},
      {"EmptyProgram", "Command=NOP|" + Cell, "Command=LinkPGN G, button=0|Item=Program|Name=E|" + Cell, "",
       "W target-missing VTS1.TITLE1.PGC1 Pre1|"},

      InManager("MenuThatBeginsAgain", "LinkTopPGC", "E command-loop VMG1.LANGUAGE1.PGC1 Pre1|"),
      InManager("MenuThatLeadsToItself", "LinkPGCN V", "E command-loop VMG1.LANGUAGE1.PGC1 Pre1|"),
      {"MenuThatEndsInItself", "Command=JumpVTS_TT T|", "Command=NOP|Item=PostCommands|Command=LinkTopPGC|",
       "E command-loop VTS1.LANGUAGE1.PGC1 Post1|"},
      {"TitleThatEndsInBlack", "Command=Exit|", "Command=NOP|", "W disc-stops VTS1.TITLE1.PGC1|"},
      {"ButtonWithoutEffect", Disc, WithButtons(MenuPlay + "Button Command=NOP|" + ExitLine),
       "E button-idle VTS1.TITLE1.PGC1.PG1.CELL1 Button1|",
       dark + "W button-idle VTS1.TITLE1.PGC1.PG1.CELL1 Button1|"},
      {"MenuThatNobodyLeaves", Disc,
       Replace(WithButtons(MenuPlay + ExitLine + ExitLine), Root,
               "Item=PGC|Name=R|MenuType=Root|Item=PGCUOPS|" + noKeys + Cell + "CellStillTime=255|" +
                   MenuPlay + "Button Command=LinkTopPGC|Button Command=LinkTopPGC|"),
       "E page-trap VTS1.LANGUAGE1.PGC1.PG1.CELL1|",
       "W palette-dark VTS1.LANGUAGE1.PGC1|" + dark + "W page-trap VTS1.LANGUAGE1.PGC1.PG1.CELL1|"},
      {"ButtonsThatDoNotShow", Disc,
       Replace(WithButtons(MenuPlay + ExitLine + ExitLine), "Contrast=15,15,15,15", "Contrast=0,0,0,0"),
       "E buttons-hidden " + cell, dark + "W buttons-hidden " + cell},

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

      {"TwoAspects", Disc, WithOther(wide, "a.ac3"), "E video-mixed Track.1|"},
      {"TwoSizes", Disc, WithOther("Item=Video Play|VideoFile=narrow.m2v|", "a.ac3"),
       "E video-mixed Track.1|"},
      {"TwoKindsOfSound", Disc, WithOther(film, "stereo.wav"), "E audio-mixed Track.1.Audio1|"},
      {"TwoKindsOfPcm", Disc, WithOther(film, "stereo.wav", Replace(Disc, "a.ac3", "mono.wav")),
       "W audio-mixed Track.1.Audio1|"},
      {"PcmOfTwoSampleSizes", Disc, WithOther(film, "stereo.wav", Replace(Disc, "a.ac3", "fine.wav")),
       "E audio-mixed Track.1.Audio1|"},
      {"ACellWithoutAScene", "", "Item=Cell|Name=D|", noScene, noScene},
      {"PlaysAStreamThatIsNotThere", "Name=P|", "Name=P|Item=Audio Stream Decoding|Audio Stream 0 Decodes=5|",
       "E decoding-missing VTS1.TITLE1.PGC1|"},
      {"AMenuPlaysAStreamThatIsNotThere", Root,
       "Item=PGC|Name=R|MenuType=Root|StillTime=255|Item=Audio Stream Decoding|Audio Stream 0 Decodes=5|" +
           Cell,
       "E decoding-missing VTS1.LANGUAGE1.PGC1|"},
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
      {"ButtonsIntoTheNextScene", Disc,
       Replace(WithButtons(MenuPlay + ExitLine + ExitLine), SceneLine,
               SceneLine + "Item=Scene|Name=n|SceneTime=00:00:00:13|") +
           "Item=Program|Name=H|Item=Cell|Name=D|UsingScene=n|" + MenuPlay +
           "Button Command=NOP|Button Command=NOP|",
       "E button-commands-differ VTS1.TITLE1.PGC1.PG2.CELL1|",
       dark + "W button-commands-differ VTS1.TITLE1.PGC1.PG2.CELL1|"},
      {"ButtonsOfASceneThatNobodyPlays", Disc,
       Replace(Replace(WithButtons(MenuPlay + ExitLine + ExitLine), "UsingScene=s", "UsingScene=n"),
               SceneLine, SceneLine + "Item=Scene|Name=n|SceneTime=00:00:00:13|"),
       "E button-idle VTS1.TITLE1.PGC1.PG1.CELL1|", dark + "W button-idle VTS1.TITLE1.PGC1.PG1.CELL1|"},
      {"NoPaletteOfTheProject", Disc,
       WithButtons(MenuPlay + ExitLine + ExitLine) + "Item=Palette|Name=Reds|0=255,0,0|",
       "W palette-missing VTS1.TITLE1.PGC1|", dark},

      InTitle("GoToBeyondTheList", "GoTo 9", Replace(inTitle, "E ", "W ")),
      {"GoToOfACell", Cell, "Item=CellCommands|Command=GoTo 1|" + Cell + "Cell Command=1|",
       "W target-missing VTS1.TITLE1.PGC1 Cell1|"},
      InTitle("NoNextPgc", "LinkNextPGC", inTitle),
      InTitle("NoGoUpPgc", "LinkGoUpPGC", inTitle),
      InTitle("PartFarBeyond", "JumpVTS_PTT ptt_500 @ vts_ttn_9", inTitle),
      InTitle("NumberBeyond", "Mov GPRM1, 70000", "W command-number-beyond-field VTS1.TITLE1.PGC1 Pre1|"),
      InTitle("BlanksInSetStn", "SetSTN audio = 2", "W command-sets-nothing VTS1.TITLE1.PGC1 Pre1|"),
      InTitle("SystemRegisterOnTheLeft", "If ( SPRM1 == 3 ) NOP",
              "W command-left-no-register VTS1.TITLE1.PGC1 Pre1|"),
      InTitle("LinkAfterAJump", "Exit ; LinkTopPGC",
              "W command-link-lost VTS1.TITLE1.PGC1 Pre1|W disc-stops VTS1.TITLE1.PGC1|"
              "W unreachable VTS1.TITLE1|"),
      {"BitmapAsWide", "Name=F|Resolution=PAL|Item=Video Play|VideoFile=film.m2v|" + Sound + "a.ac3",
       "Name=F|DisplayMode=Only PanScan|Resolution=PAL|Item=Still Play|VideoFile=page.bmp",
       "W aspect-unlike-domain Track.0|"},
      {"FullScreenAsWide", "Name=F|", "Name=F|DisplayMode=Only PanScan|", "W aspect-unlike-domain Track.0|"},
  };
}

}  // namespace quorvelant::dead
