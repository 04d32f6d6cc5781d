#include "verify/image_source.h"

#include <gmock/gmock.h>

#include "support/damaged_disk.h"
#include "support/folders.h"
#include "support/sparse_image.h"
#include "support/temp_folder.h"
#include "verify/messages.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

// A bridge of both file systems, made by mkisofs, with the five files of the smallest disc.
Bytes Bridge() {
  const std::string sparse = TempFolder::Read(SourceFile("fuzz/seeds/verify_image/bridge"));
  return ExpandImage({reinterpret_cast<const std::uint8_t*>(sparse.data()), sparse.size()});
}

struct OpenedImage {
  explicit OpenedImage(Bytes bytes) : Disk(std::move(bytes)), Source("image.iso", Disk, Findings) {}
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const DiscSourceFile& file : Source.Files()) {
      names.push_back(file.Name);
    }
    return names;
  }
  BytesAsDisk Disk;
  DiscFindings Findings;
  ImageSource Source;
};

const std::vector<std::string> AllNames{"VIDEO_TS.BUP", "VIDEO_TS.IFO", "VTS_01_0.BUP", "VTS_01_0.IFO",
                                        "VTS_01_1.VOB"};

TEST(ImageSource, GivesTheFilesOfABridge) {
  OpenedImage image(Bridge());
  EXPECT_EQ(image.Names(), AllNames);
  EXPECT_TRUE(image.Findings.All().empty());
  Bytes head(12);
  const DiscSourceFile* ifo = image.Source.Find("VTS_01_0.IFO");
  ASSERT_NE(ifo, nullptr);
  EXPECT_EQ(ifo->Size, 2 * SectorBytes);
  const auto reader = image.Source.NewReader();
  EXPECT_EQ(reader->Read(*ifo, 0, head), 12U);
  EXPECT_EQ(std::string(head.begin(), head.end()), "DVDVIDEO-VTS");
  EXPECT_EQ(reader->Read(*ifo, 2 * SectorBytes - 5, head), 5U);  // never into the next file
}

// Where one file system is damaged the other still gives the files.
TEST(ImageSource, NamesWhatIsDamaged) {
  const Bytes whole = Bridge();
  const struct {
    const char* What;
    std::size_t Sector;
    std::size_t Offset;
    bool HasFiles;
  } cases[] = {
      {"volume descriptor of ISO 9660", 16, 1, true},
      {"anchor of UDF", 256, 0, true},
      {"CRC of the anchor", 256, 20, true},
  };
  for (const auto& test : cases) {
    Bytes bytes = whole;
    bytes[test.Sector * SectorBytes + test.Offset] ^= 0xFF;
    OpenedImage image(bytes);
    EXPECT_TRUE(image.Findings.HasFaults()) << test.What;
    EXPECT_EQ(image.Names() == AllNames, test.HasFiles) << test.What;
  }
}

TEST(ImageSource, KnowsAnImageThatLostItsEndOrTheMarkOfUdf) {
  const Bytes whole = Bridge();
  OpenedImage cut(Bytes(whole.begin(), whole.end() - 2 * static_cast<std::ptrdiff_t>(SectorBytes)));
  EXPECT_EQ(cut.Names(), AllNames);
  EXPECT_TRUE(cut.Findings.HasFaults());
  Bytes bytes = whole;
  for (std::size_t sector = 17; sector < 21; ++sector) {
    bytes[sector * SectorBytes + 1] = 0;
  }
  OpenedImage unmarked(bytes);
  EXPECT_EQ(unmarked.Names(), AllNames);
  EXPECT_TRUE(unmarked.Findings.HasFaults());
}

// Players need UDF alone; a computer may want the other.
TEST(ImageSource, OneFileSystemIsEnough) {
  for (const bool isUdf : {true, false}) {
    Bytes bytes = Bridge();
    for (std::size_t sector = 16; sector <= 256; ++sector) {
      const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(sector * SectorBytes);
      const bool isIso = std::string(at + 1, at + 6) == "CD001";
      if (sector == 256 ? !isUdf : sector < 32 && isIso == isUdf) {
        std::fill_n(at, SectorBytes, std::uint8_t{0});
      }
    }
    OpenedImage image(bytes);
    EXPECT_EQ(image.Names(), AllNames) << isUdf;
    ASSERT_EQ(image.Findings.All().size(), 1U) << isUdf;
    EXPECT_EQ(image.Findings.All()[0].Kind, isUdf ? &message::ImageWithoutIso : &message::ImageWithoutUdf);
  }
}

TEST(ImageSource, NamesFilesThatTheFileSystemsPlaceApart) {
  Bytes bytes = Bridge();
  const std::string_view name = "VTS_01_1.VOB;1";
  const auto found = std::search(bytes.begin(), bytes.end(), name.begin(), name.end());
  ASSERT_NE(found, bytes.end());
  const auto record = static_cast<std::size_t>(found - bytes.begin()) - 33;
  ++bytes[record + 2];  // the place in both byte orders
  ++bytes[record + 9];
  OpenedImage image(bytes);
  ASSERT_EQ(image.Findings.All().size(), 1U);
  EXPECT_EQ(image.Findings.All()[0].Kind, &message::ImageUnlike);
  EXPECT_EQ(image.Findings.All()[0].Spot.File, "VTS_01_1.VOB");
}

TEST(ImageSource, NamesFilesThatOneFileSystemLacks) {
  Bytes bytes = Bridge();
  const std::string_view name = "VTS_01_1.VOB;1";
  const auto found = std::search(bytes.begin(), bytes.end(), name.begin(), name.end());
  ASSERT_NE(found, bytes.end());
  found[7] = '2';
  OpenedImage image(bytes);
  std::vector<std::string> files;
  for (const DiscFinding& finding : image.Findings.All()) {
    files.push_back(finding.Spot.File);
  }
  EXPECT_THAT(files, ElementsAre("VTS_01_1.VOB", "VTS_01_2.VOB"));
}

// Where a sector of one file system does not come, the other still gives the files.
TEST(ImageSource, ReadsOnBehindABadSector) {
  const TempFolder temp;
  const Bytes bytes = Bridge();
  const std::string path = temp.Write("image.iso", {bytes.begin(), bytes.end()});
  for (const std::uint64_t sector : {16U, 17U, 256U}) {
    DamagedDisk disk({.File = "image.iso", .From = sector * SectorBytes, .To = (sector + 1) * SectorBytes});
    DiscFindings findings;
    const ImageSource source(path, disk, findings);
    EXPECT_EQ(source.Files().size(), AllNames.size()) << sector;
    EXPECT_EQ(findings.Count(Severity::Error), sector == 17 ? 0U : 1U) << sector;
  }
}

TEST(ImageSource, FilesThatEndOutsideAreNone) {
  Bytes bytes = Bridge();
  bytes.resize(bytes.size() / 2);
  OpenedImage image(bytes);
  EXPECT_TRUE(image.Findings.HasFaults());
  for (const DiscSourceFile& file : image.Source.Files()) {
    EXPECT_LE(*file.FirstSector * SectorBytes + file.Size, bytes.size()) << file.Name;
  }
}

}  // namespace
}  // namespace quorvelant
