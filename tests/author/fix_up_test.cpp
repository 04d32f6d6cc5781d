#include "author/fix_up.h"

#include <gtest/gtest.h>

#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "synthetic_disc.h"

namespace quorvelant {
namespace {

TEST(FixUp, SumsByNameInAnyCase) {
  const auto kib = [](std::uint64_t sectors) { return sectors * 2048; };
  const DiscSectors sums = SumSectors(std::vector<DiscFile>{{"video_ts.ifo", kib(3)},
                                                            {"VIDEO_TS.VOB", kib(10)},
                                                            {"VTS_02_0.VOB", kib(7)},
                                                            {"VTS_02_0.IFO", kib(4)},
                                                            {"VTS_02_1.VOB", kib(100)},
                                                            {"VTS_02_0.BUP", kib(4)}});
  ASSERT_EQ(sums.Rows.size(), 3U);
  EXPECT_EQ(sums.Foreign, "");
  EXPECT_EQ(sums.Rows[0].Ifo, 3U);
  EXPECT_EQ(sums.Rows[0].MenuVob, 10U);
  EXPECT_EQ(sums.Rows[1].Total, 0U);
  EXPECT_EQ(sums.Rows[2].Total, 115U);
  EXPECT_EQ(sums.Rows[2].MenuVob, 7U);
  EXPECT_EQ(SumSectors(std::vector<DiscFile>{{"a.txt", 5}, {"VTS_01_0.IFO", 5}, {"b.txt", 5}}).Foreign,
            "a.txt");
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
      folder.Write(name, std::string(vmg.begin(), vmg.end()));
    }
    for (const char* name : {"VTS_01_0.IFO", "VTS_01_0.BUP", "VTS_02_0.IFO", "VTS_02_0.BUP"}) {
      folder.Write(name, std::string(2048, '\0'));
    }
    folder.Write("VTS_01_0.VOB", std::string(3 * 2048, 'm'));
    folder.Write("VTS_01_1.VOB", std::string(5 * 2048, 't'));
    folder.Write("VTS_02_1.VOB", std::string(5 * 2048, 't'));
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
