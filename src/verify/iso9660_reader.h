// The files of VIDEO_TS as ISO 9660 (ECMA-119) has them.
#pragma once

#include <vector>

#include "verify/disc_source.h"
#include "verify/image_sectors.h"

namespace quorvelant {

// Raises ImageFault for a file system that is none or damaged, FileError for what cannot be read.
[[nodiscard]] std::vector<DiscSourceFile> Iso9660Files(const ImageSectors& image);

}  // namespace quorvelant
