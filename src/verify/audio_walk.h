// Follows one audio stream of one VOB: its frames, their times, and the decoder's buffer.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "verify/audio_framer.h"
#include "verify/decoder_buffer.h"
#include "verify/scanned_packet.h"
#include "verify/vob_place.h"

namespace quorvelant {

// A pack in which a frame starts, and when the first such is due, 90 kHz.
struct AudioPackStart {
  std::uint32_t Sector = 0;
  std::uint32_t Pts = 0;
};

// A pause of the sound within a VOB, as navigation packs declare it, 90 kHz. None stops at 0.
struct AudioGap {
  std::uint32_t Stop = 0;
  std::uint32_t Length = 0;
};

class AudioWalk {
 public:
  // `stream` is the substream of private stream 1, or the stream id from 0xC0 on. Some programs cut LPCM into
  // packets of their own size and count no frames of 1/600 s: on discs of others that is a note.
  AudioWalk(const VobTeller& teller, unsigned stream, bool isOurs);

  // What the navigation pack before says of the stream.
  void SetGaps(const std::array<AudioGap, 2>& gaps) { gaps_ = gaps; }
  // The packet's payload begins with the substream's own header where there is one.
  void Feed(const ScannedPacket& packet);
  void EndVob();

  [[nodiscard]] const std::vector<AudioPackStart>& Starts() const { return starts_; }
  [[nodiscard]] const SoundTraits& Traits() const { return framer_.Traits(); }
  [[nodiscard]] int FrameTicks() const { return framer_.Ticks(); }
  [[nodiscard]] DecoderBuffer& Buffer() { return buffer_; }
  [[nodiscard]] std::optional<std::int64_t> FirstPts() const { return firstPts_; }

 private:
  void CheckHeader(const ScannedPacket& packet, const std::vector<AudioFrameStart>& starts,
                   std::size_t skipped) const;
  [[nodiscard]] bool IsDeclared(std::int64_t stop, std::int64_t length) const;
  void CheckNumber(const ScannedPacket& packet, std::size_t starts);
  void Time(const ScannedPacket& packet, const std::vector<AudioFrameStart>& starts, std::uint64_t at);

  const VobTeller* teller_;
  unsigned stream_;
  bool isLoose_;  // LPCM of others
  std::string name_;
  AudioFramer framer_;
  DecoderBuffer buffer_;
  std::vector<AudioPackStart> starts_;
  std::array<AudioGap, 2> gaps_{};
  std::optional<std::int64_t> firstPts_;
  std::optional<std::int64_t> next_;  // when the next frame is due
  struct CutUnit {
    std::uint64_t At;
    std::int64_t Time;
  };
  std::optional<CutUnit> cut_;      // a frame whose header was cut
  std::optional<unsigned> number_;  // of the next LPCM frame, in groups of 20
  std::uint32_t lastSector_ = 0;
};

}  // namespace quorvelant
