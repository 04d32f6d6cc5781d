// Units in packs, as a decoder that nobody here wrote renders them.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>
#include <string_view>

#include "mux/pack_header.h"
#include "mux/subpicture_packs.h"
#include "subpicture/spu_encoder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

constexpr int Height = 576;
constexpr std::uint32_t Base = 0x563412;                                         // what lies below: #123456
constexpr std::array<Color, 4> Painted{0x010101, 0xFFFFFF, 0x808080, 0x00FF00};  // by pixel code, in bitmaps
constexpr std::array<Color, 4> Shown{0x2000F0, 0x30C0E0, 0x40A0D0, 0x5080B0};    // palette entries 4, 5, 6, 7

struct Subtitle {
  const char* Name;
  int Width, Height, X1, Y1;
  bool Forced = false;
  bool Staircase = false;  // row r begins with a run of r + 1 pixels; otherwise runs are random
};

constexpr Subtitle Subtitles[] = {
    {"even", 200, 60, 100, 400},
    {"odd height", 200, 61, 100, 400, true},
    {"odd width", 201, 60, 100, 400},
    {"odd both, odd origin", 203, 37, 101, 401, true},
    {"width that four does not divide", 202, 60, 0, 0},
    {"left of the picture", 200, 60, -37, 300},
    {"above the picture", 200, 61, 20, -20},
    {"above by an odd count", 200, 60, 20, -21},
    {"right edge", 200, 60, 601, 300, true},
    {"bottom edge", 200, 61, 20, 540},
    {"all sides", 900, 700, -51, -33},
    {"full", 720, 576, 0, 0},
    {"runs of 1 to 360", 720, 360, 0, 100, false, true},
    {"runs to 720", 720, 720, 0, -400, false, true},
    {"three lines", 2, 3, 300, 300},
};

// Random runs, few enough for the largest bitmaps to stay within a player's buffer.
Picture Paint(const Subtitle& subtitle, std::mt19937& random) {
  Picture picture(subtitle.Width, subtitle.Height);
  std::uniform_int_distribution<int> lengths(1, std::max(2, subtitle.Width / 6));
  for (int y = 0; y < picture.Height; ++y) {
    int x = 0;
    for (unsigned code = random() % 4; x < picture.Width; code = (code + 1 + random() % 3) % 4) {
      const int length = subtitle.Staircase ? (x == 0 ? y + 1 : picture.Width) : lengths(random);
      for (const int end = std::min(x + length, picture.Width); x < end; ++x) {
        picture.Set(x, y, Painted.at(code));
      }
    }
  }
  return picture;
}

SPURecord RecordOf(const Subtitle& subtitle) {
  SPURecord record;
  record.Conversion = {Painted[1], Painted[2], Painted[3]};
  record.ColorIndexes = {7, 6, 5, 4};
  record.Contrasts = {15, 15, 15, 15};
  record.StopDelay = 87;  // just short of a second
  record.Forced = subtitle.Forced;
  return record;
}

// A unit a second, from second 1 on.
void AppendUnit(std::string& stream, const Bytes& unit, std::size_t number, std::uint64_t& sectors) {
  ByteView rest = unit;
  auto form = number == 0 ? SubpicturePackForm::FirstOfVob : SubpicturePackForm::FirstOfUnit;
  do {
    Bytes sector(SectorBytes);
    PutPackHeader(sector, {.Base = number * 90000 + sectors++, .Extension = 0});
    rest = rest.subspan(
        PutSubpicturePacket(sector, rest, form, 0, static_cast<std::int64_t>((number + 1) * 90000)));
    form = SubpicturePackForm::Following;
    stream.append(reinterpret_cast<const char*>(sector.data()), sector.size());
  } while (!rest.empty());
}

// The frames that ffmpeg shows half a second behind each unit's time.
std::string Render(const TempFolder& folder, const std::string& stream, std::size_t units, bool forcedOnly) {
  folder.Write("subtitles.vob", stream);
  std::string palette;
  for (unsigned i = 0; i < 16; ++i) {
    const Color color = i >= 4 && i < 8 ? Shown.at(i - 4) : 0;
    palette += fmt::format("{}{:02x}{:02x}{:02x}", i == 0 ? "" : ",", color & 255, color >> 8 & 255,
                           color >> 16 & 255);
  }
  const std::string command = fmt::format(
      "ffmpeg -v error -nostdin -canvas_size 720x576 -palette {} -forced_subs_only {} -f mpeg -i {} -f lavfi "
      "-i color=c=0x123456:s=720x576:r=2:d={},format=gbrp -filter_complex "
      "'[1:v][0:s]overlay=format=gbrp,select=mod(n\\,2)' -fps_mode passthrough -f rawvideo "
      "-pix_fmt rgb24 -y {} 2> {}",
      palette, forcedOnly ? 1 : 0, folder / "subtitles.vob", units, folder / "frames.rgb",
      folder / "errors.txt");
  EXPECT_EQ(std::system(command.c_str()), 0) << TempFolder::Read(folder / "errors.txt");
  EXPECT_EQ(TempFolder::Read(folder / "errors.txt"), "");
  return TempFolder::Read(folder / "frames.rgb");
}

