#include "mux/vob_output.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

TEST(VobOutput, AMenuIsOneFileAndNothingIsMadeBeforeItsTime) {
  const TempFolder folder;
  RecordingUi ui;
  Random files(ui);
  files.DimFiles(9);
  const std::string name = folder / "VIDEO_TS.VOB";
  VobOutput(files, {name, true}).Finish();
  EXPECT_FALSE(std::filesystem::exists(name));
  folder.Write("VIDEO_TS.VOB", std::string(5 << 20, 'o'));  // an old file, longer than what comes
  VobOutput output(files, {name, true}, false, 10);
  for (std::uint32_t sector = 0; sector < 10; ++sector) {
    EXPECT_EQ(output.TotalSectors(), sector);
    output.NextSector();
  }
  EXPECT_ANY_THROW(output.NextSector()) << "a menu has one file";
  output.Finish();
  EXPECT_EQ(std::filesystem::file_size(name), 10 * SectorBytes);
}

}  // namespace
}  // namespace quorvelant
