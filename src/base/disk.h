// Files and what a disk does with them: the seam at which tests let a disk fail.
#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "base/bytes.h"

namespace quorvelant {

// What the system refused. what() is the full text with the system's own words in front, over several lines:
// "Error ", the code, its text, and the error's own line.
class FileError : public std::runtime_error {
 public:
  // `line` is the error's own line, `systemCode` an errno value or 0.
  FileError(int number, const std::string& line, int systemCode = 0);

  static constexpr std::string_view Source = "Win32File Object";
  static constexpr int UnknownNumber = 45600;  // a read, write or flush the system refused
  static constexpr int AlreadyOpenNumber = 45601;
  static constexpr int OpenNumber = 45602;
  static constexpr int NoFileNumber = 45603;
  static constexpr int SeekNumber = 45604;

  // The same on one line: "Error writing '/disc/VTS_01_1.VOB': No space left on device".
  std::string OneLine() const;

  int Number;
  int SystemCode;
  std::string Line;
};

// One open file; closed when it goes. It has no cache: readers and writers keep windows of their own. What
// the system refuses raises a FileError that names the file; interrupted and partial calls are carried on.
class File {
 public:
  explicit File(std::string path) : path_(std::move(path)) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  virtual ~File() = default;

  const std::string& Path() const { return path_; }
  virtual int Handle() const = 0;  // the system's
  virtual std::uint64_t ByteCount() const = 0;
  // Reads into `target`; returns the bytes read, fewer only at the file's end.
  virtual std::size_t Read(ByteSpan target) = 0;
  // Writes all of `bytes`.
  virtual void Write(ByteView bytes) = 0;
  virtual void Seek(std::uint64_t position) = 0;
  virtual void Skip(std::int64_t offset) = 0;  // forward, or backward where it is negative
  // Returns when the bytes are on the disk.
  virtual void Flush() = 0;
  // Closes now and raises what the system tells only then.
  virtual void Close() = 0;
  // Lets the system begin to put onto the disk what was written so far, without waiting: a later Flush is
  // short then. A wish, which may do nothing.
  virtual void StartWriteBack() {}

 private:
  std::string path_;
};

enum class FileAccess {
  Read,       // an existing file, read from front to back for the most part
  ReadWrite,  // created where it is absent
  Create,     // empty; what was there of that name stays with those who have it open, or as what a link meant
  New         // empty, of a name that nothing has: not even a link to nowhere
};

enum class FileKind { Plain, Folder, Special, Missing, Unreachable };

// A path is one of this system. A test hands down a disk of its own, for one that fills up midway.
class Disk {
 public:
  Disk() = default;
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;
  virtual ~Disk() = default;

  // Only plain files open; a FIFO is refused and never waited for. Raises FileError::OpenNumber.
  virtual std::unique_ptr<File> Open(const std::string& path, FileAccess access) = 0;
  virtual FileKind KindOf(const std::string& path) = 0;
  // 0, or the errno value of what the system refused.
  virtual int Rename(const std::string& from, const std::string& to) = 0;
  virtual int Remove(const std::string& path) = 0;
};

// The system's own. It has no state.
Disk& SystemDisk();

}  // namespace quorvelant
