// The headers of one pack and its packet.
#pragma once

#include <cstdint>
#include <vector>

#include "base/bytes.h"
#include "disc/start_codes.h"
#include "verify/scanned_packet.h"

namespace quorvelant {

inline constexpr std::int64_t ClockTicks = 300;  // 27 MHz, of a tick of 90 kHz

constexpr std::uint32_t StartCodeOf(std::uint8_t code) {
  return StartCodePrefix | code;
}

inline constexpr std::size_t LeastPackHead = 14;  // bytes, without stuffing

// Streams of DVD-Video: private stream 1, sound, and video.
constexpr bool IsStreamCode(std::uint32_t code) {
  return code == StartCodeOf(start_code::PrivateStream1) ||
         (code >= StartCodeOf(0xC0) && code <= StartCodeOf(0xEF));
}

// Reads the headers of one pack.
class PackReader {
 public:
  // `sector` is whole; `number` is its number in the VOB set; `isOurs`: this program made the disc.
  PackReader(ByteView sector, std::uint32_t number, bool isOurs, ScannedPack& pack,
             std::vector<PackFault>& faults)
      : sector_(sector), number_(number), isOurs_(isOurs), pack_(pack), faults_(faults) {}

  // Into the pack, which is new; what is wrong with it comes behind the other faults.
  void Read();

 private:
  template <class Expected, class Seen>
  [[gnu::cold]] void Bad(std::size_t offset, const char* table, const char* field, const Expected& expected,
                         const Seen& seen);
  template <class Expected, class Seen>
  [[gnu::cold]] void Tell(const MessageKind& kind, std::size_t offset, const char* table, const char* field,
                          const Expected& expected, const Seen& seen);
  void ReadHead();
  void ReadPacket();
  void CheckAfter(std::size_t end);
  [[nodiscard]] bool ReadPesHead(ScannedPacket& packet, std::size_t& data);
  [[nodiscard]] std::uint32_t StampAt(std::size_t at, unsigned prefix);
  void CheckDelay(const ScannedPacket& packet);

  ByteView sector_;
  std::uint32_t number_;
  bool isOurs_;
  ScannedPack& pack_;
  std::vector<PackFault>& faults_;
};

}  // namespace quorvelant
