#include "mux/vob_output.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/recording_ui.h"
#include "support/temp_folder.h"

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

std::uint32_t NumberAt(const std::string& file, std::size_t sector) {
  const Bytes bytes(file.begin() + static_cast<std::ptrdiff_t>(sector * SectorBytes),
                    file.begin() + static_cast<std::ptrdiff_t>(sector * SectorBytes + 4));
  return static_cast<std::uint32_t>(GetBytes(bytes, 0, 4));
}

TEST(VobOutput, RewritesWhereverTheSectorHasGone) {
  const TempFolder folder;
  RecordingUi ui;
  Random files(ui);
  files.DimFiles(9);
  folder.Write("VTS_01_1.VOB", std::string(5 << 20, 'o'));  // an old file, longer than what comes
  VobOutput output(files, folder / "VTS_01", false, 700);
  Fill(output, 1000);
  EXPECT_EQ(output.FileNumber(), 2);
  EXPECT_EQ(output.FileSectors(), 300U);
  Bytes mark(SectorBytes, 0xEE);
  PutBytes(mark, 0, 4, 0xABCD);
  const std::uint32_t places[] = {999, 0, 699, 700, 513};  // in the buffer, in both files
  for (const std::uint32_t place : places) {
    output.Rewrite(place, mark);
  }
  Fill(output, 600);
  output.Rewrite(1599, mark);
  output.Finish();
  const std::string names[] = {"VTS_01_1.VOB", "VTS_01_2.VOB", "VTS_01_3.VOB"};
  std::string all;
  for (const std::string& name : names) {
    all += TempFolder::Read(folder.Path() / name);
  }
  ASSERT_EQ(all.size(), 1600 * SectorBytes);
  EXPECT_EQ(TempFolder::Read(folder.Path() / names[0]).size(), 700 * SectorBytes);
  for (std::uint32_t i = 0; i < 1600; ++i) {
    const bool marked = i == 1599 || std::ranges::find(places, i) != std::end(places);
    ASSERT_EQ(NumberAt(all, i), marked ? 0xABCDU : i);
  }
}

TEST(VobOutput, AMenuIsOneFileAndNothingIsMadeAheadOfTime) {
  const TempFolder folder;
  RecordingUi ui;
  Random files(ui);
  files.DimFiles(9);
  const std::string name = folder / "VIDEO_TS.VOB";
  {
    VobOutput output(files, name);
    output.Finish();
    EXPECT_FALSE(std::filesystem::exists(name));
  }
  VobOutput output(files, name, false, 10);
  Fill(output, 10);
  EXPECT_ANY_THROW(output.NextSector()) << "a menu has one file";
  output.Finish();
  EXPECT_EQ(TempFolder::Read(name).size(), 10 * SectorBytes);
}

}  // namespace
}  // namespace quorvelant
