// A disc's image as a source: the UDF bridge, read from both of its file systems.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/disk.h"
#include "verify/disc_source.h"

namespace quorvelant {

class ImageSource : public DiscSource {
 public:
  // Reads the file systems. What is wrong with them, and where they disagree, goes to `findings`. Raises
  // FileError.
  ImageSource(std::string path, Disk& disk, DiscFindings& findings);

  [[nodiscard]] std::unique_ptr<DiscReader> NewReader() const override;

 private:
  std::string path_;
  Disk* disk_;
};

}  // namespace quorvelant
