// A disc's image as a source: the UDF bridge, read from both of its file systems.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/disk.h"
#include "verify/disc_source.h"

namespace quorvelant {

class ImageSource : public DiscSource {
 public:
  // Reads the file systems. What is wrong with them, and where they disagree, goes to `findings`.
  ImageSource(std::unique_ptr<File> image, DiscFindings& findings);

  std::size_t Read(const DiscSourceFile& file, std::uint64_t offset, ByteSpan target) override;

 private:
  std::unique_ptr<File> image_;
};

}  // namespace quorvelant
