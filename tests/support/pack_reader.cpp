#include "support/pack_reader.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace quorvelant {
namespace {

std::int64_t StampAt(ByteView sector, std::size_t at) {
  const std::uint64_t bits = GetBytes(sector, at, 5);
  return static_cast<std::int64_t>((bits >> 33 & 7) << 30 | (bits >> 17 & 0x7FFF) << 15 |
                                   (bits >> 1 & 0x7FFF));
}

void Cut(Bytes& data, std::size_t count) {
  data.erase(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(count));
}

void ReadPrivateHeader(ReadPack& pack) {
  pack.Substream = pack.Payload.at(0);
  if (pack.Substream < 0x80) {
    Cut(pack.Payload, 1);
    return;
  }
  const std::size_t header = pack.Substream >= 0xA0 ? 7 : 4;
  pack.Frames = pack.Payload.at(1);
  pack.Pointer = pack.Payload.at(2) << 8 | pack.Payload.at(3);
  pack.AudioBits = {pack.Payload.begin() + 4, pack.Payload.begin() + static_cast<std::ptrdiff_t>(header)};
  Cut(pack.Payload, header);
}

}  // namespace

ReadPack ReadPackOf(ByteView sector) {
  EXPECT_EQ(GetBytes(sector, 0, 4), 0x1BAU);
  ReadPack pack;
  const std::uint64_t clock = GetBytes(sector, 4, 6);
  const std::uint64_t base = (clock >> 43 & 7) << 30 | (clock >> 27 & 0x7FFF) << 15 | (clock >> 11 & 0x7FFF);
  pack.Scr = static_cast<std::int64_t>(base * 300 + (clock >> 1 & 0x1FF));
  pack.StreamId = sector[17];
  if (pack.StreamId != VideoPack && pack.StreamId != 0xBD) {
    return pack;
  }
  const std::size_t end = 20 + GetBytes(sector, 18, 2);
  const unsigned flags = sector[21];
  std::size_t at = 23;
  for (const auto& [flag, stamp] : {std::pair{0x80U, &pack.Pts}, {0x40U, &pack.Dts}}) {
    if ((flags & flag) != 0) {
      *stamp = StampAt(sector, at);
      at += 5;
    }
  }
  if ((flags & 1) != 0) {
    pack.BufferKib = static_cast<int>(GetBytes(sector, at + 1, 2) & 0x1FFF);
  }
  const ByteView data = sector.first(end).subspan(23U + sector[22]);
  pack.Payload = {data.begin(), data.end()};
  if (pack.StreamId == 0xBD) {
    ReadPrivateHeader(pack);
  }
  return pack;
}

Bytes SectorsOf(const std::vector<std::string>& files) {
  Bytes sectors;
  for (const std::string& name : files) {
    const std::string file = TempFolder::Read(name);
    EXPECT_EQ(file.size() % SectorBytes, 0U) << name;
    sectors.insert(sectors.end(), file.begin(), file.end());
  }
  return sectors;
}

}  // namespace quorvelant
