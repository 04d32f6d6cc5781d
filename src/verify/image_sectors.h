// What the readers of file systems share: sectors of an image, and faults that end a reader.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/bytes.h"
#include "base/disk.h"
#include "verify/disc_source.h"

namespace quorvelant {

// A file system that cannot be read on.
class ImageFault : public std::runtime_error {
 public:
  ImageFault(std::uint32_t sector, std::string structure, std::string field, std::string expected,
             std::string seen)
      : std::runtime_error(structure),
        Sector(sector),
        Structure(std::move(structure)),
        Field(std::move(field)),
        Expected(std::move(expected)),
        Seen(std::move(seen)) {}

  std::uint32_t Sector;
  std::string Structure;
  std::string Field;
  std::string Expected;
  std::string Seen;
};

// Directories and descriptors are small; what says otherwise is damaged.
inline constexpr std::uint32_t MostStructureSectors = 256;

class ImageSectors {
 public:
  explicit ImageSectors(File& image) : image_(&image) {}

  [[nodiscard]] std::uint64_t Count() const { return image_->ByteCount() / SectorBytes; }
  // Raises ImageFault where they lie outside the image, or cannot be read.
  [[nodiscard]] Bytes Read(std::uint64_t first, std::uint64_t count) const {
    if (first + count > Count() || count > MostStructureSectors) {
      throw ImageFault(static_cast<std::uint32_t>(first), "image", "", "a structure inside the image",
                       std::to_string(count) + " sectors at " + std::to_string(first));
    }
    Bytes bytes(count * SectorBytes);
    try {
      image_->Seek(first * SectorBytes);
      image_->Read(bytes);
    } catch (const FileError& error) {
      throw ImageFault(static_cast<std::uint32_t>(first), "image", "", "data", WhyUnread(error));
    }
    return bytes;
  }
  // Nothing where it cannot be read. It lies in the image.
  [[nodiscard]] std::optional<Bytes> TryRead(std::uint64_t sector) const {
    try {
      return Read(sector, 1);
    } catch (const ImageFault&) {
      return std::nullopt;
    }
  }

 private:
  File* image_;
};

// The little-endian value of `width` bytes at `offset`; the caller knows that they are there.
[[nodiscard]] inline std::uint64_t GetLittle(ByteView bytes, std::size_t offset, unsigned width) {
  std::uint64_t value = 0;
  for (unsigned i = width; i-- > 0;) {
    value = value << 8U | bytes[offset + i];
  }
  return value;
}

}  // namespace quorvelant
