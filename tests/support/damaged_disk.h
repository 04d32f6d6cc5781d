// The system's disk where one file is damaged: for what must be read to its end all the same.
#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "base/disk.h"

namespace quorvelant {

struct Damage {
  const char* File;  // its name, without a folder
  bool Opens = true;
  std::uint64_t From = 0;  // bytes that no read gives
  std::uint64_t To = 0;
  std::uint64_t End = UINT64_MAX;  // the file ends there once it is read, whatever size it had
};

class DamagedDisk : public Disk {
 public:
  explicit DamagedDisk(Damage damage) : damage_(std::move(damage)) {}

  std::unique_ptr<File> Open(const std::string& path, FileAccess access) override {
    const bool isHere = std::filesystem::path(path).filename() == damage_.File;
    if (isHere && !damage_.Opens) {
      throw FileError(FileError::OpenNumber, "Error opening '" + path + "'.", EACCES);
    }
    std::unique_ptr<File> file = SystemDisk().Open(path, access);
    return isHere ? std::make_unique<DamagedFile>(damage_, std::move(file)) : std::move(file);
  }
  FileKind KindOf(const std::string& path) override { return SystemDisk().KindOf(path); }
  int Rename(const std::string& from, const std::string& to) override {
    return SystemDisk().Rename(from, to);
  }
  int Remove(const std::string& path) override { return SystemDisk().Remove(path); }

 private:
  class DamagedFile : public File {
   public:
    DamagedFile(const Damage& damage, std::unique_ptr<File> file)
        : File(file->Path()), damage_(damage), file_(std::move(file)) {}
    int Handle() const override { return file_->Handle(); }
    std::uint64_t ByteCount() const override { return file_->ByteCount(); }
    std::size_t Read(ByteSpan target) override {
      const std::uint64_t end = at_ + target.size();
      if (at_ < damage_.To && end > damage_.From) {
        at_ = UINT64_MAX / 2;  // wherever the system stopped
        throw FileError(FileError::UnknownNumber, "Error reading '" + Path() + "'.", EIO);
      }
      const std::uint64_t left = at_ < damage_.End ? damage_.End - at_ : 0;
      const std::size_t count = file_->Read(target.first(std::min<std::uint64_t>(left, target.size())));
      at_ += count;
      return count;
    }
    void Write(ByteView bytes) override { file_->Write(bytes); }
    void Seek(std::uint64_t position) override {
      at_ = position;
      file_->Seek(position);
    }
    void Skip(std::int64_t offset) override {
      at_ += static_cast<std::uint64_t>(offset);
      file_->Skip(offset);
    }
    void Flush() override { file_->Flush(); }
    void Close() override { file_->Close(); }

   private:
    const Damage& damage_;
    std::unique_ptr<File> file_;
    std::uint64_t at_ = 0;
  };

  Damage damage_;
};

}  // namespace quorvelant
