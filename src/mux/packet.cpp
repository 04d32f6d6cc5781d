#include "mux/packet.h"

#include <algorithm>
#include <cassert>

#include "mux/padding_packet.h"

namespace quorvelant {
namespace {

constexpr std::size_t FlagsAt = 20;
constexpr std::size_t FieldsAt = 23;  // the fields that the flags announce
constexpr std::size_t MostStuffing = 7;

constexpr std::uint64_t FirstFlags = 0x81;  // '10', original
constexpr std::uint64_t PtsFlag = 0x80;
constexpr std::uint64_t DtsFlag = 0x40;
constexpr std::uint64_t ExtensionFlag = 0x01;
constexpr std::uint64_t BufferExtension = 0x1E;         // a P-STD buffer size follows
constexpr std::uint64_t BufferSizeInKib = 0b011 << 13;  // "01", scale 1: units of 1024 bytes
constexpr std::size_t BufferFieldBytes = 3;

std::size_t FieldBytes(const PacketHeader& header) {
  return (header.Pts ? TimeStampBytes : 0) + (header.Dts ? TimeStampBytes : 0) +
         (header.BufferKib != 0 ? BufferFieldBytes : 0);
}

// Returns the flags that announce what was put.
std::uint64_t PutFields(ByteSpan sector, const PacketHeader& header) {
  std::uint64_t flags = 0;
  std::size_t at = FieldsAt;
  if (header.Pts) {
    flags |= PtsFlag;
    PutTimeStamp(sector, at, header.Dts ? TimeStampKind::PairedPts : TimeStampKind::LonePts, *header.Pts);
    at += TimeStampBytes;
  }
  if (header.Dts) {
    flags |= DtsFlag;
    PutTimeStamp(sector, at, TimeStampKind::Dts, *header.Dts);
    at += TimeStampBytes;
  }
  if (header.BufferKib != 0) {
    flags |= ExtensionFlag;
    PutBytes(sector, at, 1, BufferExtension);
    PutBytes(sector, at + 1, 2, BufferSizeInKib | header.BufferKib);
  }
  return flags;
}

}  // namespace

std::size_t RoomAfter(const PacketHeader& header) {
  return SectorBytes - FieldsAt - FieldBytes(header);
}

std::size_t PutPacket(ByteSpan sector, SystemClockReference scr, const PacketHeader& header,
                      std::size_t dataBytes) {
  const std::size_t room = RoomAfter(header);
  assert(dataBytes <= room);
  const std::size_t spare = room - dataBytes;
  const std::size_t stuffing = spare <= MostStuffing ? spare : 0;
  const std::size_t fields = FieldBytes(header);
  const std::size_t dataAt = FieldsAt + fields + stuffing;

  PutPackHeader(sector, scr);
  PutBytes(sector, PackHeaderBytes, 4, StartCodePrefix | header.StreamId);
  PutBytes(sector, PackHeaderBytes + 4, 2, dataAt + dataBytes - FlagsAt);  // PES_packet_length
  PutBytes(sector, FlagsAt, 1, FirstFlags);
  PutBytes(sector, FlagsAt + 1, 1, PutFields(sector, header));
  PutBytes(sector, FlagsAt + 2, 1, fields + stuffing);  // PES_header_data_length
  std::ranges::fill(sector.subspan(FieldsAt + fields, stuffing), std::uint8_t{0xFF});
  PutPaddingPacket(sector, dataAt + dataBytes);
  return dataAt;
}

}  // namespace quorvelant
