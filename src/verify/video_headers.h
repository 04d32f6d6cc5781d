// The headers of a video stream that comes in pieces.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "disc/start_code_search.h"
#include "disc/start_codes.h"

namespace quorvelant {

// A picture, sequence or group header, an extension, or a sequence end code. Offsets count bytes of the
// stream.
struct VideoHeader {
  std::uint64_t At;
  std::uint64_t DataEnd;  // after the last byte before it that is not 0
  std::uint8_t Code;
  std::array<std::uint8_t, 8> Rest;
};

// Calls `take` with the offset of each start code from `from` to before `upTo`, slices left out. Returns
// where the one behind begins, or NoStartCode.
template <class Take>
std::size_t ForEachHeader(ByteView data, std::size_t from, std::size_t upTo, const Take& take) {
  std::size_t at = FindHeaderStartCode(data, from);
  for (; at < upTo; at = FindHeaderStartCode(data, at + StartCodeBytes)) {
    take(at);
  }
  return at;
}

class VideoHeaders {
 public:
  static constexpr std::size_t LeastBytes = 12;  // a start code and as much as is read of what follows

  // The next bytes, which begin at `at`. `offsets`: where headers begin that have so many bytes here.
  // `carriesOn`: whether another may begin behind those, or the zeros before one. `data` is read only where
  // headers are: its bytes are in the other thread's cache.
  void Feed(ByteView data, std::uint64_t at, std::span<const std::uint16_t> offsets, bool carriesOn);
  // No header goes on beyond `total`.
  void Finish(std::uint64_t total);

  [[nodiscard]] const std::vector<VideoHeader>& Headers() const { return headers_; }
  // After the last byte that is not 0, once finished.
  [[nodiscard]] std::uint64_t DataEnd() const { return dataEnd_; }
  void Clear() { headers_.clear(); }

 private:
  // The headers that begin before `upTo`; `data` has all their bytes.
  void FindHeaders(ByteView data, std::uint64_t at, std::size_t upTo);
  void AddHeader(ByteView data, std::uint64_t at, std::size_t offset);

  std::vector<VideoHeader> headers_;
  Bytes carry_;  // the last bytes of the piece before, in which a header may begin
  std::uint64_t dataEnd_ = 0;
};

}  // namespace quorvelant
