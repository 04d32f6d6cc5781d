// The small items of which UDF's descriptors consist, least significant byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/bytes.h"
#include "iso/image_time.h"

namespace quorvelant::udf {

// Appends items in the order of their table. Narrower than its value, an item keeps the low bytes.
class LittleWriter {
 public:
  void U8(std::uint64_t value) { Put(1, value); }
  void U16(std::uint64_t value) { Put(2, value); }
  void U32(std::uint64_t value) { Put(4, value); }
  void U64(std::uint64_t value) { Put(8, value); }
  void Zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }
  void Raw(ByteView bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }
  void Text(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }

  // ECMA-167 7.2.12: `width` bytes with the count of those used in the last; the first says that characters
  // of eight bits follow (OSTA CS0). Empty text is all zeros.
  void DString(std::string_view text, std::size_t width);
  // ECMA-167 7.2.1: the character set of this and of every UDF volume.
  void CharacterSet();
  // ECMA-167 7.4: who defined what stands beside it, with eight bytes of a suffix.
  void EntityId(std::string_view identifier, std::uint64_t suffix = 0);
  void Extent(std::uint64_t bytes, std::uint32_t location);    // 7.1, and short_ad of 14.14.1
  void LongAddress(std::uint64_t bytes, std::uint32_t block);  // 14.14.2, in partition 0
  void Timestamp(const ImageTime& time);                       // 7.3, in UTC

  std::size_t Size() const { return bytes_.size(); }
  Bytes Take() { return std::move(bytes_); }

 private:
  void Put(unsigned width, std::uint64_t value);

  Bytes bytes_;
};

// Suffixes of entity identifiers (UDF 1.02 2.1.4.3).
inline constexpr std::uint64_t Revision = 0x0102;
inline constexpr std::uint64_t DomainSuffix = Revision | 0x03U << 16U;  // and protected, by soft and hard
inline constexpr std::string_view Program = "*Quorvelant";
inline constexpr std::string_view Domain = "*OSTA UDF Compliant";

enum class Tag : std::uint16_t {  // ECMA-167 3/7.2.1 and 4/7.2.1
  PrimaryVolume = 1,
  AnchorPointer = 2,
  ImplementationUse = 4,
  Partition = 5,
  LogicalVolume = 6,
  UnallocatedSpace = 7,
  Terminating = 8,
  Integrity = 9,
  FileSet = 256,
  FileIdentifier = 257,
  FileEntry = 261
};

// The descriptor of this body: the 16 bytes of its tag with the sums of both, then the body. `location`
// counts blocks from the start of the partition for what lies in it, else sectors.
[[nodiscard]] Bytes Tagged(Tag tag, std::uint32_t location, ByteView body);

}  // namespace quorvelant::udf
