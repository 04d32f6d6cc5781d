#include "check/bitmap_head.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/file_text.h"
#include "check/messages.h"
#include "subpicture/bitmap_window.h"

namespace quorvelant {
namespace {

using namespace std::string_view_literals;

// The first bytes of the formats that are read.
constexpr std::array Marks{"BM"sv,   "\x89PNG"sv, "\xFF\xD8"sv, "GIF8"sv, "II*\0"sv, "MM\0*"sv,
                           "RIFF"sv, "P1"sv,      "P2"sv,       "P3"sv,   "P4"sv,    "P5"sv,
                           "P6"sv,   "/* XPM"sv,  "#define"sv,  "<"sv};
constexpr std::size_t HeadBytes = 26;

struct PictureSize {
  std::int32_t Width = 0;
  std::int32_t Height = 0;
};

std::int32_t NumberAt(std::string_view head, std::size_t at, bool lowFirst) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    number = number << 8U | static_cast<unsigned char>(head[lowFirst ? at + 3 - i : at + i]);
  }
  return static_cast<std::int32_t>(number);
}

// Of PNG (IHDR) and of a bitmap with an information header of 40 bytes and more.
std::optional<PictureSize> SizeOf(std::string_view head) {
  constexpr std::int32_t OldHeader = 12;
  if (head.size() < HeadBytes) {
    return std::nullopt;
  }
  if (head.starts_with(Marks[1])) {
    return PictureSize{NumberAt(head, 16, false), NumberAt(head, 20, false)};
  }
  if (head.starts_with(Marks[0]) && NumberAt(head, 14, true) > OldHeader) {
    const std::int64_t height = NumberAt(head, 22, true);  // negative from the top row on
    return PictureSize{NumberAt(head, 18, true),
                       static_cast<std::int32_t>(std::min<std::int64_t>(std::abs(height), INT32_MAX))};
  }
  return std::nullopt;
}

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
  const auto size = SizeOf(*head);
  const bool sane =
      size && size->Width > 0 && size->Height > 0 && size->Width <= 16384 && size->Height <= 16384;
  if (sane && !ClipBitmap(size->Width, size->Height, play.X1, play.Y1, ntsc, BitmapReading::AsPainted)) {
    return MessageOf(message::SubtitleOutside, place, play.File, size->Width, size->Height, play.X1, play.Y1);
  }
  return std::nullopt;
}

}  // namespace quorvelant
