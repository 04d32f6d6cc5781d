// How a loaded project is shown.
#include <sstream>

#include "edit/error_list.h"
#include "edit/outline_json.h"
#include "script/script_reader.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

Project Loaded(const std::string& script) {
  RecordingUi ui;
  Project project;
  std::istringstream stream(script);
  const LoadResult load = LoadScript(stream, script.size(), "p.qvp", project, {.Rules = Rules::Players}, ui);
  EXPECT_TRUE(load.MayAuthor());
  EXPECT_EQ(load.SkippedCount, 0U);
  return project;
}

// The text between a page's ```<kind> and ```.
std::string Fenced(const std::string& page, const std::string& kind) {
  const std::string start = "```" + kind + "\n";
  const std::size_t from = page.find(start) + start.size();
  return page.substr(from, page.find("```", from) - from);
}

TEST(Outline, TheExampleOfTheFormatPageIsWhatItShows) {
  const std::string page = TempFolder::Read(SourceFile("docs/formats/script.md"));
  EXPECT_EQ(OutlineText(OutlineOf(Loaded(Fenced(page, "qvp")))), Fenced(page, "text"));
}

TEST(Outline, JsonHoldsTheSameTree) {
  std::string script = "Item=Track\n";
  for (const char* number : {"0", "1", "2"}) {
    script += std::string("Item=Audio Play List\nStreamNumber=") + number +
              "\nItem=Audio Play\nAudioFile=/nowhere/a.ac3\n";
  }
  script +=
      "Item=SubPicture\nItem=Scene\nName=s\nName=\xE9\n"
      "Item=VTS\nItem=Title\nName=T\nItem=PGC\nName=P\nItem=Program\nItem=Cell\nUsingScene=\xE9\n";
  const auto json = nlohmann::ordered_json::parse(JsonText(OutlineJson(OutlineOf(Loaded(script)))));
  EXPECT_EQ(json["children"][0]["children"][0]["key"], "Track.0");
  EXPECT_EQ(json["children"][1]["children"][2]["children"][0]["children"][0]["name"], "P");
  const auto& map = json["children"][3]["children"][0]["children"];
  ASSERT_EQ(map.size(), 4U);
  EXPECT_EQ(map[1]["muxed"], true);
  EXPECT_EQ(map[2]["muxed"], false);
  EXPECT_EQ(map[2]["stream"], 2);
}

TEST(ErrorList, IsSavedInSevenColumns) {
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

}  // namespace
}  // namespace quorvelant
