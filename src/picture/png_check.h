// Whether a PNG file is whole.
#pragma once

#include "base/bytes.h"

namespace quorvelant {

bool IsPng(ByteView file);

// Whether the chunks of a PNG file follow each other up to its end chunk, and the critical ones (ISO/IEC
// 15948, 5.4) have the checksum they should. The decoder prints a line of its own about those that do not.
bool IsWholePng(ByteView file);

}  // namespace quorvelant
