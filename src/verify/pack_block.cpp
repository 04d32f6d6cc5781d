#include "verify/pack_block.h"

#include <algorithm>

#include "disc/start_codes.h"
#include "verify/pack_reader.h"
#include "verify/video_headers.h"

namespace quorvelant {

void PackBlock::Read(ByteView sectors, std::uint32_t number, bool isOurs) {
  sectors_ = sectors;
  packs_.clear();
  headers_.clear();
  ends_.clear();
  const std::size_t count = sectors.size() / SectorBytes;
  for (std::size_t i = 0; i < count; ++i) {
    const ByteView sector = sectors.subspan(i * SectorBytes, SectorBytes);
    PackReader(sector, number + static_cast<std::uint32_t>(i), isOurs, packs_.emplace_back()).Read();
    FindHeaders(i);
    ends_.push_back(headers_.size());
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (packs_[i].Packet) {
      const std::size_t first = i == 0 ? 0 : ends_[i - 1];
      packs_[i].Packet->Headers = std::span(headers_).subspan(first, ends_[i] - first);
    }
  }
}

void PackBlock::FindHeaders(std::size_t sector) {
  const ScannedPack& pack = packs_[sector];
  const bool isVideo = pack.Packet && pack.Code == StartCodeOf(start_code::VideoStream);
  if (!isVideo || pack.Packet->Payload.size() < VideoHeaders::LeastBytes) {
    return;
  }
  // A search that ends at a start code ends sooner than one at the end of the data, whose last bytes go one
  // by one: the pack behind begins with a start code.
  const ByteView ahead = sectors_.subspan(sector * SectorBytes,
                                          std::min(2 * SectorBytes, sectors_.size() - sector * SectorBytes));
  const std::size_t begin = pack.Packet->At;
  const std::size_t upTo = begin + pack.Packet->Payload.size() - VideoHeaders::LeastBytes + 1;
  ForEachHeader(ahead, begin, upTo,
                [&](std::size_t at) { headers_.push_back(static_cast<std::uint16_t>(at - begin)); });
}

}  // namespace quorvelant
