#include "verify/iso9660_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace quorvelant {
namespace {

constexpr std::uint32_t PrimaryVolumeSector = 16;
constexpr std::string_view StandardId = "CD001";
constexpr std::size_t RootRecord = 156;  // of the primary volume descriptor
constexpr std::size_t LeastRecord = 34;
constexpr unsigned DirectoryFlag = 0x02;
constexpr unsigned MoreExtentsFlag = 0x80;

// A directory record.
struct IsoRecord {
  std::string Name = {};
  std::uint32_t Sector = 0;
  std::uint32_t Size = 0;
  unsigned Flags = 0;
};

// Each number stands in both byte orders.
std::uint32_t BothOrders(ByteView record, std::size_t at, std::uint32_t sector, std::string_view field) {
  const std::uint64_t little = GetLittle(record, at, 4);
  const std::uint64_t big = GetBytes(record, at + 4, 4);
  if (little != big) {
    throw ImageFault(sector, "ISO 9660 directory record", std::string(field), std::to_string(little),
                     std::to_string(big));
  }
  return static_cast<std::uint32_t>(little);
}

IsoRecord RecordAt(ByteView record, std::uint32_t sector) {
  IsoRecord read{.Sector = BothOrders(record, 2, sector, "location"),
                 .Size = BothOrders(record, 10, sector, "data length"),
                 .Flags = record[25]};
  const std::size_t nameBytes = std::min<std::size_t>(record[32], record.size() - 33);
  read.Name.assign(record.begin() + 33, record.begin() + 33 + static_cast<std::ptrdiff_t>(nameBytes));
  read.Name = Upper(read.Name.substr(0, read.Name.find(';')));
  return read;
}

std::vector<IsoRecord> Directory(const ImageSectors& image, const IsoRecord& directory) {
  const std::uint64_t sectors = (std::uint64_t{directory.Size} + SectorBytes - 1) / SectorBytes;
  const Bytes bytes = image.Read(directory.Sector, sectors);
  std::vector<IsoRecord> records;
  for (std::size_t at = 0; at + LeastRecord <= bytes.size();) {
    const std::size_t length = bytes[at];
    const std::size_t left = SectorBytes - at % SectorBytes;  // a record does not cross sectors
    if (length == 0) {
      at += left;
      continue;
    }
    const auto sector = static_cast<std::uint32_t>(directory.Sector + at / SectorBytes);
    if (length < LeastRecord || length > left) {
      throw ImageFault(sector, "ISO 9660 directory record", "length",
                       fmt::format("{} to {}", LeastRecord, left), std::to_string(length));
    }
    records.push_back(RecordAt(ByteView(bytes).subspan(at, length), sector));
    at += length;
  }
  return records;
}

}  // namespace

std::vector<DiscSourceFile> Iso9660Files(const ImageSectors& image) {
  const Bytes volume = image.Read(PrimaryVolumeSector, 1);
  if (volume[0] != 1 || !std::equal(StandardId.begin(), StandardId.end(), volume.begin() + 1)) {
    throw ImageFault(PrimaryVolumeSector, "ISO 9660 primary volume descriptor", "standard identifier",
                     "1 CD001", "another");
  }
  const IsoRecord root = RecordAt(ByteView(volume).subspan(RootRecord, LeastRecord), PrimaryVolumeSector);
  const std::vector<IsoRecord> top = Directory(image, root);
  const auto isVideo = [](const IsoRecord& each) {
    return each.Name == "VIDEO_TS" && (each.Flags & DirectoryFlag) != 0;
  };
  const auto video = std::ranges::find_if(top, isVideo);
  if (video == top.end()) {
    throw ImageFault(root.Sector, "ISO 9660 root directory", "", "VIDEO_TS", "none");
  }
  std::vector<DiscSourceFile> files;
  for (const IsoRecord& each : Directory(image, *video)) {
    if ((each.Flags & DirectoryFlag) != 0) {
      continue;
    }
    if ((each.Flags & MoreExtentsFlag) != 0) {
      throw ImageFault(video->Sector, "ISO 9660 directory record", each.Name, "one extent", "several");
    }
    files.push_back({.Name = each.Name, .Size = each.Size, .FirstSector = each.Sector});
  }
  return files;
}

}  // namespace quorvelant
