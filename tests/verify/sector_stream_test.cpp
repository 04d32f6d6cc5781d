#include "verify/sector_stream.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>

namespace quorvelant {
namespace {

using ReadFault = std::function<void(std::uint32_t sector)>;

// Each sector begins as a pack does, and holds its number in the set. `fault` is asked ahead of each.
class NumberedSectors : public DiscSource {
 public:
  NumberedSectors(const std::vector<std::uint32_t>& sectors, ReadFault fault) : fault_(std::move(fault)) {
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
          source_.fault_(first + i);
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
  ReadFault fault_;
};

struct Streamed {
  std::uint32_t Count = 0;
  bool InOrder = true;
  std::string Unread;
};

// Ends with what `stop` says or raises once so many sectors were taken.
Streamed Stream(const std::vector<std::uint32_t>& sectors, const ReadFault& fault, std::uint32_t atTake,
                std::uint32_t atStop) {
  const NumberedSectors source(sectors, fault);
  Streamed streamed;
  StreamSectors(
      source, source.Set, true,
      [&](const PackBlock& block) {
        for (std::size_t i = 0; i < block.Packs().size(); ++i) {
          const ScannedPack& pack = block.Packs()[i];
          const bool isNumbered =
              pack.IsPack && GetBytes(block.Sectors(), i * SectorBytes + 100, 4) == streamed.Count;
          streamed.InOrder = streamed.InOrder && pack.IsRead == isNumbered;
          ++streamed.Count;
        }
        for (const UnreadSectors& each : block.Unread()) {
          streamed.Unread +=
              fmt::format("{}{}+{} {};", each.BeginsFile ? "file " : "", each.First, each.Count, each.Why);
        }
        if (streamed.Count >= atTake) {
          throw std::runtime_error("take");
        }
      },
      [&] { return streamed.Count >= atStop; });
  return streamed;
}

constexpr std::uint32_t Never = 1U << 30U;

void ReadAll(std::uint32_t) {}

TEST(SectorStream, HandsOnAllSectorsInOrder) {
  for (const std::vector<std::uint32_t>& sectors :
       {std::vector<std::uint32_t>{}, {1}, {255, 1}, {256}, {257}, {512, 0, 3}, {0, 5, 0, 2000}, {7, 7, 7}}) {
    std::uint32_t all = 0;
    for (const std::uint32_t each : sectors) {
      all += each;
    }
    const Streamed streamed = Stream(sectors, ReadAll, Never, Never);
    EXPECT_EQ(streamed.Count, all);
    EXPECT_TRUE(streamed.InOrder) << all;
  }
}

// Whatever ends it, on whichever thread, neither waits for the other.
TEST(SectorStream, EndsWithAFaultOrAStop) {
  for (const std::uint32_t at : {0U, 1U, 256U, 257U, 700U, 2999U}) {
    const ReadFault fault = [at](std::uint32_t sector) {
      if (sector >= at) {
        throw std::logic_error("read");
      }
    };
    EXPECT_THROW(Stream({1000, 2000}, fault, Never, Never), std::logic_error) << at;
    EXPECT_THROW(Stream({1000, 2000}, ReadAll, at, Never), std::runtime_error) << at;
    const Streamed stopped = Stream({1000, 2000}, ReadAll, Never, at);
    EXPECT_TRUE(stopped.InOrder) << at;
    EXPECT_LE(stopped.Count, std::min(at + 256, 3000U)) << at;
  }
}

// All others are handed on.
TEST(SectorStream, NamesTheEccBlocksThatFail) {
  const struct {
    std::uint32_t First;
    std::uint32_t Last;
    const char* Unread;
  } cases[] = {{3, 3, "file 0+16 bad;"},
               {999, 999, "992+8 bad;"},
               {1000, 1001, "file 1000+16 bad;"},
               {255, 272, "240+16 bad;256+16 bad;272+16 bad;"}};
  for (const auto& test : cases) {
    const Streamed streamed = Stream(
        {1000, 50},
        [&](std::uint32_t sector) {
          if (sector >= test.First && sector <= test.Last) {
            throw FileError(FileError::UnknownNumber, "bad");
          }
        },
        Never, Never);
    EXPECT_EQ(streamed.Unread, test.Unread);
    EXPECT_EQ(streamed.Count, 1050U);
    EXPECT_TRUE(streamed.InOrder);
  }
}

}  // namespace
}  // namespace quorvelant
