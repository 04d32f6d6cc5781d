// An image, written from its layout.
#pragma once

#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "base/disk.h"
#include "base/user_interface.h"
#include "iso/image_layout.h"
#include "iso/image_time.h"

namespace quorvelant {

struct ImageVolume {
  std::string Label;         // as IsVolumeName allows
  ImageTime Time = {};       // of the volume, its folders and files
  std::uint64_t Serial = 0;  // tells it from other volumes of this name
};

// All sectors ahead of the first file: what both file systems know.
[[nodiscard]] Bytes ImageHead(const ImageLayout& layout, const ImageVolume& volume);

// Copies the files, then writes what leads to them, from sector 1 on; sector 0 is left over. With
// `writeBackEarly` the disk takes what is written while more is copied. Holds 256 KiB at a time. False
// where the user asked to stop. Raises FileError, and MessageError for a file that is not what the layout
// says.
[[nodiscard]] bool WriteImage(const ImageLayout& layout, const ImageVolume& volume, File& out, Disk& disk,
                              bool writeBackEarly, UserInterface& ui);

}  // namespace quorvelant
