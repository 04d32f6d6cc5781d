// What is said about a loaded project, and how it is shown.
#include "check/check.h"

#include <sstream>

#include "base/text.h"
#include "edit/outline_json.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

CheckReport Check(const std::string& text, const std::string& name = "p.qvp") {
  RecordingUi ui;
  Project project;
  std::istringstream stream(text);
  const LoadResult load = LoadScript(stream, text.size(), name, project, {.Rules = Rules::Players}, ui);
  return CheckProject(project, load);
}

constexpr std::string_view OneTitle = "Item=VTS\nItem=Title\nName=T\nItem=PGC\nName=P\n";
constexpr std::string_view OneCell = "Item=Program\nItem=Cell\nUsingScene=s\n";

// A track of `audio` AC3 and `subs` subtitle streams without files.
std::string TrackOf(int audio, int subs) {
  std::string text = "Item=Track\n";
  for (int i = 0; i < audio; ++i) {
    text += "Item=Audio Play List\nStreamNumber=" + std::to_string(i) +
            "\nItem=Audio Play\nAudioFile=/nowhere/a.ac3\n";
  }
  for (int i = 0; i < subs; ++i) {
    text += "Item=SubPicture\nStreamNumber=" + std::to_string(i) + "\n";
  }
  return text + "Item=Scene\nName=s\n";
}

