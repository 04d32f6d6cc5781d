// Packs of a block of sectors: what can be said of each alone, found ahead of the scan.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "verify/scanned_packet.h"

namespace quorvelant {

// Sectors that the disc did not give.
struct UnreadSectors {
  std::uint32_t First = 0;  // in the VOB set
  std::uint32_t Count = 0;
  bool BeginsFile = false;
  std::string Why;  // as the system says it
};

class PackBlock {
 public:
  // Whole sectors, of which the first has this number in its VOB set. They must last as long as their packs.
  // Nothing is said of those among them that were not read.
  void Read(ByteView sectors, std::uint32_t number, bool isOurs, std::vector<UnreadSectors> unread = {});

  [[nodiscard]] ByteView Sectors() const { return sectors_; }
  [[nodiscard]] std::span<const ScannedPack> Packs() const { return packs_; }
  [[nodiscard]] std::span<const UnreadSectors> Unread() const { return unread_; }
  // Of all packs, in their order: as many of each as it counts.
  [[nodiscard]] std::span<const PackFault> Faults() const { return faults_; }

 private:
  void FindHeaders(std::size_t sector);

  ByteView sectors_;
  std::vector<UnreadSectors> unread_;
  std::vector<ScannedPack> packs_;
  std::vector<PackFault> faults_;
  std::vector<std::uint16_t> headers_;  // of all packets
};

}  // namespace quorvelant
