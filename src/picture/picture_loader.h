// Where pictures come from.
#pragma once

#include <cstdint>
#include <string>

#include "picture/picture.h"

namespace quorvelant {

// Reads pictures. The multiplexer and the checks need no more than this.
class PictureLoader {
 public:
  PictureLoader() = default;
  PictureLoader(const PictureLoader&) = delete;
  PictureLoader& operator=(const PictureLoader&) = delete;
  virtual ~PictureLoader() = default;

  // The file as 24-bit pixels; `path` is a path of this system. Raises PictureError.
  virtual Picture Load(const std::string& path) = 0;

  // The same for what shows over a picture: pixels that are more see-through than not have the colour
  // `background`, the others their own, unmixed. Formats without see-through parts come as from `Load`.
  virtual Picture LoadOver(const std::string& path, std::uint32_t /*background*/) { return Load(path); }
};

// Reads ".bmp" files itself, so that no platform is needed; every other format goes to `platform`, and is
// refused where that is null.
class BmpLoader : public PictureLoader {
 public:
  explicit BmpLoader(PictureLoader* platform = nullptr) : platform_(platform) {}
  Picture Load(const std::string& path) override;
  Picture LoadOver(const std::string& path, std::uint32_t background) override;

 private:
  Picture LoadBmp(const std::string& path) const;

  PictureLoader* platform_;
};

}  // namespace quorvelant
