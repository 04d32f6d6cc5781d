// What a script looks like, line for line, and how it gets onto the disk.
#include "script/script_writer.h"

#include <sys/stat.h>

#include <filesystem>

#include "base/text.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;
using testing::Not;

// The lines from the first `start` to the next `end`, both included, with LF for CR LF.
std::string Part(const std::string& script, const std::string& start, const std::string& end) {
  const std::size_t from = script.find(start + "\r\n");
  const std::size_t to = script.find(end + "\r\n", from);
  return Replace(script.substr(from, to + end.size() - from), "\r\n", "\n");
}

TEST(ScriptWriter, AnEmptyProjectKeepsTheLoneBrace) {
  EXPECT_EQ(
      WriteScript(Project()),
      "Data=Settings\r\n{\r\n\tDefaultFolder=\r\n}\r\n"
      "}\r\n"
      "Data=Structure\r\n{\r\n\tItem=FirstPGC\r\n\t{\r\n\t\tItem=FirstPGCUOPS\r\n\t\t{\r\n\t\t}\r\n"
      "\t\tItem=PreCommands\r\n\t\t{\r\n\t\t}\r\n\t\tItem=PostCommands\r\n\t\t{\r\n\t\t}\r\n\t}\r\n}\r\n"
      "Data=Palette\r\n{\r\n}\r\n");
}

Project SmallProject() {
  Project project;
  MakeDefaultStructure(project);
  Track track;
  track.Filled = track.HasAudio = track.HasSubs = track.HasHighlights = true;
  track.TrackName = "Pages";
  track.TrackType = "SlideShow";
  track.Standard = "NTSC";
  track.VideoPlays = {{.File = "a.m2v", .SlideDuration = "00:00:05:00", .DurationSet = true}};
  track.AudioStreams.resize(2);
  AudioStream& pcm = track.AudioStreams[0];
  pcm.AudioPlays = {{.File = "a.wav"}};
  pcm.StreamName = "One";
  pcm.Format = "PCM";
  pcm.Delay = -20;
  AudioStream& ac3 = track.AudioStreams[1];
  ac3.StreamName = "Two";
  ac3.Format = "AC3";
  ac3.StreamNumber = 1;
  pcm.Emphasis = pcm.Mute = ac3.Emphasis = ac3.Mute = 1;
  SubtitleStream& titles = track.SubStreams.emplace_back();
  titles.DisplayMode = "Wide";
  titles.DropFrame = 1;
  titles.StreamName = "Titles";
  SubPicturePlay play;
  play.File = "s.bmp";
  play.ConversionE2 = 0x030201;
  play.ColorE2 = 1;
  play.ColorE1 = 2;
  play.ColorP = 3;
  play.ColorBg = 4;
  play.X1 = -1;
  play.Y1 = 2;
  play.X2 = 719;
  play.Y2 = 479;
  play.Start = "00:00:01:15";
  play.End = "00:00:03:00";
  play.Duration = "not looked at";
  titles.SubPlays = {play, play};
  titles.SubPlays[1].Used = false;
  HighlightPlay highlight;
  highlight.ButtonModes[0] = "wide";
  highlight.Schemes[0].SelectionColor = {1, 2, 3, 4};
  HighlightButton& button = highlight.Buttons.emplace_back();
  button.Name = "B";
  button.Number = 1;
  button.AutoAction = true;
  button.Up = "U";
  button.Left = "L";
  button.Areas[0] = {.X1 = 1, .X2 = 3, .Y1 = 2, .Y2 = 4};
  track.HighlightPlays.push_back(highlight);
  track.Scenes.push_back({"Pages_Scene1", 45, UopMask().set()});
  project.Tracks.Add(track);
  project.Palettes.Add({.Key = "Reds", .PaletteColors = {0x030201}});
  project.FirstPlay.Uops.set();
  return project;
}