TEST(Check, EveryMessageWithItsPlace) {
  const std::string pgc(OneTitle);
  const std::string cell = pgc + std::string(OneCell);
  struct Case {
    std::string Script;
    Severity Level;
    std::string Title;
    std::string Text;
    std::string Place;
  };
  const Case cases[] = {
      {"Data=Settings\nNmae=1\n", Severity::Warning, "Skipped Line", "unknown key or item: \"Nmae=1\"",
       "p.qvp:2"},
      {"Data=Tracks\nItem=Scene\n", Severity::Warning, "Skipped Line",
       "has no meaning at this place: \"Item=Scene\"", "p.qvp:2"},
      {" { \n", Severity::Error, "No Project",
       "No line of the file is one of a project script: is this the right file?", "p.qvp"},
      {"Data=Tracks\n{\n}\n}\n{\nItem=Track\n{\nName=x\n}\n", Severity::Error, "Unclosed Brace",
       "The script ends within 1 open braces; is its end missing? The outermost opens in line 5", "p.qvp:9"},
      {"Item=Track\nResolution = Pall\n", Severity::Warning, "Doubtful Value",
       "is neither PAL nor NTSC: \"Resolution = Pall\"", "p.qvp:2"},
      {pgc + "StillTime=256\n", Severity::Error, "Still Time",
       "A still lasts 0 to 254 seconds, or for ever with 255; not 256", "VTS1.TITLE1.PGC1"},
      {"Item=Track\nItem=SubPicture\nStreamNumber=32\n", Severity::Warning, "Stream Number",
       "Subpicture streams have the numbers 0 to 31; not 32", "Track.0.Sub1"},
      {"Item=Track\nItem=SubPicture\nItem=SubPicture\nStreamNumber=0\n", Severity::Error, "Stream Number",
       "Subpicture stream number 0 is an earlier stream's of the same track", "Track.0.Sub2"},
      {"Item=Track\nItem=Scene\nName=a\nItem=Scene\nName=a\n", Severity::Error, "",
       "Errors in script; unrecognised command in current segment :- Name=a (Repeated)", "p.qvp:5"},
      {pgc + "Item=PreCommands\nCommand=LinkPGCN Q\n", Severity::Error, "Command Error",
       "Pre Command names a target that does not exist: \"LinkPGCN Q\"", "VTS1/T/P/-"},
      {cell, Severity::Error, "Unknown Scene", "The cell uses a scene that no track has: \"s\"",
       "VTS1.TITLE1.PGC1.PG1.CELL1"},
      {pgc + "NextPGC=Q\n", Severity::Warning, "Unknown Link",
       "The next PGC does not exist, so there is no such link: \"Q\"", "VTS1.TITLE1.PGC1"},
      {pgc + "Item=Program\nItem=Cell\nUsingScene=s\nCell Command=1\n" + TrackOf(0, 0), Severity::Warning,
       "Unknown Cell Command", "The cell names cell command 1; the PGC has 0", "VTS1.TITLE1.PGC1.PG1.CELL1"},
      {"Item=Track\nItem=Video Play\nVideoFile=gone.m2v\n", Severity::Error, "Missing Source",
       "The file does not exist: \"gone.m2v\"", "Track.0.Video1"},
      {"Item=Track\nItem=Audio Play List\n", Severity::Error, "Unknown Source",
       "The name of the first file does not end in .ac3, .wav or .dts, so its kind is unknown",
       "Track.0.Audio1"},
      {"Item=Track\nItem=Highlight Play\nItem=Button\nName=A\nUp=B\n", Severity::Warning, "Unknown Link",
       "Button \"A\" links to a button that does not exist, so it stays on itself: \"B\"", "Track.0.High1"},
      {TrackOf(3, 0) + cell, Severity::Warning, "Stream Not Multiplexed",
       "Audio stream 2 does not reach the disc in VTS1: DTS is not multiplexed, and a domain carries 2 AC3 "
       "or PCM "
       "and 4 subpicture streams",
       "Track.0.Audio3"},
      {TrackOf(9, 0) + cell, Severity::Error, "Maximum Audio Streams Error",
       "The quantity of audio streams exceeds 8.\nTry altering the languages / extensions across the tracks "
       "to match",
       "VTS1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Script);
    const CheckReport report = Check(c.Script);
    const bool found =
        std::any_of(report.Messages.begin(), report.Messages.end(), [&c](const Message& message) {
          return message.Level == c.Level && message.Title == c.Title && message.Text == c.Text &&
                 message.Place == c.Place;
        });
    EXPECT_TRUE(found);
    if (!found) {
      for (const Message& message : report.Messages) {
        std::printf("%d|%s|%s|%s\n", static_cast<int>(message.Level), message.Title.c_str(),
                    message.Text.c_str(), message.Place.c_str());
      }
    }
    EXPECT_EQ(report.ErrorCount + report.WarningCount, report.Messages.size());
  }
}

TEST(Check, ACleanProjectIsQuiet) {
  const TempFolder folder;
  folder.Write("a.m2v", "x");
  const std::string script = "Item=Track\nItem=Video Play\nVideoFile=a.m2v\nItem=Scene\nName=s\n" +
                             std::string(OneTitle) + "NextPGC=P\n" + std::string(OneCell);
  EXPECT_TRUE(Check(script, folder / "p.qvp").Messages.empty());
}

TEST(Check, TheErrorListIsSavedInSevenColumns) {
  const TempFolder folder;
  RecordingUi ui;
  const std::string path = folder / "errors.txt";
  ui.Texts = {path, std::string(), folder / "no/such.txt"};
  const std::vector<CommandError> rows{{"VTS1", "T", "P", "-", "LinkPGCN Q", "", "Pre Command"}};
  EXPECT_TRUE(SaveErrorList(rows, ui));
  EXPECT_EQ(ui.Questions[0].Title, "File name for error dump?");
  EXPECT_EQ(ui.Questions[0].Text, "Text Files|*.txt");
  EXPECT_EQ(
      TempFolder::Read(path),
      "VTS=VTS1\tTitle/Language=T\tPGC=P\tCELL=-\tCommand=LinkPGCN Q\tTo_Action=\tType=Pre Command\r\n");
  EXPECT_FALSE(SaveErrorList(rows, ui));
  EXPECT_TRUE(ui.Messages.empty());
  EXPECT_FALSE(SaveErrorList(rows, ui));
  EXPECT_EQ(ui.Messages.size(), 1U);
}

// The text between a page's ```<kind> and ```.
std::string Fenced(const std::string& page, const std::string& kind) {
  const std::string start = "```" + kind + "\n";
  const std::size_t from = page.find(start) + start.size();
  return page.substr(from, page.find("```", from) - from);
}

TEST(Outline, TheExampleOfTheFormatPageIsWhatItShows) {
  const std::string page = TempFolder::Read(SourceFile("docs/formats/script.md"));
  RecordingUi ui;
  Project project;
  const std::string script = Fenced(page, "qvp");
  std::istringstream stream(script);
  const LoadResult load = LoadScript(stream, script.size(), "p.qvp", project, {.Rules = Rules::Players}, ui);
  EXPECT_TRUE(load.MayAuthor());
  EXPECT_EQ(load.SkippedCount, 0U);
  EXPECT_EQ(OutlineText(OutlineOf(project)), Fenced(page, "text"));
}

TEST(Outline, JsonHoldsTheSameTree) {
  RecordingUi ui;
  Project project;
  const std::string script = TrackOf(3, 1) + "Name=\xE9\n" + std::string(OneTitle) + std::string(OneCell);
  std::istringstream stream(script);
  LoadScript(stream, script.size(), "p.qvp", project, {.Rules = Rules::Players}, ui);
  const auto json = nlohmann::ordered_json::parse(JsonText(OutlineJson(OutlineOf(project))));
  EXPECT_EQ(json["children"][0]["children"][0]["key"], "Track.0");
  EXPECT_EQ(json["children"][1]["children"][2]["children"][0]["children"][0]["name"], "P");
  const auto& map = json["children"][3]["children"][0]["children"];
  ASSERT_EQ(map.size(), 4U);
  EXPECT_EQ(map[1]["muxed"], true);
  EXPECT_EQ(map[2]["muxed"], false);
  EXPECT_EQ(map[2]["stream"], 2);
}

}  // namespace
}  // namespace quorvelant
