#include "picture/picture_loader.h"

#include <fmt/format.h>

#include <string_view>

#include "base/text.h"

namespace quorvelant {
namespace {

constexpr std::string_view NoReader = "{}: only Windows bitmaps (.bmp) can be read here.";

}  // namespace

Picture MuxPictureLoader::Load(const std::string& path) {
  if (Lower(path).ends_with(".bmp")) {
    return bitmaps_.Load(path);
  }
  if (platform_ == nullptr) {
    throw PictureError(fmt::format(NoReader, path));
  }
  return platform_->Load(path);
}

}  // namespace quorvelant
