#include "subpicture/coded_bitmaps.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

#include "base/text.h"
#include "picture/picture_loader.h"

namespace quorvelant {

namespace {

// What an entry takes besides its coded lines and the text of its path, about.
constexpr std::size_t EntryBytes = 256;

// Each thread holds one picture.
constexpr std::size_t MostThreads = 4;
constexpr std::size_t RecordsAThread = 16;

}  // namespace

CodedBitmaps::Key CodedBitmaps::KeyOf(const SPURecord& record, bool ntsc) {
  const ConversionColors& colors = record.Conversion;
  return {record.File,       colors.Pattern, colors.Emphasis1, colors.Emphasis2,
          colors.Background, record.X1,      record.Y1,        ntsc};
}

const EncodedBitmap* CodedBitmaps::Find(const SPURecord& record, bool ntsc) const {
  if (bitmaps_.empty()) {
    return nullptr;
  }
  const auto found = bitmaps_.find(KeyOf(record, ntsc));
  return found == bitmaps_.end() ? nullptr : &found->second;
}

bool CodedBitmaps::Keep(const SPURecord& record, bool ntsc, const EncodedBitmap& bitmap) {
  const std::size_t bytes = EntryBytes + record.File.size() + bitmap.FieldA.size() + bitmap.FieldB.size();
  if (bytes > mostBytes_ - keptBytes_) {
    return false;
  }
  // The copy has no room to spare.
  if (bitmaps_.try_emplace(KeyOf(record, ntsc), bitmap).second) {
    keptBytes_ += bytes;
  }
  return true;
}

void CodeAhead(const std::vector<SPURecord>& records, bool ntsc, const Rules& rules, UserInterface& ui,
               CodedBitmaps& coded) {
  std::atomic<std::size_t> next{0};
  std::mutex keeping;
  const auto codeOne = [&] {
    const std::size_t index = next++;
    if (index >= records.size()) {
      return false;
    }
    const SPURecord& record = records[index];
    {
      const std::scoped_lock lock(keeping);
      if (!Lower(record.File).ends_with(".bmp") || coded.Find(record, ntsc) != nullptr) {
        return true;
      }
    }
    try {
      BmpLoader loader;
      const EncodedBitmap bitmap = LoadSPUBitmap(loader, record, ntsc, rules);
      const std::scoped_lock lock(keeping);
      if (!coded.Keep(record, ntsc, bitmap)) {
        next = records.size();
      }
    } catch (const std::exception&) {
      return true;  // told by whoever needs it
    }
    return true;
  };
  const std::size_t processors = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, MostThreads);
  const std::size_t helpers = std::min(processors - 1, records.size() / RecordsAThread);
  std::vector<std::jthread> threads;
  try {
    for (std::size_t i = 0; i < helpers; ++i) {
      threads.emplace_back([&] {
        while (codeOne()) {
        }
      });
    }
  } catch (const std::system_error&) {  // NOLINT(bugprone-empty-catch): this thread does what helpers would
  }
  while (codeOne()) {
    if (ui.StopRequested()) {
      next = records.size();
    }
  }
}

}  // namespace quorvelant
