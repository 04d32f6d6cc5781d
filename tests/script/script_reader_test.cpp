// What single lines, whole dialects and broken files come to.
#include "script/script_reader.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <fstream>
#include <random>
#include <sstream>

#include "golden.h"
#include "project_generator.h"
#include "script/load_findings.h"
#include "script/messages.h"
#include "script/script_writer.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Loaded {
  explicit Loaded(std::string_view text, const LoadOptions& options = {}) {
    std::istringstream stream{std::string(text)};
    Result = LoadScript(stream, text.size(), "project.qvp", Target, options, Ui);
  }
  RecordingUi Ui;
  quorvelant::Project Target;
  LoadResult Result;
};

std::string OtherDialect() {
  return TempFolder::Read(Fixture("other_dialect.scp"));
}

TEST(ScriptReader, FolderGetsItsName) {
  struct Case {
    std::string_view Line;
    std::string_view Folder;
  };
  const Case cases[] = {
      {"DefaultFolder=C:\\out\\", "C:\\out\\VIDEO_TS"},
      {"DefaultFolder=C:\\out", "C:\\out\\VIDEO_TS"},
      {"DefaultFolder=C:\\out\\video_ts", "C:\\out\\video_ts"},
      {"DVD Root Directory=/home/a/", "/home/a/VIDEO_TS"},
      {"DefaultFolder=/home/a", "/home/a/VIDEO_TS"},
      {"DefaultFolder=", "given"},  // an empty one is passed over
  };
  for (const Case& c : cases) {
    RecordingUi ui;
    Project project;
    project.DestinationFolder = "given";
    std::istringstream stream{std::string(c.Line)};
    LoadScript(stream, c.Line.size(), "project.qvp", project, {}, ui);
    EXPECT_EQ(project.DestinationFolder, c.Folder) << c.Line;
  }
}

TEST(ScriptReader, ValuesAndKeysAsAPersonWritesThem) {
  const Loaded loaded(
      "\xEF\xBB\xBF"
      "ITEM=track\n\tna\tme=Tr\tack\n"
      "item=Video Play\nVideoFile=a=b.m2v\n"
      "Item=SubPicture\nDropFrame = 1\n Name = Sub = 1 \n"
      "item=vmg\nitem=language\nlu=en\nitem=pgc\nNAME= kept \nGoUpPGC=NonExistent\nNextPGC=none\n"
      "Item=PreCommands\nCommand=SetSTN audio=1\n"
      "Item=Program\nItem=Cell\nRestrict Cell Access=Prohibited\nSeamless Flag=0");
  EXPECT_EQ(loaded.Result.SkippedCount, 0U);
  const Track& track = loaded.Target.Tracks[0];
  EXPECT_EQ(track.TrackName, "Track");
  EXPECT_EQ(track.VideoPlays[0].File, "a=b.m2v");
  EXPECT_EQ(track.SubStreams[0].StreamName, "Sub = 1");
  EXPECT_EQ(track.SubStreams[0].DropFrame, 1);
  const PGC_P& pgc = *loaded.Target.Disc.Item(1)->Lang.Item(1)->PGC.Item(1);
  EXPECT_EQ(pgc.PGCName, " kept ");
  EXPECT_EQ(pgc.GoUpPGC, "none");
  EXPECT_EQ(pgc.NextPGC, "none");
  EXPECT_EQ(pgc.PreCommands[0].FullCommand, "SetSTN audio=1");
  EXPECT_EQ(pgc.PreCommands[0].Key, "Pre1");
  EXPECT_TRUE(pgc.PG.Item(1)->Cell.Item(1)->RestrictedAccess);
  EXPECT_TRUE(pgc.Uops.none());
}

TEST(ScriptReader, SkippedLinesAreNamed) {
  const Loaded loaded(
      "Nmae=x\r\n{\r\n}\r\n\r\nItem=Cell\r\nName=y\r\nColour=red\r\nItem=VMG\r\nItem=PGC\r\n"
      "Jump=Prohibited\r\nShoe #1=2\r\n");
  const std::vector<SkippedLine> expected{
      {1, "Nmae=x", UnknownLine},     {5, "Item=Cell", MisplacedLine}, {6, "Name=y", MisplacedLine},
      {7, "Colour=red", UnknownLine}, {9, "Item=PGC", MisplacedLine},  {10, "Jump=Prohibited", UnknownLine},
      {11, "Shoe #1=2", UnknownLine},
  };
  EXPECT_EQ(loaded.Result.Skipped, expected);
  EXPECT_TRUE(loaded.Result.Loaded);
  EXPECT_THAT(loaded.Ui.Messages, IsEmpty());
}

