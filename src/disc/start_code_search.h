// The search for start code prefixes, as fast as memory delivers.
#pragma once

#include <cstddef>

#include "base/bytes.h"

namespace quorvelant {

inline constexpr std::size_t NoStartCode = static_cast<std::size_t>(-1);

// The offset of the first byte of the first `00 00 01` at or after `from` (ISO/IEC 13818-2 5.2.3), or
// `NoStartCode`. The prefix alone counts: the code's value may lie beyond the data.
std::size_t FindStartCode(ByteView data, std::size_t from = 0);

// The same, with slices (values 01 to AF) passed over. A prefix whose value lies beyond the data counts.
std::size_t FindHeaderStartCode(ByteView data, std::size_t from = 0);

// `FindStartCode` as processors without wide vectors run it.
std::size_t FindStartCodeNarrow(ByteView data, std::size_t from = 0);

// `FindStartCode`, byte by byte: what the fast search is measured and tested against.
std::size_t FindStartCodePlainly(ByteView data, std::size_t from = 0);

}  // namespace quorvelant
