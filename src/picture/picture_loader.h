// Bitmaps for subtitles and stills, read when they are due and not kept.
#pragma once

#include <string>

#include "picture/bmp.h"
#include "picture/picture_service.h"

namespace quorvelant {

// Reads ".bmp" files itself; every other format needs the platform's reader, where the build has one.
class MuxPictureLoader : public PictureLoader {
 public:
  explicit MuxPictureLoader(PictureLoader* platform) : platform_(platform) {}
  Picture Load(const std::string& path) override;

 private:
  BmpLoader bitmaps_;
  PictureLoader* platform_;
};

}  // namespace quorvelant