TEST(ScriptReader, OddValuesAreTakenAndDoubted) {
  constexpr std::string_view ATrack = "Item=Track\n";
  constexpr std::string_view APgc = "Item=VMG\nItem=Language\nLU=en\nItem=PGC\n";
  struct Case {
    std::string_view Head;
    std::string_view Good;  // with blanks around "=", as people write
    std::string_view Odd;
  };
  for (const Case& c : {
           Case{ATrack, "FrameCount = -12", "FrameCount=many"},
           Case{ATrack, "Resolution = ntsc", "Resolution=PALL"},
           Case{ATrack, "DisplayMode = Only LetterBox", "DisplayMode=Boxed"},
           Case{ATrack, "ExtendSlideForAudio = yes", "ExtendSlideForAudio=Maybe"},
           Case{"Item=Track\nItem=Scene\n", "SceneTime = 00:00:03;21", "SceneTime=3 s"},
           Case{"Item=Track\nItem=Scene\n", "SceneTime = ", "SceneTime=00:00:03"},
           Case{"Item=Track\nItem=Scene\n", "SceneTime = 1:2:3:4", "SceneTime=00:00:03:00:00"},
           Case{"Item=Track\nItem=Audio Stream\n", "AudioLanguage = german", "AudioLanguage=Gremlin"},
           Case{"Item=Track\nItem=Audio Stream\n", "AudioExtension = 1", "AudioExtension=Large"},
           Case{"Item=Track\nItem = SubPicture\n", "SubExtension = large", "SubExtension=Tiny"},
           Case{"Item=VMG\nItem=Language\n", "LU = German", "LU=german0"},
           Case{APgc, "MenuType = Audio menu", "MenuType=Roots"},
           Case{APgc, "Playback Mode = random playback", "Playback Mode=Backwards"},
           Case{APgc, "SubPicture Track for Wide Decodes #1 = 2", "SubPicture Track for Wide Decodes #1=two"},
       }) {
    SCOPED_TRACE(c.Odd);
    const Loaded good(std::string(c.Head).append(c.Good));
    EXPECT_EQ(good.Result.SkippedCount + good.Result.DoubtedCount, 0U);
    const Loaded odd(std::string(c.Head).append(c.Odd));
    EXPECT_EQ(odd.Result.SkippedCount, 0U);
    ASSERT_EQ(odd.Result.Doubted.size(), 1U);
    EXPECT_EQ(odd.Result.Doubted[0].Text, c.Odd);
  }
  EXPECT_EQ(Loaded("Item=VMG\nItem=Language\nItem=PGC\nSubPicture Track for Wide Decodes #32=1\n")
                .Result.Skipped.at(0)
                .Reason,
            NumberTooLarge);
  EXPECT_EQ(Loaded("Item = Data Folder\nItem=Track\nResolution=?\n").Result.DoubtedCount, 0U);
}

TEST(ScriptReader, StatusWordsInTheirOrder) {
  EXPECT_THAT(Loaded("").Ui.StatusWords,
              ElementsAre("Creating Track List", "Creating DVD Layout", "Creating Palette List",
                          "Creating Command Structure", "Import Complete"));
  EXPECT_THAT(Loaded(OtherDialect()).Ui.StatusWords,
              ElementsAre("Loading Scenario", "Loading Default Information", "Loading Data Files",
                          "Loading Track Folder", "Creating SubPicture & Audio ID's", "Creating Track List",
                          "Creating DVD Layout", "Creating Palette List", "Creating Command Structure",
                          "Import Complete"));
}

// Tracks of two standards, each with a scene on the disc.
std::string TwoStandards(std::string_view second) {
  std::string text = "Item=Track\nResolution=PAL\nItem=Scene\nName=a\nItem=Track\nResolution=";
  text.append(second).append("\nItem=Scene\nName=b\n");
  text += "Item=VTS\nItem=Title\nItem=PGC\nItem=Program\nItem=Cell\nUsingScene=a\nItem=Cell\nUsingScene=b\n";
  return text;
}

