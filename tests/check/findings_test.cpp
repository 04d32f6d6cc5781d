// A project a row, with every finding on it: severity, code and place.
#include <fmt/format.h>

#include <regex>
#include <set>
#include <sstream>

#include "base/file_text.h"
#include "base/text.h"
#include "check/check.h"
#include "check/check_sources.h"
#include "check/disc_limits.h"
#include "check/source_judge.h"
#include "edit/file_scanner.h"
#include "picture/bmp.h"
#include "script/load_findings.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// The text with each number in turn.
std::string Repeat(int count, std::string_view text, int first = 0) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += fmt::format(fmt::runtime(text), first + i);
  }
  return all;
}

// Of each finding severity, code and place; the commonest parts of keys, and the track's name, are shortened.
std::string Words(const Findings& findings, const std::string& folder) {
  const std::pair<std::string, std::string> shorter[] = {
      {folder, ""}, {"Track.0.", ""}, {" entry ", "+"}, {"VTS1.TITLE1.", ""}, {"PGC1.PG1.CELL1", "CELL1"}};
  std::string words;
  for (const Message& finding : findings) {
    std::string place = finding.Place;
    for (const auto& [from, to] : shorter) {
      if (const std::size_t at = place.find(from); at != std::string::npos) {
        place.replace(at, from.size(), to);
      }
    }
    words += fmt::format("{} {} {}|", finding.Level == Severity::Error ? "E" : "W", finding.Code, place);
  }
  return words;
}

// Scripts; "|" ends a line.
const std::string Pgc = "Item=VTS|Item=Title|Name=T|Item=PGC|Name=P|";
const std::string CellOfS = "Item=Program|Item=Cell|UsingScene=s|";
const std::string SceneS = "Item=Video Play|VideoFile=pal.m2v|Item=Scene|Name=s|";
const std::string OneCell = Pgc + CellOfS + "Item=Track|" + SceneS;
const std::string Film = "Item=Track|Name=F|Item=Video Play|VideoFile=pal.m2v|FrameCount=250|";
const std::string Audio = "Item=Audio Play List|Item=Audio Play|AudioFile=";
const std::string Subtitles = "Item=Track|Name=F|FrameCount=250|Resolution=PAL|Item=SubPicture|";
const std::string Buttons = "Item=Track|Name=F|FrameCount=250|Resolution=PAL|Item=Highlight Play|";

std::string Sub(std::string_view start, std::string_view duration, std::string_view more = "",
                std::string_view file = "good.bmp") {
  return fmt::format(
      "Item=SubPicture Play|File={}|Start=00:00:{}|Duration=00:00:{}|Conversion(P)=255,255,255|{}", file,
      start, duration, more);
}

std::string Button(std::string_view name, std::string_view more = "", int bottom = 575) {
  return fmt::format("Item=Button|Name={}|Color Scheme=1|Highlight Area #1=0,0,719,{}|{}", name, bottom,
                     more);
}

struct Row {
  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

  std::string Name;
  std::string Script;
  std::string Found;
  bool Opens = false;
  void (*Change)(Project&) = nullptr;  // what no script says
};

