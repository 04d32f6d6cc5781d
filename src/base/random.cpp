#include "base/random.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>

#include "base/text.h"
#include "base/uint64.h"

namespace quorvelant {

namespace {

constexpr int OutputSlot = 1;

constexpr std::string_view OpenTitle = "OpenFile Error";
constexpr std::string_view RetryText =
    "Unable to open file {}. Please close any applications using this file and press OK to retry (Cancel to "
    "exit)";
constexpr std::string_view NotPlainText = "Unable to open file {}: it is {}, not a file";

constexpr std::string_view AlreadyOpenLine = "The file '{}' is already open.";
constexpr std::string_view NoFileLine = "There is no open file.";
constexpr std::string_view SeekLine = "Seek Error.";
constexpr std::string_view SeekLineNamed = "Seek Error in '{}'.";
constexpr std::string_view ReadLine = "Error reading '{}'.";
constexpr std::string_view WriteLine = "Error writing '{}'.";
constexpr std::string_view OutsideLine = "The bytes to write lie outside their block.";

std::string SystemText(int code) {
  return code == 0 ? "Unknown Error." : std::generic_category().message(code);
}

std::string FullText(const std::string& line, int systemCode) {
  return systemCode == 0 ? line : fmt::format("Error \n{}\n{}\n{}", systemCode, SystemText(systemCode), line);
}

}  // namespace

FileError::FileError(int number, const std::string& line, int systemCode)
    : std::runtime_error(FullText(line, systemCode)), Number(number), SystemCode(systemCode), Line(line) {}

std::string FileError::OneLine() const {
  if (SystemCode == 0) {
    return Line;
  }
  return fmt::format("{}: {}", Line.substr(0, Line.find_last_not_of('.') + 1), SystemText(SystemCode));
}

Random::~Random() {
  CloseAllFiles();
}

void Random::DimFiles(int count) {
  CloseAllFiles();
  slots_.assign(static_cast<std::size_t>(std::max(count, 0)) + 1, Slot{});
}

int Random::FileHandle(int slot) const {
  return slots_.at(static_cast<std::size_t>(slot)).Handle;
}

const std::string& Random::FileName(int slot) const {
  return slots_.at(static_cast<std::size_t>(slot)).Name;
}

bool Random::IsOpen(int slot) const {
  const auto index = static_cast<std::size_t>(slot);
  return slot >= 0 && index < slots_.size() && slots_[index].Handle >= 0;
}

const Random::Slot& Random::OpenSlot(int slot) const {
  if (!IsOpen(slot)) {
    throw FileError(FileError::NoFileNumber, std::string(NoFileLine));
  }
  return slots_[static_cast<std::size_t>(slot)];
}

Random::Slot& Random::ClosedSlot(int slot) {
  Slot& wanted = slots_.at(static_cast<std::size_t>(slot));
  if (wanted.Handle >= 0) {
    throw FileError(FileError::AlreadyOpenNumber, fmt::format(AlreadyOpenLine, wanted.Name));
  }
  return wanted;
}

int Random::OpenPlainFile(const std::string& path, Access access, bool& told) {
  // O_NONBLOCK: a FIFO without a writer must not hold the program before it is refused.
  const int flags = (access == Access::Read ? O_RDONLY : O_RDWR | O_CREAT) | O_CLOEXEC | O_NONBLOCK;
  int handle = -1;
  do {
    handle = open(path.c_str(), flags, 0666);
  } while (handle < 0 && errno == EINTR);
  const int refusal = handle < 0 ? errno : 0;
  struct stat status {};
  const bool known = handle >= 0 ? fstat(handle, &status) == 0 : stat(path.c_str(), &status) == 0;
  if (known && !S_ISREG(status.st_mode)) {
    told = true;
    const std::string_view kind = S_ISDIR(status.st_mode) ? "a folder" : "a pipe or a device";
    TellError(*ui_, OpenTitle, fmt::format(NotPlainText, path, kind));
    if (handle >= 0) {
      close(handle);
    }
    return -1;
  }
  errno = refusal;
  return handle;
}

bool Random::Open(const std::string& name, int slot, Access access, bool flushEachWrite) {
  Slot& wanted = ClosedSlot(slot);
  const std::string path = SystemPath(name);
  bool told = false;
  int handle = OpenPlainFile(path, access, told);
  if (handle < 0 && !told && ui_->Ask(OpenTitle, fmt::format(RetryText, path), false)) {
    handle = OpenPlainFile(path, access, told);
  }
  if (handle < 0) {
    return false;
  }
  if (access == Access::Read) {
    posix_fadvise(handle, 0, 0, POSIX_FADV_SEQUENTIAL);  // a hint: its failure costs nothing
  }
  wanted = {handle, path, flushEachWrite};
  return true;
}

bool Random::OpenFile(const std::string& name, int slot, bool flushEachWrite) {
  Slot& wanted = ClosedSlot(slot);
  const std::string path = SystemPath(name);
  for (const Slot& other : slots_) {
    if (other.Handle >= 0 && other.Name == path) {
      wanted = {other.Handle, path, flushEachWrite};
      return true;
    }
  }
  return Open(name, slot, Access::ReadWrite, flushEachWrite);
}

bool Random::OpenSource(const std::string& name, int slot) {
  return Open(name, slot, Access::Read, false);
}

void Random::CloseFile(int slot) {
  if (!IsOpen(slot)) {
    return;
  }
  const int handle = slots_[static_cast<std::size_t>(slot)].Handle;
  close(handle);
  for (Slot& sharing : slots_) {
    if (sharing.Handle == handle) {
      sharing = {};
    }
  }
}

void Random::CloseAllFiles() {
  for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
    CloseFile(static_cast<int>(slot));
  }
}

