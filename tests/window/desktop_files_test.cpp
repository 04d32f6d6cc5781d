// What an installation brings to a desktop: one name in all files, in the form that their readers want.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "desk/version.h"
#include "support/folders.h"
#include "support/temp_folder.h"
#include "window/icons.h"
#include "window/window_arguments.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

int RunShell(const std::string& command) {
  return std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe,bugprone-command-processor)
}

std::string DataFile(std::string_view ending) {
  return SourceFile(fmt::format("data/{}{}", ApplicationId, ending));
}

TEST(Installation, HasOneNameInAllFiles) {
  const std::string desktop = TempFolder::Read(DataFile(".desktop"));
  const std::string id(ApplicationId);
  EXPECT_THAT(desktop, HasSubstr("\nIcon=" + id + "\n"));
  EXPECT_THAT(desktop, HasSubstr("\nStartupWMClass=" + id + "\n"));
  EXPECT_THAT(desktop, HasSubstr("\nExec=quorvelant-window %F\n"));
  const std::string metainfo = TempFolder::Read(DataFile(".metainfo.xml"));
  EXPECT_THAT(metainfo, HasSubstr("<id>" + id + "</id>"));
  EXPECT_THAT(metainfo, HasSubstr("<launchable type=\"desktop-id\">" + id + ".desktop</launchable>"));
  const std::string type = "application/x-quorvelant-project";
  EXPECT_THAT(desktop, HasSubstr("\nMimeType=" + type + ";\n"));
  EXPECT_THAT(metainfo, HasSubstr("<mediatype>" + type + "</mediatype>"));
  EXPECT_THAT(TempFolder::Read(DataFile(".xml")), HasSubstr("<mime-type type=\"" + type + "\">"));
  EXPECT_TRUE(fs::exists(SourceFile("data/icons/" + id + ".svg")));
  EXPECT_THAT(TempFolder::Read(SourceFile("src/window/main.cpp")),
              HasSubstr("setDesktopFileName(Shown(ApplicationId))"));
}

TEST(Installation, TellsTheProgramsVersion) {
  const std::string version(ProgramVersion());
  EXPECT_THAT(TempFolder::Read(DataFile(".metainfo.xml")), HasSubstr("<release version=\"" + version + "\""));
  EXPECT_THAT(TempFolder::Read(SourceFile("debian/changelog")), HasSubstr("quorvelant (" + version + ")"));
  EXPECT_THAT(TempFolder::Read(SourceFile("docs/changes.md")), HasSubstr("\n## " + version + "\n"));
}

struct Judge {
  std::string Program;
  std::string Command;  // {} stands for the checkout
};

class DesktopFiles : public testing::TestWithParam<Judge> {};

TEST_P(DesktopFiles, PassTheirJudge) {
  if (RunShell("command -v " + GetParam().Program + " >/dev/null") != 0) {
    GTEST_SKIP() << GetParam().Program << " is not at hand";
  }
  const TempFolder folder;
  fs::create_directories(folder / "mime/packages");
  fs::copy(DataFile(".xml"), folder / "mime/packages/quorvelant.xml");
  EXPECT_EQ(RunShell(fmt::format("cd '{}' && {}", folder.Path().string(),
                                 fmt::format(fmt::runtime(GetParam().Command),
                                             SourceFile(fmt::format("data/{}", ApplicationId))))),
            0);
}

INSTANTIATE_TEST_SUITE_P(
    All, DesktopFiles,
    testing::Values(Judge{"desktop-file-validate", "desktop-file-validate '{}.desktop'"},
                    Judge{"appstreamcli", "appstreamcli validate --no-net '{}.metainfo.xml' >/dev/null"},
                    Judge{"update-mime-database",
                          "update-mime-database mime && grep -q '50:.*:\\*.qvp' mime/globs2 && : '{}'"}));

TEST(WindowArguments, AreFilesButForOptions) {
  EXPECT_THAT(ReadWindowArguments({"a.qvp", "b.m2v", "--", "-odd"}).Files,
              ElementsAre("a.qvp", "b.m2v", "-odd"));
  EXPECT_THAT(ReadWindowArguments({}).Printed, IsEmpty());
  EXPECT_THAT(ReadWindowArguments({"-h"}).Printed, HasSubstr("Usage: quorvelant-window"));
  EXPECT_THAT(ReadWindowArguments({"--paint"}).Fault, HasSubstr("\"--paint\""));
}

}  // namespace
}  // namespace quorvelant