TEST(ScriptReader, FailuresAreToldOnceAndExactly) {
  struct Case {
    std::string_view Code;
    std::string Text;
    std::string Title;
    std::string Box;
    std::string Place;
    std::string LastStatus;
  };
  const Case cases[] = {
      {"scene-repeated", "Item=Track\nItem=Scene\nName=a\nItem=Track\nItem=Scene\n\tName=a\n", "",
       "Errors in script; unrecognised command in current segment :- Name=a (Repeated)", "project.qvp:6", ""},
      {"standards-mixed", TwoStandards("NTSC"), "DataLayout Error",
       "Different video standards (PAL / NTSC) are being attempted to be included in the structure",
       "project.qvp", "Import Failed"},
      {"command-errors", "Item=FirstPGC\nItem=PreCommands\nCommand=JumpTT Nowhere\n", "Command Error",
       "There were some errors noted in the script file - An error list will now be shown", "project.qvp",
       "Import Complete"},
      {"script-utf16", std::string("\xFF\xFE", 2) + std::string("I\0t\0", 4), "Script Error",
       "The script is UTF-16 text; please save it as plain (ANSI or UTF-8) text: project.qvp",
       "project.qvp:1", ""},
      {"script-too-large",
       std::string("Item=VTS\n") +
           [] {
             std::string sets;
             for (int i = 0; i < 99; ++i) {
               sets += "Item=VTS\n";
             }
             return sets;
           }(),
       "Script Error", "The script holds more than a disc can: title sets", "project.qvp:100", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Code);
    const Loaded loaded(c.Text);
    EXPECT_FALSE(loaded.Result.MayAuthor());
    ASSERT_EQ(loaded.Ui.Messages.size(), 1U);
    EXPECT_EQ(loaded.Ui.Messages[0].Code, c.Code);
    EXPECT_EQ(loaded.Ui.Messages[0].Title, c.Title);
    EXPECT_EQ(loaded.Ui.Messages[0].Text, c.Box);
    EXPECT_EQ(loaded.Ui.Messages[0].Place, c.Place);
    EXPECT_EQ(loaded.Ui.StatusWords.empty() ? "" : loaded.Ui.StatusWords.back(), c.LastStatus);
  }
}

TEST(ScriptReader, AMixOfStandardsLeavesTheDefaultStructure) {
  const Loaded mixed(TwoStandards("NTSC"));
  EXPECT_EQ(mixed.Target.Tracks.Count(), 0U);
  ASSERT_EQ(mixed.Target.Disc.Count(), 2U);
  EXPECT_EQ(mixed.Target.Disc.Item(2)->Title.Item(1)->TitleName, "VTS1_Title1");
  const Loaded alike(TwoStandards("pal"));
  EXPECT_TRUE(alike.Result.Loaded);
  EXPECT_EQ(alike.Target.Standard(), "PAL");
}

TEST(ScriptReader, ACommandErrorHasItsRow) {
  const Loaded loaded(
      "Item=VTS\nItem=Title\nName=T\nItem=PGC\nName=P\nItem=PostCommands\nCommand=LinkPGCN Q\n");
  ASSERT_EQ(loaded.Result.Commands.Errors.size(), 1U);
  EXPECT_EQ(loaded.Result.Commands.Errors[0].Command, "LinkPGCN Q");
  EXPECT_EQ(loaded.Result.Commands.Errors[0].Type, "Post Command");
  EXPECT_TRUE(loaded.Target.ScriptHadCommandErrors);
  EXPECT_TRUE(loaded.Result.Loaded);
}

TEST(ScriptReader, UnknownNamesStayAndAreNoted) {
  const Loaded loaded(
      "Item=VTS\nItem=Title\nItem=PGC\nPaletteUsed=Reds\nItem=Program\nItem=Cell\nUsingScene=gone\n");
  const PGC_P& pgc = *loaded.Target.Disc.Item(2)->Title.Item(1)->PGC.Item(1);
  EXPECT_EQ(pgc.PaletteName, "Default");
  EXPECT_EQ(pgc.PG.Item(1)->Cell.Item(1)->SceneUsed, "gone");
  EXPECT_EQ(pgc.PG.Item(1)->Cell.Item(1)->SegmentUsed, -1);
}