std::uint64_t Random::FileBytes(int slot) const {
  const Slot& file = OpenSlot(slot);
  struct stat status {};
  if (fstat(file.Handle, &status) != 0) {
    throw FileError(FileError::UnknownNumber, fmt::format(ReadLine, file.Name), errno);
  }
  return static_cast<std::uint64_t>(status.st_size);
}

std::size_t Random::ReadInto(ByteSpan target, int slot) {
  const Slot& file = OpenSlot(slot);
  std::size_t done = 0;
  while (done < target.size()) {
    const ssize_t got = read(file.Handle, target.data() + done, target.size() - done);
    if (got == 0) {
      break;
    }
    if (got > 0) {
      done += static_cast<std::size_t>(got);
    } else if (errno != EINTR) {
      throw FileError(FileError::UnknownNumber, fmt::format(ReadLine, file.Name), errno);
    }
  }
  return done;
}

Bytes Random::ReadBytes(std::size_t count, int slot) {
  Bytes bytes(count);
  ReadInto(bytes, slot);
  return bytes;
}

std::vector<std::uint16_t> Random::ReadPCMBytes(std::size_t count, int slot) {
  const Bytes bytes = ReadBytes(count, slot);
  std::vector<std::uint16_t> words(count);
  for (std::size_t i = 0; i < count / 2; ++i) {
    words[i] = static_cast<std::uint16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
  }
  return words;
}

void Random::WriteBytes(ByteView bytes, std::uint64_t position) {
  const Slot& file = OpenSlot(OutputSlot);
  if (position > 0) {
    SeekAbsolute(position, OutputSlot);
  }
  while (!bytes.empty()) {
    const ssize_t put = write(file.Handle, bytes.data(), bytes.size());
    if (put > 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(put));
    } else if (put == 0 || errno != EINTR) {
      throw FileError(FileError::UnknownNumber, fmt::format(WriteLine, file.Name), put == 0 ? ENOSPC : errno);
    }
  }
  if (file.FlushEachWrite) {
    Flush(OutputSlot);
  }
}

void Random::WritePCMBytes(const std::vector<std::uint16_t>& words, std::uint64_t position) {
  Bytes bytes;
  bytes.reserve(words.size() * 2);
  for (const std::uint16_t word : words) {
    bytes.push_back(static_cast<std::uint8_t>(word));
    bytes.push_back(static_cast<std::uint8_t>(word >> 8));
  }
  WriteBytes(bytes, position);
}

void Random::WriteSpecifiedBytes(ByteView block, std::size_t count, std::size_t start) {
  if (start > block.size() || count > block.size() - start) {
    throw FileError(FileError::UnknownNumber, std::string(OutsideLine));
  }
  WriteBytes(block.subspan(start, count));
}

void Random::Flush(int slot) {
  const Slot& file = OpenSlot(slot);
  while (fsync(file.Handle) != 0) {
    if (errno != EINTR) {
      throw FileError(FileError::UnknownNumber, fmt::format(WriteLine, file.Name), errno);
    }
  }
}

void Random::SeekAbsolute(std::uint64_t position, int slot) {
  const Slot& file = OpenSlot(slot);
  const bool fits = position <= static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
  if (!fits || lseek(file.Handle, static_cast<off_t>(position), SEEK_SET) < 0) {
    throw FileError(FileError::SeekNumber, fmt::format(SeekLineNamed, file.Name), fits ? errno : EOVERFLOW);
  }
}

void Random::SeekAbsolute(std::int32_t upper, std::int32_t lower, int slot) {
  SeekAbsolute(cUInt64(upper, lower).Value(), slot);
}

void Random::SeekRelative(std::int64_t offset, int slot, bool allowBackward) {
  const Slot& file = OpenSlot(slot);
  if (offset < 0 && !allowBackward) {
    throw FileError(FileError::SeekNumber, std::string(SeekLine), EINVAL);
  }
  if (lseek(file.Handle, offset, SEEK_CUR) < 0) {
    throw FileError(FileError::SeekNumber, std::string(SeekLine), errno);
  }
}

std::string SystemPath(std::string_view scriptPath, std::string_view folder) {
  std::string path = Replace(scriptPath, "\\", "/");
  const bool drive = path.size() >= 2 && path[1] == ':' &&
                     ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
  if (path.empty() || folder.empty() || path.front() == '/' || drive) {
    return path;
  }
  std::string base = Replace(folder, "\\", "/");
  if (base.back() != '/') {
    base += '/';
  }
  return base + path;
}

}  // namespace quorvelant
