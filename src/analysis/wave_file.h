// WAV files: what their head says and where their samples stand.
#pragma once

#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "base/random.h"
#include "base/rules.h"

namespace quorvelant {

// The 16 bytes of a "fmt " chunk; all 0 when the file has no such head.
struct WaveFormat {
  std::uint16_t Tag = 0;
  std::uint16_t Channels = 0;
  std::uint32_t SamplesPerSecond = 0;
  std::uint32_t BytesPerSecond = 0;
  std::uint16_t BlockAlign = 0;
  std::uint16_t BitsPerSample = 0;
  bool operator==(const WaveFormat&) const = default;

  std::int32_t KHz() const {  // nearest
    return static_cast<std::int32_t>((std::uint64_t{SamplesPerSecond} + 500) / 1000);
  }
};

enum class WaveFault {
  None,
  NotWave,     // no RIFF or RF64 head of a WAVE with a "fmt " chunk
  NoData,      // no "data" chunk
  NotPcm,      // compressed or floating point samples
  Unreadable,  // could not be opened or read; told already
};

struct WaveFile {
  WaveFault Fault = WaveFault::None;
  WaveFormat Format;
  std::uint64_t FileBytes = 0;
  std::uint64_t DataOffset = 0;  // of the first sample
  std::uint64_t DataBytes = 0;   // of samples, never beyond the file's end
  bool ChunksAhead = false;      // the samples do not stand at byte 44
};

// Why the file is of no use, in one sentence without its name; empty for `None` and `Unreadable`.
std::string_view FaultText(WaveFault fault);

// The "fmt " fields by the fixed places of the plain head: RIFF, WAVE and "fmt " in the first 16 bytes.
WaveFormat ReadWaveFormat(const std::string& fileName, UserInterface& ui);

// By the rules: chunks walked, RF64 and extensible heads understood, or the plain head with samples from byte
// 44 to the file's end.
WaveFile ReadWaveFile(const std::string& fileName, const Rules& rules, UserInterface& ui);

}  // namespace quorvelant
