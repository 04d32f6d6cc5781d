// The numbered VOB files of one domain as a run of sectors.
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <string>
#include <thread>

#include "base/bytes.h"
#include "base/random.h"
#include "disc/disc_files.h"

namespace quorvelant {

// How the files of a domain are named: a title set's Name_1.VOB, Name_2.VOB and so on; a menu's is one file
// of the whole name.
struct VobFiles {
  std::string Name;
  bool OneFile = false;
};

// Sectors are assembled in one buffer while a thread of its own writes the others: filling and writing cost
// about the same, so side by side they take the time of a copy. At a multiple of MostVobSectors a title set
// goes on in its next numbered file. A sector can be written over later (navigation packs).
//
// Files are opened and closed by the caller's thread alone; the writing thread touches slot::Output and
// nothing else. Errors of the file system are raised as FileError, naming the file, by the call that meets
// them.
class VobOutput {
 public:
  // Nothing is created before the first sector; a file that is there already is replaced. With `dryRun`
  // sectors are counted and nothing is written. `splitSectors` is for tests.
  VobOutput(Random& files, VobFiles names, bool dryRun = false, std::uint32_t splitSectors = MostVobSectors);
  VobOutput(const VobOutput&) = delete;
  VobOutput& operator=(const VobOutput&) = delete;
  // Gives up what was not finished: waits for the writing thread, closes the file.
  ~VobOutput();

  std::uint32_t TotalSectors() const { return totalSectors_; }
  std::uint32_t FileSectors() const { return fileSectors_; }
  int FileNumber() const { return fileNumber_; }
  bool DryRun() const { return dryRun_; }

  // The next sector, to be filled in place and whole: what it holds is left over. It counts from now on
  // and stays in place until the next call.
  ByteSpan NextSector();
  // Writes over a sector that was filled earlier.
  void Rewrite(std::uint32_t sector, ByteView bytes);
  // Puts everything into the files and closes the open one. Sectors may follow.
  void Finish();

 private:
  // Together they stay within a processor's cache; larger ones go through memory twice.
  static constexpr std::size_t BufferSectors = 64;
  static constexpr std::size_t BufferCount = 8;

  // Filled sectors of one file, waiting to be written.
  struct Job {
    ByteView Sectors;
    std::uint32_t FileSector = 0;  // of the first one
  };

  std::string NameOf(int fileNumber) const;
  void OpenForWriting(int fileNumber, bool fresh);
  void CloseOpen();
  void StartNextFile();
  void Submit();
  Bytes& Filling() { return buffers_[submitted_ % BufferCount]; }
  // Until no more than `open` jobs are unwritten. Raises what the writing thread met.
  void WaitForWriter(std::size_t open = 0);
  void WriteAt(std::uint32_t fileSector, ByteView bytes);
  void WriterLoop();
  void StartWriter();
  void StopWriter();

  Random* files_;
  VobFiles names_;
  bool dryRun_;
  std::uint32_t splitSectors_;
  std::uint32_t totalSectors_ = 0;
  std::uint32_t fileSectors_ = 0;
  int fileNumber_ = 1;
  int openNumber_ = 0;  // the file open in the slot, 0 for none

  std::array<Bytes, BufferCount> buffers_;
  std::size_t filled_ = 0;              // sectors in the buffer being filled
  std::uint32_t fillingFrom_ = 0;       // file sector of its first one
  std::uint32_t fillingFromTotal_ = 0;  // the same counted through the set
  std::size_t submitted_ = 0;           // jobs so far; the buffer being filled is this number's

  std::mutex mutex_;
  std::condition_variable changed_;
  std::thread writer_;
  // Guarded by mutex_. Job n lies at n modulo the number of buffers.
  std::array<Job, BufferCount> jobs_;
  std::size_t given_ = 0;    // jobs handed over
  std::size_t written_ = 0;  // jobs done, well or not
  bool quit_ = false;
  std::exception_ptr fault_;
};

}  // namespace quorvelant
