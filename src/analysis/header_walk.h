// All headers of a file in order, whatever the size of the blocks it is read in.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/bytes.h"
#include "base/io_bytes.h"
#include "base/random.h"

namespace quorvelant {

inline constexpr std::size_t PlainBlockBytes = 30000;  // the traditional block
// Few system calls, and what the system copied is still in a core's own cache when it is searched.
inline constexpr std::size_t FastBlockBytes = std::size_t{256} << 10;

struct WalkOptions {
  std::size_t BlockBytes = FastBlockBytes;
  bool SkipNonPictureHeaders = false;
  bool WantPictureType = false;
  UserInterface* Ui = nullptr;  // is told the progress in bytes and asked whether to stop, once a window
};

struct FoundHeader {
  std::string_view Word;
  std::uint64_t Offset;  // of the first 00 of the start code, in the file
  ByteView Data;         // from there: `HeaderBytes` of it, fewer only at the file's end
  int PictureType;       // when asked for
};

// Reads a file through one window. A header that the window's end cuts is looked at once, whole, in the
// next window; so the headers found do not depend on the window's size.
class HeaderWalk {
 public:
  // Bytes from a start code on that a caller may look at: a sequence header up to its matrices' flags.
  static constexpr std::size_t HeaderBytes = 16;

  HeaderWalk(Random& files, int slot, const WalkOptions& options);

  // The next header; nothing at the file's end or when the user asked to stop. Raises a FileError when the
  // file cannot be read or has become shorter.
  std::optional<FoundHeader> Next();
  std::uint64_t FileBytes() const { return fileBytes_; }
  bool Stopped() const { return stopped_; }

 private:
  void Refill(std::size_t from);
  bool AllRead() const { return readTo_ >= fileBytes_; }

  Random* files_;
  int slot_;
  WalkOptions options_;
  std::uint64_t fileBytes_;
  // Blocks are read at whole multiples of their size onto a whole page of memory, which copies fastest; the
  // rest of the block before is moved to just before it.
  IoBytes buffer_;              // what is kept of a window stands before the block
  ByteSpan block_;              // where in `buffer_` blocks are read to
  std::uint64_t readTo_ = 0;    // bytes of the file read
  ByteView window_;             // the bytes of `buffer_` in use
  std::uint64_t base_ = 0;      // offset of the window in the file
  std::size_t searchFrom_ = 0;  // in the window, from 0
  bool stopped_ = false;
};

}  // namespace quorvelant
