// How a loaded project is shown.
#include "edit/outline.h"

#include <sstream>

#include "edit/error_list.h"
#include "script/script_reader.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

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
  std::istringstream script(Fenced(page, "qvp"));
  const LoadResult load = LoadScript(script, 0, "p.qvp", project, {.Rules = Rules::Players}, ui);
  EXPECT_TRUE(load.MayAuthor() && load.SkippedCount == 0);
  EXPECT_EQ(OutlineText(OutlineOf(project)), Fenced(page, "text"));
}

TEST(ErrorList, IsSavedInSevenColumns) {
  const TempFolder folder;
  RecordingUi ui;
  const std::string path = folder / "errors.txt";
  ui.Texts = {path, std::string(), folder / "no/such.txt"};
  const std::vector<CommandError> rows{{"VTS1", "T", "P", "-", "LinkPGCN Q", "", "Pre Command"}};
  EXPECT_TRUE(SaveErrorList(rows, ui));
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
