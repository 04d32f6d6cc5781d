// Follows one subpicture stream of one VOB: its units, their times, and the decoder's buffer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "verify/decoder_buffer.h"
#include "verify/scanned_packet.h"
#include "verify/vob_place.h"

namespace quorvelant {

class SubpictureWalk {
 public:
  // `stream` is the substream, 0x20 to 0x3F; `height` lines of the picture.
  SubpictureWalk(const VobTeller& teller, unsigned stream, int height);

  // The packet's payload begins with the substream's id.
  void Feed(const ScannedPacket& packet);
  void EndVob();

  // When the first and the last unit are shown, 90 kHz.
  [[nodiscard]] std::optional<std::uint32_t> FirstPts() const { return firstPts_; }
  [[nodiscard]] std::optional<std::uint32_t> LastPts() const { return lastPts_; }
  [[nodiscard]] DecoderBuffer& Buffer() { return buffer_; }

 private:
  [[nodiscard]] std::size_t UnitBytes() const;
  template <class Expected, class Seen>
  void Bad(const char* field, const Expected& expected, const Seen& seen) const;
  void CheckUnit();
  // The control sequence at `at`; the offset of the next, or nothing after the last or a fault.
  std::optional<std::size_t> CheckSequence(std::size_t at);
  // A command at `at`: where the next one is, or nothing after a fault.
  std::optional<std::size_t> CheckControl(std::size_t at);

  const VobTeller* teller_;
  std::string name_;
  int height_;
  DecoderBuffer buffer_;
  Bytes unit_;  // under way
  bool open_ = false;
  std::uint32_t unitSector_ = 0;
  std::uint32_t unitPts_ = 0;
  unsigned commands_ = 0;  // a bit for each kind that the unit has
  std::uint32_t sequenceTime_ = 0;
  std::optional<std::uint32_t> firstPts_;
  std::optional<std::uint32_t> lastPts_;
};

}  // namespace quorvelant
