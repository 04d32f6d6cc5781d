// Reads the sectors of a VOB set once.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "verify/highlight_check.h"
#include "verify/ifo_tables.h"
#include "verify/pack_block.h"
#include "verify/vob_place.h"
#include "verify/vob_state.h"
#include "verify/vobu_facts.h"

namespace quorvelant {

struct ScanOrder {
  IfoStreams Streams = {};
  bool Known = true;    // whether the IFO says what the streams are
  bool IsOurs = false;  // whether this program made the disc
  std::uint32_t Sectors = 0;
};

// Checks packs and packets, and hands them to the walks of their streams; each VOB's navigation packs are
// checked once it is whole. Memory is a kilobyte a VOBU of the longest VOB, and a byte a sector.
class VobScan {
 public:
  VobScan(const VobTeller& teller, const ScanOrder& order);

  // The next sectors.
  void Read(const PackBlock& block);
  [[nodiscard]] VobSetFacts Finish();

 private:
  void ReadSector(ByteView sector, const ScannedPack& pack, std::span<const PackFault> faults);
  void Tell(std::span<const PackFault> faults) const;
  void TakeUnread(const UnreadSectors& next);
  void TellUnread();
  void BadStream(const ScannedPacket& packet, unsigned id) const;
  template <class Expected, class Seen>
  void Bad(std::size_t offset, const char* table, const char* field, const Expected& expected,
           const Seen& seen) const;

  void CheckScr(std::int64_t scr) const;
  [[nodiscard]] bool IsNav(ByteView sector, std::size_t at) const;
  void TakeNav(ByteView sector, std::int64_t scr);
  void CheckNavAlone(ByteView sector, std::int64_t scr) const;
  void TakePacket(const ScannedPack& pack);
  void Hand(unsigned id, const ScannedPacket& packet);
  void CheckFirst(const ScannedPacket& packet, DecoderBuffer& buffer, unsigned id);
  void EndVobu();
  void EndVob(std::uint16_t id);
  void EndOtherVobs(std::uint16_t id);
  void CheckStreamTimes(VobState& vob) const;

  const VobTeller* teller_;
  ScanOrder order_;
  std::uint32_t sector_ = 0;
  UnreadSectors unread_;            // the last ones, which may go on
  std::vector<std::uint8_t> tags_;  // by sector
  std::map<std::uint16_t, std::unique_ptr<VobState>> vobs_;
  VobState* vob_ = nullptr;
  HighlightCheck highlights_;
  VobSetFacts facts_;
};

}  // namespace quorvelant
