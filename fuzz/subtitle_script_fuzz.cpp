// Subtitle scripts: any bytes, in both modes.
#include <cstdint>
#include <string_view>

#include "subtitle/subtitle_script.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  const std::string_view text(reinterpret_cast<const char*>(data), byteCount);
  for (const bool ripped : {false, true}) {
    const auto script = quorvelant::ParseSubtitleScript(
        text, {.SubRipMode = ripped, .FramesPerSecond = ripped ? 30 : 25, .UnitsMayBeForced = true});
    if (script.PaletteColors.size() > 16 || script.Entries.size() > byteCount) {
      __builtin_trap();
    }
  }
  return 0;
}
