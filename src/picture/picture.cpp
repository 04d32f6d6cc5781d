#include "picture/picture.h"

#include "picture/messages.h"

namespace quorvelant {

void CheckPictureSize(std::int64_t width, std::int64_t height, const PictureLimits& limits,
                      std::string_view name) {
  if (width < 1 || height < 1) {
    RefusePicture(message::PictureWithoutPixels, name, width, height);
  }
  if (width > limits.MostSide || height > limits.MostSide || width * height > limits.MostPixels) {
    RefusePicture(message::PictureTooLarge, name, width, height, limits.MostSide, limits.MostPixels);
  }
}

}  // namespace quorvelant
