#include "verify/audio_walk.h"

#include <algorithm>
#include <cstdlib>

namespace quorvelant {
namespace {

constexpr std::int64_t ClockTicks = 300;         // 27 MHz, of a tick of 90 kHz
constexpr std::int64_t SmallBufferBytes = 4096;  // what players have at least
constexpr unsigned NumbersOfGroup = 20;

// Bytes of a substream's own header: the id, how many frames start, where the first does, and for LPCM its
// format.
std::size_t HeaderBytesOf(unsigned stream) {
  return stream >= 0xC0 ? 0 : stream >= 0xA0 ? 7 : 4;
}

}  // namespace

AudioWalk::AudioWalk(const VobTeller& teller, unsigned stream, bool isOurs)
    : teller_(&teller),
      stream_(stream),
      isLoose_(!isOurs && CodingOf(stream) == AudioCoding::Lpcm),
      name_(fmt::format("audio stream 0x{:02X}", stream)),
      framer_(CodingOf(stream)),
      buffer_(teller, name_ + " buffer") {
  constexpr std::int64_t TwoPacks = 2 * SectorBytes;
  buffer_.SetSlack(isLoose_ ? TwoPacks : 0);
}

void AudioWalk::Feed(const ScannedPacket& packet) {
  lastSector_ = packet.Sector;
  const std::size_t skip = HeaderBytesOf(stream_);
  const auto bad = [&](const char* field, const char* expected, const auto& seen) {
    teller_->Tell(message::FramesBroken, packet.Sector, packet.At, name_, field, expected, seen);
  };
  if (packet.Payload.size() < skip) {
    bad("", "a packet with its header", packet.Payload.size());
    return;
  }
  const ByteView payload = packet.Payload.subspan(skip);
  std::optional<std::size_t> pointer = stream_ >= 0xC0 ? std::optional<std::size_t>(0) : std::nullopt;
  if (skip != 0) {
    const std::size_t said = GetBytes(packet.Payload, 2, 2);
    const std::size_t counted = said + 3;  // from the last byte of the pointer itself
    pointer = said != 0 && counted >= skip ? std::optional<std::size_t>(counted - skip) : std::nullopt;
  }
  constexpr std::size_t LpcmHeader = 7;
  if (skip == LpcmHeader && !framer_.SetLpcm(packet.Payload[5])) {
    bad("LPCM format", "bits, frequency and channels of the format", packet.Payload[5]);
    return;
  }
  const std::uint64_t at = buffer_.Total();
  buffer_.Arrive(packet.Sector, packet.Begin, packet.End, payload.size());
  const int lost = framer_.Lost();
  const auto& starts = framer_.Feed(payload, pointer);
  if (framer_.Lost() != lost) {
    bad("", "a frame where the one before ends", "none");
    cut_.reset();
  }
  if (cut_ && framer_.CutFrame()) {
    buffer_.AddUnit(cut_->At + *framer_.CutFrame(), cut_->Time);
    cut_.reset();
  }
  if (skip != 0) {
    CheckHeader(packet, starts, skip);
  }
  if (skip == LpcmHeader) {
    CheckNumber(packet, starts.size());
  }
  Time(packet, starts, at);
  buffer_.Settle();
}

void AudioWalk::CheckHeader(const ScannedPacket& packet, const std::vector<AudioFrameStart>& starts,
                            std::size_t skipped) const {
  if (packet.Payload[1] != starts.size()) {
    teller_->Tell(isLoose_ ? message::AudioLoose : message::FramesBroken, packet.Sector, packet.At + 1, name_,
                  "number of frame headers", starts.size(), packet.Payload[1]);
  }
  const std::size_t said = GetBytes(packet.Payload, 2, 2);
  const std::size_t wanted = starts.empty() ? 0 : starts.front().At + skipped - 3;
  if (said != wanted) {
    teller_->Tell(starts.empty() || isLoose_ ? message::AudioLoose : message::FramesBroken, packet.Sector,
                  packet.At + 2, name_, "first access unit pointer", wanted, said);
  }
}

void AudioWalk::CheckNumber(const ScannedPacket& packet, std::size_t starts) {
  const unsigned number = packet.Payload[4] & 0x1FU;
  if (number >= NumbersOfGroup || (starts > 0 && number_ && *number_ != number)) {
    teller_->Tell(message::AudioLoose, packet.Sector, packet.At + 4, name_, "audio frame number",
                  number_.value_or(0), number);
  }
  if (starts > 0) {
    number_ = static_cast<unsigned>((number + starts) % NumbersOfGroup);
  }
}

// Whether a gap is what the navigation packs say, to a frame.
bool AudioWalk::IsDeclared(std::int64_t stop, std::int64_t length) const {
  const auto near = [&](std::int64_t one, std::int64_t other) {
    return std::abs(one - other) <= framer_.Ticks();
  };
  return std::ranges::any_of(gaps_, [&](const AudioGap& gap) {
    return gap.Stop != 0 && near(gap.Stop, stop) && near(gap.Length, length);
  });
}

// Frames follow on one another in time, but for the gaps that are declared.
void AudioWalk::Time(const ScannedPacket& packet, const std::vector<AudioFrameStart>& starts,
                     std::uint64_t at) {
  if (starts.empty()) {
    if (packet.Pts) {
      teller_->Tell(message::StampWrong, packet.Sector, 0, name_, "PTS", "none where no frame starts",
                    *packet.Pts);
    }
    return;
  }
  std::int64_t time = next_.value_or(packet.Pts.value_or(0));
  if (!packet.Pts) {
    teller_->Tell(message::StampLoose, packet.Sector, 0, name_, "PTS", "one where a frame starts", "none");
  } else if (const std::int64_t pause = std::int64_t{*packet.Pts} - time; std::abs(pause) > 1) {
    if (!IsDeclared(time, pause)) {
      const auto packetTicks = static_cast<std::int64_t>(starts.size() + 1) * framer_.Ticks();
      const bool isFree = isLoose_ && std::abs(pause) <= packetTicks;
      teller_->Tell(isFree ? message::StampLoose : message::StampWrong, packet.Sector, 0, name_, "PTS",
                    fmt::format("{} by the frames before", time), *packet.Pts);
    }
    time = *packet.Pts;
  }
  firstPts_ = firstPts_.value_or(time);
  if (packet.Pts) {
    starts_.push_back({packet.Sector, static_cast<std::uint32_t>(time)});
  }
  for (const AudioFrameStart& start : starts) {
    if (start.Size != 0) {
      buffer_.AddUnit(at + start.At + start.Size, time * ClockTicks);
    } else {
      cut_ = {at + start.At, time * ClockTicks};
    }
    time += framer_.Ticks();
  }
  next_ = time;
}

void AudioWalk::EndVob() {
  const bool small = buffer_.Size() > SmallBufferBytes && CodingOf(stream_) != AudioCoding::Lpcm;
  if (small && buffer_.Peak() > SmallBufferBytes) {
    teller_->Tell(message::BufferTight, lastSector_, 0, name_ + " buffer", "",
                  fmt::format("at most {} bytes for the smallest players", SmallBufferBytes), buffer_.Peak());
  }
}

}  // namespace quorvelant
