#include "verify/decoder_buffer.h"

#include <algorithm>

namespace quorvelant {
namespace {

// A byte takes 150/7 ticks of 27 MHz at 10.08 Mbit/s.
constexpr std::int64_t ByteTicks = 150;
constexpr std::int64_t ByteTicksBy = 7;
constexpr std::int64_t TicksPerMs = 27000;

}  // namespace

void DecoderBuffer::Arrive(std::uint32_t sector, std::int64_t begin, std::int64_t end, std::size_t bytes) {
  total_ += bytes;
  arrivals_.push_back({sector, begin, end, total_});
}

void DecoderBuffer::Settle() {
  for (const Arrival& arrival : arrivals_) {
    CheckInTime(arrival);
    CheckRoom(arrival);
    before_ = arrival.Total;
  }
  arrivals_.clear();
  const std::size_t done = std::min(arrived_, left_);
  units_.erase(units_.begin(), units_.begin() + static_cast<std::ptrdiff_t>(done));
  arrived_ -= done;
  left_ -= done;
}

void DecoderBuffer::CheckInTime(const Arrival& arrival) {
  for (; arrived_ < units_.size() && units_[arrived_].End <= arrival.Total; ++arrived_) {
    const Unit& unit = units_[arrived_];
    const auto after = static_cast<std::int64_t>(arrival.Total - unit.End);
    const std::int64_t time = arrival.End - after * ByteTicks / ByteTicksBy;
    if (time > unit.Time) {
      teller_->Tell(message::BufferStarved, arrival.Sector, 0, stream_, "",
                    "a unit that is in when it is decoded",
                    fmt::format("{:.2f} ms late", static_cast<double>(time - unit.Time) / TicksPerMs));
    }
  }
}

void DecoderBuffer::CheckRoom(const Arrival& arrival) {
  std::int64_t fill = 0;
  const auto fillNow = [&](std::uint64_t in) {
    return in > removed_ ? static_cast<std::int64_t>(in - removed_) : 0;
  };
  for (; left_ < units_.size() && units_[left_].Time <= arrival.End; ++left_) {
    const Unit& unit = units_[left_];
    if (unit.Time > arrival.Begin) {  // leaves while the pack arrives
      fill = std::max(fill, fillNow(before_) + (unit.Time - arrival.Begin) * ByteTicksBy / ByteTicks);
    }
    removed_ = unit.End;
  }
  fill = std::max(fill, fillNow(arrival.Total));
  peak_ = std::max(peak_, fill);
  if (fill > size_) {
    teller_->Tell(fill > size_ + slack_ ? message::BufferOverflow : message::BufferTight, arrival.Sector, 0,
                  stream_, "", fmt::format("at most {} bytes", size_), fill);
  }
}

}  // namespace quorvelant