TEST(LoadFindings, LinesTheirEndCommandsAndNamesInTheirOrder) {
  std::string text = "Nmae=x\nItem=FirstPGC\nItem=PreCommands\nCommand=JumpTT Nowhere\n";
  text += "Item=VTS\n{\nItem=Title\nItem=PGC\nStillTime=long\nPaletteUsed=Reds\n";
  text += "Item=Program\nItem=Cell\nUsingScene=gone\n";
  std::vector<std::string> found;
  for (const Message& message : LoadFindings(Loaded(text).Result)) {
    found.push_back(fmt::format("{} {} {}: {}", message.Place, message.Code, message.Title, message.Text));
  }
  EXPECT_THAT(
      found,
      ElementsAre(
          R"(project.qvp:1 skipped-line Skipped Line: unknown key or item: "Nmae=x")",
          R"(project.qvp:9 doubtful-value Doubtful Value: is no number: "StillTime=long")",
          "project.qvp:13 unclosed-brace Unclosed Brace: The script ends within 1 open braces; is its end "
          "missing? The outermost opens in line 6",
          "-/-/FirstPGC/- command-target-missing Command Error: Pre Command names a target that does not "
          "exist: "
          "\"JumpTT Nowhere\"",
          R"(VTS1.TITLE1.PGC1.PG1.CELL1 scene-unknown Unknown Scene: The cell uses a scene that no track has: "gone")",
          "VTS1.TITLE1.PGC1 palette-unknown Unknown Palette: The PGC names a palette that the project does "
          "not "
          "have, so \"Default\" is used: \"Reds\""));
  std::string many;
  for (std::size_t i = 0; i < MostSkippedKept + 7; ++i) {
    many += "Item=Track\nFrameCount=x\ny\n";
  }
  const std::vector<Message> cut = LoadFindings(Loaded(many).Result);
  ASSERT_EQ(cut.size(), 2 * MostSkippedKept + 2);
  EXPECT_EQ(cut[MostSkippedKept].Text, "7 more lines were passed over");
  EXPECT_EQ(cut.back().Text, "7 more values are doubtful");
  EXPECT_TRUE(LoadFindings(Loaded(" { \n").Result).at(0).Is(message::NoProject));
}

// Tells of files by their names.
class NamedScanner : public SourceScanner {
 public:
  std::optional<VideoTraits> Video(const std::string& path) const override {
    return path == "folder/ntsc.m2v" ? std::optional<VideoTraits>({"NTSC", "720x480", "16:9", "MPEG2"})
                                     : std::nullopt;
  }
  std::optional<AudioTraits> Audio(const std::string& path, std::string_view format) const override {
    return path == "folder/a.ac3" && format == "AC3" ? std::optional<AudioTraits>({.ChannelCount = 6})
                                                     : std::nullopt;
  }
};

TEST(ScriptReader, FirstFilesFillWhatTheScriptLacks) {
  const std::string text =
      "Item=Track\nDisplayMode=Both PanScan and LetterBox\nItem=Video Play\nVideoFile=ntsc.m2v\n"
      "FrameCount=900\n"
      "Item=Audio Play List\nItem=Audio Play\nAudioFile=a.ac3\nItem=Audio Play List\nItem=Audio Play\n"
      "AudioFile=B.WAV\nItem=Scene\nName=s\nSceneTime=00:00:10;15\n"
      "Item=Track\nItem=Video Play\nVideoFile=gone.m2v\n"
      "Item=VTS\nItem=Title\nItem=PGC\nItem=Program\nItem=Cell\nUsingScene=s\n";
  RecordingUi ui;
  Project project;
  const NamedScanner scanner;
  std::vector<std::size_t> analysed;
  std::istringstream stream(text);
  LoadScript(stream, text.size(), "folder/project.qvp", project,
             {.Scanner = &scanner,
              .AnalyseChapters = [&analysed](Project&, std::size_t track) { analysed.push_back(track); }},
             ui);
  const Track& track = project.Tracks[0];
  EXPECT_EQ(track.Standard, "NTSC");
  EXPECT_EQ(track.Resolution, "720x480");
  EXPECT_TRUE(track.Pan && track.Letter);
  EXPECT_EQ(track.VideoFrames, 900);
  EXPECT_EQ(track.Scenes[0].Frame, 315);  // read before the standard was known
  EXPECT_EQ(track.AudioStreams[0].Traits.ChannelCount, 6);
  EXPECT_EQ(track.AudioStreams[1].Format, "PCM");
  EXPECT_EQ(track.AudioStreams[1].StreamNumber, 1);
  EXPECT_FALSE(track.IDsLocked);
  EXPECT_EQ(project.Disc.Item(2)->VTSTitleInfo.Aspect, "16:9");
  EXPECT_EQ(project.Tracks[1].Standard, "");
  EXPECT_EQ(project.Tracks[1].TrackName, "Track_2");
  EXPECT_THAT(analysed, ElementsAre(0U, 1U));
}

