// Bitmaps of subtitles that were coded already.
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "subpicture/spu_encoder.h"
#include "subpicture/spu_record.h"

namespace quorvelant {

// What the checks before authoring have coded, so that the multiplexer reads and codes no bitmap a second
// time. All of it was coded by one set of rules. It stays within a limit: what has no room is not kept, and
// has to be coded again. Captions take 2 to 4 KB, so that four streams of a thousand fit.
class CodedBitmaps {
 public:
  static constexpr std::size_t UsualLimitBytes = std::size_t{16} << 20;

  explicit CodedBitmaps(std::size_t mostBytes = UsualLimitBytes) : mostBytes_(mostBytes) {}

  // The record's bitmap, placed and coloured as the record says; null where it is not kept.
  const EncodedBitmap* Find(const SPURecord& record, bool ntsc) const;
  // False where there is no room.
  bool Keep(const SPURecord& record, bool ntsc, const EncodedBitmap& bitmap);

 private:
  struct Key {
    std::string File;
    Color Pattern, Emphasis1, Emphasis2, Background;
    int X1, Y1;
    bool Ntsc;
    // NOLINTNEXTLINE(modernize-use-nullptr, readability-implicit-bool-conversion): no pointer, no bool
    auto operator<=>(const Key&) const = default;
  };
  static Key KeyOf(const SPURecord& record, bool ntsc);

  std::map<Key, EncodedBitmap> bitmaps_;
  std::size_t mostBytes_;
  std::size_t keptBytes_ = 0;
};

// Codes the bitmaps (".bmp" files) of `records` on all processors, as long as there is room to keep them.
// What cannot be coded is passed over: whoever needs it is told why. Ends early when a stop is asked for.
void CodeAhead(const std::vector<SPURecord>& records, bool ntsc, const Rules& rules, UserInterface& ui,
               CodedBitmaps& coded);

}  // namespace quorvelant
