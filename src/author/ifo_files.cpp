#include "author/ifo_files.h"

#include <filesystem>

#include "disc/disc_files.h"

namespace quorvelant {
namespace {

constexpr int OutputSlot = 1;

void WriteWhole(const std::string& path, ByteView bytes, Random& files) {
  std::error_code notThere;
  std::filesystem::remove(path, notThere);
  if (!files.OpenFile(path, OutputSlot)) {
    throw NotOpened(path);
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
