// The start code finder of MPEG video elementary streams (ISO/IEC 11172-2, 13818-2), on a buffer.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/bytes.h"

namespace quorvelant {

// What a finder reports.
namespace headers {
inline constexpr std::string_view Picture = "PIC_HEADER";                          // 00 00 01 00
inline constexpr std::string_view Sequence = "SEQUENCE_HEADER";                    // 00 00 01 B3
inline constexpr std::string_view Group = "GROUP_OF_PICTURES_HEADER";              // 00 00 01 B8
inline constexpr std::string_view SequenceExtension = "SEQUENCE_EXTENSION";        // 00 00 01 B5, id 1
inline constexpr std::string_view SequenceDisplay = "SEQUENCE_DISPLAY_EXTENSION";  // id 2
inline constexpr std::string_view PictureDisplay = "PICTURE_DISPLAY_EXTENSION";    // id 7
inline constexpr std::string_view PictureCoding = "PICTURE_CODING_EXTENSION";      // id 8
inline constexpr std::string_view Other = "OTHER";                                 // any other id
// No further start code, or its value is not in the buffer.
inline constexpr std::string_view None = "NONE";
// An extension of which fewer than 8 bytes are in the buffer.
inline constexpr std::string_view NoRoom = "NO_ROOM";
// The type of a picture was asked for and is not in the buffer, or is the forbidden 0.
inline constexpr std::string_view NoFrametypeRoom = "NO_FRAMETYPE_ROOM";
}  // namespace headers

// Finds the next header at or after `position`, which counts from 1 and is left at the first 00 of the
// start code found (untouched for "NONE"): the code's value is at buffer[position + 2]. With
// `skipNonPictureHeaders` group headers and all extensions but the picture coding extension are passed
// over. With `wantPictureType`, `pictureType` is set to 1, 2 or 3 for I, P and B.
std::string_view FindNextHeader(ByteView buffer, std::size_t& position, bool skipNonPictureHeaders,
                                int& pictureType, bool wantPictureType);

// The picture_coding_type of the picture header at `position` (from 1), 0 when it is beyond the buffer.
int GetPictureType(ByteView buffer, std::size_t position);

// 'I', 'P' or 'B'; '?' for any other type.
char PictureLetter(int pictureType);

}  // namespace quorvelant
