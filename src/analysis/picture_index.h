// The picture index of a video file: where its sequence headers stand, and how long it is.
//
// `<file>.qvi`, text with CR LF line ends, one line a sequence header that is followed by at least two
// pictures, and the total: "Frame=12;Offset=318844;Size=40112", "TotalFrames=24". Frames are displayed
// frames (a repeated field counts half); the size reaches to the start of the second picture.
// `<file>.gpi`, one line: I, P or B a picture in coded order, each followed by R when its first field is
// repeated.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/random.h"

namespace quorvelant {

struct PictureIndex {
  struct Entry {
    std::int64_t Frame = 0;    // displayed frames before the sequence header
    std::uint64_t Offset = 0;  // of the sequence header, bytes
    std::uint64_t Size = 0;    // bytes up to the second picture's header
    bool operator==(const Entry&) const = default;
  };
  std::vector<Entry> Entries;
  std::int64_t TotalFrames = 0;
  std::string Letters;  // filled when picture types were asked for
  bool operator==(const PictureIndex&) const = default;
};

std::string WritePictureIndex(const PictureIndex& index);
// Reads the text of a `.qvi`; takes any bytes.
PictureIndex ReadPictureIndex(std::string_view text);

struct IndexOptions {
  bool WantLetters = false;
  std::size_t BlockBytes = 0;  // 0: the fast size; the result is the same for every size
};
// Walks the file in `slot` once. Raises FileError, also for a file that cannot be video because it holds
// more pictures than any disc. Nothing when the user asked to stop.
std::optional<PictureIndex> ScanPictures(Random& files, int slot, const IndexOptions& options,
                                         UserInterface& ui);

// Indexes whose folder cannot be written, kept for the run.
class IndexStore {
 public:
  // With `inMemory` indexes are kept here without a word, and none is written. `cacheFolder`, which need not
  // be there, takes those whose own folder cannot be written to; empty for none.
  explicit IndexStore(bool inMemory = false, std::string cacheFolder = {})
      : inMemory_(inMemory), cacheFolder_(std::move(cacheFolder)) {}

  // Indexes are kept here, and written to the cache folder alone: for who only looks at films.
  static IndexStore InCache(std::string cacheFolder) {
    IndexStore store(true, std::move(cacheFolder));
    store.writesCache_ = true;
    return store;
  }

  bool InMemory() const { return inMemory_; }
  bool WritesCache() const { return writesCache_; }
  // Where the index of the file goes in the cache folder; empty without one.
  std::string CachedName(const std::string& file) const;
  const PictureIndex* Find(const std::string& file) const;
  // Whether this is the first one: told once a run.
  bool Keep(const std::string& file, PictureIndex index);

 private:
  std::map<std::string, PictureIndex> kept_;
  bool inMemory_;
  bool writesCache_ = false;
  std::string cacheFolder_;
};

struct IndexSource {
  std::string Name;      // path of this system; may be empty
  bool IsImage = false;  // a bitmap: has no index
};

enum class IndexState { Built, Reused, KeptInMemory, NotIndexed };

struct FileIndex {
  std::string Name;
  IndexState State = IndexState::NotIndexed;
  PictureIndex Index;
  std::string Path = {};  // of the index that was written; empty where none was
};

struct IndexRun {
  std::vector<FileIndex> Files;  // in the order of the list, as far as the run came
  bool Complete = false;         // false: a file could not be read, or the user asked to stop
};

// Indexes each file that has no index yet, or one that cannot be read; an existing index is reused as it
// stands, whatever its age, unless `force`. With a `groupFile` that file alone is indexed, with its picture
// types. Stops at the first file that cannot be opened; the indexes written so far stay. An index is written
// aside and renamed.
IndexRun BuildPictureIndex(const std::vector<IndexSource>& files, const std::string& groupFile,
                           IndexStore& store, UserInterface& ui, bool force = false);

// The index of one file: kept, beside it, or in the cache folder where it is no older than the file; nothing
// where there is none that can be read.
std::optional<PictureIndex> FindPictureIndex(const std::string& file, const IndexStore& store);

// Whether the file was written to after its index, and how that is told.
inline constexpr std::string_view IndexWrittenBefore = "the file was written to after it";
bool IndexIsOlder(const std::string& file);

std::string IndexName(const std::string& file);    // <file>.qvi
std::string LettersName(const std::string& file);  // <file>.gpi

}  // namespace quorvelant
