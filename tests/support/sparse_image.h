// Disc images in few bytes: the count of sectors, then each sector that is not empty by its number, the
// length of its bytes up to the last that is not 0, and those bytes. Numbers have 16 bits, big-endian.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "base/bytes.h"
#include "base/disk.h"

namespace quorvelant {

// Any bytes give an image.
inline Bytes ExpandImage(ByteView sparse) {
  if (sparse.size() < 2) {
    return {};
  }
  Bytes image(GetBytes(sparse, 0, 2) % 1024 * SectorBytes);
  for (std::size_t at = 2; at + 4 <= sparse.size();) {
    const std::size_t start = GetBytes(sparse, at, 2) * SectorBytes;
    const std::size_t length = std::min<std::size_t>(GetBytes(sparse, at + 2, 2), sparse.size() - at - 4);
    const ByteView bytes = sparse.subspan(at + 4, length);
    if (start + length <= image.size()) {
      std::ranges::copy(bytes, image.begin() + static_cast<std::ptrdiff_t>(start));
    }
    at += 4 + length;
  }
  return image;
}

// Bytes as an open file, which must last as long.
class BytesAsFile : public File {
 public:
  explicit BytesAsFile(const Bytes& bytes) : File("image.iso"), bytes_(bytes) {}
  int Handle() const override { return -1; }
  std::uint64_t ByteCount() const override { return bytes_.size(); }
  std::size_t Read(ByteSpan target) override {
    const std::size_t from = std::min(at_, bytes_.size());
    const std::size_t count = std::min(target.size(), bytes_.size() - from);
    std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(from), count, target.begin());
    at_ = from + count;
    return count;
  }
  void Write(ByteView /*bytes*/) override {}
  void Seek(std::uint64_t position) override { at_ = position; }
  void Skip(std::int64_t offset) override {
    at_ = static_cast<std::size_t>(static_cast<std::int64_t>(at_) + offset);
  }
  void Flush() override {}
  void Close() override {}

 private:
  const Bytes& bytes_;
  std::size_t at_ = 0;
};

// A disk on which every file has these bytes.
class BytesAsDisk : public Disk {
 public:
  explicit BytesAsDisk(Bytes bytes) : bytes_(std::move(bytes)) {}
  std::unique_ptr<File> Open(const std::string& /*path*/, FileAccess /*access*/) override {
    return std::make_unique<BytesAsFile>(bytes_);
  }
  FileKind KindOf(const std::string& /*path*/) override { return FileKind::Plain; }
  int Rename(const std::string& /*from*/, const std::string& /*to*/) override { return 0; }
  int Remove(const std::string& /*path*/) override { return 0; }

 private:
  Bytes bytes_;
};

}  // namespace quorvelant
