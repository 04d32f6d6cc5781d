#include "verify/sector_stream.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>

namespace quorvelant {
namespace {

// Each sector begins as a pack does, and holds its number in the set; reads fail from one of them on.
class NumberedSectors : public DiscSource {
 public:
  NumberedSectors(std::vector<std::uint32_t> sectors, std::uint32_t failing) : failing_(failing) {
    std::uint32_t first = 0;
    for (const std::uint32_t count : sectors) {
      Sources.push_back({.Name = std::to_string(Sources.size()), .Size = std::uint64_t{count} * SectorBytes});
    }
    for (std::size_t i = 0; i < sectors.size(); ++i) {
      Set.Files.push_back({&Sources[i], first, sectors[i]});
      first += sectors[i];
    }
  }

  [[nodiscard]] std::unique_ptr<DiscReader> NewReader() const override {
    class Reader : public DiscReader {
     public:
      explicit Reader(const NumberedSectors& source) : source_(source) {}
      std::size_t Read(const DiscSourceFile& file, std::uint64_t offset, ByteSpan target) override {
        const auto at = static_cast<std::size_t>(std::stoi(file.Name));
        const std::uint32_t first =
            source_.Set.Files[at].First + static_cast<std::uint32_t>(offset / SectorBytes);
        for (std::uint32_t i = 0; i < target.size() / SectorBytes; ++i) {
          if (first + i >= source_.failing_) {
            throw FileError(FileError::UnknownNumber, "a bad sector");
          }
          PutBytes(target, i * SectorBytes, 4, 0x1BA);
          PutBytes(target, i * SectorBytes + 100, 4, first + i);
        }
        return target.size();
      }

     private:
      const NumberedSectors& source_;
    };
    return std::make_unique<Reader>(*this);
  }

  std::vector<DiscSourceFile> Sources;
  VobSetFiles Set;

 private:
  std::uint32_t failing_;
};

struct Streamed {
  std::uint32_t Count = 0;
  bool InOrder = true;
};

// Ends with what `stop` says or raises once so many sectors were taken.
Streamed Stream(const std::vector<std::uint32_t>& sectors, std::uint32_t failing, std::uint32_t atTake,
                std::uint32_t atStop) {
  const NumberedSectors source(sectors, failing);
  Streamed streamed;
  StreamSectors(
      source, source.Set, true,
      [&](const PackBlock& block) {
        for (std::size_t i = 0; i < block.Packs().size(); ++i) {
          streamed.InOrder = streamed.InOrder && block.Packs()[i].IsPack &&
                             GetBytes(block.Sectors(), i * SectorBytes + 100, 4) == streamed.Count;
          ++streamed.Count;
        }
        if (streamed.Count >= atTake) {
          throw std::runtime_error("take");
        }
      },
      [&] { return streamed.Count >= atStop; });
  return streamed;
}

constexpr std::uint32_t Never = 1U << 30U;

TEST(SectorStream, HandsOnAllSectorsInOrder) {
  for (const std::vector<std::uint32_t>& sectors :
       {std::vector<std::uint32_t>{}, {1}, {255, 1}, {256}, {257}, {512, 0, 3}, {0, 5, 0, 2000}, {7, 7, 7}}) {
    std::uint32_t all = 0;
    for (const std::uint32_t each : sectors) {
      all += each;
    }
    const Streamed streamed = Stream(sectors, Never, Never, Never);
    EXPECT_EQ(streamed.Count, all);
    EXPECT_TRUE(streamed.InOrder) << all;
  }
}

// Whatever ends it, on whichever thread, neither waits for the other.
TEST(SectorStream, EndsWithAFaultOrAStop) {
  for (const std::uint32_t at : {0U, 1U, 256U, 257U, 700U, 2999U}) {
    EXPECT_THROW(Stream({1000, 2000}, at, Never, Never), FileError) << at;
    EXPECT_THROW(Stream({1000, 2000}, Never, at, Never), std::runtime_error) << at;
    const Streamed stopped = Stream({1000, 2000}, Never, Never, at);
    EXPECT_TRUE(stopped.InOrder) << at;
    EXPECT_LE(stopped.Count, std::min(at + 256, 3000U)) << at;
  }
}

}  // namespace
}  // namespace quorvelant