std::vector<Row> Rows() {
  const std::string forced = "Item=SubPicture|" + Sub("00:00", "09:24", "Forced=Yes|");
  return {
      {"NoProject", " { |", "E no-project p.qvp|"},
      {"UnclosedBrace", "Data=Tracks|{|}|}|{|Item=Track|{|Name=x|}|", "E unclosed-brace p.qvp:9|"},
      {"DoubtfulColoursAndPlaces",
       "Item=Track|Item=SubPicture|Item=SubPicture Play|Conversion(P)=#ffffff|Conversion(Bg)=0, "
       "0,255|Origin=1;2|"
       "Origin=80,480|DisplayArea=0,2,719,573|Item=Highlight Play|ButtonMode2=narrow|Color Scheme 1|"
       "Selection Color=0 2 0 0|Action Color=0, 2, 0, 0|Item=Audio Play List|AudioLanguage=german |",
       "W doubtful-value p.qvp:4|W doubtful-value p.qvp:6|W doubtful-value p.qvp:8|W doubtful-value "
       "p.qvp:10|W "
       "doubtful-value p.qvp:12|E audio-unnamed Audio1|W subtitle-without-bitmap Sub1+1|W button-set-empty "
       "High1+1|"},
      {"SoundOfNoKind", "Item=Track|Item=Audio Play List|Item=Audio Play|AudioFile=film.xyz|",
       "E source-missing Audio1.AudioPlay1|E audio-kind-unknown Audio1|"},
      {"Command", Pgc + "Item=PreCommands|Command=Frobnicate|", "W command-unknown PGC1 Pre1|"},
      {"UnknownScene", Pgc + CellOfS, "E scene-unknown CELL1|"},
      {"UnknownPalette", Pgc + "PaletteUsed=Q|", "W palette-unknown PGC1|"},

      {"StillTime", OneCell + Pgc + "StillTime=256|", "E still-time VTS2.TITLE1.PGC1|"},
      {"CellStillTime", Pgc + CellOfS + "CellStillTime=256|Item=Track|" + SceneS, "E still-time CELL1|"},
      {"StillTimesThatAre", Pgc + "StillTime=255|" + CellOfS + "CellStillTime=0|Item=Track|" + SceneS, ""},
      {"Links", Pgc + "NextPGC=P|PrevPGC=p|GoUpPGC=Resume|",
       "W pgc-link-missing PGC1|W pgc-link-missing PGC1|"},
      {"LinksOfMenus", "Item=VTS|Item=Language|Item=PGC|Name=M|NextPGC=none|GoUpPGC=Resume|", ""},
      {"CellCommand", Pgc + CellOfS + "Cell Command=1|Item=Track|" + SceneS, "W cell-command-missing CELL1|"},
      {"TooManyTitleSets", "Item=VTS|", "E too-many-title-sets |", false,
       [](Project& project) {
         for (int i = 0; i < 99; ++i) {
           project.Disc.Add({});
         }
       }},
      {"TooManyTitles", "Item=VTS|" + Repeat(100, "Item=Title|Name=t{}|"), "E too-many-titles |"},
      {"TooManyPrograms", Pgc + Repeat(100, "Item=Program|"), "E too-many-programs PGC1|"},
      {"TooManyCells",
       Pgc + "Item=Program|" + Repeat(256, "Item=Cell|UsingScene=s|") + "Item=Track|" + SceneS,
       "E too-many-cells PGC1|"},
      {"AllThatThereCanBe",
       Pgc + Repeat(99, "Item=Program|") + "Item=PreCommands|" + Repeat(128, "Command=NOP|"), ""},

      {"StreamNumbers",
       "Item=Track|Item=SubPicture|StreamNumber=31|Item=SubPicture|StreamNumber=32|Item=SubPicture|"
       "StreamNumber=31|" +
           Audio + "a.ac3|StreamNumber=8|",
       "W stream-number-beyond Audio1|W stream-number-beyond Sub2|E stream-number-repeated Sub3|"},
      {"ThirdAudioStream", OneCell + Repeat(3, Audio + "a.ac3|StreamNumber={}|"),
       "W stream-not-multiplexed Audio3|"},
      {"NinthAudioStream", OneCell + Repeat(9, Audio + "a.ac3|StreamNumber={}|"),
       "W stream-number-beyond Audio9|" + Repeat(7, "W stream-not-multiplexed Audio{}|", 3) +
           "E too-many-audio-streams VTS1|"},

      {"FilesThatAreNotWhenOpened",
       "Item=Track|Name=F|Item=Video Play|VideoFile=sub|Item=Video Play|" + Audio +
           "gone.wav|Item=SubPicture|" + Sub("00:00", "00:01", "", "gone.bmp"),
       "E source-missing Video1|W source-unnamed Video2|E source-missing Audio1.AudioPlay1|E "
       "source-missing Sub1+1|",
       true},
      {"BitmapHeads",
       Subtitles + Sub("00:00", "00:10", "", "no.ac3") + Sub("01:00", "00:10", "Origin=800,0|"),
       "E subtitle-no-picture Sub1+1|E subtitle-outside Sub1+2|"},
      {"SmoothedBitmap",
       Subtitles + Sub("00:00", "00:10", "Conversion(E1)=1,1,1|Conversion(E2)=1,1,1|", "odd.bmp"),
       "W subtitle-odd-pixels Sub1+1|", true},
      {"GoodSources", Film + Audio + "sub\\a.ac3|" + Audio + "d.dts|StreamNumber=1|",
       "W audio-dts Audio2.AudioPlay1|", true},
      {"Refusals",
       "Item=Track|Name=F|Item=Video Play|VideoFile=a.ac3|Item=Video Play|VideoFile=mpeg1.m1v|Item=Video "
       "Play|VideoFile=small.bmp|Item=Video Play|VideoFile=still.bmp|" +
           Audio + "c.wav|" + Audio + "no.ac3|StreamNumber=1|",
       "E video-missing Video1|E video-mpeg1 Video2|E bitmap-size Video3|E bitmap-on-motion Video4|E "
       "audio-sample-rate Audio1.AudioPlay1|E audio-head Audio2.AudioPlay1|",
       true},
      {"Stills",
       "Item=Track|Name=F|Item=SlideShow Play|VideoFile=still.bmp|Item=SlideShow Play|VideoFile=pal.m2v|",
       "E not-still Video2|", true},
      {"OldIndex", "Item=Track|Name=F|Item=Video Play|VideoFile=indexed.m2v|",
       "W index-not-current indexed.m2v|", true},

      {"TimesOfSubtitles",
       Subtitles + Sub("01:00", "01:00") + Sub("01:10", "01:20") + Sub("01:05", "02:20") +
           Sub("01:05", "02:20") + Sub("06:00", "00:00") + Sub("09:00", "01:01") + Sub("10:00", "00:00"),
       "W subtitles-overlap Sub1+2|E subtitles-out-of-order Sub1+3|E subtitles-start-together Sub1+4|W "
       "subtitle-without-duration Sub1+5|W subtitle-ends-past-end Sub1+6|W subtitle-without-duration "
       "Sub1+7|W subtitles-overlap Sub1+7|W subtitle-starts-past-end Sub1+7|",
       true},
      {"ASubtitleThatEndsBeforeItStarts", Subtitles + Sub("05:00", "00:10"),
       "E subtitle-ends-before-start Sub1+1|", true,
       [](Project& project) { project.Tracks[0].SubStreams[0].SubPlays[0].End = "00:00:04:24"; }},
      // The 250 frames are 8 seconds and 10 frames.
      {"TimesOfNtsc",
       "Item=Track|Name=F|FrameCount=250|Resolution=NTSC|Item=SubPicture|" + Sub("08:00", "00:10") +
           Sub("08:10", "00:01"),
       "W subtitle-starts-past-end Sub1+2|", true},
      {"BitmapsOfSubtitles",
       Subtitles + Sub("00:00", "00:20", "Color=0,1,16,0|Contrast=0,1,2,-1|") +
           Sub("01:00", "00:20", "", "gone.bmp") + Sub("02:00", "00:20", "", "cut.bmp") +
           Sub("03:00", "00:20", "Origin=800,0|") + Sub("04:00", "00:20", "", "") +
           Sub("05:00", "00:20", "", "huge.png"),
       "W subtitle-without-bitmap Sub1+5|W subtitle-index-beyond Sub1+1|W subtitle-index-beyond Sub1+1|E "
       "source-missing Sub1+2|E subtitle-unfit Sub1+3|E subtitle-outside Sub1+4|E subtitle-unfit Sub1+6|",
       true},

      {"LinksOfButtons", Buttons + Button("A", "Up=B|Down=A|") + Button("B", "Left=b|"),
       "W button-link-missing High1+1|W buttons-without-subtitle High1+1|"},
      {"ButtonsThatShow",
       Buttons + "Start Time To Video=00:00:01:00|Duration=00:00:02:00|" + Repeat(36, Button("b{}")) + forced,
       "", true},
      {"ButtonsWrong",
       Buttons + "Start Time To Video=00:00:01:00|Duration=00:00:02:00|Forced Select=4|Forced Action=-1|" +
           "Offset=256|Selection End Time=00:00:00:24|Color Scheme 2|Action Color=0,16,0,0|" +
           Button("A", "Color Scheme=0|") + Button("A", "", 576) + Button("B") + forced,
       "W button-scheme-unknown High1+1|W button-area High1+1|W forced-button-missing High1+1|W "
       "forced-button-missing High1+1|W button-name-repeated High1+1|W button-value-beyond High1+1|W "
       "button-value-beyond High1+1|W button-selection-over High1+1|",
       true},
      {"NtscButtonsEndAtLine480",
       "Item=Track|Name=F|Resolution=NTSC|Item=Highlight Play|" + Button("A", "", 479) +
           Button("B", "", 480) + forced,
       "W button-area High1+1|", true},
      {"SpansOfButtons",
       Buttons + "Start Time To Video=00:00:01:00|Duration=00:00:02:00|" + Button("A") +
           "Item=Highlight Play|Start Time To Video=00:00:02:00|Duration=00:00:09:00|" +
           "Item=Highlight Play|Start Time To Video=00:00:01:24|Duration=00:00:00:01|" +
           Repeat(37, Button("b{}")) + "Item=Highlight Play|Start Time To Video=00:00:10:00|",
       "W buttons-without-subtitle High1+1|W buttons-end-past-end High1+2|W buttons-overlap High1+2|W "
       "button-set-empty High1+2|E buttons-out-of-order High1+3|E too-many-buttons High1+3|W "
       "buttons-without-subtitle High1+3|E buttons-outside-track High1+4|W button-set-empty High1+4|",
       true},
  };
}

