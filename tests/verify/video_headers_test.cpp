#include "verify/video_headers.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>

#include "verify/pack_block.h"

namespace quorvelant {
namespace {

// Headers with slices, stuffing of zeros, and a picture right behind another.
Bytes Stream() {
  return {0,    0,    1,    0xB3, 0x2D, 0x02, 0x40, 0x33, 0x24, 0x9F, 0x23, 0x81, 0,    0,    1, 0xB5, 0x14,
          0x82, 0,    1,    0,    0,    0,    0,    0,    1,    0xB8, 0,    8,    0,    0x40, 0, 0,    1,
          0,    0,    0x0F, 0xFF, 0xF8, 0,    0,    1,    0xB5, 0x8F, 0xFF, 0xF7, 0x9C, 0x80, 0, 0,    1,
          1,    0x22, 0,    0x45, 0,    0,    1,    2,    0x33, 1,    0,    0,    0,    0,    0, 1,    0,
          0,    0x4F, 0xFF, 0xF9, 0x80, 0x77, 0,    0,    1,    1,    0x55, 0,    1,    0,    0};
}

// A pack of video with this payload, and a padding packet behind it.
Bytes PackOf(ByteView payload) {
  Bytes sector(SectorBytes, 0xFF);
  const Bytes head{0,    0,    1, 0xBA, 0x44, 0,    4, 0, 4,    1, 0x01, 0x89,
                   0xC3, 0xF8, 0, 0,    1,    0xE0, 0, 0, 0x80, 0, 0};
  auto at = std::ranges::copy(head, sector.begin()).out;
  PutBytes(sector, 18, 2, payload.size() + 3);
  at = std::ranges::copy(payload, at).out;
  const auto used = static_cast<std::size_t>(at - sector.begin());
  PutBytes(sector, used, 4, 0x1BE);
  PutBytes(sector, used + 4, 2, SectorBytes - used - 6);
  return sector;
}

// Each header as text; what is said to be no data before it is zeros.
std::vector<std::string> Find(const std::vector<ByteView>& pieces, bool isOneBlock) {
  Bytes sectors;
  for (const ByteView piece : pieces) {
    const Bytes pack = PackOf(piece);
    sectors.insert(sectors.end(), pack.begin(), pack.end());
  }
  VideoHeaders headers;
  std::uint64_t total = 0;
  PackBlock block;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (!isOneBlock || i == 0) {
      const ByteView all(sectors);
      block.Read(isOneBlock ? all : all.subspan(i * SectorBytes, SectorBytes), 0, true);
    }
    const ScannedPack& pack = block.Packs()[isOneBlock ? i : 0];
    headers.Feed(pack.Packet->Payload, total, pack.Packet->Headers, pack.Packet->CarriesOn);
    total += pieces[i].size();
  }
  headers.Finish(total);
  const auto isZeros = [](std::uint64_t from, std::uint64_t to) {
    const Bytes stream = Stream();
    return from <= to && std::ranges::all_of(std::span(stream).subspan(from, to - from),
                                             [](std::uint8_t byte) { return byte == 0; });
  };
  std::vector<std::string> found;
  for (const VideoHeader& each : headers.Headers()) {
    EXPECT_TRUE(isZeros(each.DataEnd, each.At)) << each.At;
    found.push_back(fmt::format("{} {:02X} {:02X}", each.At, each.Code, fmt::join(each.Rest, " ")));
  }
  EXPECT_TRUE(isZeros(headers.DataEnd(), total));
  return found;
}

TEST(VideoHeaders, AreTheSameHoweverAStreamIsCut) {
  const Bytes stream = Stream();
  const ByteView all(stream);
  const std::vector<std::string> whole = Find({all}, true);
  EXPECT_EQ(whole.size(), 6U);
  for (std::size_t first = 1; first < stream.size(); ++first) {
    for (std::size_t second = first; second < stream.size(); ++second) {
      std::vector<ByteView> pieces{all.first(first), all.subspan(second)};
      if (second > first) {
        pieces.insert(pieces.begin() + 1, all.subspan(first, second - first));
      }
      ASSERT_EQ(Find(pieces, true), whole) << first << " " << second;
      ASSERT_EQ(Find(pieces, false), whole) << first << " " << second;
    }
  }
}

}  // namespace
}  // namespace quorvelant
