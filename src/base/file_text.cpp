#include "base/file_text.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

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

}  // namespace

int WriteAside(const std::string& path, std::string_view content, Disk& disk) {
  const std::string target = TargetOf(path);
  // The process id keeps two runs over one folder apart.
  const std::string aside = fmt::format("{}.{}.part", target, getpid());
  int refusal = 0;
  try {
    const auto file = disk.Open(aside, FileAccess::Create);
    file->Write({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
    file->Close();
    refusal = disk.Rename(aside, target);
  } catch (const FileError& error) {
    refusal = error.SystemCode;
  }
  if (refusal != 0) {
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
