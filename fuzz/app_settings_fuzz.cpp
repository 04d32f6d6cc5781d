// Any bytes as a settings file: what is read is in range, and reads back the same once it was written.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "desk/settings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;
  const std::string_view text(reinterpret_cast<const char*>(data), byteCount);
  const Settings settings = ParseSettings(text);
  const bool inRange = settings.PalChapters > 0 && settings.NtscChapters > 0 &&
                       settings.PalSlideDuration > 0 && settings.NtscSlideDuration > 0 &&
                       !settings.SeamlessPGC;
  if (!inRange || ParseSettings(SettingsText(settings)) != settings) {
    std::abort();
  }
  return 0;
}
