#include "picture/picture_loader.h"

#include "base/text.h"
#include "picture/bmp.h"
#include "picture/messages.h"

namespace quorvelant {

namespace {

bool IsBmpName(const std::string& path) {
  return Lower(path).ends_with(".bmp");
}

}  // namespace

Picture BmpLoader::LoadBmp(const std::string& path) const {
  if (!IsBmpName(path)) {
    RefusePicture(message::PictureNotBitmap, path);
  }
  return ReadBmp(ReadPictureFile(path), path);
}

Picture BmpLoader::Load(const std::string& path) {
  return platform_ == nullptr || IsBmpName(path) ? LoadBmp(path) : platform_->Load(path);
}

Picture BmpLoader::LoadOver(const std::string& path, std::uint32_t background) {
  return platform_ == nullptr || IsBmpName(path) ? LoadBmp(path) : platform_->LoadOver(path, background);
}

}  // namespace quorvelant
