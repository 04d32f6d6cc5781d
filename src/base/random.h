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

// What `Random` raises. what() is the full text with the system's own words in front, over several lines:
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

// The file object through which every large file is read and written: sources, VOB output, IFO files.
// It has no cache; readers and writers keep windows of their own. A path may hold "\" or "/". Only plain
// files open: a folder, a FIFO or a device is refused with a message and never waited for.
//
// Every read, write, flush and seek on a closed slot raises FileError 45603; what the system refuses
// raises a FileError that names the file. Interrupted and partial system calls are carried on.
class Random {
 public:
  explicit Random(UserInterface& ui) : ui_(&ui) {}
  Random(const Random&) = delete;
  Random& operator=(const Random&) = delete;
  ~Random();

  // Sizes the tables to slots 0 to `count` and marks all as closed (closing what was open).
  void DimFiles(int count);
  int FileHandle(int slot) const;  // -1 when closed
  const std::string& FileName(int slot) const;
  bool IsOpen(int slot) const;

  // Opens for reading and writing, creating the file if it is absent. A file already open in another
  // slot shares that handle and its position, and closing one closes both. On failure the retry question
  // of the voice is asked once; false when it stays closed. An open slot raises 45601.
  bool OpenFile(const std::string& name, int slot, bool flushEachWrite = false);
  // Opens an existing file for reading alone, so that sources on read-only media are usable, with a
  // handle and a position of its own whatever else is open. Failure as with OpenFile.
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
  // `count` bytes of `block` from `start`, which must lie within it.
  void WriteSpecifiedBytes(ByteView block, std::size_t count, std::size_t start);
  // Returns when the file's bytes are on the disk.
  void Flush(int slot);

  void SeekAbsolute(std::uint64_t position, int slot);
  void SeekAbsolute(std::int32_t upper, std::int32_t lower, int slot);
  // Moves by `offset`; a negative step needs `allowBackward`.
  void SeekRelative(std::int64_t offset, int slot, bool allowBackward);

 private:
  struct Slot {
    int Handle = -1;
    std::string Name;
    bool FlushEachWrite = false;
  };
  enum class Access { Read, ReadWrite };

  bool Open(const std::string& name, int slot, Access access, bool flushEachWrite);
  // -1 on failure; `told` when the refusal is final and the user has read why.
  int OpenPlainFile(const std::string& path, Access access, bool& told);
  const Slot& OpenSlot(int slot) const;
  Slot& ClosedSlot(int slot);

  UserInterface* ui_;
  std::vector<Slot> slots_;
};

// A script's path as a path of this system: "\" becomes "/", and a relative path counts from `folder`.
// A path with a drive letter counts as absolute.
std::string SystemPath(std::string_view scriptPath, std::string_view folder = {});

}  // namespace quorvelant
