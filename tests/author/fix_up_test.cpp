#include "author/fix_up.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "synthetic_disc.h"

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

class FixUpFolder : public testing::Test {
 protected:
  // A Video Manager of two sectors with titles of the sets named, and title sets of one sector each.
  void WriteDisc(const std::vector<int>& setOfTitle) {
    Bytes vmg(4096);
    PutBytes(vmg, 0xC4, 4, 1);
    PutBytes(vmg, 2048, 2, setOfTitle.size());
    for (std::size_t i = 0; i < setOfTitle.size(); ++i) {
      PutBytes(vmg, 2048 + 14 + 12 * i, 1, static_cast<std::uint64_t>(setOfTitle[i]));
    }
    for (const char* name : {"VIDEO_TS.IFO", "VIDEO_TS.BUP"}) {
      folder.Write(name, vmg);
    }
    for (const std::string name : {"VTS_01_0.IFO", "VTS_01_0.BUP", "VTS_02_0.IFO", "VTS_02_0.BUP",
                                   "VTS_01_0.VOB", "VTS_01_1.VOB", "VTS_02_1.VOB"}) {
      const std::size_t sectors = name.ends_with("0.VOB") ? 3 : name.ends_with("1.VOB") ? 5 : 1;
      folder.Write(name, std::string(SectorBytes * sectors, '\0'));
    }
  }
  std::uint64_t Field(const char* name, std::size_t offset) {
    const std::string text = TempFolder::Read(folder / name);
    return At(Bytes(text.begin(), text.end()), offset, 4);
  }

  TempFolder folder;
  RecordingUi ui;
};

TEST_F(FixUpFolder, PutsSumsIntoEveryIfoAndBackup) {
  WriteDisc({1, 2});
  ASSERT_EQ(FixUp(folder.Path().string(), ui), std::nullopt);
  for (const char* name : {"VIDEO_TS.IFO", "VIDEO_TS.BUP"}) {
    EXPECT_EQ(Field(name, 0x0C), 3U);
    EXPECT_EQ(Field(name, 0x1C), 1U);
    EXPECT_EQ(Field(name, 0xC0), 0U);            // no menu VOB
    EXPECT_EQ(Field(name, 2048 + 16), 4U);       // after the Video Manager
    EXPECT_EQ(Field(name, 2048 + 28), 4U + 10);  // after title set 1
  }
  EXPECT_EQ(Field("VTS_01_0.BUP", 0x0C), 9U);
  EXPECT_EQ(Field("VTS_01_0.IFO", 0xC0), 1U);
  EXPECT_EQ(Field("VTS_01_0.IFO", 0xC4), 4U);
  EXPECT_EQ(Field("VTS_02_0.IFO", 0xC0), 0U);
  EXPECT_EQ(Field("VTS_02_0.IFO", 0xC4), 0U);  // stays as the tables were written
}

TEST_F(FixUpFolder, AForeignFileStopsIt) {
  WriteDisc({2});
  folder.Write("notes.txt", "x");
  EXPECT_EQ(FixUp(folder.Path().string(), ui), "notes.txt");
  EXPECT_EQ(Field("VIDEO_TS.IFO", 0x0C), 0U);
}

TEST_F(FixUpFolder, TakesAnyBytesForATitleTable) {
  WriteDisc({250, 0});
  Bytes vmg(4096);
  PutBytes(vmg, 0xC4, 4, 1);
  PutBytes(vmg, 2048, 2, 0xFFFF);  // more titles than the file holds
  PatchIfo(vmg, 0, SumSectors(std::vector<DiscFile>{{"VIDEO_TS.IFO", 4096}}).Rows);
  EXPECT_EQ(FixUp(folder.Path().string(), ui), std::nullopt);
}

}  // namespace
}  // namespace quorvelant
