// Any bytes as video: attributes, probe and index. The index is the same for every block size, and its text
// reads back equal.
#include "analysis/container_sniff.h"
#include "analysis/disc_fit.h"
#include "analysis/header_walk.h"
#include "analysis/picture_index.h"
#include "analysis/video_probe.h"
#include "memory_file.h"

namespace {

using namespace quorvelant;

std::optional<PictureIndex> Scan(const std::string& path, std::size_t blockBytes, UserInterface& ui) {
  Random files(ui);
  files.DimFiles(0);
  if (!files.OpenSource(path, 0)) {
    std::abort();
  }
  return ScanPictures(files, 0, {.WantLetters = true, .BlockBytes = blockBytes}, ui);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  SilentUi ui;
  const MemoryFile file(data, byteCount);
  const auto index = Scan(file.Path(), 0, ui);
  const auto small = Scan(file.Path(), 17, ui);
  if (!index || *index != *small || ReadPictureIndex(WritePictureIndex(*index)).Entries != index->Entries) {
    std::abort();
  }
  ReadPictureIndex({reinterpret_cast<const char*>(data), byteCount});
  GetVideoInfo(file.Path(), false, ui);
  SniffSource({data, byteCount});
  const auto probe = ProbeVideo(file.Path(), ui);
  if (!probe) {
    std::abort();
  }
  JudgeVideo(*probe);
  return 0;
}
