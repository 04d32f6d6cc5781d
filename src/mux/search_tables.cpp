#include "mux/search_tables.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "disc/nav_layout.h"

namespace quorvelant {
namespace {

// The steps of the jump rows, from the shortest on, in half seconds.
constexpr std::array<int, 19> StepHalfSeconds{1,  2,  3,  4,  5,  6,  7,  8,   9,  10,
                                              11, 12, 13, 14, 15, 20, 60, 120, 240};
constexpr int LongStep = 20;  // from here on a row tells whether there was video on the way

enum class Way : std::int8_t { Forward = 1, Backward = -1 };

// The VOBUs of one cell as seen from one of them: number 0 is itself, then one after the other.
class Walk {
 public:
  // `withVideo` are the places of the records with video.
  Walk(std::span<const VobuRecord> records, std::span<const std::size_t> withVideo, std::size_t index,
       Way way)
      : records_(records), withVideo_(withVideo), index_(index), way_(way) {}

  // The VOBU `count` away; nullptr beyond the cell.
  const VobuRecord* At(std::size_t count) const {
    const bool inside = way_ == Way::Forward ? count < records_.size() - index_ : count <= index_;
    if (!inside) {
      return nullptr;
    }
    const VobuRecord& here = records_[index_];
    const VobuRecord& there = records_[way_ == Way::Forward ? index_ + count : index_ - count];
    return there.VobId == here.VobId && there.CellId == here.CellId ? &there : nullptr;
  }
  // The next one that has video, and the cell's end as nullptr.
  const VobuRecord* NextVideo() const {
    if (way_ == Way::Forward) {
      const auto after = std::ranges::upper_bound(withVideo_, index_);
      return after == withVideo_.end() ? nullptr : At(*after - index_);
    }
    const auto here = std::ranges::lower_bound(withVideo_, index_);
    return here == withVideo_.begin() ? nullptr : At(index_ - *(here - 1));
  }
  // Whether time `ticks` lies beyond this VOBU on the way, or within it (both ends included).
  bool Beyond(const VobuRecord& there, std::int64_t ticks) const {
    return way_ == Way::Forward ? ticks > there.EndPts : ticks < there.StartPts;
  }
  static bool Within(const VobuRecord& there, std::int64_t ticks) {
    return there.StartPts <= ticks && ticks <= there.EndPts;
  }
  std::int64_t Sign() const { return static_cast<std::int64_t>(way_); }
  std::uint32_t Distance(const VobuRecord& there) const {
    return way_ == Way::Forward ? there.StartSector - records_[index_].StartSector
                                : records_[index_].StartSector - there.StartSector;
  }

 private:
  std::span<const VobuRecord> records_;
  std::span<const std::size_t> withVideo_;
  std::size_t index_;
  Way way_;
};

// Distance with the video flag; `none` where there is no such VOBU.
disc::Number Address(const Walk& walk, const VobuRecord* there, std::uint32_t none) {
  if (there == nullptr) {
    return {none};
  }
  return {walk.Distance(*there) | (there->HasVideo ? nav::HasVideoBit : 0)};
}

// Whether a VOBU with video stands on the way, from `first` on and before `end`.
bool VideoBetween(const Walk& walk, std::size_t first, std::size_t end) {
  for (std::size_t i = first; i < end; ++i) {
    if (walk.At(i)->HasVideo) {
      return true;
    }
  }
  return false;
}

// The nineteen rows, the shortest step first. Each step is looked for where the one before was found.
std::array<std::uint32_t, StepHalfSeconds.size()> Jumps(const Walk& walk, const FrameTiming& timing) {
  std::array<std::uint32_t, StepHalfSeconds.size()> rows{};
  rows.fill(nav::NoVobu);
  const std::int64_t halfSecond = timing.FramesPerSecond * timing.FramePeriod / 2;
  std::size_t previous = 0;  // the VOBU of the row before
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const std::int64_t target = walk.At(0)->StartPts + walk.Sign() * StepHalfSeconds[row] * halfSecond;
    std::size_t count = previous;
    while (walk.At(count) != nullptr && walk.Beyond(*walk.At(count), target)) {
      ++count;
    }
    const VobuRecord* hit = walk.At(count);
    const bool found = hit != nullptr && Walk::Within(*hit, target);
    const bool between = StepHalfSeconds[row] >= LongStep && VideoBetween(walk, previous + 1, count);
    rows[row] = (found ? static_cast<std::uint32_t>(Address(walk, hit, 0).Value) : nav::NoVobu) |
                (between ? nav::VideoBetweenBit : 0);
    if (!found) {
      break;
    }
    previous = count;
  }
  return rows;
}

}  // namespace

SearchTables::SearchTables(std::span<const VobuRecord> records, const FrameTiming& timing)
    : records_(records), timing_(&timing) {
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (records[i].HasVideo) {
      withVideo_.push_back(i);
    }
  }
}

void SearchTables::Fill(std::size_t index, ByteSpan sector) const {
  const Walk forward(records_, withVideo_, index, Way::Forward);
  const Walk backward(records_, withVideo_, index, Way::Backward);
  Put(sector, nav::NextVideo, Address(forward, forward.NextVideo(), nav::NoVideoVobu));
  Put(sector, nav::NextVobu, Address(forward, forward.At(1), nav::NoVobu));
  Put(sector, nav::PreviousVobu, Address(backward, backward.At(1), nav::NoVobu));
  Put(sector, nav::PreviousVideo, Address(backward, backward.NextVideo(), nav::NoVideoVobu));
  const auto onward = Jumps(forward, *timing_);
  const auto back = Jumps(backward, *timing_);
  for (std::size_t row = 0; row < onward.size(); ++row) {
    Put(sector, nav::ForwardJumps, disc::Number{onward[row]}, onward.size() - 1 - row);
    Put(sector, nav::BackwardJumps, disc::Number{back[row]}, row);
  }
}

}  // namespace quorvelant
