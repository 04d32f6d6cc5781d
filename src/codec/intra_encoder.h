// Codes the slices of one intra picture after the fixed header of stills.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/bytes.h"
#include "codec/planes.h"

namespace quorvelant {

// The body of the picture coding extension that every still carries, and what its bits say
// (ISO/IEC 13818-2 6.3.10): all f_codes 15, a frame picture, no concealment vectors, zigzag scan.
inline constexpr std::array<std::uint8_t, 5> StillCodingExtension{0x8F, 0xFF, 0xF7, 0x59, 0x80};
inline constexpr unsigned StillDcPrecision = (StillCodingExtension[2] >> 2) & 3;
static_assert(StillDcPrecision == 1, "DC has 9 bits");
static_assert((StillCodingExtension[2] & 3) == 3, "picture_structure: frame");
static_assert((StillCodingExtension[3] & 0x40) != 0, "frame_pred_frame_dct: no dct_type in macroblocks");
static_assert((StillCodingExtension[3] & 0x20) == 0, "no concealment motion vectors");
static_assert((StillCodingExtension[3] & 0x10) != 0, "q_scale_type 1: non-linear scale");
static_assert((StillCodingExtension[3] & 0x08) != 0, "intra_vlc_format 1: table B.15");
static_assert((StillCodingExtension[3] & 0x04) == 0, "alternate_scan 0: zigzag");

// The slices of the best picture of at most `largestBytes`, one slice a row of macroblocks. The planes
// are 4:2:0 with sides that are multiples of 16, up to 2800 lines. The limit is kept for any picture if it
// allows 20 bytes a macroblock, which is what DC alone can take.
Bytes EncodeIntraSlices(const Planes& planes, std::size_t largestBytes);

}  // namespace quorvelant
