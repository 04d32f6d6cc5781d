#include "mux/subpicture_packs.h"

#include <algorithm>

#include "mux/pack_header.h"
#include "mux/padding_packet.h"

namespace quorvelant {

namespace {

// The packet within the sector (ISO/IEC 13818-1 2.4.3.6).
constexpr std::size_t StartCodeAt = 14;
constexpr std::size_t LengthAt = 18;
constexpr std::size_t FlagsAt = 20;
constexpr std::size_t HeaderLengthAt = 22;
constexpr std::size_t FieldsAt = 23;  // the fields that the flags announce
constexpr std::size_t FullLength = SectorBytes - FlagsAt;

constexpr std::uint32_t PrivateStream1 = 0x000001BD;
constexpr std::uint8_t FirstSubstream = 0x20;
// '10', original; then the flags: PTS 0x80, extension 0x01.
constexpr std::uint16_t PlainFlags = 0x8100;
constexpr std::uint16_t PtsFlag = 0x80;
constexpr std::uint16_t ExtensionFlag = 0x01;
// The extension: a buffer size follows, in steps of 1024 bytes: 58, the 58 KiB that players reserve.
constexpr std::uint32_t BufferExtension = 0x1E603A;

// The header's fields: how many bytes they take, stuffing not counted.
constexpr std::size_t FieldBytes(SubpicturePackForm form) {
  switch (form) {
    case SubpicturePackForm::FirstOfVob:
      return TimeStampBytes + 3;
    case SubpicturePackForm::FirstOfUnit:
      return TimeStampBytes;
    case SubpicturePackForm::Following:
      break;
  }
  return 0;
}

// From this length on stuffing fills a packet; below, a padding packet behind it has room.
constexpr std::size_t LeastStuffedLength(SubpicturePackForm form) {
  return form == SubpicturePackForm::FirstOfVob ? 2022 : 2021;
}

void PutFields(ByteSpan sector, SubpicturePackForm form, std::int64_t pts) {
  std::uint16_t flags = PlainFlags;
  if (form != SubpicturePackForm::Following) {
    flags |= PtsFlag;
    PutTimeStamp(sector, FieldsAt, TimeStampKind::LonePts, pts);
  }
  if (form == SubpicturePackForm::FirstOfVob) {
    flags |= ExtensionFlag;
    PutBytes(sector, FieldsAt + TimeStampBytes, 3, BufferExtension);
  }
  PutBytes(sector, FlagsAt, 2, flags);
}

}  // namespace

std::size_t PutSubpicturePacket(ByteSpan sector, ByteView rest, SubpicturePackForm form, int stream,
                                std::int64_t pts) {
  const std::size_t taken = std::min(rest.size(), SubpictureCapacity(form));
  const std::size_t fields = FieldBytes(form);
  // Flags and header length, the fields, the substream number, the unit's bytes.
  std::size_t length = 3 + fields + 1 + taken;
  const std::size_t stuffing = length >= LeastStuffedLength(form) ? FullLength - length : 0;
  length += stuffing;

  PutBytes(sector, StartCodeAt, 4, PrivateStream1);
  PutBytes(sector, LengthAt, 2, length);
  PutFields(sector, form, pts);
  PutBytes(sector, HeaderLengthAt, 1, fields + stuffing);
  std::size_t at = FieldsAt + fields;
  std::ranges::fill(sector.subspan(at, stuffing), std::uint8_t{0xFF});
  at += stuffing;
  PutBytes(sector, at, 1, FirstSubstream + static_cast<std::uint64_t>(stream));
  std::ranges::copy(rest.first(taken), sector.subspan(at + 1).begin());
  PutPaddingPacket(sector, FlagsAt + length);
  return taken;
}

}  // namespace quorvelant
