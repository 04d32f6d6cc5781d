#include "menu/letterbox.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "base/file_text.h"
#include "menu/mark_colors.h"
#include "menu/menu_page.h"
#include "picture/bmp.h"
#include "picture/messages.h"

namespace quorvelant {

namespace {

constexpr int Red(Color color) {
  return static_cast<int>(color & 0xFFU);
}

// Marks are grey, so one channel tells how much of a pixel is covered.
Color NearestMark(int grey, const MarkColors& marks) {
  const std::array<Color, 4> colors{marks.Pattern, marks.Emphasis1, marks.Emphasis2, marks.Background};
  return *std::ranges::min_element(colors, {}, [grey](Color color) { return std::abs(Red(color) - grey); });
}

}  // namespace

int LetterboxLine(int line, int height) {
  return height / 8 + line * 3 / 4;
}

Picture LetterboxSublayer(const Picture& sublayer, int down, const Rules& rules) {
  const MarkColors& marks = MarksOf(rules);
  Picture letter(sublayer.Width, sublayer.Height * 3 / 4);
  const auto greyAt = [&](int column, int row) {
    const int from = row - down;
    return from >= 0 && from < sublayer.Height ? Red(sublayer.At(column, from)) : Red(marks.Pattern);
  };
  for (int row = 0; row < letter.Height; ++row) {
    // Row r takes the page's lines from 4/3 r to 4/3 (r + 1): in thirds, one whole line and a third.
    const int line = row * 4 / 3;
    const int first = 3 - row * 4 % 3;  // thirds of the first line
    for (int column = 0; column < letter.Width; ++column) {
      const int second = std::min(3, 4 - first);
      const int grey = (first * greyAt(column, line) + second * greyAt(column, line + 1) +
                        (4 - first - second) * greyAt(column, line + 2)) /
                       4;
      letter.Set(column, row, NearestMark(grey, marks));
    }
  }
  return letter;
}

std::string LetterboxFileOf(const std::string& sublayerFile) {
  constexpr std::string_view Extension = ".bmp";
  return sublayerFile.substr(0, sublayerFile.size() - Extension.size()) + ".LetterBox.bmp";
}

void WriteLetterboxSublayer(const std::string& sublayerFile, const Rules& rules) {
  const Picture sublayer = ReadBmp(ReadPictureFile(sublayerFile), sublayerFile);
  const Bytes bytes = WriteBmp(LetterboxSublayer(sublayer, SublayerRise, rules));
  const std::string file = LetterboxFileOf(sublayerFile);
  if (const int refusal = WriteAside(file, {reinterpret_cast<const char*>(bytes.data()), bytes.size()})) {
    RefusePicture(message::PictureNotWritten, file, std::generic_category().message(refusal));
  }
}

}  // namespace quorvelant
