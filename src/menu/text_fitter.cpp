#include "menu/text_fitter.h"

#include <algorithm>
#include <utility>

#include "menu/page_text.h"

namespace quorvelant {

namespace {

constexpr std::string_view Ellipsis = "\u2026";

// Where the letters of UTF-8 text begin; marks that belong to the letter before begin none.
std::vector<std::size_t> LetterStarts(std::string_view text) {
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool goesOn = (byte & 0xC0U) == 0x80;
    const bool isMark = byte == 0xCC || (byte == 0xCD && i + 1 < text.size() &&
                                         static_cast<unsigned char>(text[i + 1]) < 0xB0);  // U+0300 to U+036F
    if (!goesOn && !isMark) {
      starts.push_back(i);
    }
  }
  return starts;
}

std::string WithoutBlanksAtEnd(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

}  // namespace

PageText TextFitter::Raw(std::string text, FontSlot slot, int pixels) const {
  return {.Text = std::move(text), .Slot = slot, .PixelHeight = pixels, .Stretch = stretch_};
}

Footprint TextFitter::Covers(const PageText& text) const {
  const TextSize size = measure_(text.Text, StyleOf(text, look_));
  return {.Left = std::min(0, size.InkLeft),
          .Top = std::min(0, size.InkTop),
          .Right = std::max(size.Width, size.InkRight),
          .Bottom = std::max(size.Height, size.InkBottom)};
}

bool TextFitter::Fit(const std::vector<std::string>& texts, FontSlot slot, int pixels, int width,
                     int height) const {
  return std::all_of(texts.begin(), texts.end(), [&](const std::string& text) {
    const Footprint covers = Covers(Raw(text, slot, pixels));
    return covers.Width() <= width && covers.Height() <= height;
  });
}

int TextFitter::SizeFor(const std::vector<std::string>& texts, FontSlot slot, int width, int height) const {
  int pixels = look_.Fonts[static_cast<std::size_t>(slot)].PixelHeight;
  while (pixels > LeastPixels && !Fit(texts, slot, pixels, width, height)) {
    --pixels;
  }
  return pixels;
}

PageText TextFitter::Line(const std::string& text, FontSlot slot, int pixels, int left, int top,
                          int width) const {
  const auto fits = [&](const std::string& part) { return Covers(Raw(part, slot, pixels)).Width() <= width; };
  std::string shown = text;
  if (!fits(shown)) {
    const std::vector<std::size_t> starts = LetterStarts(text);
    const auto cut = [&](std::size_t letters) {
      return WithoutBlanksAtEnd(std::string_view(text).substr(0, starts[letters])) + std::string(Ellipsis);
    };
    std::size_t least = 0;
    std::size_t most = starts.empty() ? 0 : starts.size() - 1;
    while (least < most) {  // the most letters that fit
      const std::size_t letters = (least + most + 1) / 2;
      if (fits(cut(letters))) {
        least = letters;
      } else {
        most = letters - 1;
      }
    }
    shown = starts.empty() ? std::string() : cut(least);
  }
  PageText line = Raw(std::move(shown), slot, pixels);
  const Footprint covers = Covers(line);
  line.X = left - covers.Left;
  line.Y = top - covers.Top;
  return line;
}

}  // namespace quorvelant
