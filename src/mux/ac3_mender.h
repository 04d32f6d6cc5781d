// Whole AC3 frames out of a damaged file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "mux/source_window.h"

namespace quorvelant {

// What the header of an AC3 frame says of the sound (A/52 5.3, 5.4).
struct Ac3Frame {
  std::size_t Bytes = 0;  // 0: no frame that a disc could carry at 48 kHz
  int Kbps = 0;
  int Hertz = 0;
  unsigned Mode = 0;  // acmod and lfeon

  bool operator==(const Ac3Frame&) const = default;
};

// The frame that begins at `at`; no frame where fewer than 7 bytes follow.
[[nodiscard]] Ac3Frame ReadAc3Frame(ByteView bytes, std::size_t at);

// As a user reads it, e.g. "192 kbit/s, 48 kHz, 2 channels".
[[nodiscard]] std::string WordsOf(const Ac3Frame& frame);

// What was found to be no sound.
struct Ac3Damage {
  std::size_t Places = 0;
  std::int64_t Lost = 0;    // frames, as far as their number is known
  std::uint64_t Bytes = 0;  // of no frame
};

// Follows the chain of frames of one stream. Where it breaks, it goes on at the next frame of the same kind
// that another one follows: bytes between the two are taken out, and for each frame that was lost there the
// one before is heard again, so that what follows keeps its time.
class Ac3Mender {
 public:
  explicit Ac3Mender(const Ac3Frame& kind) : kind_(kind) {}

  enum class Answer {
    Frame,      // a whole frame stands there
    Mended,     // the window has changed: look again
    MoreBytes,  // cannot tell; asked for before the end of the files alone
    Changed,    // sound of another kind goes on there
    End,        // nothing follows
  };
  // Looks at byte `at` of the window, where a frame is expected; `atEnd`: the window holds the last byte.
  Answer Look(SlidingWindow& window, std::size_t at, bool atEnd);

  [[nodiscard]] const Ac3Frame& Kind() const { return kind_; }
  // `Places` counts a place as soon as it is met.
  [[nodiscard]] const Ac3Damage& Damage() const { return damage_; }

 private:
  Answer LookInGap(SlidingWindow& window, std::size_t at, bool atEnd);
  Answer EndOf(SlidingWindow& window, std::size_t at);
  void OpenGap(bool broken);
  [[nodiscard]] bool GoesOn(ByteView held, std::size_t at, const Ac3Frame& frame, bool atEnd) const;
  [[nodiscard]] std::int64_t LostInGap() const;

  Ac3Frame kind_;
  Ac3Damage damage_;
  Bytes last_;             // the frame before, for the lost ones
  std::int64_t owed_ = 0;  // lost frames that are still to be put in
  bool inGap_ = false;
  bool broken_ = false;         // the gap begins with a frame that is not whole
  std::uint64_t gapBytes_ = 0;  // of it, taken out already
};

}  // namespace quorvelant
