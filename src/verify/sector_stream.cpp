#include "verify/sector_stream.h"

#include <algorithm>
#include <array>
#include <future>

namespace quorvelant {
namespace {

constexpr std::size_t BlockSectors = 256;  // as much as stays in a cache while it is used

// Where the next block is.
struct BlockPlace {
  std::size_t File = 0;
  std::uint64_t Sector = 0;
};

}  // namespace

void StreamSectors(DiscSource& source, const VobSetFiles& files, const std::function<void(ByteView)>& take,
                   const std::function<bool()>& stop) {
  std::array<Bytes, 2> blocks{Bytes(BlockSectors * SectorBytes), Bytes(BlockSectors * SectorBytes)};
  BlockPlace next;
  // The bytes of the next block; 0 after the last.
  const auto read = [&](Bytes& block) -> std::size_t {
    while (next.File < files.Files.size() && next.Sector >= files.Files[next.File].Sectors) {
      next = {next.File + 1, 0};
    }
    if (next.File >= files.Files.size()) {
      return 0;
    }
    const VobFile& file = files.Files[next.File];
    const std::size_t count =
        static_cast<std::size_t>(std::min<std::uint64_t>(BlockSectors, file.Sectors - next.Sector));
    const std::size_t bytes = count * SectorBytes;
    const std::size_t got = source.Read(*file.File, next.Sector * SectorBytes, ByteSpan(block).first(bytes));
    std::fill(block.begin() + static_cast<std::ptrdiff_t>(got),
              block.begin() + static_cast<std::ptrdiff_t>(bytes), 0);
    next.Sector += count;
    return bytes;
  };
  std::size_t bytes = read(blocks[0]);
  for (std::size_t at = 0; bytes > 0 && !stop(); at = 1 - at) {
    auto ahead = std::async(std::launch::async, read, std::ref(blocks.at(1 - at)));
    for (std::size_t sector = 0; sector < bytes; sector += SectorBytes) {
      take(ByteView(blocks.at(at)).subspan(sector, SectorBytes));
    }
    bytes = ahead.get();
  }
}

}  // namespace quorvelant
