// Subtitles for test tracks: bitmaps painted in the four colours that stand for the pixel kinds, and what
// a player should show of them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/timecode.h"
#include "mux_run.h"
#include "picture/bmp.h"

namespace quorvelant {

inline constexpr std::array<Color, 4> PaintedColors{0x010101, 0xFFFFFF, 0x808080, 0x00FF00};  // by pixel code
inline constexpr std::array<Color, 4> ShownColors{0x2000F0, 0x30C0E0, 0x40A0D0, 0x5080B0};  // palette 4 to 7

struct TestSubtitle {
  int Width, Height, X, Y;
  int Start, End;  // frames
  bool Forced = false;
  int Coarse = 1;  // how many times as wide as can be; 0: row r begins with a run of r + 1
};

// Stripes of all four colours that no two lines share.
inline Picture PaintStripes(const TestSubtitle& subtitle) {
  Picture picture(subtitle.Width, subtitle.Height);
  for (int y = 0; y < picture.Height; ++y) {
    for (int x = 0; x < picture.Width; ++x) {
      const int stripe =
          subtitle.Coarse == 0 ? y + (x > y ? 2 : 0) : (x + 3 * y) / (1 + y % 5) / subtitle.Coarse;
      picture.Set(x, y, PaintedColors.at(static_cast<std::size_t>(stripe % 4)));
    }
  }
  return picture;
}

// Colour at a place of the screen while the subtitle shows: the last line of a bitmap stays hidden, and the
// last three of a screen of 576 lines or two of 480.
inline Color ShownAt(const TestSubtitle& subtitle, const Picture& bitmap, int x, int y, bool ntsc,
                     Color below) {
  const int column = x - subtitle.X;
  const int row = y - subtitle.Y;
  const int lines = std::max(subtitle.Y, 0) + (ntsc ? 478 : 573);
  if (column < 0 || column >= bitmap.Width || row < 0 || row >= bitmap.Height - 1 || y >= lines) {
    return below;
  }
  const auto code = std::ranges::find(PaintedColors, bitmap.At(column, row)) - PaintedColors.begin();
  return ShownColors.at(static_cast<std::size_t>(code));
}

inline SubPicturePlay PlayOf(const TestSubtitle& subtitle, const std::string& file, int framesPerSecond) {
  SubPicturePlay play;
  play.ConversionP = PaintedColors[1];
  play.ConversionE1 = PaintedColors[2];
  play.ConversionE2 = PaintedColors[3];
  play.ColorBg = 4;
  play.ColorP = 5;
  play.ColorE1 = 6;
  play.ColorE2 = 7;
  play.ContrastBg = play.ContrastP = play.ContrastE1 = play.ContrastE2 = 15;
  play.X1 = subtitle.X;
  play.Y1 = subtitle.Y;
  play.Start = FramesToTimecode(subtitle.Start, framesPerSecond);
  play.Duration = FramesToTimecode(subtitle.End - subtitle.Start, framesPerSecond);
  play.File = file;
  play.Forced = subtitle.Forced;
  return play;
}

// Writes the bitmaps into `folder` and lists them in a stream of the model.
inline SubtitleStream StreamOf(const TempFolder& folder, const std::string& name,
                               const std::vector<TestSubtitle>& subtitles, bool ntsc) {
  SubtitleStream stream;
  for (const TestSubtitle& subtitle : subtitles) {
    const std::string path = Saved(folder, WriteBmp(PaintStripes(subtitle)),
                                   name + std::to_string(stream.SubPlays.size()) + ".bmp");
    stream.SubPlays.push_back(PlayOf(subtitle, path, ntsc ? 30 : 25));
  }
  return stream;
}

}  // namespace quorvelant
