#include "verify/sector_stream.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstdint>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "base/io_bytes.h"
#include "disc/disc_files.h"

namespace quorvelant {
namespace {

constexpr std::size_t BlockSectors = 256;
constexpr std::size_t BlockCount = 4;

struct Block {
  enum class Step { Free, Reading, Parsed, Taking };

  Step Now = Step::Free;
  std::uint64_t Number = 0;
  IoBytes Data = IoBytes(BlockSectors * SectorBytes);
  PackBlock Packs = {};
};

// Reads and parses blocks by their numbers, which count through the files of a set from 0.
class BlockReader {
 public:
  BlockReader(const DiscSource& source, const VobSetFiles& files, bool isOurs)
      : reader_(source.NewReader()), files_(&files), isOurs_(isOurs) {}

  // False beyond the last block.
  bool Read(Block& block) {
    std::uint64_t number = block.Number;
    for (const VobFile& file : files_->Files) {
      const std::uint64_t blocks = (file.Sectors + BlockSectors - 1) / BlockSectors;
      if (number < blocks) {
        Read(file, static_cast<std::uint32_t>(number * BlockSectors), block);
        return true;
      }
      number -= blocks;
    }
    return false;
  }

 private:
  void Read(const VobFile& file, std::uint32_t sector, Block& block) {
    const std::uint32_t count = std::min<std::uint32_t>(BlockSectors, file.Sectors - sector);
    const ByteSpan target = ByteSpan(block.Data).first(std::size_t{count} * SectorBytes);
    std::vector<UnreadSectors> unread;
    try {
      ReadPart(file, sector, target, unread);
    } catch (const FileError&) {
      // An ECC block is the least that a damaged disc fails to give; in a folder nobody knows where one
      // begins.
      std::uint32_t part = 0;
      for (std::uint32_t i = 0; i < count; i += part) {
        const std::uint32_t place = file.File->FirstSector.value_or(0) + sector + i;
        part = std::min(EccSectors - place % EccSectors, count - i);
        ReadOrMiss(file, sector + i,
                   target.subspan(std::size_t{i} * SectorBytes, std::size_t{part} * SectorBytes), unread);
      }
    }
    block.Packs.Read(target, file.First + sector, isOurs_, std::move(unread));
  }

  void ReadOrMiss(const VobFile& file, std::uint32_t sector, ByteSpan target,
                  std::vector<UnreadSectors>& unread) {
    try {
      ReadPart(file, sector, target, unread);
    } catch (const FileError& error) {
      Miss(file, sector, target.size() / SectorBytes, WhyUnread(error), unread);
    }
  }

  // Raises FileError. A file may have become shorter meanwhile.
  void ReadPart(const VobFile& file, std::uint32_t sector, ByteSpan target,
                std::vector<UnreadSectors>& unread) {
    const std::size_t got = reader_->Read(*file.File, std::uint64_t{sector} * SectorBytes, target);
    if (got < target.size()) {
      const std::size_t whole = got / SectorBytes;
      Miss(file, sector + static_cast<std::uint32_t>(whole), target.size() / SectorBytes - whole,
           "the end of the file", unread);
    }
  }

  static void Miss(const VobFile& file, std::uint32_t sector, std::size_t count, const std::string& why,
                   std::vector<UnreadSectors>& unread) {
    UnreadSectors& lost = unread.emplace_back();
    lost.First = file.First + sector;
    lost.Count = static_cast<std::uint32_t>(count);
    lost.BeginsFile = sector == 0;
    lost.Why = why;
  }

  std::unique_ptr<DiscReader> reader_;
  const VobSetFiles* files_;
  bool isOurs_;
};

// Two threads do what there is to do: take the block whose turn it is, or else read another one.
class BlockWork {
 public:
  BlockWork(const std::function<void(const PackBlock&)>& take, const std::function<bool()>& stop)
      : take_(take), stop_(stop) {}

  void Do(BlockReader& reader) {
    std::unique_lock lock(mutex_);
    try {
      while (!isOver_) {
        if (Block* const ready = ToTake()) {
          Take(*ready, lock);
        } else if (Block* const free = ToRead()) {
          Read(*free, reader, lock);
        } else {
          changed_.wait(lock);
        }
      }
    } catch (...) {
      if (!lock.owns_lock()) {
        lock.lock();
      }
      End();
      throw;
    }
  }

 private:
  Block* ToTake() {
    const bool isTaken =
        std::ranges::any_of(blocks_, [](const Block& block) { return block.Now == Block::Step::Taking; });
    auto* const ready = std::ranges::find_if(blocks_, [this](const Block& block) {
      return block.Now == Block::Step::Parsed && block.Number == taken_;
    });
    return isTaken || ready == blocks_.end() ? nullptr : &*ready;
  }

  Block* ToRead() {
    auto* const free = std::ranges::find(blocks_, Block::Step::Free, &Block::Now);
    return !isMore_ || free == blocks_.end() ? nullptr : &*free;
  }

  void Take(Block& block, std::unique_lock<std::mutex>& lock) {
    block.Now = Block::Step::Taking;
    lock.unlock();
    const bool isStopped = stop_();
    if (!isStopped) {
      take_(block.Packs);
    }
    lock.lock();
    block.Now = Block::Step::Free;
    ++taken_;
    if (isStopped) {
      End();
    }
    EndWithLast();
  }

  void Read(Block& block, BlockReader& reader, std::unique_lock<std::mutex>& lock) {
    block.Now = Block::Step::Reading;
    block.Number = read_++;
    lock.unlock();
    const bool isThere = reader.Read(block);
    lock.lock();
    block.Now = isThere ? Block::Step::Parsed : Block::Step::Free;
    isMore_ = isMore_ && isThere;
    EndWithLast();
  }

  void EndWithLast() {
    const bool isIdle =
        std::ranges::all_of(blocks_, [](const Block& block) { return block.Now == Block::Step::Free; });
    if (!isMore_ && isIdle) {
      End();
    }
    changed_.notify_one();
  }

  void End() {
    isOver_ = true;
    changed_.notify_all();
  }

  const std::function<void(const PackBlock&)>& take_;
  const std::function<bool()>& stop_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::array<Block, BlockCount> blocks_;
  std::uint64_t read_ = 0;   // blocks, or under way
  std::uint64_t taken_ = 0;  // ... and handed on
  bool isMore_ = true;
  bool isOver_ = false;
};

}  // namespace

void StreamSectors(const DiscSource& source, const VobSetFiles& files, bool isOurs,
                   const std::function<void(const PackBlock&)>& take, const std::function<bool()>& stop) {
  BlockReader here(source, files, isOurs);
  BlockReader there(source, files, isOurs);
  BlockWork work(take, stop);
  auto other = std::async(std::launch::async, [&] { work.Do(there); });
  work.Do(here);
  other.get();
}

}  // namespace quorvelant
