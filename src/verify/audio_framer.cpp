#include "verify/audio_framer.h"

#include <algorithm>
#include <array>

namespace quorvelant {
namespace {

constexpr std::array Ac3Kbits{32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                              192, 224, 256, 320, 384, 448, 512, 576, 640};
constexpr std::array Ac3Channels{2, 1, 2, 3, 3, 4, 4, 5};
constexpr std::array LayerOneKbits{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
constexpr std::array LayerTwoKbits{0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
constexpr int MostLpcmBits = 6'144'000;  // a second

}  // namespace

AudioCoding CodingOf(unsigned stream) {
  if (stream >= 0xC0) {
    return stream < 0xE0 ? AudioCoding::Mpeg : AudioCoding::Unknown;
  }
  switch (stream & 0xF8U) {
    case 0x80:
      return AudioCoding::Ac3;
    case 0x88:
      return AudioCoding::Dts;
    case 0xA0:
      return AudioCoding::Lpcm;
    default:
      return AudioCoding::Unknown;
  }
}

std::size_t AudioFramer::HeaderBytes() const {
  switch (coding_) {
    case AudioCoding::Ac3:
      return 7;
    case AudioCoding::Dts:
      return 10;
    case AudioCoding::Mpeg:
      return 4;
    default:
      return 0;
  }
}

bool AudioFramer::SetLpcm(std::uint8_t format) {
  constexpr std::array BitsBy{16, 20, 24, 0};
  constexpr std::array RateBy{48000, 96000, 0, 0};
  const int bits = BitsBy.at(format >> 6U);
  const int rate = RateBy.at(format >> 4U & 3U);
  const int channels = (format & 7) + 1;
  if (bits * rate * channels == 0 || bits * rate * channels > MostLpcmBits) {
    return false;
  }
  traits_ = {channels, bits, rate};
  ticks_ = 150;  // a frame is 1/600 s
  lpcmBytes_ = static_cast<std::size_t>(rate / 600 * channels * bits / 8);
  return true;
}

std::size_t AudioFramer::MeasureAc3(ByteView data) {
  const unsigned code = data[4] & 0x3FU;
  if (data[0] != 0x0B || data[1] != 0x77 || data[4] >> 6U != 0 || code >= 2 * Ac3Kbits.size()) {
    return 0;
  }
  ticks_ = 2880;
  if (traits_.Channels == 0) {
    const unsigned mode = data[6] >> 5U;
    unsigned bit = 4;  // of lfeon, after the mix levels that the mode has
    bit -= (mode & 1U) != 0 && mode != 1 ? 2 : 0;
    bit -= (mode & 4U) != 0 ? 2 : 0;
    bit -= mode == 2 ? 2 : 0;
    traits_.Channels = Ac3Channels.at(mode) + static_cast<int>(data[6] >> bit & 1U);
  }
  return std::size_t{4} * static_cast<std::size_t>(Ac3Kbits.at(code / 2));
}

std::size_t AudioFramer::MeasureDts(ByteView data) {
  if (GetBytes(data, 0, 4) != 0x7FFE8001) {
    return 0;
  }
  const std::uint64_t word = GetBytes(data, 4, 6);
  ticks_ = (static_cast<int>(word >> 34U & 0x7FU) + 1) * 60;  // blocks of 32 samples at 48 kHz
  return static_cast<std::size_t>(word >> 20U & 0x3FFFU) + 1;
}

std::size_t AudioFramer::MeasureMpeg(ByteView data) {
  const auto word = static_cast<std::uint32_t>(GetBytes(data, 0, 4));
  const unsigned layer = 4 - (word >> 17U & 3U);
  const unsigned index = word >> 12U & 15U;
  if (word >> 19U != 0x1FFF || (word >> 10U & 3U) != 1 || (layer != 1 && layer != 2) || index == 0 ||
      index == 15) {
    return 0;
  }
  traits_.Channels = (word >> 6U & 3U) == 3 ? 1 : 2;
  ticks_ = layer == 2 ? 2160 : 720;
  const int kbits = layer == 2 ? LayerTwoKbits.at(index) : LayerOneKbits.at(index);
  const auto padding = static_cast<int>(word >> 9U & 1U);
  return static_cast<std::size_t>(layer == 2 ? 3 * kbits + padding : 4 * (kbits + padding));
}

std::size_t AudioFramer::Measure(ByteView data) {
  switch (coding_) {
    case AudioCoding::Ac3:
      return MeasureAc3(data);
    case AudioCoding::Dts:
      return MeasureDts(data);
    case AudioCoding::Mpeg:
      return MeasureMpeg(data);
    case AudioCoding::Lpcm:
      return lpcmBytes_;
    case AudioCoding::Unknown:
      break;
  }
  return 0;
}

// Completes a header that the payload before cut. False while it is still not whole.
bool AudioFramer::FinishCut(ByteView payload) {
  const std::size_t had = carry_.size();
  const std::size_t wanted = std::min(HeaderBytes() - had, payload.size());
  carry_.insert(carry_.end(), payload.begin(), payload.begin() + static_cast<std::ptrdiff_t>(wanted));
  if (carry_.size() < HeaderBytes()) {
    return false;
  }
  const std::size_t size = Measure(carry_);
  carry_.clear();
  if (size <= had) {
    ++lost_;
    next_.reset();
  } else {
    cut_ = size;
    next_ = size - had;
  }
  return true;
}

const std::vector<AudioFrameStart>& AudioFramer::Feed(ByteView payload, std::optional<std::size_t> pointer) {
  starts_.clear();
  cut_.reset();
  if (!carry_.empty() && !FinishCut(payload)) {
    return starts_;
  }
  if (!next_) {
    if (!pointer || *pointer >= payload.size()) {
      return starts_;
    }
    next_ = pointer;
  }
  while (*next_ < payload.size()) {
    const std::size_t at = *next_;
    if (payload.size() - at < HeaderBytes()) {
      starts_.push_back({at, 0});
      carry_.assign(payload.begin() + static_cast<std::ptrdiff_t>(at), payload.end());
      next_ = payload.size();
      break;
    }
    const std::size_t size = Measure(payload.subspan(at));
    if (size == 0) {
      ++lost_;
      if (!pointer || *pointer <= at) {
        next_.reset();
        return starts_;
      }
      next_ = pointer;
      continue;
    }
    starts_.push_back({at, size});
    next_ = at + size;
  }
  *next_ -= payload.size();
  return starts_;
}

}  // namespace quorvelant
