#include "iso/udf_items.h"

#include <algorithm>
#include <numeric>

namespace quorvelant::udf {
namespace {

constexpr std::size_t EntityTextBytes = 23;
constexpr std::size_t CharacterSetTextBytes = 63;
constexpr std::string_view CharacterSetText = "OSTA Compressed Unicode";
constexpr std::uint8_t EightBits = 8;
constexpr unsigned DescriptorVersion = 2;
constexpr unsigned CoordinatedTime = 0x1000;  // local time that is 0 minutes off UTC

// ECMA-167 7.2.6: x^16 + x^12 + x^5 + 1 from 0.
std::uint16_t Crc(ByteView bytes) {
  constexpr unsigned Polynomial = 0x1021;
  constexpr unsigned Top = 0x8000;
  unsigned crc = 0;
  for (const std::uint8_t byte : bytes) {
    crc ^= static_cast<unsigned>(byte) << 8U;
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc << 1U) ^ ((crc & Top) != 0 ? Polynomial : 0U);
    }
  }
  return static_cast<std::uint16_t>(crc);
}

}  // namespace

void LittleWriter::Put(unsigned width, std::uint64_t value) {
  for (unsigned i = 0; i < width; ++i) {
    bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  }
}

void LittleWriter::DString(std::string_view text, std::size_t width) {
  if (text.empty()) {
    Zeros(width);
    return;
  }
  const std::string_view fits = text.substr(0, width - 2);
  U8(EightBits);
  Text(fits);
  Zeros(width - 2 - fits.size());
  U8(fits.size() + 1);
}

void LittleWriter::CharacterSet() {
  U8(0);  // CS0
  Text(CharacterSetText);
  Zeros(CharacterSetTextBytes - CharacterSetText.size());
}

void LittleWriter::EntityId(std::string_view identifier, std::uint64_t suffix) {
  U8(0);  // flags
  Text(identifier);
  Zeros(EntityTextBytes - identifier.size());
  U64(suffix);
}

void LittleWriter::Extent(std::uint64_t bytes, std::uint32_t location) {
  U32(bytes);
  U32(location);
}

void LittleWriter::LongAddress(std::uint64_t bytes, std::uint32_t block) {
  U32(bytes);
  U32(block);
  U16(0);    // of the partition
  Zeros(6);  // implementation use
}

void LittleWriter::Timestamp(const ImageTime& time) {
  U16(CoordinatedTime);
  U16(static_cast<unsigned>(time.Year));
  U8(time.Month);
  U8(time.Day);
  U8(time.Hour);
  U8(time.Minute);
  U8(time.Second);
  Zeros(3);  // hundredths, and what is below them
}

Bytes Tagged(Tag tag, std::uint32_t location, ByteView body) {
  constexpr std::size_t ChecksumAt = 4;
  LittleWriter out;
  out.U16(static_cast<unsigned>(tag));  // TagIdentifier
  out.U16(DescriptorVersion);           // DescriptorVersion
  out.U8(0);                            // TagChecksum, below
  out.U8(0);                            // reserved
  out.U16(0);                           // TagSerialNumber
  out.U16(Crc(body));                   // DescriptorCRC
  out.U16(body.size());                 // DescriptorCRCLength
  out.U32(location);                    // TagLocation
  Bytes bytes = out.Take();
  bytes[ChecksumAt] = static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0U));
  bytes.insert(bytes.end(), body.begin(), body.end());
  return bytes;
}

}  // namespace quorvelant::udf
