// Source files read front to back through a window.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "base/io_bytes.h"
#include "base/random.h"

namespace quorvelant {

// Bytes that came in at one end and leave at the other, in one piece.
class SlidingWindow {
 public:
  // For `capacity` bytes or more.
  explicit SlidingWindow(std::size_t capacity) : buffer_(capacity + PageBytes) {}

  ByteSpan Held() { return ByteSpan(buffer_).subspan(begin_, end_ - begin_); }
  std::size_t HeldBytes() const { return end_ - begin_; }
  void Drop(std::size_t bytes) { begin_ += bytes; }
  // Room for at least `bytes` after what is held, which may move; the window grows if it must.
  ByteSpan Room(std::size_t bytes);
  void Added(std::size_t bytes) { end_ += bytes; }
  // Puts other bytes in the place of `removed` of those held, from `at` on.
  void Replace(std::size_t at, std::size_t removed, ByteView inserted);

 private:
  IoBytes buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

// A stretch of one file, read once from front to back through a slot of Random. A file that cannot be
// opened, or ends before the stretch does, raises MuxFault naming it and the place.
class SourceFile {
 public:
  SourceFile(Random& files, int slot) : files_(&files), slot_(slot) {}
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;
  SourceFile(SourceFile&& other) noexcept;
  SourceFile& operator=(SourceFile&&) = delete;
  ~SourceFile() { Close(); }

  // The stretch of `bytes` from `from`; the rest of the file from there for WholeFile.
  static constexpr std::uint64_t WholeFile = ~std::uint64_t{0};
  void Open(const std::string& path, std::uint64_t from, std::uint64_t bytes);
  // What was made of the file at `path`, to be read in its place.
  void OpenMade(const std::string& path, Bytes made);
  void Close();

  std::uint64_t Left() const { return left_; }
  std::uint64_t Position() const { return position_; }  // in the file
  // Reads into `target`, fewer bytes at the end of the stretch only.
  std::size_t Read(ByteSpan target);

 private:
  Random* files_;
  int slot_;
  std::string path_;
  std::uint64_t position_ = 0;
  std::uint64_t left_ = 0;
  bool open_ = false;
  Bytes made_;
};

}  // namespace quorvelant
