#include "picture/picture_loader.h"

#include "base/text.h"
#include "picture/bmp.h"
#include "picture/messages.h"

namespace quorvelant {

Picture BmpLoader::Load(const std::string& path) {
  if (Lower(path).ends_with(".bmp")) {
    return ReadBmp(ReadPictureFile(path), path);
  }
  if (platform_ == nullptr) {
    RefusePicture(message::PictureNotBitmap, path);
  }
  return platform_->Load(path);
}

}  // namespace quorvelant
