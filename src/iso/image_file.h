// The file of an image while it is written.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/disk.h"
#include "base/user_interface.h"

namespace quorvelant {

// A hidden neighbour of the image (".DISC.iso.making") that takes its name when it is whole. It is locked by
// the system for the run, and its first sector says what it is until the end; so the next run knows what a
// killed one has left, writes that anew, and touches nothing else. Where the file system knows no locks there
// is none.
class ImageFile {
 public:
  // Nothing where another run writes this image, or something else bears the name, which is told. Raises
  // FileError.
  [[nodiscard]] static std::optional<ImageFile> Begin(const std::string& path, Disk& disk, UserInterface& ui);

  ImageFile(ImageFile&& other) noexcept;
  ImageFile& operator=(ImageFile&&) = delete;
  ImageFile(const ImageFile&) = delete;
  ImageFile& operator=(const ImageFile&) = delete;
  // Removes the file unless it was placed.
  ~ImageFile();

  // To be written from the second sector on.
  [[nodiscard]] File& Out() { return *file_; }
  // Where it lies until it is placed: all but the mark can be read there.
  [[nodiscard]] const std::string& AsidePath() const { return aside_; }

  // Takes the mark away and closes the file: nothing more can fail but its naming. With `sync`, everything is
  // on the disk first. Raises FileError.
  void Finish(bool sync);
  // Finishes the image where that was not done, and names it. An image that is there already goes with
  // `replace` alone. False where it cannot take its name, which is told: it stays as it is. Raises FileError.
  [[nodiscard]] bool Place(bool replace, bool sync, UserInterface& ui);

 private:
  ImageFile(std::string path, std::unique_ptr<File> file, Disk& disk);
  bool NotPlaced(UserInterface& ui, const std::string& reason);

  std::string path_;
  std::string aside_;           // empty once placed or moved from
  std::unique_ptr<File> file_;  // null once closed
  Disk* disk_;
};

}  // namespace quorvelant
