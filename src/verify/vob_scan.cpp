#include "verify/vob_scan.h"

#include <algorithm>
#include <array>
#include <utility>

#include "disc/nav_layout.h"
#include "disc/start_codes.h"
#include "disc/video_standard.h"
#include "verify/nav_check.h"
#include "verify/pack_reader.h"

namespace quorvelant {
namespace {

constexpr std::int64_t PackTicks = 43885;                 // of a sector at 10.08 Mbit/s, cut
constexpr std::int64_t MostScrGap = 7 * 27'000'000 / 10;  // ISO/IEC 13818-1 2.7.1

// Buffers that DVD-Video gives to streams that declare none.
constexpr std::int64_t VideoPStd = 232LL * 1024;
constexpr std::int64_t MpegAudioPStd = 4096;
constexpr std::int64_t PrivatePStd = 58LL * 1024;

constexpr unsigned FirstStream = 0xC0;  // what is less names a substream

// Two times, then two lengths, for each stream.
std::array<AudioGap, 2> GapsOf(const NavRecord& record, std::size_t stream) {
  const std::size_t at = nav::AudioGaps.Offset + 16 * stream;
  return {AudioGap{record.Long(at), record.Long(at + 8)},
          AudioGap{record.Long(at + 4), record.Long(at + 12)}};
}

}  // namespace

VobScan::VobScan(const VobTeller& teller, const ScanOrder& order)
    : teller_(&teller),
      order_(order),
      tags_(order.Sectors),
      highlights_(teller, order.Streams.Video, order.Known, order.IsOurs) {}

template <class Expected, class Seen>
void VobScan::Bad(std::size_t offset, const char* table, const char* field, const Expected& expected,
                  const Seen& seen) const {
  teller_->Tell(message::PackWrong, sector_, offset, table, field, expected, seen);
}

void VobScan::Read(const PackBlock& block) {
  for (const UnreadSectors& each : block.Unread()) {
    TakeUnread(each);
  }
  std::span<const PackFault> faults = block.Faults();
  const std::span<const ScannedPack> packs = block.Packs();
  const ByteView sectors = block.Sectors();
  for (std::size_t i = 0; i < packs.size(); ++i) {
    const ScannedPack& pack = packs[i];
    if (pack.IsRead) {
      ReadSector(sectors.subspan(i * SectorBytes, SectorBytes), pack, faults);
    }
    faults = faults.subspan(std::size_t{pack.HeadFaults} + pack.PacketFaults);
    ++sector_;
  }
}

void VobScan::TakeUnread(const UnreadSectors& next) {
  if (!next.BeginsFile && next.First == unread_.First + unread_.Count && next.Why == unread_.Why) {
    unread_.Count += next.Count;
  } else {
    TellUnread();
    unread_ = next;
  }
}

void VobScan::TellUnread() {
  if (unread_.Count > 0) {
    teller_->TellUnread(unread_.First, unread_.Count, unread_.Why);
    unread_.Count = 0;
  }
}

void VobScan::Tell(std::span<const PackFault> faults) const {
  for (const PackFault& fault : faults) {
    teller_->Tell(*fault.Kind, sector_, fault.Offset, fault.Table, fault.Field, fault.Expected, fault.Seen);
  }
}

// `faults`: those of the pack, and more behind.
void VobScan::ReadSector(ByteView sector, const ScannedPack& pack, std::span<const PackFault> faults) {
  if (!pack.IsPack) {
    Bad(0, "pack header", "pack_start_code", "0x000001BA", fmt::format("0x{:08X}", GetBytes(sector, 0, 4)));
    return;
  }
  if (pack.HeadFaults > 0) {
    Tell(faults.first(pack.HeadFaults));
  }
  const bool isSystem = pack.Code == StartCodeOf(start_code::SystemHeader);
  if (isSystem && IsNav(sector, pack.PacketAt)) {
    TakeNav(sector, pack.Scr);
  }
  if (vob_ != nullptr) {
    CheckScr(pack.Scr);
    vob_->LastScr = pack.Scr;
  }
  if (isSystem) {
    // a navigation pack, or a fault that was told
  } else if (vob_ == nullptr) {
    Bad(pack.PacketAt, "VOBU", "", "a navigation pack first", fmt::format("0x{:08X}", pack.Code));
  } else if (IsStreamCode(pack.Code)) {
    if (pack.PacketFaults > 0) {
      Tell(faults.subspan(pack.HeadFaults, pack.PacketFaults));
    }
    TakePacket(pack);
  } else if (pack.Code == StartCodeOf(start_code::PaddingStream)) {
    teller_->Tell(message::PackLoose, sector_, pack.PacketAt, "pack", "", "a stream's packet",
                  "padding alone");
  } else {
    Bad(pack.PacketAt, "PES header", "packet_start_code", "a stream of DVD-Video",
        fmt::format("0x{:08X}", pack.Code));
  }
}

void VobScan::CheckScr(std::int64_t scr) const {
  if (!vob_->LastScr) {
    return;
  }
  const std::int64_t step = scr - *vob_->LastScr;
  const auto text = [](std::int64_t ticks) {
    return fmt::format("{:.2f} ticks of 90 kHz", static_cast<double>(ticks) / ClockTicks);
  };
  if (step < PackTicks) {
    const bool ours = order_.IsOurs || step <= 0;
    teller_->Tell(ours ? message::PacksClose : message::PacksCloseElsewhere, sector_, 4, "pack header", "SCR",
                  text(PackTicks) + " or more after the pack before", text(step));
  } else if (step > MostScrGap) {
    teller_->Tell(message::PackLoose, sector_, 4, "pack header", "SCR", "at most 0.7 s after the pack before",
                  text(step));
  }
}

bool VobScan::IsNav(ByteView sector, std::size_t at) const {
  struct FixedBytes {
    std::size_t At;
    unsigned Width;
    std::uint64_t Value;
    const char* Table;
    const char* Field;
  };
  constexpr std::array Fixed{
      FixedBytes{nav::SystemHeader.Offset + 4, 2, 18, "system header", "header_length"},
      FixedBytes{nav::PciStartCode.Offset, 4, nav::PrivateStream2, "PCI", "packet_start_code"},
      FixedBytes{nav::PciLength.Offset, 2, nav::PciPacketBytes, "PCI", "PES_packet_length"},
      FixedBytes{nav::PciSubstream.Offset, 1, nav::PciId, "PCI", "sub_stream_id"},
      FixedBytes{nav::DsiStartCode.Offset, 4, nav::PrivateStream2, "DSI", "packet_start_code"},
      FixedBytes{nav::DsiLength.Offset, 2, nav::DsiPacketBytes, "DSI", "PES_packet_length"},
      FixedBytes{nav::DsiSubstream.Offset, 1, nav::DsiId, "DSI", "sub_stream_id"}};
  bool good = at == LeastPackHead;
  for (const FixedBytes& each : Fixed) {
    const std::uint64_t seen = GetBytes(sector, each.At, each.Width);
    if (seen != each.Value) {
      teller_->Tell(message::NavWrong, sector_, each.At, each.Table, each.Field,
                    fmt::format("0x{:X}", each.Value), fmt::format("0x{:X}", seen));
      good = false;
    }
  }
  return good;
}

void VobScan::TakeNav(ByteView sector, std::int64_t scr) {
  EndVobu();
  if (sector_ < tags_.size()) {
    tags_[sector_] = NavTag;
  }
  const auto vobId = static_cast<std::uint16_t>(Get(sector, nav::VobIdn).Value);
  constexpr unsigned InterleavedBit = 0x4000;
  if ((Get(sector, nav::VobuSmlCat).Value & InterleavedBit) == 0) {
    EndOtherVobs(vobId);
  }
  auto& vob = vobs_[vobId];
  if (!vob) {
    vob = std::make_unique<VobState>(*teller_, order_.Streams.Video, order_.Known);
    constexpr std::int64_t OthersSlack = 2 * SectorBytes;
    vob->Video.Buffer().SetSlack(order_.IsOurs ? 0 : OthersSlack);
  }
  vob_ = vob.get();
  NavRecord record;
  record.Vobu = {.Sector = sector_,
                 .Last = sector_,
                 .StartPtm = Get(sector, nav::VobuSPtm).Value,
                 .EndPtm = Get(sector, nav::VobuEPtm).Value,
                 .VobId = vobId,
                 .CellId = static_cast<std::uint8_t>(Get(sector, nav::CellIdn).Value),
                 .UserOperations = static_cast<std::uint32_t>(Get(sector, nav::VobuUopCtl).Value)};
  record.SequenceEndPtm = Get(sector, nav::VobuSeEPtm).Value;
  record.Elapsed = Get(sector, nav::PciElapsed).Value;
  std::copy_n(sector.begin() + nav::NonSeamlessAngles.Offset, record.Angles.size(), record.Angles.begin());
  std::copy_n(sector.begin() + DsiAt, record.Dsi.size(), record.Dsi.begin());
  CheckNavAlone(sector, scr);
  highlights_.Check(sector, record.Vobu, facts_.Highlights);
  vob_->Records.push_back(record);
}

// What the pack says of itself, and what it reserves.
void VobScan::CheckNavAlone(ByteView sector, std::int64_t scr) const {
  const auto bad = [&](std::size_t offset, const char* table, std::string_view field, const auto& expected,
                       const auto& seen) {
    teller_->Tell(message::NavWrong, sector_, offset, table, field, expected, seen);
  };
  const auto scrBase = static_cast<std::uint32_t>(scr / ClockTicks);
  if (Get(sector, nav::NvPckScr).Value != scrBase) {
    bad(nav::NvPckScr.Offset, "DSI", nav::NvPckScr.Name, scrBase, Get(sector, nav::NvPckScr).Value);
  }
  for (const auto& [row, table] : {std::pair{&nav::PciLbn, "PCI"}, std::pair{&nav::DsiLbn, "DSI"}}) {
    if (Get(sector, *row).Value != sector_) {
      bad(row->Offset, table, row->Name, sector_, Get(sector, *row).Value);
    }
  }
  // Bytes 9 to 11 of the system header count streams and say how they run together: others may.
  const ByteView system = sector.subspan(nav::SystemHeader.Offset, nav::SystemHeaderBytes.size());
  for (std::size_t i = 0; i < system.size(); ++i) {
    if ((i < 9 || i > 11) && system[i] != nav::SystemHeaderBytes.at(i)) {
      teller_->Tell(i < 9 ? message::NavWrong : message::NavLoose, sector_, nav::SystemHeader.Offset + i,
                    "system header", i < 9 ? "rate_bound" : "P-STD_buffer_size_bound",
                    fmt::format("0x{:02X}", nav::SystemHeaderBytes.at(i)),
                    fmt::format("0x{:02X}", system[i]));
      break;
    }
  }
  for (const disc::RowView& row : nav::Rows) {
    const ByteView bytes = sector.subspan(row.Offset, row.Width);
    const bool set = row.Name == "reserved" && row.Offset != nav::HliReserved.Offset &&
                     std::ranges::any_of(bytes, [](std::uint8_t byte) { return byte != 0; });
    if (set) {
      teller_->Tell(message::ReservedSet, sector_, row.Offset,
                    row.Offset < nav::DsiStartCode.Offset ? "PCI" : "DSI", "reserved", 0, "others");
    }
  }
}

void VobScan::TakePacket(const ScannedPack& pack) {
  if (!pack.Packet) {
    return;
  }
  const ScannedPacket& packet = *pack.Packet;
  const unsigned stream = pack.Code & 0xFFU;
  if (stream != start_code::PrivateStream1) {
    Hand(stream, packet);
  } else if (packet.Payload.empty()) {
    Bad(packet.At, "private stream 1", "sub_stream_id", "one", "an empty packet");
  } else if (packet.Payload[0] >= FirstStream || packet.Payload[0] == NavTag) {
    BadStream(packet, packet.Payload[0]);
  } else {
    Hand(packet.Payload[0], packet);
  }
}

void VobScan::BadStream(const ScannedPacket& packet, unsigned id) const {
  Bad(packet.At, "PES header", "stream_id or sub_stream_id", "a stream of DVD-Video",
      fmt::format("0x{:02X}", id));
}

// `id`: the substream, or the stream from 0xC0 on.
void VobScan::Hand(unsigned id, const ScannedPacket& packet) {
  if (sector_ < tags_.size()) {
    tags_[sector_] = static_cast<std::uint8_t>(id);
  }
  if (id == start_code::VideoStream) {
    CheckFirst(packet, vob_->Video.Buffer(), id);
    vob_->Video.Feed(packet);
  } else if (id >= 0x20 && id < 0x40) {
    const int height = FullHeight(order_.Streams.Video.IsNtsc());
    auto& walk = vob_->Subpictures.try_emplace(id, *teller_, id, height).first->second;
    CheckFirst(packet, walk.Buffer(), id);
    constexpr std::int64_t SubpictureBytes = 52LL * 1024;
    walk.Buffer().SetSize(SubpictureBytes);
    walk.Feed(packet);
  } else if (CodingOf(id) != AudioCoding::Unknown) {
    auto& walk = vob_->Audio.try_emplace(id, *teller_, id, order_.IsOurs).first->second;
    CheckFirst(packet, walk.Buffer(), id);
    walk.SetGaps(GapsOf(vob_->Records.back(), id & 7U));
    walk.Feed(packet);
  } else {
    BadStream(packet, id);
  }
}

// The first packet of a stream in a VOB says when it is due and how much buffer it needs.
void VobScan::CheckFirst(const ScannedPacket& packet, DecoderBuffer& buffer, unsigned id) {
  const std::int64_t bound = id == start_code::VideoStream ? VideoPStd
                             : id >= 0xC0                  ? MpegAudioPStd
                                                           : PrivatePStd;
  if (packet.PStd > bound) {
    Bad(packet.At, "PES header", "P-STD_buffer_size", fmt::format("at most {} bytes", bound), packet.PStd);
  }
  if (buffer.Total() > 0) {
    if (packet.PStd != 0 && packet.PStd <= bound && packet.PStd != buffer.Size() && id >= 0x40 && id < 0xE0) {
      buffer.SetSize(packet.PStd);
    }
    return;
  }
  if (!packet.Pts) {
    teller_->Tell(message::StampWrong, sector_, 0, fmt::format("stream 0x{:02X}", id), "PTS",
                  "one in its first packet of the VOB", "none");
  }
  if (packet.PStd == 0) {
    teller_->Tell(message::PackLoose, sector_, 0, fmt::format("stream 0x{:02X}", id), "P-STD_buffer",
                  "one in its first packet of the VOB", "none");
  }
  if (id != start_code::VideoStream) {
    buffer.SetSize(packet.PStd != 0 && packet.PStd <= bound ? packet.PStd : bound);
  }
}

void VobScan::EndVobu() {
  if (vob_ == nullptr || vob_->Records.empty()) {
    return;
  }
  VobuFacts& vobu = vob_->Records.back().Vobu;
  vobu.Last = sector_ - 1;
  vob_->Video.EndVobu(vobu.Sector);
  facts_.Vobus.push_back(vobu);
  vob_ = nullptr;
}

void VobScan::EndOtherVobs(std::uint16_t id) {
  std::vector<std::uint16_t> ended;
  for (const auto& [other, vob] : vobs_) {
    if (other != id) {
      ended.push_back(other);
    }
  }
  for (const std::uint16_t other : ended) {
    EndVob(other);
  }
}

void VobScan::EndVob(std::uint16_t id) {
  VobState& vob = *vobs_.at(id);
  vob.Video.EndVob();
  for (auto& [stream, walk] : vob.Audio) {
    walk.EndVob();
    const std::uint32_t first =
        walk.Starts().empty() ? vob.Records.front().Vobu.Sector : walk.Starts().front().Sector;
    facts_.Streams.push_back({id, static_cast<std::uint8_t>(stream), first, walk.Traits()});
  }
  for (auto& [stream, walk] : vob.Subpictures) {
    walk.EndVob();
    facts_.Streams.push_back({id, static_cast<std::uint8_t>(stream), vob.Records.front().Vobu.Sector, {}});
  }
  CheckStreamTimes(vob);
  CheckNavRecords(vob, tags_,
                  {.Teller = *teller_, .IsNtsc = order_.Streams.Video.IsNtsc(), .IsOurs = order_.IsOurs});
  vobs_.erase(id);
}

// Sound begins with the pictures, and subpictures show while there are any.
void VobScan::CheckStreamTimes(VobState& vob) const {
  const VobuFacts& first = vob.Records.front().Vobu;
  const VobuFacts& last = vob.Records.back().Vobu;
  constexpr std::int64_t Second = 90000;
  for (const auto& [stream, walk] : vob.Audio) {
    const std::int64_t offset = walk.FirstPts().value_or(first.StartPtm) - std::int64_t{first.StartPtm};
    if (offset > Second || offset < -Second) {
      teller_->Tell(message::StampLoose, first.Sector, 0, fmt::format("audio stream 0x{:02X}", stream), "PTS",
                    "a start within a second of the video",
                    fmt::format("{:.3f} s off", static_cast<double>(offset) / Second));
    }
  }
  for (const auto& [stream, walk] : vob.Subpictures) {
    if (walk.FirstPts().value_or(first.StartPtm) < first.StartPtm ||
        walk.LastPts().value_or(last.EndPtm) > last.EndPtm) {
      teller_->Tell(message::StampWrong, first.Sector, 0, fmt::format("subpicture stream 0x{:02X}", stream),
                    "PTS", fmt::format("{} to {}", first.StartPtm, last.EndPtm),
                    fmt::format("{} to {}", walk.FirstPts().value_or(0), walk.LastPts().value_or(0)));
    }
  }
}

VobSetFacts VobScan::Finish() {
  TellUnread();
  EndVobu();
  while (!vobs_.empty()) {
    EndVob(vobs_.begin()->first);
  }
  return std::move(facts_);
}

}  // namespace quorvelant
