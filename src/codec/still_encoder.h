// Turns a bitmap into the stream of a still: one intra picture after a fixed header.
#pragma once

#include <cstddef>

#include "base/bytes.h"
#include "base/rules.h"
#include "picture/picture.h"

namespace quorvelant {

struct StillFlags {
  bool Wide = false;  // 16:9
};

inline constexpr std::size_t StillHeaderBytes = 111;
// A still with its header and a sequence end code keeps within this: it fits the VBV of its header and
// the decoder's buffer beside two streams of PCM.
inline constexpr std::size_t LargestStillBytes = 200'000;

// Full size is 720 by 576 or 480, half size 360 by 288 or 240.
bool IsStillSize(int width, int height);

// The whole stream without a sequence end code, which the multiplexer adds. A half-size bitmap is
// doubled first. Empty if the bitmap has no size of a still.
Bytes EncodeBitmap(const Picture& bitmap, StillFlags flags, const Rules& rules);

}  // namespace quorvelant
