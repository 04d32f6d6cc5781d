// The traditional places. Positions are those of a surface with a frame, whose height counts in the bottom
// rows; the frame itself is not in the pictures.
#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "disc/video_standard.h"
#include "menu/page_placers.h"
#include "menu/page_text.h"

namespace quorvelant {

namespace {

constexpr int FrameRows = 4;
constexpr int RowStep = 50;
constexpr std::int16_t ThumbnailScheme = 1;
constexpr std::int16_t TextScheme = 2;
constexpr std::int16_t MainScheme = 3;

MenuButton ButtonAt(int x1, int x2, int y1, int y2, std::int16_t scheme, std::string key) {
  const auto edge = [](int at) { return static_cast<std::int16_t>(at); };
  return {.X1 = edge(x1),
          .X2 = edge(x2),
          .Y1 = edge(y1),
          .Y2 = edge(y2),
          .ColorScheme = scheme,
          .Key = std::move(key)};
}

class FixedPage {
 public:
  FixedPage(const PageContents& contents, const PageGround& ground, const MenuLook& look,
            const TextMeasure& measure)
      : contents_(contents), ground_(ground), look_(look), measure_(measure) {}

  MenuPage Place() {
    const bool isChapter = contents_.Kind == PageKind::Chapter;
    Add(contents_.Title, isChapter ? 265 : 250, isChapter ? 15 : 30, FontSlot::PageTitle);
    if (contents_.Kind == PageKind::Root) {
      PlaceLines();
    } else if (isChapter) {
      PlaceThumbnails();
    } else {
      PlaceBars();
    }
    PlaceBottom();
    return std::move(page_);
  }

 private:
  [[nodiscard]] PageText TextAt(std::string text, int x, int y, FontSlot slot) const {
    return {.Text = std::move(text),
            .X = x,
            .Y = y,
            .Slot = slot,
            .PixelHeight = look_.Fonts[static_cast<std::size_t>(slot)].PixelHeight};
  }
  void Add(const std::string& text, int x, int y, FontSlot slot) {
    page_.Texts.push_back(TextAt(text, x, y, slot));
  }
  // A text that lights up itself.
  void AddLit(const std::string& text, int x, int y, FontSlot slot) {
    Add(text, x, y, slot);
    page_.Marks.push_back({.Text = TextAt(text, x, y - SublayerRise, slot)});
  }

  void PlaceLines() {
    int y = 85;
    for (const PageItem& item : contents_.Items) {
      const bool isFirst = &item == &contents_.Items.front();
      AddLit(item.Text, 200, y, FontSlot::Item);
      page_.Buttons.push_back(
          ButtonAt(195, isFirst ? 395 : 495, y - 5, isFirst ? y + 40 : y + 45, TextScheme, item.Key));
      y += RowStep;
    }
  }

  // Where the bars under the items of a kind of page, and their buttons, end in either column.
  struct BarEnds {
    std::size_t Rows;
    std::array<int, 2> Bar;
    std::array<int, 2> Button;
  };
  [[nodiscard]] BarEnds EndsOf() const {
    switch (contents_.Kind) {
      case PageKind::Subtitle:
        return {5, {250, 550}, {255, 555}};
      case PageKind::TitleChoice:
        return {4, {210, 510}, {225, 525}};
      default:
        return {4, {210, 510}, {215, 515}};
    }
  }

  void PlaceBars() {
    const BarEnds ends = EndsOf();
    for (std::size_t i = 0; i < contents_.Items.size(); ++i) {
      const PageItem& item = contents_.Items[i];
      const std::size_t column = i < ends.Rows ? 0 : 1;
      const int x = column == 0 ? 100 : 400;
      const int y = 85 + RowStep * static_cast<int>(i - column * ends.Rows);
      const int longer = item.Key == menu_key::SubtitlesOff ? 50 : 0;
      Add(item.Text, x, y, FontSlot::Item);
      page_.Marks.push_back(
          {.Box = PageBox{.X1 = x, .X2 = ends.Bar.at(column) + longer, .Y1 = y + 35, .Y2 = y + 38}});
      page_.Buttons.push_back(
          ButtonAt(x - 5, ends.Button.at(column) + longer, y + 30, y + 43, TextScheme, item.Key));
    }
  }

  // Thumbnails step by the height of their printed numbers, marks by fixed rows.
  void PlaceThumbnails() {
    constexpr std::size_t Rows = 3;
    const int width = FullWidth / 5;
    const int height = FullHeight(ground_.IsNtsc) / 5;
    const int belowNumber = ground_.IsNtsc ? 100 : 125;
    const int markStep = ground_.IsNtsc ? 125 : 150;
    int y = 50;
    int markY = 48;
    for (std::size_t i = 0; i < contents_.Items.size(); ++i) {
      const PageItem& item = contents_.Items[i];
      const int x = i < Rows ? 125 : 425;
      if (i == Rows) {
        y = 50;
        markY = 48;
      }
      page_.Thumbnails.push_back(
          {.Scene = item.Scene.value_or(0), .X = x, .Y = y, .Width = width, .Height = height});
      Add(item.Text, x - 35, y, FontSlot::Small);
      page_.Marks.push_back(
          {.Box = PageBox{.X1 = x, .X2 = x + width - 1, .Y1 = markY, .Y2 = markY + height - 1}});
      page_.Buttons.push_back(
          ButtonAt(x - 5, x + width + 5, markY - 5, markY + height + 5, ThumbnailScheme, item.Key));
      y += measure_(item.Text, StyleOf(page_.Texts.back(), look_)).Height + belowNumber;
      markY += markStep;
    }
  }

  void PlaceBottom() {
    const int pageHeight = FullHeight(ground_.IsNtsc) + FrameRows;
    const int y = pageHeight - 50;
    const bool isChapter = contents_.Kind == PageKind::Chapter;
    const int arrowEnd = pageHeight - (isChapter ? 20 : 10);
    if (!contents_.Previous.empty()) {
      AddLit(contents_.Previous, 25, y, FontSlot::Small);
      page_.Buttons.push_back(ButtonAt(20, 245, y, arrowEnd, TextScheme, menu_key::Previous));
    }
    if (!contents_.Main.empty()) {
      const int x = isChapter ? 300 : 280;
      AddLit(contents_.Main, x, y, isChapter ? FontSlot::Small : FontSlot::Main);
      page_.Buttons.push_back(ButtonAt(x - 5, x + 195, y, pageHeight - 10, MainScheme, menu_key::Main));
    }
    if (!contents_.Next.empty()) {
      AddLit(contents_.Next, 525, y, FontSlot::Small);
      page_.Buttons.push_back(ButtonAt(520, 705, y, arrowEnd, TextScheme, menu_key::Next));
    }
  }

  const PageContents& contents_;
  const PageGround& ground_;
  const MenuLook& look_;
  const TextMeasure& measure_;
  MenuPage page_;
};

}  // namespace

MenuPage PlaceFixed(const PageContents& contents, const PageGround& ground, const MenuLook& look,
                    const TextMeasure& measure) {
  return FixedPage(contents, ground, look, measure).Place();
}

}  // namespace quorvelant