TEST(ScriptWriter, ATrackLineForLine) {
  const std::string script = WriteScript(SmallProject());
  EXPECT_EQ(Part(script, "\tItem=Track", "\t\tItem=Highlight List"), R"(	Item=Track
	{
		Name=Pages
		DisplayMode=Not Specified
		Resolution=NTSC
		Item=SlideShow Play List
		{
			Item=SlideShow Play
			{
				VideoFile=a.m2v
				SlideDuration=00:00:05:00
			}
			FrameCount=0
			ExtendSlideForAudio=No
			ExtendFinalSubtitle=No
		}
		Item=Audio Play List
		{
			Name=One
			AudioLanguage=English
			AudioExtension=Normal
			Delay=-20
			StreamNumber=0
			Emphasis=Yes
			Mute=1
			Item=Audio Play
			{
				AudioFile=a.wav
			}
		}
		Item=Audio Play List
		{
			Name=Two
			AudioLanguage=English
			AudioExtension=Normal
			Delay=0
			StreamNumber=1
		}
		Item=SubPicture
		{
			Name=Titles
			DisplayMode=Wide
			DropFrame=1
			SubLanguage=English
			SubExtension=Normal
			StreamNumber=0
			Item=SubPicture Play
			{
				File=s.bmp
				Origin=-1,2
				DisplayArea=-1,2,719,479
				Forced=No
				Start=00:00:01:15
				Duration=00:00:01:15
				Conversion(Bg)=0,0,0
				Conversion(P)=0,0,0
				Conversion(E2)=1,2,3
				Conversion(E1)=0,0,0
				Color=4,3,1,2
				Contrast=0,0,0,0
			}
		}
		Item=Highlight List)");
  EXPECT_EQ(Part(script, "\t\tItem=Highlight List", "\t\t\t\tColor Scheme 2"),
            R"(		Item=Highlight List
		{
			Item=Highlight Play
			{
				Start Time To Video=
				Duration=
				Forced Action=0
				Forced Select=0
				Selection End Time=
				Offset=0
				Numerical Button #=0
				ButtonMode1=wide
				ButtonMode2=
				ButtonMode3=
				Color Scheme 1
				{
					Selection Color=4, 3, 1, 2
					Selection Contrast=0, 0, 0, 0
					Action Color=0, 0, 0, 0
					Action Contrast=0, 0, 0, 0
				}
				Color Scheme 2)");
  EXPECT_EQ(Part(script, "\t\t\t\tItem=Button", "\t\t\t\t}"), R"(				Item=Button
				{
					AutoAction=Yes
					Button #=1
					Name=B
					Color Scheme=1
					Up=U
					Down=
					Left=L
					Right=
					Highlight Area #1=1, 2, 3, 4
					Highlight Area #2=0, 0, 0, 0
					Highlight Area #3=0, 0, 0, 0
				})");
  const std::string scene = Part(script, "\t\tItem=Scene List", "\t}");
  EXPECT_THAT(
      scene,
      HasSubstr("\t\t\t\tSceneTime=00:00:01:15\n\t\t\t\tUOPS\n\t\t\t\t{\n\t\t\t\t\tStop=Prohibited\n"));
  EXPECT_THAT(scene, HasSubstr("GoUp=Prohibited"));
  EXPECT_THAT(scene, Not(HasSubstr("ButtonSelect")));
}

TEST(ScriptWriter, StructureAndPalettesLineForLine) {
  Project project = SmallProject();
  VTS_P& set = *project.Disc.Item(2);
  set.MenuLetterBoxed = set.TitleLetterBoxed = set.TitleCameraMode = true;
  Title_P& title = *set.Title.Item(1);
  title.UOPTimePlay = title.UOPPTTPlay = true;
  Cell_P cell;
  cell.CellName = "C";
  cell.SceneUsed = "Pages_Scene1";
  cell.ButtonCommands.resize(1);
  AddCommand(cell.ButtonCommands[0].Commands, "Button", "NOP");
  PG_P program;
  program.PGName = "P";
  program.Cell.Add(cell);
  title.PGC.Item(1)->PG.Add(program);
  const std::string script = WriteScript(project);
  const std::string firstPlay = Part(script, "\tItem=FirstPGC", "\tItem=VMG");
  EXPECT_THAT(firstPlay, HasSubstr("\t\t\tStop=Prohibited\n\t\t\tTimeOrPTTSearch=Prohibited"));
  EXPECT_THAT(firstPlay, HasSubstr("\t\t\tCommand=JumpTT VTS1_Title1\n"));
  // A menu has no previous PGC and the first entry of its maps alone.
  EXPECT_EQ(Part(script, "\tItem=VTS", "\t\tItem=Title"), R"(	Item=VTS
	{
		Item=Language
		{
			LU=en
			Item=PGC
			{
				Name=VTS1_English_PGC1
				PaletteUsed=Default
				NextPGC=
				GoUpPGC=
				MenuType=Root
				Playback Mode=Sequential Playback
				Repeat=0
				StillTime=0
				Item=PGCUOPS
				{
				}
				Item=PreCommands
				{
					Command=JumpVTS_TT VTS1_Title1
				}
				Item=PostCommands
				{
				}
				Item=CellCommands
				{
				}
				Item=Audio Stream Decoding
				{
					Audio Stream 0 Decodes=0
				}
				Item=SubPicture Stream Decoding for Track #0
				{
					SubPicture Track for 4:3 Decodes #0=0
					SubPicture Track for PanScan Decodes #0=0
					SubPicture Track for Wide Decodes #0=0
					SubPicture Track for Letter Decodes #0=0
				}
			}
		}
		Item=Title)");
  EXPECT_EQ(Part(script, "\t\t\t\tItem=Program", "\t\t\t\tItem=Audio Stream Decoding"),
            R"(				Item=Program
				{
					Name=P
					Item=Cell
					{
						Name=C
						UsingScene=Pages_Scene1
						CellStillTime=0
						Cell Command=0
						Restrict Cell Access=Permitted
						Seamless Flag=NotSeamless
						Item=Menu List
						{
							Item=Menu Play
							{
								Button Command=NOP
							}
						}
					}
				}
				Item=Audio Stream Decoding)");
  const std::string titlePart = Part(script, "\t\tItem=Title", "Data=Palette");
  for (const char* lines :
       {"\t\t\tItem=TitleUOPS\n\t\t\t{\n\t\t\t\tTimePlay=Prohibited\n\t\t\t\tPTTPlay=Prohibited\n\t\t\t}\n",
        "\t\t\t\tNextPGC=\n\t\t\t\tPrevPGC=\n\t\t\t\tGoUpPGC=\n\t\t\t\tPlayback Mode=",
        "\t\t\t\tItem=SubPicture Stream Decoding for Track #31\n\t\t\t\t{\n"
        "\t\t\t\t\tSubPicture Track for 4:3 Decodes #31=31\n",
        "\t\t\t\tAudio Custom Policy=Maximum\n\t\t\t\tAudio Stream 0=No\n",
        "\t\t\t\tSubPicture Stream 31=No\n\t\t\t}\n\t\t}\n\t}\n\tMenu Source Picture "
        "LetterBoxed=LetterBoxed\n"
        "\tTitle Source Picture LetterBoxed=LetterBoxed\n\tFilm Camera Mode=Film Mode\n}\n"}) {
    EXPECT_THAT(titlePart, HasSubstr(lines));
  }
  EXPECT_THAT(script, HasSubstr("\tItem=Palette\r\n\t{\r\n\t\tName=Reds\r\n\t\t0=1,2,3\r\n"));
}

TEST(ScriptWriter, SavingAsksReportsAndKeepsTheOldFile) {
  const TempFolder folder;
  const std::string path = folder.Write("p.qvp", "old");
  Project project = SmallProject();
  RecordingUi ui;
  ui.Texts = {path, std::string(), std::nullopt};
  EXPECT_TRUE(SaveDataPath(project, ui));
  EXPECT_EQ(ui.Questions[0].Title, "Please choose your output location");
  EXPECT_EQ(ui.Questions[0].Text, "Project Files (*.Qvp)|*.Qvp");
  ASSERT_EQ(ui.Messages.size(), 1U);
  EXPECT_EQ(ui.Messages[0].Title, "Script Success");
  EXPECT_EQ(ui.Messages[0].Text, "Script file has been saved to: " + path);
  EXPECT_EQ(project.ScriptFile, path);
  EXPECT_EQ(TempFolder::Read(path), WriteScript(project));
  // An empty answer and none do nothing.
  EXPECT_FALSE(SaveDataPath(project, ui));
  EXPECT_FALSE(SaveDataPath(project, ui));
  EXPECT_EQ(ui.Messages.size(), 1U);
  // Where the new file cannot be made the old one stays.
  std::filesystem::create_directory(path + ".new");
  EXPECT_FALSE(SaveData(Project(), path, ui));
  EXPECT_EQ(ui.Messages.back().Text, "Unable to write script file: " + path);
  EXPECT_EQ(TempFolder::Read(path), WriteScript(project));
}

}  // namespace
}  // namespace quorvelant
