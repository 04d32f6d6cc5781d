#include "base/file_text.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "base/fresh_name.h"

namespace quorvelant {

namespace {

std::string TargetOf(const std::string& path) {
  std::error_code missing;
  const std::filesystem::path target = std::filesystem::canonical(path, missing);
  return missing ? path : target.string();
}

// As many of the file's first bytes as `wanted` says for its size; nothing where it says nothing.
template <class Wanted>
std::optional<std::string> Read(const std::string& path, Wanted wanted) {
  try {
    const auto file = SystemDisk().Open(path, FileAccess::Read);
    const std::optional<std::uint64_t> bytes = wanted(file->ByteCount());
    if (!bytes) {
      return std::nullopt;
    }
    std::string content(static_cast<std::size_t>(*bytes), '\0');
    content.resize(file->Read({reinterpret_cast<std::uint8_t*>(content.data()), content.size()}));
    return content;
  } catch (const FileError&) {
    return std::nullopt;
  }
}

// 0 where a file may stand at the path or stand there instead.
int WhyNotReplaced(FileKind kind) {
  return kind == FileKind::Folder ? EISDIR : kind == FileKind::Special ? ENOTSUP : 0;
}

// A new file beside `target`. Raises FileError.
std::unique_ptr<File> OpenBeside(const std::string& target, Disk& disk) {
  constexpr int MostTries = 16;
  for (int left = MostTries;; --left) {
    try {
      return disk.Open(FreshName(target + ".") + ".part", FileAccess::New);
    } catch (const FileError& error) {
      if (error.SystemCode != EEXIST || left == 0) {
        throw;
      }
    }
  }
}

void Fill(File& file, std::string_view content, const std::string& modeOf) {
  struct stat former {};
  if (stat(modeOf.c_str(), &former) == 0) {
    fchmod(file.Handle(), former.st_mode & ALLPERMS);
  }
  file.Write({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
  file.Flush();
  file.Close();
}

}  // namespace

int WriteAside(const std::string& path, std::string_view content, Disk& disk) {
  const std::string target = TargetOf(path);
  if (const int refusal = WhyNotReplaced(disk.KindOf(target)); refusal != 0) {
    return refusal;
  }
  std::string aside;
  int refusal = 0;
  try {
    const auto file = OpenBeside(target, disk);
    aside = file->Path();
    Fill(*file, content, target);
    refusal = disk.Rename(aside, target);
  } catch (const FileError& error) {
    refusal = error.SystemCode;
  }
  if (refusal != 0 && !aside.empty()) {
    disk.Remove(aside);
  }
  return refusal;
}

std::optional<std::string> ReadWhole(const std::string& path, std::uint64_t mostBytes) {
  return Read(path, [mostBytes](std::uint64_t bytes) {
    return bytes > mostBytes ? std::nullopt : std::optional(bytes);
  });
}

std::optional<std::string> ReadHead(const std::string& path, std::uint64_t mostBytes) {
  return Read(path, [mostBytes](std::uint64_t bytes) { return std::optional(std::min(bytes, mostBytes)); });
}

std::string_view WhyNotPlainFile(const std::string& path) {
  switch (SystemDisk().KindOf(path)) {
    case FileKind::Plain:
      return {};
    case FileKind::Folder:
      return "it is a folder, not a file";
    case FileKind::Special:
      return "it is a pipe or a device, not a file";
    case FileKind::Missing:
      return "there is no such file";
    case FileKind::Unreachable:
      break;
  }
  return "it cannot be reached";
}

}  // namespace quorvelant
