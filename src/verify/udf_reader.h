// The files of VIDEO_TS as UDF 1.02 (ECMA-167, OSTA) has them.
#pragma once

#include <vector>

#include "verify/disc_source.h"
#include "verify/image_sectors.h"

namespace quorvelant {

// Raises ImageFault for a file system that is none or damaged, FileError for what cannot be read.
[[nodiscard]] std::vector<DiscSourceFile> UdfFiles(const ImageSectors& image);

}  // namespace quorvelant
