// What whole discs do not show of the sums that tables get when all files are there.
#include "author/fix_up.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

TEST(FixUp, SumsByNameInAnyCase) {
  const std::vector<DiscFile> files{
      {"video_ts.ifo", 6144}, {"VIDEO_TS.VOB", 20480},  {"VTS_02_0.VOB", 14336}, {"a.txt", 5},
      {"VTS_02_0.IFO", 8192}, {"VTS_02_1.VOB", 204800}, {"VTS_02_0.BUP", 8192},  {"b.txt", 5}};
  const DiscSectors sums = SumSectors(files);
  std::string rows;
  for (const SetSectors& row : sums.Rows) {
    rows += fmt::format("{} {} {}|", row.Ifo, row.MenuVob, row.Total);
  }
  EXPECT_EQ(rows + sums.Foreign, "3 10 13|0 0 0|4 7 115|a.txt");
}

TEST(FixUp, AForeignFileStopsItAndAnyBytesMayBeATitleTable) {
  Bytes vmg(4096);
  PutBytes(vmg, 0xC4, 4, 1);
  PutBytes(vmg, 2048, 2, 0xFFFF);  // more titles than the file holds
  PutBytes(vmg, 2048 + 14, 1, 250);
  const TempFolder folder;
  folder.Write("VIDEO_TS.IFO", vmg);
  folder.Write("notes.txt", "x");
  RecordingUi ui;
  EXPECT_EQ(FixUp(folder.Path().string(), ui), "notes.txt");
  EXPECT_EQ(TempFolder::Read(folder / "VIDEO_TS.IFO"), std::string(vmg.begin(), vmg.end()));
  std::filesystem::remove(folder / "notes.txt");
  EXPECT_EQ(FixUp(folder.Path().string(), ui), std::nullopt);
}

}  // namespace
}  // namespace quorvelant
