// The system's disk, full at a chosen write: for runs that must leave nothing half done.
#pragma once

#include <atomic>
#include <cerrno>
#include <memory>
#include <string>
#include <utility>

#include "base/disk.h"

namespace quorvelant {

// The write number `failing`, counted from 1 over all files, and every one after it fails with `code`. A
// flush and a close count as writes: some disks tell only then.
class FaultyDisk : public Disk {
 public:
  explicit FaultyDisk(int failing, int code = ENOSPC) : failing_(failing), code_(code) {}

  int Writes() const { return writes_; }

  std::unique_ptr<File> Open(const std::string& path, FileAccess access) override {
    return std::make_unique<FaultyFile>(*this, SystemDisk().Open(path, access));
  }
  FileKind KindOf(const std::string& path) override { return SystemDisk().KindOf(path); }
  int Rename(const std::string& from, const std::string& to) override {
    return SystemDisk().Rename(from, to);
  }
  int Remove(const std::string& path) override { return SystemDisk().Remove(path); }

 private:
  class FaultyFile : public File {
   public:
    FaultyFile(FaultyDisk& disk, std::unique_ptr<File> file)
        : File(file->Path()), disk_(&disk), file_(std::move(file)) {}
    int Handle() const override { return file_->Handle(); }
    std::uint64_t ByteCount() const override { return file_->ByteCount(); }
    std::size_t Read(ByteSpan target) override { return file_->Read(target); }
    void Write(ByteView bytes) override {
      Count();
      file_->Write(bytes);
    }
    void Seek(std::uint64_t position) override { file_->Seek(position); }
    void Skip(std::int64_t offset) override { file_->Skip(offset); }
    void Flush() override {
      Count();
      file_->Flush();
    }
    void Close() override {
      Count();
      file_->Close();
    }

   private:
    void Count() {
      if (++disk_->writes_ >= disk_->failing_) {
        throw FileError(FileError::UnknownNumber, "Error writing '" + Path() + "'.", disk_->code_);
      }
    }
    FaultyDisk* disk_;
    std::unique_ptr<File> file_;
  };

  int failing_;
  int code_;
  std::atomic<int> writes_{0};
};

}  // namespace quorvelant
