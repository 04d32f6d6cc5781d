#include "mux/ac3_mender.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "analysis/ac3_header.h"

namespace quorvelant {
namespace {

constexpr std::uint8_t FirstSyncByte = 0x0B;
constexpr unsigned FrameSamples = 1536;

constexpr std::array<std::uint16_t, 256> CrcTable = [] {
  constexpr std::uint16_t Polynomial = 0x8005;  // x^16 + x^15 + x^2 + 1, A/52 6.1.7
  std::array<std::uint16_t, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    unsigned crc = byte << 8U;
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc << 1U) ^ ((crc & 0x8000U) != 0 ? Polynomial : 0U);
    }
    table.at(byte) = static_cast<std::uint16_t>(crc);
  }
  return table;
}();

// Both sums of a frame come out as 0 over all that follows the sync word.
bool IsWhole(ByteView frame) {
  unsigned crc = 0;
  for (const std::uint8_t byte : frame.subspan(2)) {
    crc = ((crc << 8U) ^ CrcTable.at((crc >> 8U) ^ byte)) & 0xFFFFU;
  }
  return crc == 0;
}

// At 44.1 kHz sizes alternate, which the lowest bit of frmsizecod tells.
std::size_t BytesOf(const Ac3Header& header, unsigned sizeCode) {
  if (header.SampleRateHz == 0) {
    return 0;
  }
  const auto words = static_cast<unsigned>(header.Kbps) * 1000 / 16 * FrameSamples /
                     static_cast<unsigned>(header.SampleRateHz);
  const bool odd = header.SampleRateHz == 44100 && (sizeCode & 1U) != 0;
  return std::size_t{2} * (words + (odd ? 1U : 0U));
}

}  // namespace

Ac3Frame ReadAc3Frame(ByteView bytes, std::size_t at) {
  if (at + Ac3HeaderBytes > bytes.size() || bytes[at] != FirstSyncByte) {
    return {};
  }
  const ByteView head = bytes.subspan(at, Ac3HeaderBytes);
  const Ac3Header header = ReadAc3Header(head);
  if (!header.Sync || header.StreamVersion > MostDiscAc3Version) {
    return {};
  }
  const AudioChannels channels = ReadAc3Channels(head);
  return {.Bytes = BytesOf(header, head[4]),
          .Kbps = header.Kbps,
          .Hertz = header.SampleRateHz,
          .Mode = (head[6] & 0xE0U) | channels[ChannelTotal]};
}

std::string WordsOf(const Ac3Frame& frame) {
  const unsigned channels = frame.Mode & 0x1FU;
  return fmt::format("{} kbit/s, {} kHz, {} channel{}", frame.Kbps, frame.Hertz / 1000.0, channels,
                     channels == 1 ? "" : "s");
}

bool Ac3Mender::GoesOn(ByteView held, std::size_t at, const Ac3Frame& frame, bool atEnd) const {
  const std::size_t next = at + frame.Bytes;
  if (next > held.size()) {
    return false;
  }
  return (atEnd && next == held.size()) || ReadAc3Frame(held, next).Bytes != 0;
}

void Ac3Mender::OpenGap(bool broken) {
  ++damage_.Places;
  inGap_ = true;
  broken_ = broken;
  gapBytes_ = 0;
}

// Whole frames in length: their sync words are damaged and nothing else. A frame that lacks bytes is one.
std::int64_t Ac3Mender::LostInGap() const {
  const auto frame = static_cast<std::int64_t>(kind_.Bytes);
  const auto gap = static_cast<std::int64_t>(gapBytes_);
  if (frame == 0) {
    return 0;  // no frame was met yet
  }
  return broken_ && gap % frame != 0 ? std::max<std::int64_t>(1, (gap + frame / 2) / frame) : gap / frame;
}

// A rest that is no whole frame is left out.
Ac3Mender::Answer Ac3Mender::EndOf(SlidingWindow& window, std::size_t at) {
  const std::size_t rest = window.HeldBytes() - at;
  if (rest > 0 && !inGap_) {
    OpenGap(true);
  }
  if (inGap_) {
    gapBytes_ += rest;
    damage_.Bytes += rest;
    damage_.Lost += LostInGap();
    inGap_ = false;
  }
  window.Replace(at, rest, {});
  return Answer::End;
}

Ac3Mender::Answer Ac3Mender::LookInGap(SlidingWindow& window, std::size_t at, bool atEnd) {
  const ByteView held = window.Held();
  const std::size_t ahead = kind_.Bytes + Ac3HeaderBytes;
  std::size_t place = at + (gapBytes_ == 0 ? 1 : 0);  // the gap does not end where it begins
  bool found = false;
  while (!found && place < held.size() && (atEnd || place + ahead <= held.size())) {
    const auto sync = std::find(held.begin() + static_cast<std::ptrdiff_t>(place), held.end(), FirstSyncByte);
    place = static_cast<std::size_t>(sync - held.begin());
    if (!atEnd && place + ahead > held.size()) {
      break;
    }
    found = ReadAc3Frame(held, place) == kind_ && GoesOn(held, place, kind_, atEnd);
    place += found ? 0 : 1;
  }
  if (!found && atEnd) {
    return EndOf(window, at);
  }
  place = std::min(place, held.size());
  const std::size_t taken = place - at;
  gapBytes_ += taken;
  damage_.Bytes += taken;
  window.Replace(at, taken, {});
  if (!found) {
    return Answer::MoreBytes;
  }
  owed_ = last_.empty() ? 0 : LostInGap();
  damage_.Lost += LostInGap();
  inGap_ = false;
  return Answer::Mended;
}

Ac3Mender::Answer Ac3Mender::Look(SlidingWindow& window, std::size_t at, bool atEnd) {
  if (owed_ > 0) {
    --owed_;
    window.Replace(at, 0, last_);
    return Answer::Frame;
  }
  if (inGap_) {
    return LookInGap(window, at, atEnd);
  }
  const ByteView held = window.Held();
  if (!atEnd && held.size() < at + kind_.Bytes + Ac3HeaderBytes) {
    return Answer::MoreBytes;
  }
  if (held.size() < at + kind_.Bytes) {
    return EndOf(window, at);
  }
  const Ac3Frame frame = ReadAc3Frame(held, at);
  const ByteView whole = held.subspan(at, kind_.Bytes);
  if (frame == kind_ && (GoesOn(held, at, frame, atEnd) || IsWhole(whole))) {
    last_.assign(whole.begin(), whole.end());
    return Answer::Frame;
  }
  // Of another kind: sound where the next frame is of that kind too, otherwise a damaged header.
  if (frame.Bytes != 0 && frame != kind_) {
    if (!atEnd && held.size() < at + frame.Bytes + Ac3HeaderBytes) {
      return Answer::MoreBytes;
    }
    const Ac3Frame next = ReadAc3Frame(held, at + frame.Bytes);
    if (next.Kbps == frame.Kbps && next.Hertz == frame.Hertz && next.Mode == frame.Mode) {
      return Answer::Changed;
    }
  }
  OpenGap(frame == kind_);
  return LookInGap(window, at, atEnd);
}

}  // namespace quorvelant
