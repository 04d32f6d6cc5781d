// Any bytes as an information file that the fix-up pass takes up again.
#include <cstddef>
#include <cstdint>

#include "author/fix_up.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvelant;
  // The first byte chooses the set; a table of three stands in for the folder's sums.
  const SetSectors rows[] = {{6, 210, 198}, {7, 2000, 0}, {9, 0xFFFFFFFF, 5}};
  const std::size_t row = size == 0 ? 0 : data[0] % 3;
  Bytes ifo(data, data + size);
  PatchIfo(ifo, row, rows);
  return ifo.size() == size ? 0 : 1;
}
