// One subtitle as the multiplexer holds it.
#pragma once

#include <cstdint>
#include <string>

#include "model/tracks.h"

namespace quorvelant {

// Bitmap colours, red in the low byte, that stand for the four pixel kinds. Every colour that is none of the
// first three is background.
struct ConversionColors {
  Color Pattern = 0;
  Color Emphasis1 = 0;
  Color Emphasis2 = 0;
  Color Background = 0;
  // Whether what is painted may be background by its colour; otherwise only what is see-through is.
  bool BackgroundIsPainted = true;
};

struct SPURecord {
  ConversionColors Conversion;
  ColorQuad ColorIndexes{};   // E2, E1, P, Bg: palette indexes 0 to 15
  ColorQuad Contrasts{};      // E2, E1, P, Bg: 0 to 15
  std::int64_t StartPTS = 0;  // 90 kHz ticks on the VOB's clock
  std::int64_t EndPTS = 0;
  std::uint32_t StopDelay = 0;  // steps of 1024/90000 s after the start; 0 or 65535: no stop
  int X1 = 0;
  int Y1 = 0;
  bool Forced = false;
  std::string File;       // a path of this system
  std::size_t Entry = 0;  // index in the stream's list
};

}  // namespace quorvelant
