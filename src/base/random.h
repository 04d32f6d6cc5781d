// Files by slot number with 64-bit positions.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/user_interface.h"

namespace quorvelant {

// What `Random` raises. `Number` is 45600 to 45604; what() is the full text with the system's own words
// in front, if it had any.
class FileError : public std::runtime_error {
 public:
  FileError(int number, const std::string& text) : std::runtime_error(text), Number(number) {}
  static constexpr std::string_view Source = "Win32File Object";
  int Number;
};

// The file object through which every large file is read and written: sources, VOB output, IFO files.
// It has no cache; readers and writers keep windows of their own. A path may hold "\" or "/".
class Random {
 public:
  explicit Random(UserInterface& ui) : ui_(&ui) {}
  Random(const Random&) = delete;
  Random& operator=(const Random&) = delete;
  ~Random();

  // Sizes the tables to slots 0 to `count` and marks all as closed.
  void DimFiles(int count);
  int FileHandle(int slot) const;
  const std::string& FileName(int slot) const;
  bool IsOpen(int slot) const;

  // Opens for reading and writing, creating the file if it is absent. A file already open in another
  // slot shares that handle. On failure the retry question of the voice is asked; false when it stays
  // closed.
  bool OpenFile(const std::string& name, int slot, bool flushEachWrite = false);
  // Opens an existing file for reading alone, so that sources on read-only media are usable.
  bool OpenSource(const std::string& name, int slot);
  void CloseFile(int slot);
  void CloseAllFiles();

  std::uint64_t FileBytes(int slot) const;

  // `count` bytes from the present position; a short read at the file's end leaves the tail 0.
  Bytes ReadBytes(std::size_t count, int slot);
  // Reads into `target`; returns the bytes read, fewer only at the file's end.
  std::size_t ReadInto(ByteSpan target, int slot);
  // Reads `count` bytes into `count` words, of which the first count / 2 are filled (little-endian).
  std::vector<std::uint16_t> ReadPCMBytes(std::size_t count, int slot);

  // Writes all of `bytes` to slot 1, seeking to `position` first if it is above 0.
  void WriteBytes(ByteView bytes, std::uint64_t position = 0);
  void WritePCMBytes(const std::vector<std::uint16_t>& words, std::uint64_t position = 0);
  void WriteSpecifiedBytes(ByteView block, std::size_t count, std::size_t start);
  void Flush(int slot);

  void SeekAbsolute(std::uint64_t position, int slot);
  // Moves by `offset`; a negative step needs `allowBackward`.
  void SeekRelative(std::int64_t offset, int slot, bool allowBackward);

 private:
  struct Slot {
    int Handle = -1;
    std::string Name;
    bool FlushEachWrite = false;
  };
  UserInterface* ui_;
  std::vector<Slot> slots_;
};

// A script's path as a path of this system: "\" becomes "/", and a relative path counts from `folder`.
std::string SystemPath(std::string_view scriptPath, std::string_view folder = {});

}  // namespace quorvelant
