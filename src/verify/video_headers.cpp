#include "verify/video_headers.h"

#include <algorithm>
#include <utility>

#include "disc/start_codes.h"

namespace quorvelant {

void VideoHeaders::Feed(ByteView data, std::uint64_t at, std::span<const std::uint16_t> offsets,
                        bool carriesOn) {
  if (data.size() < LeastBytes) {
    carry_.insert(carry_.end(), data.begin(), data.end());
    if (carry_.size() >= 2 * LeastBytes) {
      const Bytes whole = std::move(carry_);
      carry_.clear();
      FindHeaders(whole, at + data.size() - whole.size(), whole.size() - LeastBytes + 1);
      carry_.assign(whole.end() - (LeastBytes - 1), whole.end());
    }
    return;
  }
  if (!carry_.empty()) {
    const std::size_t had = carry_.size();
    carry_.insert(carry_.end(), data.begin(), data.begin() + (LeastBytes - 1));
    FindHeaders(carry_, at - had, had);
  }
  for (const std::uint16_t offset : offsets) {
    AddHeader(data, at, offset);
  }
  carry_.clear();
  if (carriesOn) {
    carry_.assign(data.end() - (LeastBytes - 1), data.end());
  }
}

void VideoHeaders::FindHeaders(ByteView data, std::uint64_t at, std::size_t upTo) {
  ForEachHeader(data, 0, upTo, [&](std::size_t offset) { AddHeader(data, at, offset); });
}

void VideoHeaders::AddHeader(ByteView data, std::uint64_t at, std::size_t offset) {
  const std::uint8_t code = data[offset + 3];
  const bool wanted = code == start_code::Picture || code == start_code::Sequence ||
                      code == start_code::Extension || code == start_code::SequenceEnd ||
                      code == start_code::Group;
  if (!wanted) {
    return;
  }
  std::size_t end = offset;
  while (end > 0 && data[end - 1] == 0) {
    --end;
  }
  VideoHeader header{.At = at + offset, .DataEnd = at + end, .Code = code, .Rest = {}};
  const std::size_t count = std::min<std::size_t>(8, data.size() - offset - 4);
  std::copy_n(data.begin() + static_cast<std::ptrdiff_t>(offset + 4), count, header.Rest.begin());
  headers_.push_back(header);
}

void VideoHeaders::Finish(std::uint64_t total) {
  const std::uint64_t at = total - carry_.size();
  for (std::size_t i = 0; i + StartCodeBytes <= carry_.size(); ++i) {
    if (GetBytes(carry_, i, 3) == 1 && !start_code::IsSlice(carry_[i + 3])) {
      AddHeader(carry_, at, i);
    }
  }
  std::size_t end = carry_.size();
  while (end > 0 && carry_[end - 1] == 0) {
    --end;
  }
  dataEnd_ = at + end;
  carry_.clear();
}

}  // namespace quorvelant
