#include "check/bitmap_head.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/file_text.h"
#include "check/messages.h"
#include "picture/bitmap_size.h"
#include "picture/messages.h"
#include "picture/picture.h"
#include "subpicture/bitmap_window.h"

namespace quorvelant {
namespace {

using namespace std::string_view_literals;

// The first bytes of the formats that are read.
constexpr std::array Marks{"BM"sv,   "\x89PNG"sv, "\xFF\xD8"sv, "GIF8"sv, "II*\0"sv, "MM\0*"sv,
                           "RIFF"sv, "P1"sv,      "P2"sv,       "P3"sv,   "P4"sv,    "P5"sv,
                           "P6"sv,   "/* XPM"sv,  "#define"sv,  "<"sv};
constexpr std::size_t HeadBytes = 8;

}  // namespace

std::optional<Message> WhyNoSubtitle(const SubPicturePlay& play, const std::string& path,
                                     const std::string& place, bool ntsc) {
  const std::optional<std::string> head = ReadHead(path, HeadBytes);
  if (!head) {
    return std::nullopt;
  }
  if (std::ranges::none_of(Marks, [&head](std::string_view mark) { return head->starts_with(mark); })) {
    return MessageOf(message::SubtitleNoPicture, place, play.File);
  }
  const auto size = ReadBitmapSize(path);
  if (!size || size->Width == 0 || size->Height == 0) {
    return std::nullopt;
  }
  if (ReadOversize(path)) {
    return MessageOf(message::SubtitleUnfit, place,
                     MessageOf(message::PictureTooLarge, {}, play.File, size->Width, size->Height,
                               PictureLimits{}.MostSide, MostDiscPixels)
                         .Text);
  }
  if (!ClipBitmap(size->Width, size->Height, play.X1, play.Y1, ntsc, BitmapReading::AsPainted)) {
    return MessageOf(message::SubtitleOutside, place, play.File, size->Width, size->Height, play.X1, play.Y1);
  }
  return std::nullopt;
}

}  // namespace quorvelant
