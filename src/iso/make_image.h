// A finished folder becomes an image.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/disk.h"
#include "base/user_interface.h"
#include "iso/image_file.h"
#include "iso/image_layout.h"
#include "iso/image_time.h"

namespace quorvelant {

inline constexpr std::string_view ImageStatus = "Writing the image";

struct ImageOrder {
  std::string Folder = {};  // a disc's, or one that holds a VIDEO_TS
  std::string Path = {};    // of the image
  std::string Label = {};   // as IsVolumeName allows
  ImageTime Time = {};
  bool Replace = false;  // an image that is there
  bool Sync = true;      // place it only when it is on the disk
};

enum class ImageOutcome { Done, Failed, Stopped };

struct ImageResult {
  ImageOutcome Outcome = ImageOutcome::Failed;
  std::uint64_t Size = 0;  // bytes
  bool TwoLayers = false;  // more than a DVD-5 holds
  std::optional<LayerBreak> Break = {};
};

// An image that stands aside, whole, and what came of it.
struct WrittenImage {
  ImageResult Result;
  std::optional<ImageFile> Aside;  // nothing where there is none
};

// Reads the folder's tables, lays the image out and writes it aside. What is in the way is told, once, and so
// is what is to be known of the layout. Sector for sector a copy: memory stays flat. The outcome is `Done`
// when the image waits to be placed.
[[nodiscard]] WrittenImage WriteImageAside(const ImageOrder& order, UserInterface& ui,
                                           Disk& disk = SystemDisk());

// The same, and puts it in its place.
[[nodiscard]] ImageResult MakeImage(const ImageOrder& order, UserInterface& ui, Disk& disk = SystemDisk());

// Takes the seamless flag in the folder's own tables from the cell that an image of it would begin its second
// layer with, so that folder and image are the same. Nothing to do for one layer, nor where the tables are
// not whole. Raises FileError.
void MarkLayerBreak(const std::string& folder, UserInterface& ui);

}  // namespace quorvelant
