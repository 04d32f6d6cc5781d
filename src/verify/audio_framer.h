// Follows the frames of an audio stream across packs.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/bytes.h"

namespace quorvelant {

enum class AudioCoding { Ac3, Dts, Lpcm, Mpeg, Unknown };

// By the substream of private stream 1, or the stream id from 0xC0 on.
[[nodiscard]] AudioCoding CodingOf(unsigned stream);

// What the headers of the frames say.
struct SoundTraits {
  int Channels = 0;  // 0 where nothing says so
  int Bits = 0;      // of LPCM
  int Rate = 48000;
};

struct AudioFrameStart {
  std::size_t At = 0;    // byte of the payload
  std::size_t Size = 0;  // bytes of the frame; 0 while its header is not whole
};

class AudioFramer {
 public:
  explicit AudioFramer(AudioCoding coding) : coding_(coding) {}

  // LPCM has no headers of its own: its format stands in the packet. False for one that there is not.
  [[nodiscard]] bool SetLpcm(std::uint8_t format);

  // The frames that start in this payload. `pointer` is the first of them as the packet says, used where no
  // frame is under way.
  const std::vector<AudioFrameStart>& Feed(ByteView payload, std::optional<std::size_t> pointer);

  [[nodiscard]] int Lost() const { return lost_; }    // times that no frame began where the one before ended
  [[nodiscard]] int Ticks() const { return ticks_; }  // 90 kHz, of a frame
  [[nodiscard]] const SoundTraits& Traits() const { return traits_; }
  // The size of the frame whose header was cut by the end of the payload before; once.
  [[nodiscard]] std::optional<std::size_t> CutFrame() const { return cut_; }

 private:
  [[nodiscard]] std::size_t HeaderBytes() const;
  // Of the frame at the head of `data`; 0 for none.
  std::size_t Measure(ByteView data);
  std::size_t MeasureAc3(ByteView data);
  std::size_t MeasureDts(ByteView data);
  std::size_t MeasureMpeg(ByteView data);
  bool FinishCut(ByteView payload);

  AudioCoding coding_;
  SoundTraits traits_;
  int ticks_ = 0;
  int lost_ = 0;
  std::size_t lpcmBytes_ = 0;
  Bytes carry_;                      // a header that was cut
  std::optional<std::size_t> next_;  // where the next frame starts in what comes
  std::optional<std::size_t> cut_;
  std::vector<AudioFrameStart> starts_;
};

}  // namespace quorvelant
