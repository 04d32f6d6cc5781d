#include "author/ifo_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace quorvelant {
namespace {

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

void WriteIfoAndBackup(const std::string& base, ByteView ifo, Random& files) {
  WriteWhole(base + ".IFO", ifo, files);
  WriteWhole(base + ".BUP", ifo, files);
}

}  // namespace quorvelant
