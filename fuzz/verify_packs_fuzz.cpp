// VOB files of any bytes. The first byte holds switches.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "verify/vob_scan.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;  // NOLINT(google-build-using-namespace): a program of its own
  if (byteCount == 0) {
    return 0;
  }
  const ByteView rest(data + 1, byteCount - 1);
  const auto sectors = static_cast<std::uint32_t>((rest.size() + SectorBytes - 1) / SectorBytes);
  const DiscSourceFile file{.Name = "VTS_01_1.VOB", .Size = rest.size()};
  const VobSetFiles files{{{&file, 0, sectors}}};
  DiscFindings findings;
  const VobTeller teller(files, findings);
  ScanOrder order{.Known = (data[0] & 1U) != 0, .IsOurs = (data[0] & 2U) != 0, .Sectors = sectors};
  order.Streams.Video.Raw = (data[0] & 4U) != 0 ? 0x4000 : 0x5C00;
  VobScan scan(teller, order);
  Bytes bytes(rest.begin(), rest.end());
  bytes.resize(std::size_t{sectors} * SectorBytes);
  constexpr std::size_t BlockSectors = 3;  // headers go on from one block to the next
  for (std::uint32_t first = 0; first < sectors; first += BlockSectors) {
    const std::size_t count = std::min<std::size_t>(BlockSectors, sectors - first);
    PackBlock block;
    block.Read(ByteView(bytes).subspan(first * SectorBytes, count * SectorBytes), first, order.IsOurs);
    scan.Read(block);
  }
  return scan.Finish().Vobus.size() <= sectors ? 0 : 1;
}
