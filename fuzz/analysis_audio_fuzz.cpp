// Any bytes as AC3, DTS and WAV, by both sets of rules.
#include "analysis/disc_fit.h"
#include "analysis/quick_scan.h"
#include "memory_file.h"
#include "picture/bitmap_size.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;
  SilentUi ui;
  const MemoryFile file(data, byteCount);
  for (const std::string_view format : {"AC3", "DTS", "PCM"}) {
    for (const Rules& rules : {Rules::Classic, Rules::Players}) {
      const auto audio = QuickScanAudio(file.Path(), format, rules, ui);
      if (!audio || audio->DataBytes > byteCount || audio->DataOffset > byteCount) {
        std::abort();
      }
      JudgeAudio(*audio);
      if (audio->Seconds() < 0) {
        std::abort();
      }
    }
  }
  ReadBitmapSize(file.Path());
  return 0;
}
