// The sound files of one stream as one run of bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "mux/mux_track.h"
#include "mux/source_window.h"

namespace quorvelant {

class AudioSource {
 public:
  // Of each file's sound a rest below `sampleBytes` (all channels of one sample) is left out.
  AudioSource(Random& files, int slot, const MuxAudioStream& stream, std::size_t sampleBytes);

  // The next `bytes`, across files; fewer at the end of the last one. Stays until the next call.
  ByteView Peek(std::size_t bytes);
  void Consume(std::size_t bytes);
  bool Exhausted() { return Peek(1).empty(); }
  // Of all files, those not yet opened too.
  std::uint64_t BytesLeft() const;
  // The file being read and the byte in it that comes next, for messages: "file@byte".
  std::string Place() const;

 private:
  bool OpenNext();

  const MuxAudioStream* stream_;
  std::size_t sampleBytes_;
  SourceFile file_;
  SlidingWindow window_;
  std::size_t filesOpened_ = 0;
};

}  // namespace quorvelant
