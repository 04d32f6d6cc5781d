#include "analysis/find_next_header.h"

#include "disc/start_code_search.h"
#include "disc/start_codes.h"

namespace quorvelant {

namespace {

std::string_view ExtensionWord(unsigned id) {
  switch (id) {
    case extension_id::Sequence:
      return headers::SequenceExtension;
    case extension_id::SequenceDisplay:
      return headers::SequenceDisplay;
    case extension_id::PictureDisplay:
      return headers::PictureDisplay;
    case extension_id::PictureCoding:
      return headers::PictureCoding;
    default:
      return headers::Other;
  }
}

// The word of the extension at `start` (from 0); empty when it is passed over.
std::string_view ReadExtension(ByteView buffer, std::size_t start, bool skipNonPictureHeaders) {
  if (start + 7 >= buffer.size()) {
    return headers::NoRoom;
  }
  const std::string_view word = ExtensionWord(buffer[start + 4] >> 4U);
  return skipNonPictureHeaders && word != headers::PictureCoding ? std::string_view() : word;
}

}  // namespace

std::string_view FindNextHeader(ByteView buffer, std::size_t& position, bool skipNonPictureHeaders,
                                int& pictureType, bool wantPictureType) {
  std::size_t from = position > 0 ? position - 1 : 0;
  while (true) {
    const std::size_t start = FindHeaderStartCode(buffer, from);
    if (start == NoStartCode || start + 3 >= buffer.size()) {
      return headers::None;
    }
    std::string_view word;
    const unsigned code = buffer[start + 3];
    if (code == start_code::Picture) {
      word = headers::Picture;
      if (wantPictureType) {
        pictureType = GetPictureType(buffer, start + 1);
        word = pictureType == 0 ? headers::NoFrametypeRoom : word;
      }
    } else if (code == start_code::Sequence) {
      word = headers::Sequence;
    } else if (code == start_code::Group && !skipNonPictureHeaders) {
      word = headers::Group;
    } else if (code == start_code::Extension) {
      word = ReadExtension(buffer, start, skipNonPictureHeaders);
    }
    if (!word.empty()) {
      position = start + 1;
      return word;
    }
    from = start + 1;
  }
}

int GetPictureType(ByteView buffer, std::size_t position) {
  const std::size_t typeAt = position + 4;
  return typeAt < buffer.size() ? (buffer[typeAt] >> 3) & 7 : 0;
}

char PictureLetter(int pictureType) {
  constexpr std::string_view Letters = "?IPB????";
  return Letters[static_cast<std::size_t>(pictureType) & 7U];
}

}  // namespace quorvelant
