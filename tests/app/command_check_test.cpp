// `quorvelant check` and `quorvelant convert`, as a user runs them.
#include <nlohmann/json.hpp>

#include "command_run.h"
#include "support/folders.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

constexpr std::string_view Faulty =
    "Nmae=x\nItem=Track\nName=T\nItem=Video Play\nVideoFile=gone.m2v\nItem=Scene\nName=s\n"
    "Item=VTS\nItem=Title\nName=Feature\nItem=PGC\nName=P\nItem=PostCommands\nCommand=LinkPGCN Q\n"
    "Item=Program\nItem=Cell\nUsingScene=s\n";

TEST(CheckCommand, TheDemoIsClean) {
  const CommandRun run({"check", "--sources", SourceFile("examples/demo.qvp")});
  EXPECT_EQ(run.Status, ExitDone);
  EXPECT_THAT(run.Ui.Messages, testing::IsEmpty());
  EXPECT_THAT(run.Out, HasSubstr("size 720x576, aspect 4:3"));
  EXPECT_THAT(run.Out, HasSubstr(" commands: 0 errors, 0 warnings\n"));
}

TEST(CheckCommand, FaultsAreToldOnceAndFail) {
  const TempFolder folder;
  const std::string script = folder.Write("p.qvp", Faulty);
  const CommandRun plain({"check", script});
  EXPECT_EQ(plain.Status, ExitFailed);
  ASSERT_EQ(plain.Ui.Messages.size(), 3U);
  EXPECT_EQ(plain.Ui.Messages[0].Place, script + ":1");
  EXPECT_THAT(plain.Out, HasSubstr("17 lines, 1 commands: 2 errors, 1 warnings\n"));
  const CommandRun json({"check", "--json", script});
  EXPECT_EQ(json.Status, ExitFailed);
  EXPECT_TRUE(json.Ui.Messages.empty());
  const auto value = nlohmann::json::parse(json.Out);
  EXPECT_EQ(value["ok"], false);
  EXPECT_EQ(value["messages"].size(), 3U);
  EXPECT_EQ(value["commandErrors"][0]["Type"], "Post Command");
  EXPECT_EQ(value["outline"]["children"][0]["children"][0]["name"], "T");
  EXPECT_EQ(CommandRun({"check", folder / "none.qvp"}).Status, ExitFailed);
}

TEST(ConvertCommand, WritesTheOwnDialect) {
  const TempFolder folder;
  const std::string out = folder / "own.qvp";
  const CommandRun convert({"convert", SourceFile("tests/project/data/other_dialect.scp"), out});
  EXPECT_EQ(convert.Status, ExitDone);
  ASSERT_EQ(convert.Ui.Messages.size(), 1U);  // the script left the folder of its sources
  EXPECT_EQ(convert.Ui.Messages[0].Title, "Sources Not Found");
  const std::string own = TempFolder::Read(out);
  EXPECT_THAT(own, HasSubstr("\t\t\t\tVideoFile=media\\film.m2v\r\n"));
  // A script in its own dialect comes out as it was.
  EXPECT_EQ(CommandRun({"convert", out, out}).Status, ExitDone);
  EXPECT_EQ(TempFolder::Read(out), own);
  // What cannot be read leaves the target alone.
  EXPECT_EQ(CommandRun({"convert", folder / "none.scp", out}).Status, ExitFailed);
  EXPECT_EQ(TempFolder::Read(out), own);
}

}  // namespace
}  // namespace quorvelant
