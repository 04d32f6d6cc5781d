#include "verify/pack_reader.h"

#include <fmt/format.h>

#include <cstring>
#include <utility>

#include "base/big_endian.h"
#include "disc/start_codes.h"
#include "verify/messages.h"

namespace quorvelant {
namespace {

constexpr std::uint32_t MuxRate = 25200;               // in units of 50 bytes/s
constexpr std::uint32_t RateWithMarkers = 0x0189C3F8;  // MuxRate, markers, no stuffing
constexpr std::int64_t MostDelay = 90000;              // ticks between SCR and time stamp
constexpr std::int64_t LongDelay = 63000;
constexpr std::size_t PesHeadBytes = 9;

bool IsStuffing(ByteView bytes) {
  return bytes.empty() ||
         (bytes[0] == 0xFF && std::memcmp(bytes.data(), bytes.data() + 1, bytes.size() - 1) == 0);
}

}  // namespace

template <class Expected, class Seen>
void PackReader::Tell(const MessageKind& kind, std::size_t offset, const char* table, const char* field,
                      const Expected& expected, const Seen& seen) {
  faults_.push_back({&kind, offset, table, field, fmt::format("{}", expected), fmt::format("{}", seen)});
}

template <class Expected, class Seen>
void PackReader::Bad(std::size_t offset, const char* table, const char* field, const Expected& expected,
                     const Seen& seen) {
  Tell(message::PackWrong, offset, table, field, expected, seen);
}

void PackReader::Read() {
  pack_.IsPack = BigEndian<std::uint32_t>(sector_, 0) == StartCodeOf(start_code::Pack);
  if (!pack_.IsPack) {
    return;
  }
  const std::size_t before = faults_.size();
  ReadHead();
  const std::size_t ofHead = faults_.size();
  pack_.HeadFaults = static_cast<std::uint8_t>(ofHead - before);
  pack_.Code = BigEndian<std::uint32_t>(sector_, pack_.PacketAt);
  if (IsStreamCode(pack_.Code)) {
    ReadPacket();
    pack_.PacketFaults = static_cast<std::uint8_t>(faults_.size() - ofHead);
  }
}

void PackReader::ReadHead() {
  constexpr std::uint64_t Marks = 3ULL << 46U | 1ULL << 42U | 1ULL << 26U | 1ULL << 10U | 1U;
  constexpr std::uint64_t MarksSet = 1ULL << 46U | 1ULL << 42U | 1ULL << 26U | 1ULL << 10U | 1U;
  const std::uint64_t bits = BigEndian<std::uint64_t>(sector_, 4) >> 16U;
  if ((bits & Marks) != MarksSet) {
    Bad(4, "pack header", "marker_bit", "01 and markers set", fmt::format("0x{:012X}", bits));
  }
  const std::uint64_t base =
      (bits >> 13U & 0x1C0000000U) | (bits >> 12U & 0x3FFF8000U) | (bits >> 11U & 0x7FFFU);
  const auto extension = static_cast<std::int64_t>(bits >> 1U & 0x1FFU);
  if (extension >= ClockTicks) {
    Bad(8, "pack header", "SCR_extension", "at most 299", extension);
  }
  pack_.Scr = static_cast<std::int64_t>(base) * ClockTicks + extension;
  pack_.PacketAt = LeastPackHead;
  if (BigEndian<std::uint32_t>(sector_, 10) != RateWithMarkers) {
    const auto rate = static_cast<std::uint32_t>(GetBytes(sector_, 10, 3) >> 2U);
    const unsigned stuffing = sector_[13] & 7U;
    pack_.PacketAt += stuffing;
    if (rate != MuxRate) {
      Bad(10, "pack header", "program_mux_rate", MuxRate, rate);
    } else {
      Bad(12, "pack header", "pack_stuffing_length", "markers, and 0", stuffing);
    }
  }
}

void PackReader::ReadPacket() {
  const std::size_t at = pack_.PacketAt;
  const std::size_t end = at + 6 + GetBytes(sector_, at + 4, 2);
  if (end > SectorBytes) {
    Bad(at + 4, "PES header", "PES_packet_length", fmt::format("at most {}", SectorBytes - at - 6),
        end - at - 6);
    return;
  }
  CheckAfter(end);
  ScannedPacket& packet = pack_.Packet.emplace();
  packet.Sector = number_;
  std::size_t data = 0;
  if (!ReadPesHead(packet, data) || data > end) {
    Bad(at + 6, "PES header", "PES_header_data_length", "a header within its packet", data);
    pack_.Packet.reset();
    return;
  }
  CheckDelay(packet);
  packet.At = static_cast<std::uint32_t>(data);
  packet.Payload = sector_.subspan(data, end - data);
  // A byte takes 150/7 ticks at the mux rate; the SCR is that of the pack's byte 9.
  packet.Begin = pack_.Scr + (static_cast<std::int64_t>(data) - 8) * 150 / 7;
  packet.End = pack_.Scr + (static_cast<std::int64_t>(end) - 9) * 150 / 7;
}

// A packet ends with its pack, or a padding packet does.
void PackReader::CheckAfter(std::size_t end) {
  constexpr std::size_t PaddingHead = 6;
  const std::size_t rest = SectorBytes - end;
  if (rest == 0) {
    return;
  }
  if (rest <= PaddingHead || GetBytes(sector_, end, 4) != StartCodeOf(start_code::PaddingStream) ||
      GetBytes(sector_, end + 4, 2) != rest - PaddingHead) {
    Bad(end, "padding packet", "PES_packet_length", fmt::format("a padding packet of {} bytes", rest),
        "others");
    return;
  }
  const ByteView padding = sector_.subspan(end + PaddingHead);
  if (!IsStuffing(padding)) {
    Tell(message::PackLoose, end, "padding packet", "padding_byte", "0xFF", "others");
  }
}

// False where the header is none. `data` is where the stream's bytes begin.
bool PackReader::ReadPesHead(ScannedPacket& packet, std::size_t& data) {
  const std::size_t at = pack_.PacketAt;
  if (at + PesHeadBytes > sector_.size()) {
    return false;
  }
  const unsigned first = sector_[at + 6];
  const unsigned flags = sector_[at + 7];
  data = at + PesHeadBytes + sector_[at + 8];
  if (first >> 6U != 2 || data > sector_.size()) {
    return false;
  }
  if ((first & 0x30U) != 0) {
    Bad(at + 6, "PES header", "PES_scrambling_control", 0, first >> 4U & 3U);
  }
  if (flags >> 6U == 1 || (flags & 0x3EU) != 0) {
    Bad(at + 7, "PES header", "flags", "PTS, DTS and extension alone", fmt::format("0x{:02X}", flags));
  }
  std::size_t next = at + PesHeadBytes;
  const auto has = [&](std::size_t bytes) { return next + bytes <= data; };
  const std::size_t stamps = flags >> 6U == 3 ? 10 : (flags & 0x80U) != 0 ? 5 : 0;
  if (!has(stamps + (flags & 1U))) {
    Bad(at + 8, "PES header", "PES_header_data_length", fmt::format("{} or more", stamps + (flags & 1U)),
        sector_[at + 8]);
  }
  if ((flags & 0x80U) != 0 && has(5)) {
    packet.Pts = StampAt(next, flags >> 6U);
    next += 5;
  }
  if (flags >> 6U == 3 && has(5)) {
    packet.Dts = StampAt(next, 1);
    next += 5;
  }
  if ((flags & 1U) != 0 && has(1)) {
    const unsigned extension = sector_[next++];
    const bool reserved = isOurs_ && (extension & 0x0EU) != 0x0E;  // others leave them clear
    if ((extension & 0xE1U) != 0 || reserved) {
      Bad(next - 1, "PES header", "PES_extension flags", "P-STD_buffer alone",
          fmt::format("0x{:02X}", extension));
    } else if ((extension & 0x10U) != 0 && has(2)) {
      const auto word = static_cast<unsigned>(GetBytes(sector_, next, 2));
      if (word >> 14U != 1) {
        Bad(next, "PES header", "P-STD_buffer", "01", word >> 14U);
      }
      packet.PStd = static_cast<std::int32_t>((word & 0x1FFFU) * ((word & 0x2000U) != 0 ? 1024 : 128));
      next += 2;
    }
  }
  const ByteView stuffing = sector_.subspan(next, data - next);
  if (!IsStuffing(stuffing)) {
    Bad(next, "PES header", "stuffing_byte", "0xFF to the end of the header", "others");
  } else if (stuffing.size() > 7) {
    Tell(message::PackLoose, next, "PES header", "stuffing_byte", "at most 7", stuffing.size());
  }
  return true;
}

std::uint32_t PackReader::StampAt(std::size_t at, unsigned prefix) {
  const std::uint64_t bits = BigEndian<std::uint64_t>(sector_, at) >> 24U;
  constexpr std::uint64_t Markers = 1ULL << 32U | 1U << 16U | 1U;
  if (bits >> 36U != prefix || (bits & Markers) != Markers) {
    Bad(at, "PES header", "time stamp markers", prefix, fmt::format("0x{:010X}", bits));
  }
  return static_cast<std::uint32_t>((bits >> 3U & 0x1C0000000U) | (bits >> 2U & 0x3FFF8000U) |
                                    (bits >> 1U & 0x7FFFU));
}

void PackReader::CheckDelay(const ScannedPacket& packet) {
  const auto stamp = packet.Dts ? packet.Dts : packet.Pts;
  if (!stamp) {
    return;
  }
  const std::int64_t delay = std::int64_t{*stamp} - pack_.Scr / ClockTicks;
  const char* field = packet.Dts ? "DTS" : "PTS";
  if (delay < 0 || delay > MostDelay) {
    Tell(message::StampWrong, 0, "PES header", field, "0 to 90000 ticks after the SCR", delay);
  } else if (delay > LongDelay) {
    Tell(message::StampLoose, 0, "PES header", field, "at most 63000 ticks after the SCR", delay);
  }
}

}  // namespace quorvelant