TEST(ScriptReader, CellsFollowTheScenesThatTheAnalysisLeaves) {
  std::string text = "Item=Track\nItem=Scene\nName=a\nItem=Scene\nName=b\nItem=Scene\nName=c\n";
  text += "Item=VTS\nItem=Title\nItem=PGC\nItem=Program\n";
  text += "Item=Cell\nUsingScene=a\nItem=Cell\nUsingScene=b\nItem=Cell\nUsingScene=c\n";
  RecordingUi ui;
  Project project;
  std::string stage;
  std::istringstream stream(text);
  const auto analyse = [&](Project& whole, std::size_t track) {
    stage = ui.StatusWords.back();
    whole.Tracks[track].Scenes.erase(whole.Tracks[track].Scenes.begin() + 1);
  };
  const LoadResult result =
      LoadScript(stream, text.size(), "p.qvp", project, {.AnalyseChapters = analyse}, ui);
  EXPECT_EQ(stage, "Creating Track List");
  EXPECT_THAT(result.Notes, IsEmpty());  // the analysis told of it
  const auto& cells = project.Disc.Item(2)->Title.Item(1)->PGC.Item(1)->PG.Item(1)->Cell;
  EXPECT_EQ(cells.Item(1)->pScene, 0);
  EXPECT_EQ(cells.Item(2)->SegmentUsed, -1);
  EXPECT_EQ(cells.Item(3)->pScene, 1);
}

TEST(ScriptReader, ScenesWithoutANameGetOneOfTheirOwn) {
  const Loaded loaded("Item=Track\nName=T\nItem=Track\nName=T\nItem=Scene\nItem=Scene\nName=T_Scene1_2\n");
  EXPECT_EQ(loaded.Target.Tracks[0].Scenes.at(0).Name, "T_Scene1");
  EXPECT_EQ(loaded.Target.Tracks[1].Scenes.at(0).Name, "T_Scene1_2_2");
}

TEST(ScriptReader, OtherDialectIsReadWhole) {
  const Loaded loaded(OtherDialect());
  for (const SkippedLine& line : loaded.Result.Skipped) {
    ADD_FAILURE() << line.Number << ": " << line.Text << ": " << line.Reason;
  }
  ASSERT_TRUE(loaded.Result.MayAuthor());
  EXPECT_TRUE(loaded.Result.IsScenarist);
  ExpectGolden("other_dialect.qvp", WriteScript(loaded.Target));
  // What a script does not carry.
  EXPECT_EQ(loaded.Target.Tracks[0].Aspect, "16:9");
  EXPECT_FALSE(loaded.Target.Tracks[0].IDsLocked);
  EXPECT_TRUE(loaded.Target.Disc.Item(2)->Title.Item(1)->PGC.Item(1)->PG.Item(1)->Cell.Item(1)->SegmentUsed ==
              0);
}

TEST(ScriptReader, OtherDialectConvertsToAnEqualScript) {
  const Loaded other(OtherDialect());
  const std::string own = WriteScript(other.Target);
  const Loaded back(own);
  EXPECT_EQ(back.Result.SkippedCount, 0U);
  EXPECT_TRUE(back.Result.MayAuthor());
  EXPECT_EQ(WriteScript(back.Target), own);
  const auto commands = [](const Project& project) {
    return project.Disc.Item(2)->Title.Item(1)->PGC.Item(1)->PostCommands;
  };
  EXPECT_EQ(commands(back.Target), commands(other.Target));
  EXPECT_EQ(commands(back.Target).at(1).CommandHex, "2007000000000002");  // "LinkCN 2"
  // Numbers that the other dialect leaves to the order, and the set's own words, are no part of a script.
  Project expected = other.Target;
  for (Track& track : expected.Tracks) {
    track.IDsLocked = true;
    track.Aspect.clear();
    for (AudioStream& stream : track.AudioStreams) {
      stream.StreamNumberFixed = true;
    }
    for (SubtitleStream& stream : track.SubStreams) {
      stream.StreamNumberFixed = true;
    }
  }
  EXPECT_EQ(back.Target.Tracks, expected.Tracks);
  EXPECT_EQ(back.Target.FirstPlay, expected.FirstPlay);
  EXPECT_EQ(back.Target.Palettes, expected.Palettes);
}

