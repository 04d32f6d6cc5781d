// The input buffer of one decoder (ISO/IEC 13818-1 2.4.2): bytes come in pack by pack and leave as whole
// units at their decoding times.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "verify/vob_place.h"

namespace quorvelant {

// Times are ticks of 27 MHz on the clock of the VOB.
class DecoderBuffer {
 public:
  DecoderBuffer(const VobTeller& teller, std::string stream) : teller_(&teller), stream_(std::move(stream)) {}

  void SetSize(std::int64_t bytes) { size_ = bytes; }
  // So much over the size is a note: who puts packs into a stream that is muxed moves the rest of it.
  void SetSlack(std::int64_t bytes) { slack_ = bytes; }
  [[nodiscard]] std::int64_t Size() const { return size_; }
  [[nodiscard]] std::int64_t Peak() const { return peak_; }
  [[nodiscard]] std::uint64_t Total() const { return total_; }  // bytes that arrived

  // The payload of a pack, whose first and last bytes arrive at these times.
  void Arrive(std::uint32_t sector, std::int64_t begin, std::int64_t end, std::size_t bytes);
  // A unit ends at this offset of the stream and leaves at this time. Units come in their order.
  void AddUnit(std::uint64_t end, std::int64_t time) { units_.push_back({end, time}); }
  // Plays what arrived. Every unit that leaves until then is known.
  void Settle();

 private:
  struct Arrival {
    std::uint32_t Sector;
    std::int64_t Begin;
    std::int64_t End;
    std::uint64_t Total;
  };
  struct Unit {
    std::uint64_t End;
    std::int64_t Time;
  };

  void CheckInTime(const Arrival& arrival);
  void CheckRoom(const Arrival& arrival);

  const VobTeller* teller_;
  std::string stream_;
  std::int64_t size_ = 0;
  std::int64_t slack_ = 0;
  std::int64_t peak_ = 0;
  std::uint64_t total_ = 0;
  std::uint64_t before_ = 0;   // bytes that arrived until the last pack that was played
  std::uint64_t removed_ = 0;  // bytes that left
  std::vector<Arrival> arrivals_;
  std::vector<Unit> units_;
  std::size_t arrived_ = 0;  // units from the front that are in
  std::size_t left_ = 0;     // units from the front that left
};

}  // namespace quorvelant
