#include "subpicture/coded_bitmaps.h"

namespace quorvelant {

namespace {

// What an entry takes besides its coded lines and the text of its path, about.
constexpr std::size_t EntryBytes = 256;

}  // namespace

CodedBitmaps::Key CodedBitmaps::KeyOf(const SPURecord& record, bool ntsc) {
  const ConversionColors& colors = record.Conversion;
  return {record.File, colors.Pattern, colors.Emphasis1, colors.Emphasis2, record.X1, record.Y1, ntsc};
}

const EncodedBitmap* CodedBitmaps::Find(const SPURecord& record, bool ntsc) const {
  if (bitmaps_.empty()) {
    return nullptr;
  }
  const auto found = bitmaps_.find(KeyOf(record, ntsc));
  return found == bitmaps_.end() ? nullptr : &found->second;
}

void CodedBitmaps::Keep(const SPURecord& record, bool ntsc, const EncodedBitmap& bitmap) {
  const std::size_t bytes = EntryBytes + record.File.size() + bitmap.FieldA.size() + bitmap.FieldB.size();
  if (bytes > mostBytes_ - keptBytes_) {
    return;
  }
  // The copy has no room to spare.
  if (bitmaps_.try_emplace(KeyOf(record, ntsc), bitmap).second) {
    keptBytes_ += bytes;
  }
}

}  // namespace quorvelant
