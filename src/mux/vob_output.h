// The numbered VOB files of one domain as a run of sectors.
#pragma once

#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "base/random.h"

namespace quorvelant {

inline constexpr std::uint32_t SplitSectors = 524287;  // sectors a VOB file

// Sectors are assembled in a buffer and written in large steps; at a multiple of SplitSectors a title
// set goes on in its next numbered file. A sector can be written over later (navigation packs).
// Errors of the file system are raised as FileError, naming the file.
class VobOutput {
 public:
  // `baseName` with "VOB" in it is the one file's whole name (a menu); otherwise the files are
  // baseName_1.VOB, baseName_2.VOB and so on. Nothing is created before the first sector.
  // With `dryRun` sectors are counted and nothing is written.
  VobOutput(Random& files, std::string baseName, bool dryRun = false);

  std::uint32_t TotalSectors() const { return totalSectors_; }
  std::uint32_t FileSectors() const { return fileSectors_; }
  int FileNumber() const { return fileNumber_; }
  bool DryRun() const { return dryRun_; }

  // The next sector, zeroed, to be filled in place; it counts from now on.
  ByteSpan NextSector();
  // Writes over a sector that was filled earlier.
  void Rewrite(std::uint32_t sector, ByteView bytes);
  // Puts everything on disk and closes the open file.
  void Finish();

 private:
  Random* files_;
  std::string baseName_;
  bool dryRun_;
  std::uint32_t totalSectors_ = 0;
  std::uint32_t fileSectors_ = 0;
  int fileNumber_ = 1;
};

}  // namespace quorvelant
