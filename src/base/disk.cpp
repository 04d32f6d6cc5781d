#include "base/disk.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <limits>
#include <system_error>

namespace quorvelant {

namespace {

constexpr std::string_view OpenLine = "Error opening '{}'.";
constexpr std::string_view SeekLine = "Seek Error.";
constexpr std::string_view SeekLineNamed = "Seek Error in '{}'.";
constexpr std::string_view ReadLine = "Error reading '{}'.";
constexpr std::string_view WriteLine = "Error writing '{}'.";

std::string SystemText(int code) {
  return code == 0 ? "Unknown Error." : std::generic_category().message(code);
}

std::string FullText(const std::string& line, int systemCode) {
  return systemCode == 0 ? line : fmt::format("Error \n{}\n{}\n{}", systemCode, SystemText(systemCode), line);
}

class SystemFile : public File {
 public:
  SystemFile(std::string path, int handle) : File(std::move(path)), handle_(handle) {}
  SystemFile(const SystemFile&) = delete;
  SystemFile& operator=(const SystemFile&) = delete;
  ~SystemFile() override {
    if (handle_ >= 0) {
      close(handle_);
    }
  }

  int Handle() const override { return handle_; }

  std::uint64_t ByteCount() const override {
    struct stat status {};
    if (fstat(handle_, &status) != 0) {
      Fail(ReadLine, errno);
    }
    return static_cast<std::uint64_t>(status.st_size);
  }

  std::size_t Read(ByteSpan target) override {
    std::size_t done = 0;
    while (done < target.size()) {
      const ssize_t got = read(handle_, target.data() + done, target.size() - done);
      if (got == 0) {
        break;
      }
      if (got > 0) {
        done += static_cast<std::size_t>(got);
      } else if (errno != EINTR) {
        Fail(ReadLine, errno);
      }
    }
    return done;
  }

  void Write(ByteView bytes) override {
    while (!bytes.empty()) {
      const ssize_t put = write(handle_, bytes.data(), bytes.size());
      if (put > 0) {
        bytes = bytes.subspan(static_cast<std::size_t>(put));
      } else if (put == 0 || errno != EINTR) {
        Fail(WriteLine, put == 0 ? ENOSPC : errno);
      }
    }
  }

  void Seek(std::uint64_t position) override {
    const bool fits = position <= static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
    if (!fits || lseek(handle_, static_cast<off_t>(position), SEEK_SET) < 0) {
      throw FileError(FileError::SeekNumber, fmt::format(SeekLineNamed, Path()), fits ? errno : EOVERFLOW);
    }
  }

  void Skip(std::int64_t offset) override {
    if (lseek(handle_, offset, SEEK_CUR) < 0) {
      throw FileError(FileError::SeekNumber, std::string(SeekLine), errno);
    }
  }

  void Flush() override {
    while (fsync(handle_) != 0) {
      if (errno != EINTR) {
        Fail(WriteLine, errno);
      }
    }
  }

  void StartWriteBack() override { sync_file_range(handle_, 0, 0, SYNC_FILE_RANGE_WRITE); }

  void Close() override {
    if (close(std::exchange(handle_, -1)) != 0 && errno != EINTR) {
      Fail(WriteLine, errno);
    }
  }

 private:
  [[noreturn]] void Fail(std::string_view line, int code) const {
    throw FileError(FileError::UnknownNumber, fmt::format(fmt::runtime(line), Path()), code);
  }

  int handle_;
};

int FlagsOf(FileAccess access) {
  switch (access) {
    case FileAccess::Read:
      return O_RDONLY;
    case FileAccess::ReadWrite:
      return O_RDWR | O_CREAT;
    case FileAccess::Create:
    case FileAccess::New:
      break;
  }
  return O_RDWR | O_CREAT | O_EXCL;
}

FileKind KindOfMode(mode_t mode) {
  return S_ISREG(mode) ? FileKind::Plain : S_ISDIR(mode) ? FileKind::Folder : FileKind::Special;
}

class TheDisk : public Disk {
 public:
  std::unique_ptr<File> Open(const std::string& path, FileAccess access) override {
    if (access == FileAccess::Create) {
      Remove(path);
    }
    int handle = -1;
    do {  // O_NONBLOCK: a FIFO without a writer must not hold the program before it is refused
      handle = open(path.c_str(), FlagsOf(access) | O_CLOEXEC | O_NONBLOCK, 0666);
    } while (handle < 0 && errno == EINTR);
    if (handle < 0) {
      throw FileError(FileError::OpenNumber, fmt::format(OpenLine, path), errno);
    }
    auto file = std::make_unique<SystemFile>(path, handle);
    struct stat status {};
    if (fstat(handle, &status) == 0 && KindOfMode(status.st_mode) != FileKind::Plain) {
      throw FileError(FileError::OpenNumber, fmt::format(OpenLine, path),
                      S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    if (access == FileAccess::Read) {
      posix_fadvise(handle, 0, 0, POSIX_FADV_SEQUENTIAL);  // a hint: its failure costs nothing
    }
    return file;
  }

  FileKind KindOf(const std::string& path) override {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
      return KindOfMode(status.st_mode);
    }
    return errno == ENOENT || errno == ENOTDIR ? FileKind::Missing : FileKind::Unreachable;
  }

  int Rename(const std::string& from, const std::string& to) override {
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
  }

  int Remove(const std::string& path) override { return unlink(path.c_str()) == 0 ? 0 : errno; }
};

}  // namespace

FileError::FileError(int number, const std::string& line, int systemCode)
    : std::runtime_error(FullText(line, systemCode)), Number(number), SystemCode(systemCode), Line(line) {}

std::string FileError::OneLine() const {
  if (SystemCode == 0) {
    return Line;
  }
  return fmt::format("{}: {}", Line.substr(0, Line.find_last_not_of('.') + 1), SystemText(SystemCode));
}

Disk& SystemDisk() {
  static TheDisk disk;
  return disk;
}

}  // namespace quorvelant
