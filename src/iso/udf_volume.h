// The volume of UDF: what stands outside its partition (ECMA-167 part 3, as UDF 1.02 narrows it).
#pragma once

#include <cstdint>
#include <string_view>

#include "base/bytes.h"
#include "iso/image_time.h"

namespace quorvelant::udf {

struct Volume {
  std::string_view Label;     // of at most 32 characters
  std::uint64_t Serial = 0;   // tells this volume from others of its name
  std::uint32_t Sectors = 0;  // of the whole image
  std::uint32_t Files = 0;
  std::uint32_t Folders = 0;
  ImageTime Time;
};

// BEA01, NSR02 and TEA01, a sector each.
[[nodiscard]] Bytes Recognition();
// A sequence of volume descriptors that begins at this sector.
[[nodiscard]] Bytes Sequence(const Volume& volume, std::uint32_t sector);
// The integrity descriptor and its terminator.
[[nodiscard]] Bytes Integrity(const Volume& volume);
// The anchor for this sector.
[[nodiscard]] Bytes Anchor(std::uint32_t sector);

}  // namespace quorvelant::udf
