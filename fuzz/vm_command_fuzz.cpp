// Any bytes as a command text, and as the eight bytes of a command.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "vm/check_commands.h"
#include "vm/decoder.h"
#include "vm/references.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;
  const std::string text(data, data + byteCount);
  const ResolveOptions numeric{.Numbers = NumericTargets::First};
  const Resolution result = ResolveText(text, "stored", nullptr, numeric);
  if (!IsCommandHex(result.Hex)) {
    std::abort();
  }
  const DecodedCommand decoded = DecodeCommand(result.Hex);
  if (decoded.Known && ResolveText(decoded.Text, {}, nullptr, numeric).Hex != result.Hex) {
    std::abort();
  }
  // A stored target that is found rewrites the text; the second time changes nothing.
  Project project;
  VTS_P manager;
  Lang_P unit;
  PGC_P chain;
  chain.PGCName = "Stored";
  unit.PGC.Add(chain);
  manager.Lang.Add(unit);
  project.Disc.Add(manager);
  NameIndex names(project, Rules::Classic);
  const Resolution followed = ResolveText(text, "stored", &names);
  if (followed.Text.size() > text.size() + 64) {
    std::abort();
  }
  // A number that is written once more where it stands reads as before.
  for (const TextReference& reference : TextReferencesOf(text)) {
    if (reference.Length > 0 && reference.Number) {
      const auto again =
          TextReferencesOf(RenumberedText(text, reference, *reference.Number, reference.Within));
      const auto same = [&reference](const TextReference& other) {
        return other.Kind == reference.Kind && other.Number == reference.Number;
      };
      if (reference.Offset + reference.Length > text.size() || std::ranges::none_of(again, same)) {
        std::abort();
      }
    }
  }
  if (byteCount >= 8) {
    CommandBytes bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = data[i];
    }
    if (const DecodedCommand any = DecodeCommand(bytes);
        any.Known && ResolveText(any.Text, {}, nullptr, numeric).Hex != HexOfCommand(bytes)) {
      std::abort();
    }
  }
  return 0;
}
