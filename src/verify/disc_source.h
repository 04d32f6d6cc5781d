// A finished disc to read from: a folder, or an image.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/disk.h"
#include "verify/disc_finding.h"

namespace quorvelant {

// A file of VIDEO_TS.
struct DiscSourceFile {
  std::string Name;
  std::uint64_t Size = 0;                         // bytes
  std::optional<std::uint32_t> FirstSector = {};  // of an image
};

// Reads files of a disc, for one thread.
class DiscReader {
 public:
  DiscReader() = default;
  DiscReader(const DiscReader&) = delete;
  DiscReader& operator=(const DiscReader&) = delete;
  virtual ~DiscReader() = default;

  // Reads from byte `offset` of a file; returns the bytes read, fewer only at its end. Raises FileError.
  virtual std::size_t Read(const DiscSourceFile& file, std::uint64_t offset, ByteSpan target) = 0;
};

// What the system says of a read that failed, without the file's name.
[[nodiscard]] std::string WhyUnread(const FileError& error);

class DiscSource {
 public:
  DiscSource() = default;
  DiscSource(const DiscSource&) = delete;
  DiscSource& operator=(const DiscSource&) = delete;
  virtual ~DiscSource() = default;

  // By name.
  [[nodiscard]] const std::vector<DiscSourceFile>& Files() const { return files_; }
  [[nodiscard]] const DiscSourceFile* Find(const std::string& name) const;
  // Independent of others, and of the source, which may go before it. Raises FileError.
  [[nodiscard]] virtual std::unique_ptr<DiscReader> NewReader() const = 0;

 protected:
  void SetFiles(std::vector<DiscSourceFile> files);

 private:
  std::vector<DiscSourceFile> files_;
};

// Opens what `path` is: a VIDEO_TS folder, a folder that holds one, or an image. An image that cannot be
// understood has no files, and `findings` says why. Raises FileError for what cannot be opened or read.
[[nodiscard]] std::unique_ptr<DiscSource> OpenDisc(const std::string& path, DiscFindings& findings,
                                                   Disk& disk = SystemDisk());

// Whether a file begins as an image does, whatever its name. False for what cannot be read.
[[nodiscard]] bool IsImage(const std::string& path, Disk& disk = SystemDisk());

}  // namespace quorvelant
