#include "subpicture/coded_bitmaps.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "picture/bmp.h"
#include "picture/picture_loader.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// Side by side on all processors, with one that cannot be read among them.
TEST(CodedBitmaps, AreCodedAheadAsOneByOne) {
  const TempFolder folder;
  std::vector<SPURecord> records(60);
  for (std::size_t i = 0; i < records.size(); ++i) {
    Picture picture(100 + static_cast<int>(i), 20);
    for (int x = 0; x < picture.Width; ++x) {
      picture.Set(x, x % 20, 0xFFFFFF);
    }
    records[i].Conversion = {0xFFFFFF, 1, 2};
    records[i].File = folder.Write(std::to_string(i) + ".BMP", WriteBmp(picture));
  }
  std::filesystem::remove(records[30].File);
  RecordingUi ui;
  CodedBitmaps coded;
  CodeAhead(records, false, Rules::Players, ui, coded);
  BmpLoader loader;
  for (const SPURecord& record : records) {
    const EncodedBitmap* kept = coded.Find(record, false);
    ASSERT_EQ(kept != nullptr, &record != &records[30]) << record.File;
    if (kept != nullptr) {
      const auto [fieldA, fieldB, area, oddPixels] = LoadSPUBitmap(loader, record, false, Rules::Players);
      EXPECT_TRUE(kept->FieldA == fieldA && kept->FieldB == fieldB && kept->Area == area &&
                  kept->OddPixels == oddPixels)
          << record.File;
    }
  }
  CodedBitmaps none;
  ui.StopWhen = [] { return true; };
  CodeAhead({records[0], records[1], records[2]}, false, Rules::Players, ui, none);
  EXPECT_EQ(none.Find(records[2], false), nullptr) << "a stop ends it";
}

}  // namespace
}  // namespace quorvelant
