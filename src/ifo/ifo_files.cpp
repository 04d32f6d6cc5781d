#include "ifo/ifo_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace quorvelant {
namespace {

constexpr int SourceSlot = 0;
constexpr int OutputSlot = 1;
constexpr std::string_view NotOpenedLine = "The file '{}' could not be opened.";

[[noreturn]] void NotOpened(const std::string& path) {
  throw FileError(FileError::OpenNumber, fmt::format(NotOpenedLine, path));
}

void WriteWhole(const std::string& path, ByteView bytes, Random& files) {
  std::error_code notThere;
  std::filesystem::remove(path, notThere);
  if (!files.OpenFile(path, OutputSlot)) {
    NotOpened(path);
  }
  files.WriteBytes(bytes);
  files.CloseFile(OutputSlot);
}

}  // namespace

std::vector<DiscFile> ListFiles(const std::string& folder) {
  std::vector<DiscFile> files;
  std::error_code failed;
  for (const auto& entry : std::filesystem::directory_iterator(folder, failed)) {
    std::error_code unreadable;
    if (entry.is_regular_file(unreadable)) {
      files.push_back({entry.path().filename().string(), entry.file_size(unreadable)});
    }
  }
  std::ranges::sort(files, {}, &DiscFile::Name);
  return files;
}

Bytes ReadWhole(const std::string& path, Random& files) {
  if (!files.OpenSource(path, SourceSlot)) {
    NotOpened(path);
  }
  Bytes bytes = files.ReadBytes(static_cast<std::size_t>(files.FileBytes(SourceSlot)), SourceSlot);
  files.CloseFile(SourceSlot);
  return bytes;
}

void WriteIfoAndBackup(const std::string& base, ByteView ifo, Random& files) {
  WriteWhole(base + ".IFO", ifo, files);
  WriteWhole(base + ".BUP", ifo, files);
}

}  // namespace quorvelant
