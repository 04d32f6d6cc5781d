// Files by slot number with 64-bit positions.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/disk.h"
#include "base/user_interface.h"

namespace quorvelant {

// The slots of an authoring run.
namespace slot {
inline constexpr int Source = 0;      // the video, and whatever is read by itself
inline constexpr int Output = 1;      // the one that WriteBytes and its kin write to
inline constexpr int FirstAudio = 2;  // one for each of eight audio streams
inline constexpr int Last = 9;
}  // namespace slot

// The open files by slot through which sources are read, and VOB and IFO files written. A path may hold "\"
// or
// "/". Only plain files open: a folder, a FIFO or a device is refused with a message and never waited for.
// Every read, write, flush and seek on a closed slot raises FileError 45603.
class Random {
 public:
  explicit Random(UserInterface& ui, Disk& disk = SystemDisk()) : ui_(&ui), disk_(&disk) {}
  Random(const Random&) = delete;
  Random& operator=(const Random&) = delete;
  ~Random() = default;

  // Sizes the tables to slots 0 to `count` and marks all as closed (closing what was open).
  void DimFiles(int count);
  int FileHandle(int slot) const;               // -1 when closed
  const std::string& FileName(int slot) const;  // empty when closed
  bool IsOpen(int slot) const;

  // Opens for reading and writing, creating the file if it is absent. A file already open in another
  // slot shares that handle and its position, and closing one closes both. On failure the retry question
  // is asked once; false when it stays closed. An open slot raises 45601.
  [[nodiscard]] bool OpenFile(const std::string& name, int slot, bool flushEachWrite = false);
  // Opens an existing file for reading alone, so that sources on read-only media are usable, with a
  // handle and a position of its own whatever else is open. Failure as with OpenFile.
  [[nodiscard]] bool OpenSource(const std::string& name, int slot);
  // Opens a new file for reading and writing, in place of one that is there already. Failure as with
  // OpenFile.
  [[nodiscard]] bool CreateFile(const std::string& name, int slot);
  // Raises FileError where the system tells only now that a write failed.
  void CloseFile(int slot);
  // The same for a file that is given up: nothing is raised.
  void AbandonFile(int slot) noexcept;
  void CloseAllFiles();  // files that were read

  // Lets what slot 1 is given go to the disk while more is made, so that a Flush at the end is short.
  void WriteBackEarly(bool wanted) { writeBackEarly_ = wanted; }

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
    std::shared_ptr<File> Open;  // null when closed
    bool FlushEachWrite = false;
  };

  bool Open(const std::string& name, int slot, FileAccess access, bool flushEachWrite);
  // Null on failure; `final` when the user has read why, so that trying again is no use.
  std::shared_ptr<File> TryOpen(const std::string& path, FileAccess access, bool& final);
  File& OpenSlot(int slot) const;
  Slot& ClosedSlot(int slot);

  UserInterface* ui_;
  Disk* disk_;
  std::vector<Slot> slots_;
  bool writeBackEarly_ = false;
  std::uint64_t unasked_ = 0;  // bytes written since the last wish
};

// A script's path as a path of this system: "\" becomes "/", and a relative path counts from `folder`.
// A path with a drive letter counts as absolute.
std::string SystemPath(std::string_view scriptPath, std::string_view folder = {});

}  // namespace quorvelant
