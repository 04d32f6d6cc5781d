#include "menu/film_picture.h"

#include <algorithm>

#include "codec/intra_decoder.h"

namespace quorvelant {

namespace {

// After the first picture, which is where an index entry ends, its second field may follow.
constexpr std::uint64_t SecondFieldBytes = std::uint64_t{512} << 10U;
// No intra picture of a usable size takes more.
constexpr std::uint64_t MostBytes = std::uint64_t{16} << 20U;

Bytes ReadSpan(const PictureSpan& span, Random& files, int slot) {
  const std::uint64_t fileBytes = files.FileBytes(slot);
  if (span.Offset >= fileBytes) {
    return {};
  }
  const std::uint64_t wanted =
      span.Bytes == 0 ? MostBytes : std::min(span.Bytes, MostBytes) + SecondFieldBytes;
  Bytes bytes(static_cast<std::size_t>(std::min(wanted, fileBytes - span.Offset)));
  files.SeekAbsolute(span.Offset, slot);
  bytes.resize(files.ReadInto(bytes, slot));
  return bytes;
}

}  // namespace

std::optional<PictureIndex> IndexForPictures(const std::string& file, const IndexStore& store, Random& files,
                                             int slot, UserInterface& ui) {
  if (!IndexIsOlder(file)) {
    if (auto kept = FindPictureIndex(file, store); kept && !kept->Entries.empty()) {
      return kept;
    }
  }
  return ScanPictures(files, slot, {}, ui);
}

std::optional<Planes> DecodeFilmPicture(const PictureSpan& span, bool isMpeg2, Random& files, int slot) {
  return DecodeIntraPicture(ReadSpan(span, files, slot), isMpeg2);
}

}  // namespace quorvelant
