#include "mux/vob_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "support/vob_walk.h"

namespace quorvelant {
namespace {

// Fills `count` sectors with their numbers.
void Fill(VobOutput& output, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t number = output.TotalSectors();
    const ByteSpan sector = output.NextSector();
    std::ranges::fill(sector, static_cast<std::uint8_t>(number));
    PutBytes(sector, 0, 4, number);
  }
}

class VobOutputTest : public testing::Test {
 protected:
  VobOutputTest() { files_.DimFiles(9); }
  TempFolder folder_;
  RecordingUi ui_;
  Random files_{ui_};
};

TEST_F(VobOutputTest, RewritesWhereverTheSectorHasGone) {
  folder_.Write("VTS_01_1.VOB", std::string(5 << 20, 'o'));  // an old file, longer than what comes
  VobOutput output(files_, {folder_ / "VTS_01"}, false, 700);
  Fill(output, 1000);
  EXPECT_EQ(output.FileNumber(), 2);
  EXPECT_EQ(output.FileSectors(), 300U);
  Bytes mark(SectorBytes, 0xEE);
  PutBytes(mark, 0, 4, 0xABCD);
  const std::uint32_t places[] = {999, 0, 699, 700, 513, 1599};  // in the buffer, in all files
  for (const std::uint32_t place : places) {
    if (place == 1599) {
      Fill(output, 600);
    }
    output.Rewrite(place, mark);
  }
  output.Finish();
  const Bytes all = SectorsOf({folder_ / "VTS_01_1.VOB", folder_ / "VTS_01_2.VOB", folder_ / "VTS_01_3.VOB"});
  ASSERT_EQ(all.size(), 1600 * SectorBytes);
  EXPECT_EQ(std::filesystem::file_size(folder_ / "VTS_01_1.VOB"), 700 * SectorBytes);
  for (std::uint32_t i = 0; i < 1600; ++i) {
    const bool marked = std::ranges::find(places, i) != std::end(places);
    ASSERT_EQ(GetBytes(all, i * SectorBytes, 4), marked ? 0xABCDU : i);
  }
}

TEST_F(VobOutputTest, AMenuIsOneFileAndNothingIsMadeAheadOfTime) {
  const std::string name = folder_ / "VIDEO_TS.VOB";
  VobOutput(files_, {name, true}).Finish();
  EXPECT_FALSE(std::filesystem::exists(name));
  VobOutput output(files_, {name, true}, false, 10);
  Fill(output, 10);
  EXPECT_ANY_THROW(output.NextSector()) << "a menu has one file";
  output.Finish();
  EXPECT_EQ(std::filesystem::file_size(name), 10 * SectorBytes);
}

}  // namespace
}  // namespace quorvelant
