#include "verify/pack_block.h"

#include <algorithm>
#include <utility>

#include "disc/start_codes.h"
#include "verify/pack_reader.h"
#include "verify/video_headers.h"

namespace quorvelant {

void PackBlock::Read(ByteView sectors, std::uint32_t number, bool isOurs, std::vector<UnreadSectors> unread) {
  const std::size_t count = sectors.size() / SectorBytes;
  sectors_ = sectors;
  unread_ = std::move(unread);
  packs_.assign(count, {});
  for (const UnreadSectors& lost : unread_) {
    for (ScannedPack& pack : std::span(packs_).subspan(lost.First - number, lost.Count)) {
      pack.IsRead = false;
    }
  }
  faults_.clear();
  headers_.clear();
  headers_.reserve(sectors.size() / StartCodeBytes);  // packets keep views of it
  for (std::size_t i = 0; i < count; ++i) {
    if (!packs_[i].IsRead) {
      continue;
    }
    const ByteView sector = sectors.subspan(i * SectorBytes, SectorBytes);
    PackReader(sector, number + static_cast<std::uint32_t>(i), isOurs, packs_[i], faults_).Read();
    FindHeaders(i);
  }
}

void PackBlock::FindHeaders(std::size_t sector) {
  ScannedPack& pack = packs_[sector];
  const bool isVideo = pack.Packet && pack.Code == StartCodeOf(start_code::VideoStream);
  if (!isVideo || pack.Packet->Payload.size() < VideoHeaders::LeastBytes) {
    return;
  }
  // A search that ends at a start code ends sooner than one at the end of the data, whose last bytes go one
  // by one: the pack behind begins with a start code.
  const ByteView ahead = sectors_.subspan(sector * SectorBytes,
                                          std::min(2 * SectorBytes, sectors_.size() - sector * SectorBytes));
  const std::size_t first = headers_.size();
  const std::size_t begin = pack.Packet->At;
  const std::size_t end = begin + pack.Packet->Payload.size();
  const std::size_t beyond =
      ForEachHeader(ahead, begin, end - VideoHeaders::LeastBytes + 1,
                    [&](std::size_t at) { headers_.push_back(static_cast<std::uint16_t>(at - begin)); });
  pack.Packet->Headers = std::span(headers_).subspan(first);
  // 1 may end a prefix whose value comes with the next packet.
  pack.Packet->CarriesOn = beyond < end || ahead[end - 1] <= 1;
}

}  // namespace quorvelant
