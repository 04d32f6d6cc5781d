// The headers of one pack and its packet.
#pragma once

#include <cstdint>
#include <optional>

#include "base/bytes.h"
#include "disc/start_codes.h"
#include "verify/scanned_packet.h"
#include "verify/vob_place.h"

namespace quorvelant {

inline constexpr std::int64_t ClockTicks = 300;  // 27 MHz, of a tick of 90 kHz

constexpr std::uint32_t StartCodeOf(std::uint8_t code) {
  return StartCodePrefix | code;
}

struct PackHead {
  static constexpr std::size_t LeastBytes = 14;  // without stuffing

  std::int64_t Scr = 0;  // 27 MHz
  std::size_t Bytes = LeastBytes;
};

class PackReader {
 public:
  // `number` is the sector's in the VOB set; `isOurs`: this program made the disc.
  PackReader(const VobTeller& teller, ByteView sector, std::uint32_t number, bool isOurs)
      : teller_(&teller), sector_(sector), number_(number), isOurs_(isOurs) {}

  // Of a sector that begins as a pack does.
  [[nodiscard]] PackHead Head() const;
  // The packet at `at`, of a pack sent at `scr`; nothing where its header is none, which is told.
  [[nodiscard]] std::optional<ScannedPacket> Packet(std::size_t at, std::int64_t scr) const;

 private:
  template <class Expected, class Seen>
  void Bad(std::size_t offset, const char* table, const char* field, const Expected& expected,
           const Seen& seen) const;
  void CheckAfter(std::size_t end) const;
  [[nodiscard]] bool ReadPesHead(std::size_t at, ScannedPacket& packet, std::size_t& data) const;
  [[nodiscard]] std::uint32_t StampAt(std::size_t at, unsigned prefix) const;
  void CheckDelay(const ScannedPacket& packet, std::int64_t scr) const;

  const VobTeller* teller_;
  ByteView sector_;
  std::uint32_t number_;
  bool isOurs_;
};

}  // namespace quorvelant
