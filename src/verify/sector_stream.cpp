#include "verify/sector_stream.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstdint>
#include <future>
#include <mutex>

namespace quorvelant {
namespace {

constexpr std::size_t BlockSectors = 64;  // as much as stays in a cache while it is used
constexpr std::size_t BlockCount = 8;

// Reads a set block by block.
class BlockReader {
 public:
  BlockReader(DiscSource& source, const VobSetFiles& files) : source_(&source), files_(&files) {}

  // The bytes of the next block; 0 after the last. What a file lacks is zeros.
  std::size_t Read(ByteSpan block) {
    const auto& files = files_->Files;
    while (file_ < files.size() && sector_ >= files[file_].Sectors) {
      ++file_;
      sector_ = 0;
    }
    if (file_ >= files.size()) {
      return 0;
    }
    const VobFile& file = files[file_];
    const std::uint64_t count = std::min<std::uint64_t>(BlockSectors, file.Sectors - sector_);
    const ByteSpan target = block.first(static_cast<std::size_t>(count) * SectorBytes);
    const std::size_t got = source_->Read(*file.File, sector_ * SectorBytes, target);
    std::ranges::fill(target.subspan(got), std::uint8_t{0});
    sector_ += count;
    return target.size();
  }

 private:
  DiscSource* source_;
  const VobSetFiles* files_;
  std::size_t file_ = 0;
  std::uint64_t sector_ = 0;
};

// Blocks that go round between the one who reads and the one who uses them.
class BlockRing {
 public:
  struct Block {
    Bytes Data = Bytes(BlockSectors * SectorBytes);
    std::size_t Size = 0;  // 0 in the last
  };

  // Nothing once nobody wants more. A full ring waits until half of it is used: each change of threads costs
  // as much as a few sectors.
  Block* ToFill() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] {
      full_ = filled_ - used_ > (full_ ? BlockCount / 2 : BlockCount - 1);
      return closed_ || !full_;
    });
    return closed_ ? nullptr : &blocks_.at(filled_ % BlockCount);
  }
  void Filled() {
    const std::scoped_lock lock(mutex_);
    if (++filled_ == used_ + 1) {
      changed_.notify_all();
    }
  }
  // Nothing once no more comes.
  Block* ToUse() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return closed_ || filled_ > used_; });
    return filled_ > used_ ? &blocks_.at(used_ % BlockCount) : nullptr;
  }
  void Used() {
    const std::scoped_lock lock(mutex_);
    if (filled_ == ++used_ + BlockCount / 2) {
      changed_.notify_all();
    }
  }
  void Close() {
    const std::scoped_lock lock(mutex_);
    closed_ = true;
    changed_.notify_all();
  }

 private:
  std::array<Block, BlockCount> blocks_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t filled_ = 0;
  std::size_t used_ = 0;
  bool full_ = false;
  bool closed_ = false;
};

// Closes the ring whatever happens, so that neither side waits for one that has gone.
class RingEnd {
 public:
  explicit RingEnd(BlockRing& ring) : ring_(ring) {}
  RingEnd(const RingEnd&) = delete;
  RingEnd& operator=(const RingEnd&) = delete;
  ~RingEnd() { ring_.Close(); }

 private:
  BlockRing& ring_;
};

void FillBlocks(BlockReader& reader, BlockRing& ring) {
  const RingEnd end(ring);
  for (BlockRing::Block* block = ring.ToFill(); block != nullptr; block = ring.ToFill()) {
    block->Size = reader.Read(block->Data);
    if (block->Size == 0) {
      return;
    }
    ring.Filled();
  }
}

}  // namespace

void StreamSectors(DiscSource& source, const VobSetFiles& files, const std::function<void(ByteView)>& take,
                   const std::function<bool()>& stop) {
  BlockReader reader(source, files);
  BlockRing ring;
  auto filling = std::async(std::launch::async, FillBlocks, std::ref(reader), std::ref(ring));
  {
    const RingEnd end(ring);
    for (BlockRing::Block* block = ring.ToUse(); block != nullptr && !stop(); block = ring.ToUse()) {
      const ByteView bytes = ByteView(block->Data).first(block->Size);
      for (std::size_t at = 0; at < bytes.size(); at += SectorBytes) {
        take(bytes.subspan(at, SectorBytes));
      }
      ring.Used();
    }
  }
  filling.get();
}

}  // namespace quorvelant