// Sources of every kind.
class FindingsTest : public testing::TestWithParam<Row> {
 protected:
  FindingsTest() {
    const std::string bitmap = TextOf(WriteBmp(Picture(8, 8)));
    Picture smoothed(8, 8);
    smoothed.Set(1, 1, 0x808080);
    const std::string film = TextOf(BuildStream({.Gops = 1}));
    const std::string ac3 = Ac3Head(0x14);
    const std::pair<const char*, std::string> files[] = {
        {"good.bmp", bitmap},
        {"odd.bmp", TextOf(WriteBmp(smoothed))},
        {"huge.png", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x40\0\0\0\x08\0\x08\x02", 26)},
        {"cut.bmp", bitmap.substr(0, bitmap.size() - 20)},
        {"small.bmp", TextOf(WriteBmp(Picture(100, 100)))},
        {"still.bmp", TextOf(WriteBmp(Picture(720, 576)))},
        {"pal.m2v", film},
        {"indexed.m2v", film},
        {"mpeg1.m1v", TextOf(BuildStream({.Sequence = {.Mpeg2 = false}, .Gops = 1}))},
        {"a.ac3", ac3},
        {"sub/a.ac3", ac3},
        {"no.ac3", "no sound"},
        {"d.dts", TextOf(Bytes{0x7F, 0xFE, 0x80, 0x01, 0xFC, 0x3C, 0x7D, 0xB0, 0xB7, 0, 0, 0})},
        {"c.wav", TempFolder::Read(SampleWav({.Rate = 44100, .Seconds = 0.1}))}};
    for (const auto& [name, content] : files) {
      Folder.Write(name, content);
    }
    const auto now = std::filesystem::last_write_time(Folder.Path() / "indexed.m2v");
    std::filesystem::last_write_time(Folder.Write("indexed.m2v.qvi", ""), now - std::chrono::seconds(9));
  }

  Findings Check(const Row& row) {
    std::string script = row.Script;
    std::ranges::replace(script, '|', '\n');
    std::istringstream stream(script);
    Project project;
    const FileScanner scanner(Rules::Players, Ui);
    const LoadResult load = LoadScript(stream, script.size(), Folder / "p.qvp", project,
                                       {.Rules = Rules::Players, .Scanner = &scanner}, Quiet);
    if (row.Change != nullptr) {
      row.Change(project);
    }
    Findings findings = LoadFindings(load);
    Append(findings, CheckLimits(project));
    Append(findings, CheckNamesAndStreams(project, Rules::Classic));
    Append(findings,
           row.Opens ? OpenSources(project, Rules::Players, Pictures, Ui) : LookForSources(project, Ui));
    return findings;
  }

  TempFolder Folder;
  BmpLoader Pictures;
  RecordingUi Ui;
  RecordingUi Quiet;  // takes the boxes of the load, which its findings hold
};

TEST_P(FindingsTest, AreTheseAndNoOthers) {
  EXPECT_EQ(Words(Check(GetParam()), Folder / ""), GetParam().Found);
  EXPECT_TRUE(Ui.Messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Projects, FindingsTest, testing::ValuesIn(Rows()),
                         [](const auto& row) { return row.param.Name; });

TEST(SourceJudge, ReadsEachFileOnce) {
  const TempFolder folder;
  RecordingUi ui;
  SourceJudge judge(folder.Path().string(), Rules::Players, ui);
  folder.Write("a.m2v", StreamBuilder().Sequence({.Width = 480}).Group().Picture().Text());
  folder.Write("a.ac3", "\x0B\x77\x01\x01\x14\x40\x40\x01");
  for (const char* place : {"first", "second"}) {
    const auto video = judge.Video({"a.m2v", place});
    const auto audio = judge.Audio({"a.ac3", place}, "AC3");
    ASSERT_TRUE(video.Seen && audio.Seen) << place;
    EXPECT_TRUE(audio.Findings.empty());
    ASSERT_EQ(video.Findings.size(), 1U);
    EXPECT_EQ(video.Findings[0].Place, place);
    std::filesystem::remove(folder.Path() / "a.m2v");
    std::filesystem::remove(folder.Path() / "a.ac3");
  }
}

TEST(MessageCodes, NoTwoKindsShareOneAndEachFindingHasItsRow) {
  // Those of the plan and of the import, and of a disk that fails.
  std::string rows = " track-without-video audio-name-unknown audio-unreadable ";
  rows += TempFolder::Read(SourceFile("tests/check/dead_disc_sources.cpp"));
  rows += TempFolder::Read(SourceFile("tests/check/track_demand_test.cpp"));
  for (const Row& row : Rows()) {
    rows += row.Found;
  }
  rows += TempFolder::Read(SourceFile("tests/check/dead_disc_rows.cpp"));  // tables of their own
  rows += TempFolder::Read(SourceFile("tests/check/navigation_check_test.cpp"));
  const std::regex kind(R"(MessageKind (\w+)\{\s*\"([^\"]*)\")");
  std::set<std::string> codes;
  std::set<std::string> names;  // all rooms share one namespace
  for (const auto& room : std::filesystem::directory_iterator(SourceFile("src"))) {
    const std::string table = TempFolder::Read(room.path() / "messages.h");
    for (std::sregex_iterator at(table.begin(), table.end(), kind); at != std::sregex_iterator(); ++at) {
      const std::string code = (*at)[2];
      EXPECT_TRUE(names.insert((*at)[1]).second) << (*at)[1];
      EXPECT_TRUE(std::regex_match(code, std::regex("[a-z0-9]+(-[a-z0-9]+)*"))) << code;
      EXPECT_TRUE(codes.insert(code).second) << code;
      EXPECT_TRUE(room.path().filename() != "check" || Contains(rows, " " + code + " "))
          << code << " is found in no project";
    }
  }
  EXPECT_GT(codes.size(), 100U);
  const std::string limits = TempFolder::Read(SourceFile("docs/limits.md"));
  const std::regex quoted("`([a-z]+(-[a-z]+)+)`");
  for (std::sregex_iterator at(limits.begin(), limits.end(), quoted); at != std::sregex_iterator(); ++at) {
    EXPECT_TRUE(codes.contains((*at)[1])) << (*at)[1];
  }
}

}  // namespace
}  // namespace quorvelant