TEST(ScriptReader, DataListsNameTheirParts) {
  const TempFolder folder;
  const std::string script =
      folder.Write("p.scp",
                   "Object=Data Folder\nItem=Video\nName=F\nFile=film.CFX\nItem=Video\n"
                   "Name=G\nFile=gone.cfx\nItem=Video Track\nItem=Main Video Play\nName=F\n");
  folder.Write("film.CFX", "# parts\r\none.m2v\r\n\r\ntwo.m2v");
  RecordingUi ui;
  Project project;
  const LoadResult result = LoadScriptFile(script, project, {}, ui);
  ASSERT_EQ(project.Tracks[0].VideoPlays.size(), 2U);
  EXPECT_EQ(project.Tracks[0].VideoPlays[1].File, "two.m2v");
  ASSERT_EQ(result.Skipped.size(), 1U);
  EXPECT_EQ(result.Skipped[0].Reason, UnreadableList);
}

TEST(ScriptReader, AnyBytesAreTaken) {
  const std::string own = WriteScript(GeneratedProject(11));
  for (std::size_t length = 0; length < own.size(); length += 61) {
    Loaded(own.substr(0, length));
  }
  std::mt19937 random(5);
  std::string noise(200'000, '\0');
  std::generate(noise.begin(), noise.end(), [&random] { return static_cast<char>(random()); });
  Loaded(noise).Ui.Messages.clear();
  // Own lines in any order: every key meets every place.
  std::vector<std::string> lines;
  std::istringstream split(own + OtherDialect());
  for (std::string line; std::getline(split, line);) {
    lines.push_back(line + "\n");
  }
  for (int round = 0; round < 20; ++round) {
    std::shuffle(lines.begin(), lines.end(), random);
    std::string mixed;
    for (const std::string& line : lines) {
      mixed += line;
    }
    const Loaded loaded(mixed);
    EXPECT_EQ(loaded.Result.LineCount,
              loaded.Result.Failure.Text.empty() ? lines.size() : loaded.Result.LineCount);
  }
}

TEST(ScriptReader, LongLinesAndManyItems) {
  const std::string huge(10'000'000, 'x');
  const Loaded line("Item=Track\nName=" + huge + "\nName=short\nItem=Video Play\n" + huge);
  EXPECT_EQ(line.Target.Tracks[0].TrackName, "short");
  ASSERT_EQ(line.Result.Skipped.size(), 2U);
  EXPECT_EQ(line.Result.Skipped[0].Reason, LineTooLong);
  EXPECT_EQ(line.Result.Skipped[0].Text.size(), MostSkippedText);
  EXPECT_EQ(line.Result.Skipped[1].Number, 5U);

  const std::string name(100'000, 'n');
  EXPECT_EQ(Loaded("Item=Track\nName=" + name).Target.Tracks[0].TrackName, name);

  std::string many;
  for (int i = 0; i < 1'000'000; ++i) {
    many += i % 2 == 0 ? "Item=Track\n" : "{{{{\n";
  }
  const Loaded tracks(many);
  EXPECT_EQ(tracks.Target.Tracks.Count(), 500'000U);
  EXPECT_EQ(tracks.Result.SkippedCount, 500'000U);
  EXPECT_EQ(tracks.Result.Skipped.size(), MostSkippedKept);
}

TEST(ScriptReader, FilesThatAreNone) {
  const TempFolder folder;
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {folder / "gone.qvp", folder.Path().string(), pipe}) {
    RecordingUi ui;
    Project project;
    EXPECT_FALSE(LoadScriptFile(path, project, {}, ui).Loaded);
    ASSERT_EQ(ui.Messages.size(), 1U);
    EXPECT_EQ(ui.Messages[0].Text, "Unable to read script file: " + path);
  }
}

TEST(ScriptReader, AWishToStopEndsTheLoad) {
  std::string text;
  while (text.size() < 1'000'000) {
    text += "Item=Track\n";
  }
  RecordingUi ui;
  ui.StopWhen = [] { return true; };
  Project project;
  std::istringstream stream(text);
  EXPECT_FALSE(LoadScript(stream, text.size(), "p.qvp", project, {}, ui).Loaded);
  EXPECT_EQ(ui.Messages.at(0).Text, "The load of the script was stopped: p.qvp");
}

}  // namespace
}  // namespace quorvelant
