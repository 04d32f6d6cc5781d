#include "author/ifo_files.h"

#include "disc/disc_files.h"

namespace quorvelant {
namespace {

void WriteWhole(const std::string& path, ByteView bytes, Random& files) {
  if (!files.CreateFile(path, slot::Output)) {
    throw NotOpened(path);
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
