#include "verify/udf_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>

#include "base/text.h"

namespace quorvelant {
namespace {

// Tags of descriptors (ECMA-167 3/7.2.1 and 4/7.2.1).
constexpr unsigned AnchorTag = 2;
constexpr unsigned PartitionTag = 5;
constexpr unsigned LogicalVolumeTag = 6;
constexpr unsigned TerminatorTag = 8;
constexpr unsigned FileSetTag = 256;
constexpr unsigned FileIdentifierTag = 257;
constexpr unsigned FileEntryTag = 261;
constexpr std::size_t TagBytes = 16;

constexpr std::uint32_t AnchorSector = 256;
constexpr std::uint64_t ExtentLengthMask = 0x3FFFFFFF;  // the two bits above tell the kind of an extent

std::uint16_t CrcOf(ByteView bytes) {  // x^16 + x^12 + x^5 + 1
  unsigned crc = 0;
  for (const std::uint8_t byte : bytes) {
    crc ^= static_cast<unsigned>(byte) << 8U;
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc & 0x8000U) != 0 ? (crc << 1U ^ 0x1021U) : crc << 1U;
    }
  }
  return static_cast<std::uint16_t>(crc);
}

// The tag of a descriptor, once its sum and the CRC of what follows hold.
unsigned TagOf(ByteView descriptor, std::uint32_t sector) {
  const auto tag = static_cast<unsigned>(GetLittle(descriptor, 0, 2));
  const unsigned sum = std::accumulate(descriptor.begin(), descriptor.begin() + TagBytes, 0U) - descriptor[4];
  if ((sum & 0xFFU) != descriptor[4]) {
    throw ImageFault(sector, "UDF descriptor tag", "TagChecksum", std::to_string(sum & 0xFFU),
                     std::to_string(descriptor[4]));
  }
  const std::size_t covered = GetLittle(descriptor, 10, 2);
  const std::uint64_t said = GetLittle(descriptor, 8, 2);
  if (covered + TagBytes > descriptor.size() || CrcOf(descriptor.subspan(TagBytes, covered)) != said) {
    throw ImageFault(sector, "UDF descriptor tag", "DescriptorCRC", "the CRC of the descriptor",
                     fmt::format("0x{:04X}", said));
  }
  return tag;
}

void Expect(unsigned tag, unsigned wanted, std::uint32_t sector, const char* structure) {
  if (tag != wanted) {
    throw ImageFault(sector, structure, "TagIdentifier", std::to_string(wanted), std::to_string(tag));
  }
}

// What a file entry says of its file.
struct UdfFile {
  std::uint64_t Size = 0;
  std::uint32_t FirstSector = 0;  // of the image
  Bytes Embedded = {};            // a small file in its entry
};

class UdfReader {
 public:
  explicit UdfReader(const ImageSectors& image) : image_(&image) {}

  std::vector<DiscSourceFile> Files() {
    ReadVolume();
    const std::uint32_t rootEntry = ReadFileSet();
    const auto top = Directory(FileOf(rootEntry));
    const auto video = top.find("VIDEO_TS");
    if (video == top.end()) {
      throw ImageFault(partition_ + rootEntry, "UDF root directory", "", "VIDEO_TS", "none");
    }
    std::vector<DiscSourceFile> files;
    for (const auto& [name, entry] : Directory(FileOf(video->second))) {
      const UdfFile file = FileOf(entry);
      files.push_back({.Name = name, .Size = file.Size, .FirstSector = file.FirstSector});
    }
    return files;
  }

 private:
  // The partition and where its file set is, from the main volume descriptor sequence.
  void ReadVolume() {
    const Bytes anchor = image_->Read(AnchorSector, 1);
    Expect(TagOf(anchor, AnchorSector), AnchorTag, AnchorSector, "UDF anchor volume descriptor pointer");
    const std::uint64_t sectors = std::min<std::uint64_t>(GetLittle(anchor, 16, 4) / SectorBytes, 64);
    const auto first = static_cast<std::uint32_t>(GetLittle(anchor, 20, 4));
    std::optional<std::uint32_t> fileSet;
    std::optional<std::uint32_t> partition;
    for (std::uint32_t i = 0; i < sectors; ++i) {
      const Bytes descriptor = image_->Read(std::uint64_t{first} + i, 1);
      const unsigned tag = TagOf(descriptor, first + i);
      if (tag == TerminatorTag) {
        break;
      }
      if (tag == PartitionTag) {
        partition = static_cast<std::uint32_t>(GetLittle(descriptor, 188, 4));
      } else if (tag == LogicalVolumeTag) {
        fileSet = static_cast<std::uint32_t>(GetLittle(descriptor, 252, 4));
      }
    }
    if (!partition || !fileSet) {
      throw ImageFault(first, "UDF volume descriptor sequence", "", "a partition and a logical volume",
                       "none");
    }
    partition_ = *partition;
    fileSet_ = *fileSet;
  }