std::uint32_t PixelOf(const std::string& frames, std::size_t frame, int x, int y) {
  const std::size_t at =
      ((frame * Height + static_cast<std::size_t>(y)) * 720 + static_cast<std::size_t>(x)) * 3;
  const auto byte = [&](std::size_t i) { return std::uint32_t{static_cast<std::uint8_t>(frames[at + i])}; };
  return byte(0) | byte(1) << 8 | byte(2) << 16;
}

// What the picture should show at (x, y): the bitmap but for its last visible line.
std::uint32_t Expected(const Subtitle& subtitle, const Picture& bitmap, int x, int y) {
  const int lastLine =
      std::min({subtitle.Y1 + subtitle.Height - 2, Height - 1, std::max(subtitle.Y1, 0) + 572});
  const int column = x - subtitle.X1;
  const int row = y - subtitle.Y1;
  if (column < 0 || column >= bitmap.Width || row < 0 || y > lastLine) {
    return Base;
  }
  const std::uint32_t color = bitmap.At(column, row);
  return Shown.at(static_cast<std::size_t>(std::ranges::find(Painted, color) - Painted.begin()));
}

TEST(SubpictureDecode, EveryBitmapShowsAsPaintedButForItsLastLine) {
  if (std::system("ffmpeg -version > /dev/null 2>&1") != 0) {
    GTEST_SKIP() << "ffmpeg is not installed";
  }
  std::mt19937 random(7);
  std::vector<Picture> bitmaps;
  std::string stream;
  std::uint64_t sectors = 0;
  for (const Subtitle& subtitle : Subtitles) {
    bitmaps.push_back(Paint(subtitle, random));
    const SPURecord record = RecordOf(subtitle);
    const auto encoded =
        EncodeSPUBitmap(bitmaps.back(), record.Conversion, subtitle.X1, subtitle.Y1, false, Rules::Players);
    ASSERT_TRUE(encoded) << subtitle.Name;
    const Bytes unit = BuildSPU(record, *encoded);
    ASSERT_LE(unit.size(), MostUnitBytes) << subtitle.Name;
    AppendUnit(stream, unit, bitmaps.size() - 1, sectors);
  }
  const TempFolder folder;
  const std::string all = Render(folder, stream, bitmaps.size(), false);
  const std::string forced = Render(folder, stream, bitmaps.size(), true);
  ASSERT_EQ(all.size(), bitmaps.size() * 720 * Height * 3);
  for (std::size_t i = 0; i < bitmaps.size(); ++i) {
    int wrong = 0;
    for (int at = 0; at < 720 * Height; ++at) {
      wrong += PixelOf(all, i, at % 720, at / 720) != Expected(Subtitles[i], bitmaps[i], at % 720, at / 720)
                   ? 1
                   : 0;
    }
    EXPECT_EQ(wrong, 0) << Subtitles[i].Name;
  }
  // With forced units alone the others' seconds stay empty.
  const std::size_t frameBytes = std::size_t{720} * Height * 3;
  const auto base = std::ranges::find_if(Subtitles, [](const Subtitle& each) { return !each.Forced; });
  const auto empty = static_cast<std::size_t>(base - std::begin(Subtitles));
  EXPECT_EQ(PixelOf(forced, empty, 101, 401), Base);
  for (std::size_t i = 0; i < bitmaps.size(); ++i) {
    const std::string_view shown = std::string_view(forced).substr(i * frameBytes, frameBytes);
    const std::string& from = Subtitles[i].Forced ? all : forced;
    EXPECT_TRUE(shown ==
                std::string_view(from).substr((Subtitles[i].Forced ? i : empty) * frameBytes, frameBytes))
        << Subtitles[i].Name;
  }
}

}  // namespace
}  // namespace quorvelant
