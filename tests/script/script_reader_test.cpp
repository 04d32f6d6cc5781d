// What single lines, whole dialects and broken files come to.
#include "script/script_reader.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "base/text.h"
#include "golden.h"
#include "script/load_findings.h"
#include "script/script_writer.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Loaded {
  explicit Loaded(std::string_view text, const LoadOptions& options = {},
                  const std::string& path = "project.qvp", const std::function<bool()>& stop = {}) {
    Target.DestinationFolder = "given";
    Ui.StopWhen = stop;
    std::istringstream stream{std::string(text)};
    Result = LoadScript(stream, text.size(), path, Target, options, Ui);
  }
  const PGC_P& TitlePgc() const { return *Target.Disc.Item(2)->Title.Item(1)->PGC.Item(1); }

  RecordingUi Ui;
  quorvelant::Project Target;
  LoadResult Result;
};

std::string OtherDialect() {
  return TempFolder::Read(Fixture("other_dialect.scp"));
}

std::vector<std::string> Told(const std::vector<Message>& messages) {
  std::vector<std::string> told;
  for (const Message& message : messages) {
    told.push_back(fmt::format("{} {} {}: {}", message.Place, message.Code, message.Title, message.Text));
  }
  return told;
}

TEST(ScriptReader, FolderGetsItsName) {
  for (const auto& [line, folder] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
           {"DefaultFolder=C:\\out\\", "C:\\out\\VIDEO_TS"},
           {"DefaultFolder=C:\\out", "C:\\out\\VIDEO_TS"},
           {"DefaultFolder=C:\\out\\video_ts", "C:\\out\\video_ts"},
           {"DVD Root Directory=/home/a/", "/home/a/VIDEO_TS"},
           {"DefaultFolder=/home/a", "/home/a/VIDEO_TS"},
           {"DefaultFolder=", "given"},  // an empty one is passed over
       }) {
    EXPECT_EQ(Loaded(line).Target.DestinationFolder, folder) << line;
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

TEST(ScriptReader, StatusWordsInTheirOrder) {
  const std::string always =
      "Creating Track List|Creating DVD Layout|Creating Palette List|Creating Command Structure|Import "
      "Complete";
  EXPECT_EQ(fmt::format("{}", fmt::join(Loaded(OtherDialect()).Ui.StatusWords, "|")),
            "Loading Scenario|Loading Default Information|Loading Data Files|Loading Track Folder|"
            "Creating SubPicture & Audio ID's|" +
                always);
  EXPECT_EQ(fmt::format("{}", fmt::join(Loaded("").Ui.StatusWords, "|")), always);
}

// Tracks of two standards, each with a scene on the disc.
std::string TwoStandards(std::string_view second) {
  std::string text = "Item=Track\nResolution=PAL\nItem=Scene\nName=a\nItem=Track\nResolution=";
  text.append(second).append("\nItem=Scene\nName=b\n");
  text += "Item=VTS\nItem=Title\nItem=PGC\nItem=Program\nItem=Cell\nUsingScene=a\nItem=Cell\nUsingScene=b\n";
  return text;
}

TEST(ScriptReader, FailuresAreToldOnceAndExactly) {
  const auto repeated = [](const std::string& line, int count) {
    std::string lines;
    for (int i = 0; i < count; ++i) {
      lines += line;
    }
    return lines;
  };
  struct Case {
    std::string Script;
    std::string_view Told;
    std::string_view LastStatus;
  };
  for (const Case& c : {
           Case{"Item=Track\nItem=Scene\nName=a\nItem=Track\nItem=Scene\n\tName=a\n",
                "project.qvp:6 scene-repeated : Errors in script; unrecognised command in current segment "
                ":- Name=a (Repeated)",
                ""},
           Case{TwoStandards("NTSC"),
                "project.qvp standards-mixed DataLayout Error: Different video standards (PAL / NTSC) are "
                "being attempted to be included in the structure",
                "Import Failed"},
           Case{"Item=FirstPGC\nItem=PreCommands\nCommand=JumpTT Nowhere\n",
                "project.qvp command-errors Command Error: There were some errors noted in the script file "
                "- An error list will now be shown",
                "Import Complete"},
           Case{std::string("\xFF\xFE", 2) + std::string("I\0t\0", 4),
                "project.qvp:1 script-utf16 Script Error: The script is UTF-16 text; please save it as "
                "plain (ANSI or UTF-8) text: project.qvp",
                ""},
           Case{repeated("Item=VTS\n", 100),
                "project.qvp:100 script-too-large Script Error: The script holds more than a disc can: "
                "title sets",
                ""},
           Case{"Item=VTS\n" + repeated("Item=Title\n", 16385),
                "project.qvp:16386 script-too-large Script Error: The script holds more than a disc can: "
                "16384 lines \"Item=Title\"",
                ""},
       }) {
    const Loaded loaded(c.Script);
    EXPECT_FALSE(loaded.Result.MayAuthor());
    EXPECT_THAT(Told(loaded.Ui.Messages), ElementsAre(c.Told));
    EXPECT_EQ(loaded.Ui.StatusWords.empty() ? "" : loaded.Ui.StatusWords.back(), c.LastStatus);
  }
}

TEST(ScriptReader, AMixOfStandardsLeavesTheDefaultStructure) {
  const Loaded mixed(TwoStandards("NTSC"));
  EXPECT_EQ(mixed.Target.Tracks.Count(), 0U);
  ASSERT_EQ(mixed.Target.Disc.Count(), 2U);
  EXPECT_EQ(mixed.Target.Disc.Item(2)->Title.Item(1)->TitleName, "VTS1_Title1");
  for (const char* alike : {"pal", ""}) {  // one that is not known fits any
    const Loaded loaded(TwoStandards(alike));
    EXPECT_TRUE(loaded.Result.Loaded);
    EXPECT_EQ(loaded.Target.Standard(), "PAL");
  }
}

TEST(LoadFindings, NamesThatNothingBearsAreLeftOutAndLongListsCut) {
  const Loaded loaded(
      "Item=VTS\nItem=Title\nItem=PGC\nPaletteUsed=Reds\nItem=Program\nItem=Cell\nUsingScene=gone\n");
  EXPECT_EQ(loaded.TitlePgc().PaletteName, "Default");
  EXPECT_EQ(loaded.TitlePgc().PG.Item(1)->Cell.Item(1)->SceneUsed, "gone");
  EXPECT_EQ(loaded.TitlePgc().PG.Item(1)->Cell.Item(1)->SegmentUsed, -1);
  std::string many;
  for (std::size_t i = 0; i < MostSkippedKept + 7; ++i) {
    many += "Item=Track\nFrameCount=x\ny\n";
  }
  const std::vector<Message> cut = LoadFindings(Loaded(many).Result);
  ASSERT_EQ(cut.size(), 2 * MostSkippedKept + 2);
  EXPECT_EQ(cut[MostSkippedKept].Text, "Lines passed over besides: 7");
  EXPECT_EQ(cut.back().Text, "Doubtful values besides: 7");
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
  const NamedScanner scanner;
  std::vector<std::size_t> analysed;
  const auto analyse = [&analysed](Project&, std::size_t track) { analysed.push_back(track); };
  const Loaded loaded(text, {.Scanner = &scanner, .AnalyseChapters = analyse}, "folder/project.qvp");
  const Project& project = loaded.Target;
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
  const auto analyse = [](Project& project, std::size_t track) {
    project.Tracks[track].Scenes.erase(project.Tracks[track].Scenes.begin() + 1);
  };
  const Loaded loaded(text, {.AnalyseChapters = analyse});
  EXPECT_THAT(loaded.Result.Notes, IsEmpty());  // the analysis told of it
  const auto& cells = loaded.TitlePgc().PG.Item(1)->Cell;
  EXPECT_EQ(cells.Item(1)->pScene, 0);
  EXPECT_EQ(cells.Item(2)->SegmentUsed, -1);
  EXPECT_EQ(cells.Item(3)->pScene, 1);
}

TEST(ScriptReader, ScenesWithoutANameGetOneOfTheirOwn) {
  const Loaded loaded("Item=Track\nName=T\nItem=Track\nName=T\nItem=Scene\nItem=Scene\nName=T_Scene1_2\n");
  EXPECT_EQ(loaded.Target.Tracks[0].Scenes.at(0).Name, "T_Scene1");
  EXPECT_EQ(loaded.Target.Tracks[1].Scenes.at(0).Name, "T_Scene1_2_2");
}

TEST(ScriptReader, OtherDialectIsReadWholeAndConverts) {
  Loaded other(OtherDialect());
  EXPECT_THAT(Told(LoadFindings(other.Result)), IsEmpty());
  ASSERT_TRUE(other.Result.MayAuthor());
  EXPECT_TRUE(other.Result.IsScenarist);
  const std::string own = WriteScript(other.Target);
  ExpectGolden("other_dialect.qvp", own);
  const Loaded back(own);
  EXPECT_THAT(Told(LoadFindings(back.Result)), IsEmpty());
  EXPECT_EQ(WriteScript(back.Target), own);
  EXPECT_EQ(back.TitlePgc().PostCommands, other.TitlePgc().PostCommands);
  EXPECT_EQ(back.TitlePgc().PostCommands.at(1).CommandHex, "2007000000000002");  // "LinkCN 2"
  EXPECT_EQ(other.Target.Tracks[0].Aspect, "16:9");
  EXPECT_EQ(other.TitlePgc().PG.Item(1)->Cell.Item(1)->SegmentUsed, 0);
}

TEST(ScriptReader, AnyBytesAreTaken) {
  const std::string own = TempFolder::Read(Fixture("every_key.qvp"));
  for (std::size_t length = 0; length < own.size(); length += 61) {
    Loaded(own.substr(0, length));
  }
  std::mt19937 random(5);
  std::string noise(200'000, '\0');
  std::ranges::generate(noise, [&random] { return static_cast<char>(random()); });
  EXPECT_GT(Loaded(noise).Result.SkippedCount, 0U);
  // Own lines in any order: every key meets every place.
  const std::string both = own + OtherDialect();
  std::vector lines = Split(both, "\n");
  for (int round = 0; round < 20; ++round) {
    std::ranges::shuffle(lines, random);
    const Loaded loaded(fmt::format("{}\n", fmt::join(lines, "\n")));
    EXPECT_TRUE(loaded.Result.LineCount == lines.size() || !loaded.Result.Failure.Text.empty());
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
  for (int i = 0; i < 400'000; ++i) {
    many += i % 2 == 0 ? "Item=Track\n" : "{{{{\n";
  }
  const Loaded tracks(many);
  EXPECT_EQ(tracks.Target.Tracks.Count(), 200'000U);
  EXPECT_EQ(tracks.Result.SkippedCount, 200'000U);
  EXPECT_EQ(tracks.Result.Skipped.size(), MostSkippedKept);
}

TEST(ScriptReader, AWishToStopEndsTheLoad) {
  std::string text;
  while (text.size() < 1'000'000) {
    text += "Item=Track\n";
  }
  const Loaded loaded(text, {}, "p.qvp", [] { return true; });
  EXPECT_FALSE(loaded.Result.Loaded);
  EXPECT_EQ(loaded.Ui.Messages.at(0).Text, "The load of the script was stopped: p.qvp");
}

}  // namespace
}  // namespace quorvelant