  // Where the entry of the root directory is, in the partition.
  std::uint32_t ReadFileSet() const {
    const Bytes descriptor = Block(fileSet_, 1);
    Expect(TagOf(descriptor, partition_ + fileSet_), FileSetTag, partition_ + fileSet_,
           "UDF file set descriptor");
    return static_cast<std::uint32_t>(GetLittle(descriptor, 404, 4));
  }

  Bytes Block(std::uint32_t block, std::uint64_t count) const {
    return image_->Read(std::uint64_t{partition_} + block, count);
  }

  UdfFile FileOf(std::uint32_t block) const {
    const Bytes entry = Block(block, 1);
    const std::uint32_t sector = partition_ + block;
    Expect(TagOf(entry, sector), FileEntryTag, sector, "UDF file entry");
    const std::uint64_t attributes = GetLittle(entry, 168, 4);
    const std::uint64_t allocation = GetLittle(entry, 172, 4);
    const std::size_t at = 176 + attributes;
    if (at + allocation > entry.size()) {
      throw ImageFault(sector, "UDF file entry", "LengthOfAllocationDescriptors", "within the sector",
                       std::to_string(allocation));
    }
    UdfFile file{.Size = GetLittle(entry, 56, 8)};
    const unsigned kind = entry[34] & 7U;  // of the allocation descriptors
    if (kind == 3) {
      file.Embedded.assign(entry.begin() + static_cast<std::ptrdiff_t>(at),
                           entry.begin() + static_cast<std::ptrdiff_t>(at + allocation));
      file.FirstSector = sector;
      return file;
    }
    ReadExtents(ByteView(entry).subspan(at, allocation), kind == 0 ? 8 : 16, sector, file);
    return file;
  }

  // A file of a DVD lies in one piece, whose extents follow on one another.
  void ReadExtents(ByteView extents, std::size_t width, std::uint32_t sector, UdfFile& file) const {
    std::uint64_t bytes = 0;
    std::optional<std::uint64_t> next;
    for (std::size_t at = 0; at + width <= extents.size(); at += width) {
      const std::uint64_t length = GetLittle(extents, at, 4) & ExtentLengthMask;
      const std::uint64_t block = GetLittle(extents, at + 4, 4);
      if (length == 0) {
        break;
      }
      if (next && *next != block) {
        throw ImageFault(sector, "UDF file entry", "allocation descriptors", "one piece",
                         fmt::format("a gap at block {}", block));
      }
      if (!next) {
        file.FirstSector = static_cast<std::uint32_t>(partition_ + block);
      }
      next = block + (length + SectorBytes - 1) / SectorBytes;
      bytes += length;
    }
    if (bytes != file.Size) {
      throw ImageFault(sector, "UDF file entry", "InformationLength", std::to_string(bytes),
                       std::to_string(file.Size));
    }
  }

  // The entries of a directory by name, in capitals; each with the block of its file entry.
  std::map<std::string, std::uint32_t> Directory(const UdfFile& directory) const {
    Bytes bytes = directory.Embedded;
    if (bytes.empty()) {
      bytes = image_->Read(directory.FirstSector, (directory.Size + SectorBytes - 1) / SectorBytes);
      bytes.resize(std::min<std::uint64_t>(directory.Size, bytes.size()));
    }
    std::map<std::string, std::uint32_t> entries;
    for (std::size_t at = 0; at + 38 <= bytes.size();) {
      const ByteView entry = ByteView(bytes).subspan(at);
      const auto sector = static_cast<std::uint32_t>(directory.FirstSector + at / SectorBytes);
      const std::size_t nameBytes = entry[19];
      const std::size_t useBytes = GetLittle(entry, 36, 2);
      const std::size_t length = (38 + useBytes + nameBytes + 3) / 4 * 4;
      if (length > entry.size()) {
        throw ImageFault(sector, "UDF file identifier descriptor", "LengthOfFileIdentifier",
                         fmt::format("within {} bytes", entry.size()), std::to_string(length));
      }
      Expect(TagOf(entry.first(length), sector), FileIdentifierTag, sector, "UDF file identifier descriptor");
      constexpr unsigned DeletedOrParent = 0x0C;
      if ((entry[18] & DeletedOrParent) == 0) {
        entries[NameOf(entry.subspan(38 + useBytes, nameBytes))] =
            static_cast<std::uint32_t>(GetLittle(entry, 24, 4));
      }
      at += length;
    }
    return entries;
  }

  // Compressed Unicode: a byte with the width of a character, then the characters.
  static std::string NameOf(ByteView identifier) {
    std::string name;
    const std::size_t width = !identifier.empty() && identifier[0] == 16 ? 2 : 1;
    for (std::size_t at = width; at < identifier.size(); at += width) {
      name += static_cast<char>(identifier[at]);
    }
    return Upper(name);
  }

  const ImageSectors* image_;
  std::uint32_t partition_ = 0;  // first sector
  std::uint32_t fileSet_ = 0;    // its block in the partition
};

}  // namespace

std::vector<DiscSourceFile> UdfFiles(const ImageSectors& image) {
  return UdfReader(image).Files();
}

}  // namespace quorvelant
