// The volume of ISO 9660 (ECMA-119): what computers read that know no UDF.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/bytes.h"
#include "iso/image_layout.h"
#include "iso/image_time.h"

namespace quorvelant::iso9660 {

inline constexpr std::uint64_t PrimaryVolume = 16;  // its sector
// What its application identifier begins with, and where that stands.
inline constexpr std::string_view Application = "QUORVELANT";
inline constexpr std::size_t ApplicationAt = 574;

// The primary volume descriptor and the terminator, a sector each.
[[nodiscard]] Bytes VolumeDescriptors(const ImageLayout& layout, std::string_view label,
                                      const ImageTime& time);
// Both path tables and the three folders, from image_sector::LittlePathTable on.
[[nodiscard]] Bytes Folders(const ImageLayout& layout, const ImageTime& time);

}  // namespace quorvelant::iso9660
