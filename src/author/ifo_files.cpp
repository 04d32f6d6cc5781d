#include "author/ifo_files.h"

#include <fmt/format.h>

namespace quorvelant {
namespace {

constexpr std::string_view NotOpenedLine = "The file '{}' could not be opened.";

[[noreturn]] void NotOpened(const std::string& path) {
  throw FileError(FileError::OpenNumber, fmt::format(NotOpenedLine, path));
}

void WriteWhole(const std::string& path, ByteView bytes, Random& files) {
  if (!files.CreateFile(path, slot::Output)) {
    NotOpened(path);
  }
  files.WriteBytes(bytes);
  files.CloseFile(slot::Output);
}

}  // namespace

void WriteIfoAndBackup(const std::string& base, ByteView ifo, Random& files) {
  WriteWhole(base + ".IFO", ifo, files);
  WriteWhole(base + ".BUP", ifo, files);
}

}  // namespace quorvelant
