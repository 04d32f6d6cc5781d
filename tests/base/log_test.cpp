#include "base/log.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace quorvelant {
namespace {

TEST(Log, LinesTabsAndSeverities) {
  const TempFolder folder;
  const std::string file = folder.Write("run.LOG", "the run before");
  Log log(file);
  log.Reset();
  for (const int tabs : {-1, 0, 1, 3, 4}) {
    log.Output(std::to_string(tabs), 0, tabs);
  }
  log.SeverityLevel = 9;
  log.Output("too light", 8, 0);
  log.Header("WRITING IFO");
  log.WriteText("text", 1);
  log.EndHeader();
  log.SeverityLevel = -1;
  log.WriteText("never");
  EXPECT_EQ(TempFolder::Read(file),
            "-1\r\n0\r\n\t1\r\n\t\t\t3\r\n***** WRITING IFO *****\r\n\ttext\r\n***** ***** *****\r\n \r\n");
  log.Reset();
  log.Reset();
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(Log, IsActiveOnceItHasAFileAndCostsNothingWhereItCannotBeWritten) {
  Log log;
  EXPECT_FALSE(log.Active());
  log.WriteText("nowhere");
  const TempFolder folder;
  log.SetFile(folder / "no/such/run.LOG");
  EXPECT_TRUE(log.Active());
  log.WriteText("lost");
  EXPECT_FALSE(std::filesystem::exists(log.File()));
}

}  // namespace
}  // namespace quorvelant
