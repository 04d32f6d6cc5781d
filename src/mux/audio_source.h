// The sound files of one stream as one run of bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "mux/ac3_mender.h"
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
  // From the frame that comes next on, only whole AC3 frames of its kind are given. Raises MuxFault, from
  // then on, where sound of another kind follows.
  void MendFrames();
  // What was left out or put in so far, and the place of the first of it; nothing where all is well.
  [[nodiscard]] Ac3Damage Damage() const { return mender_ ? mender_->Damage() : Ac3Damage{}; }
  [[nodiscard]] const std::string& FirstDamage() const { return firstDamage_; }
  // Of all files, those not yet opened too.
  std::uint64_t BytesLeft() const;
  // The file and the byte in it that comes `ahead` bytes after the next one, for messages: "file@byte".
  [[nodiscard]] std::string Place(std::size_t ahead = 0) const;
  [[nodiscard]] std::uint64_t ByteAt(std::size_t ahead) const { return WhereIs(ahead).Byte; }
  // The path of that file.
  [[nodiscard]] std::string File(std::size_t ahead = 0) const;

 private:
  struct Where {
    std::size_t File = 0;
    std::uint64_t Byte = 0;
  };

  bool OpenNext();
  bool ReadMore();
  void MendTo(std::size_t bytes);
  [[nodiscard]] Where WhereIs(std::size_t ahead) const;

  const MuxAudioStream* stream_;
  std::size_t sampleBytes_;
  SourceFile file_;
  SlidingWindow window_;
  std::size_t filesOpened_ = 0;
  std::vector<std::uint64_t> starts_;  // of each file opened, counted through all of them
  std::uint64_t bytesRead_ = 0;
  std::optional<Ac3Mender> mender_;
  std::string firstDamage_;
  std::size_t mended_ = 0;  // bytes of the window that are whole frames
  bool atEnd_ = false;
};

}  // namespace quorvelant
