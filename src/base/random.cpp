#include "base/random.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "base/messages.h"
#include "base/text.h"
#include "base/uint64.h"

namespace quorvelant {

namespace {

// A tenth of a second of a disk's work: far less than the system lets pile up by itself.
constexpr std::uint64_t WriteBackBytes = std::uint64_t{16} << 20;

constexpr std::string_view AlreadyOpenLine = "The file '{}' is already open.";
constexpr std::string_view NoFileLine = "There is no open file.";
constexpr std::string_view SeekLine = "Seek Error.";
constexpr std::string_view OutsideLine = "The bytes to write lie outside their block.";

}  // namespace

void Random::DimFiles(int count) {
  slots_.assign(static_cast<std::size_t>(std::max(count, 0)) + 1, Slot{});
}

int Random::FileHandle(int slot) const {
  const Slot& wanted = slots_.at(static_cast<std::size_t>(slot));
  return wanted.Open ? wanted.Open->Handle() : -1;
}

const std::string& Random::FileName(int slot) const {
  static const std::string none;
  const Slot& wanted = slots_.at(static_cast<std::size_t>(slot));
  return wanted.Open ? wanted.Open->Path() : none;
}

bool Random::IsOpen(int slot) const {
  const auto index = static_cast<std::size_t>(slot);
  return slot >= 0 && index < slots_.size() && slots_[index].Open != nullptr;
}

File& Random::OpenSlot(int slot) const {
  if (!IsOpen(slot)) {
    throw FileError(FileError::NoFileNumber, std::string(NoFileLine));
  }
  return *slots_[static_cast<std::size_t>(slot)].Open;
}

Random::Slot& Random::ClosedSlot(int slot) {
  Slot& wanted = slots_.at(static_cast<std::size_t>(slot));
  if (wanted.Open) {
    throw FileError(FileError::AlreadyOpenNumber, fmt::format(AlreadyOpenLine, wanted.Open->Path()));
  }
  return wanted;
}

std::shared_ptr<File> Random::TryOpen(const std::string& path, FileAccess access, bool& final) {
  const FileKind kind = disk_->KindOf(path);
  if (kind == FileKind::Folder || kind == FileKind::Special) {
    final = true;
    const std::string_view what = kind == FileKind::Folder ? "a folder" : "a pipe or a device";
    ui_->Tell(MessageOf(message::OpenNotPlain, {}, path, what));
    return nullptr;
  }
  try {
    return disk_->Open(path, access);
  } catch (const FileError&) {
    return nullptr;
  }
}

bool Random::Open(const std::string& name, int slot, FileAccess access, bool flushEachWrite) {
  Slot& wanted = ClosedSlot(slot);
  const std::string path = SystemPath(name);
  bool final = false;
  auto file = TryOpen(path, access, final);
  const MessageKind& retry = message::OpenRetry;
  if (!file && !final && ui_->Ask(retry.Title, fmt::format(fmt::runtime(retry.Text), path), false)) {
    file = TryOpen(path, access, final);
  }
  wanted = {std::move(file), flushEachWrite};
  return wanted.Open != nullptr;
}

bool Random::OpenFile(const std::string& name, int slot, bool flushEachWrite) {
  Slot& wanted = ClosedSlot(slot);
  const std::string path = SystemPath(name);
  for (const Slot& other : slots_) {
    if (other.Open && other.Open->Path() == path) {
      wanted = {other.Open, flushEachWrite};
      return true;
    }
  }
  return Open(name, slot, FileAccess::ReadWrite, flushEachWrite);
}

bool Random::OpenSource(const std::string& name, int slot) {
  return Open(name, slot, FileAccess::Read, false);
}

bool Random::CreateFile(const std::string& name, int slot) {
  return Open(name, slot, FileAccess::Create, false);
}

void Random::CloseFile(int slot) {
  if (!IsOpen(slot)) {
    return;
  }
  const std::shared_ptr<File> file = slots_[static_cast<std::size_t>(slot)].Open;
  for (Slot& sharing : slots_) {
    if (sharing.Open == file) {
      sharing = {};
    }
  }
  file->Close();
}

void Random::AbandonFile(int slot) noexcept {
  try {
    CloseFile(slot);
  } catch (const FileError&) {  // NOLINT(bugprone-empty-catch): nobody needs the file any more
  }
}

void Random::CloseAllFiles() {
  std::ranges::fill(slots_, Slot{});
}

std::uint64_t Random::FileBytes(int slot) const {
  return OpenSlot(slot).ByteCount();
}

std::size_t Random::ReadInto(ByteSpan target, int slot) {
  return OpenSlot(slot).Read(target);
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
  File& file = OpenSlot(slot::Output);
  if (position > 0) {
    file.Seek(position);
  }
  file.Write(bytes);
  if (slots_[slot::Output].FlushEachWrite) {
    file.Flush();
  }
  unasked_ += bytes.size();
  if (writeBackEarly_ && unasked_ >= WriteBackBytes) {
    unasked_ = 0;
    file.StartWriteBack();
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
  OpenSlot(slot).Flush();
}

void Random::SeekAbsolute(std::uint64_t position, int slot) {
  OpenSlot(slot).Seek(position);
}

void Random::SeekAbsolute(std::int32_t upper, std::int32_t lower, int slot) {
  SeekAbsolute(cUInt64(upper, lower).Value(), slot);
}

void Random::SeekRelative(std::int64_t offset, int slot, bool allowBackward) {
  File& file = OpenSlot(slot);
  if (offset < 0 && !allowBackward) {
    throw FileError(FileError::SeekNumber, std::string(SeekLine), EINVAL);
  }
  file.Skip(offset);
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
