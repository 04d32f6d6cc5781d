// Images of any bytes (tests/support/sparse_image.h), with both file systems, and what they say of files.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "../tests/support/sparse_image.h"
#include "verify/image_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;  // NOLINT(google-build-using-namespace): a program of its own
  DiscFindings findings;
  BytesAsDisk disk(ExpandImage({data, byteCount}));
  const ImageSource source("image.iso", disk, findings);
  const auto reader = source.NewReader();
  Bytes bytes(3 * SectorBytes);
  for (const DiscSourceFile& file : source.Files()) {
    reader->Read(file, file.Size / 2, bytes);
  }
  return 0;
}
