// Pages whose texts stay inside the safe area and are measured. The title is at the top left, the items below
// it in one column or two, and what leads elsewhere in the bottom row.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "disc/video_standard.h"
#include "menu/page_placers.h"
#include "menu/text_fitter.h"

namespace quorvelant {

namespace {

constexpr int SafeLeft = FullWidth / 10;
constexpr int SafeRight = FullWidth - SafeLeft;  // the first column that is not safe
constexpr int SafeWidth = SafeRight - SafeLeft;

constexpr std::int16_t ThumbnailScheme = 1;
constexpr std::int16_t TextScheme = 2;
constexpr std::int16_t MainScheme = 3;

// Lines of buttons and marks come in pairs, one for each field.
constexpr int EvenBelow(int y) {
  return y & ~1;
}
constexpr int EvenAbove(int y) {
  return (y + 1) & ~1;
}

struct Shape {
  double Wide;
  double High;
};
constexpr Shape ShapeOf(bool isWide) {
  return isWide ? Shape{16, 9} : Shape{4, 3};
}

// How much wider than high a pixel of the page is.
double PixelShape(const PageGround& ground) {
  const Shape page = ShapeOf(ground.IsWide);
  return page.Wide / page.High * FullHeight(ground.IsNtsc) / FullWidth;
}

// Letters are narrowed where pixels are wide, and never widened.
int StretchOf(const PageGround& ground) {
  constexpr double Percent = 100;
  return static_cast<int>(std::lround(Percent / std::max(1.0, PixelShape(ground))));
}

class FittedPage {
 public:
  FittedPage(const PageContents& contents, const PageGround& ground, const MenuLook& look,
             const TextMeasure& measure)
      : contents_(contents),
        ground_(ground),
        height_(FullHeight(ground.IsNtsc)),
        safeTop_(EvenAbove((height_ + 9) / 10)),
        safeBottom_(EvenBelow(height_ - (height_ + 9) / 10)),
        fitter_(look, measure, StretchOf(ground)) {}

  MenuPage Place() {
    const int top = PlaceTitle();
    BottomRow bottom = BottomRowOf();
    if (contents_.Kind == PageKind::Chapter) {
      PlaceThumbnails(top, bottom.Top);
    } else {
      PlaceItems(top, bottom.Top);
    }
    PlaceBottom(std::move(bottom));
    return std::move(page_);
  }

 private:
  // --- buttons ---

  // `x2` and `y2` are the first beyond the area.
  void AddButton(int x1, int x2, int y1, int y2, std::int16_t scheme, const std::string& key) {
    page_.Buttons.push_back({.X1 = static_cast<std::int16_t>(x1),
                             .X2 = static_cast<std::int16_t>(x2 - 1),
                             .Y1 = static_cast<std::int16_t>(EvenBelow(y1)),
                             .Y2 = static_cast<std::int16_t>(EvenAbove(y2) - 1),
                             .ColorScheme = scheme,
                             .Key = key});
  }

  static PageText Lit(PageText text) {
    text.Y -= SublayerRise;
    return text;
  }

  // --- the title ---

  // Gives the row below it.
  int PlaceTitle() {
    constexpr int AccentWidth = 64;
    constexpr int AccentHeight = 4;
    constexpr int Gap = 6;
    const int pixels = fitter_.SizeFor({contents_.Title}, FontSlot::PageTitle, SafeWidth, height_);
    const PageText title =
        fitter_.Line(contents_.Title, FontSlot::PageTitle, pixels, SafeLeft, safeTop_, SafeWidth);
    const int accent = EvenAbove(title.Y + fitter_.Covers(title).Bottom + Gap);
    page_.Accents.push_back(
        {.X1 = SafeLeft, .X2 = SafeLeft + AccentWidth - 1, .Y1 = accent, .Y2 = accent + AccentHeight - 1});
    page_.Texts.push_back(title);
    return accent + AccentHeight;
  }

  // --- items as lines of text ---

  [[nodiscard]] std::vector<std::string> ItemTexts() const {
    std::vector<std::string> texts;
    for (const PageItem& item : contents_.Items) {
      texts.push_back(item.Text);
    }
    return texts;
  }

  static constexpr int Cursor = 6;      // width of the mark beside an item
  static constexpr int CursorGap = 14;  // between the two
  static constexpr int ColumnGap = 24;
  static constexpr int RowGap = 4;  // least between two rows
  static constexpr int MostRowStep = 56;

  void PlaceItems(int top, int bottom) {
    constexpr std::size_t LongColumn = 5;  // more rows than this go to a second column if they fit there
    constexpr int AboveItems = 16;
    constexpr int BelowItems = 8;
    top += AboveItems;
    const int room = bottom - BelowItems - top;
    const std::vector<std::string> texts = ItemTexts();
    const int halfWidth = (SafeWidth - ColumnGap) / 2;
    const bool parts = texts.size() > LongColumn &&
                       fitter_.Fit(texts, FontSlot::Item, LeastPixels, TextWidth(halfWidth), room);
    const int columnWidth = parts ? halfWidth : SafeWidth;
    const std::size_t rows = parts ? (texts.size() + 1) / 2 : texts.size();
    const int step = EvenBelow(std::min(MostRowStep, room / static_cast<int>(rows)));
    const int pixels = fitter_.SizeFor(texts, FontSlot::Item, TextWidth(columnWidth), step - RowGap);
    // Lists begin at the same height, however short, as far as there is room.
    constexpr int MostSlack = 20;
    top += EvenBelow(std::min(MostSlack, (room - step * static_cast<int>(rows)) / 3));
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const int left = SafeLeft + (i < rows ? 0 : columnWidth + ColumnGap);
      PlaceItem(contents_.Items[i], left, top + step * static_cast<int>(i % rows), step, pixels, columnWidth);
    }
  }

  static constexpr int TextWidth(int columnWidth) { return columnWidth - Cursor - CursorGap; }

  void PlaceItem(const PageItem& item, int left, int top, int step, int pixels, int columnWidth) {
    constexpr int Beside = 6;
    PageText text = fitter_.Line(item.Text, FontSlot::Item, pixels, left + Cursor + CursorGap, top,
                                 TextWidth(columnWidth));
    const Footprint covers = fitter_.Covers(text);
    const int inset = (step - covers.Height()) / 2;
    text.Y += inset;
    const int y1 = EvenAbove(std::max(top, text.Y + covers.Top));
    const int y2 = EvenBelow(std::min(top + step, text.Y + covers.Bottom));
    page_.Texts.push_back(text);
    page_.Marks.push_back(
        {.Box =
             PageBox{
                 .X1 = left, .X2 = left + Cursor - 1, .Y1 = y1 - SublayerRise, .Y2 = y2 - 1 - SublayerRise},
         .Text = Lit(text)});
    AddButton(left - Beside, std::min(text.X + covers.Right + Beside, FullWidth), top, top + step, TextScheme,
              item.Key);
  }

  // --- thumbnails ---

  struct ThumbnailSize {
    int Width;
    int Height;
  };
  // The largest of the film's shape that fits.
  [[nodiscard]] ThumbnailSize SizeWithin(int width, int height) const {
    const Shape film = ShapeOf(ground_.FilmIsWide);
    const double ratio = film.Wide / film.High / PixelShape(ground_);
    const int wide = std::min(width, static_cast<int>(height * ratio));
    return {EvenBelow(wide), EvenBelow(static_cast<int>(std::lround(wide / ratio)))};
  }

  static constexpr int Rim = 4;  // of the mark around a thumbnail

  void PlaceThumbnails(int top, int bottom) {
    constexpr std::size_t Columns = 3;
    constexpr int Gap = 16;  // between columns
    constexpr int Across = static_cast<int>(Columns);
    const int rowStep = ground_.IsNtsc ? 125 : 150;
    const int labelRoom = (SafeWidth + Gap) / Across - Gap;
    const std::vector<std::string> texts = LabelTexts();
    const int pixels = fitter_.SizeFor(texts, FontSlot::Small, labelRoom, height_);
    const int labelHeight = LabelHeight(texts, pixels);
    const ThumbnailSize size = SizeWithin(labelRoom - 2 * Rim, rowStep - 2 * Rim - labelHeight - RowGap);
    // Without names the last column ends where the safe area does; names need the room to its right.
    const int columnStep =
        contents_.HasNames ? labelRoom + Gap : (SafeWidth - size.Width - 2 * Rim) / (Across - 1);
    const int rows = static_cast<int>(ChaptersAPage / Columns);
    const int block = (rows - 1) * rowStep + size.Height + 2 * Rim + labelHeight;
    const int first = EvenAbove(top + std::max(0, bottom - top - block) / 2) + Rim;
    for (std::size_t i = 0; i < contents_.Items.size(); ++i) {
      const PageItem& item = contents_.Items[i];
      PlaceThumbnail(item,
                     {.Scene = item.Scene.value_or(0),
                      .X = SafeLeft + Rim + static_cast<int>(i % Columns) * columnStep,
                      .Y = first + static_cast<int>(i / Columns) * rowStep,
                      .Width = size.Width,
                      .Height = size.Height},
                     pixels, labelRoom - Rim);
    }
  }

  // The numbers and, as far as there are any, the names.
  [[nodiscard]] std::vector<std::string> LabelTexts() const {
    std::vector<std::string> texts = ItemTexts();
    for (const PageItem& item : contents_.Items) {
      if (!item.Name.empty()) {
        texts.push_back(item.Name);
      }
    }
    return texts;
  }

  [[nodiscard]] int LabelHeight(const std::vector<std::string>& texts, int pixels) const {
    int height = 0;
    for (const std::string& text : texts) {
      height = std::max(
          height, fitter_.Covers({.Text = text, .Slot = FontSlot::Small, .PixelHeight = pixels}).Height());
    }
    return height;
  }

  // The number and the name below the picture.
  void PlaceThumbnail(const PageItem& item, const PageThumbnail& picture, int pixels, int labelWidth) {
    constexpr int AfterNumber = 10;
    page_.Thumbnails.push_back(picture);
    const int labelTop = picture.Y + picture.Height + Rim;
    const PageText number = fitter_.Line(item.Text, FontSlot::Small, pixels, picture.X, labelTop, labelWidth);
    const Footprint numberCovers = fitter_.Covers(number);
    int labelBottom = number.Y + numberCovers.Bottom;
    int labelRight = number.X + numberCovers.Right;
    page_.Texts.push_back(number);
    if (!item.Name.empty()) {
      const int left = labelRight + AfterNumber;
      const PageText name =
          fitter_.Line(item.Name, FontSlot::Small, pixels, left, labelTop, picture.X + labelWidth - left);
      const Footprint covers = fitter_.Covers(name);
      labelBottom = std::max(labelBottom, name.Y + covers.Bottom);
      labelRight = name.X + covers.Right;
      page_.Texts.push_back(name);
    }
    page_.Marks.push_back({.Box = PageBox{.X1 = picture.X - Rim,
                                          .X2 = picture.X + picture.Width + Rim - 1,
                                          .Y1 = picture.Y - Rim - SublayerRise,
                                          .Y2 = picture.Y + picture.Height + Rim - 1 - SublayerRise},
                           .Frame = Rim});
    AddButton(picture.X - Rim, std::max(labelRight, picture.X + picture.Width + Rim), picture.Y - Rim,
              labelBottom, ThumbnailScheme, item.Key);
  }

  // --- the bottom row: the main menu at its left, the arrows at its right ---

  struct BottomText {
    PageText Text;
    Footprint Covers;
    std::int16_t Scheme;
    const char* Key;
  };
  struct BottomRow {
    std::vector<BottomText> Texts;
    int Top;
  };

  [[nodiscard]] BottomRow BottomRowOf() const {
    const FontSlot mainSlot = contents_.Kind == PageKind::Chapter ? FontSlot::Small : FontSlot::Main;
    struct Wanted {
      const std::string& Text;
      FontSlot Slot;
      std::int16_t Scheme;
      const char* Key;
    };
    std::vector<Wanted> wanted;
    for (const Wanted& one : {Wanted{contents_.Previous, FontSlot::Small, TextScheme, menu_key::Previous},
                              Wanted{contents_.Main, mainSlot, MainScheme, menu_key::Main},
                              Wanted{contents_.Next, FontSlot::Small, TextScheme, menu_key::Next}}) {
      if (!one.Text.empty()) {
        wanted.push_back(one);
      }
    }
    BottomRow row{.Texts = {}, .Top = safeBottom_};
    const int count = std::max(1, static_cast<int>(wanted.size()));
    const int most = (SafeWidth - (count - 1) * BottomGap) / count;
    for (const Wanted& one : wanted) {
      const int pixels = fitter_.SizeFor({one.Text}, one.Slot, most, height_);
      const PageText text = fitter_.Line(one.Text, one.Slot, pixels, 0, 0, most);
      row.Texts.push_back({text, fitter_.Covers(text), one.Scheme, one.Key});
      row.Top = std::min(row.Top, EvenBelow(safeBottom_ - row.Texts.back().Covers.Height()));
    }
    return row;
  }

  static constexpr int BottomGap = 24;

  void PlaceBottom(BottomRow row) {
    constexpr int Beside = 6;
    int right = SafeRight;
    for (std::size_t i = row.Texts.size(); i-- > 0;) {
      BottomText& text = row.Texts[i];
      if (text.Scheme != MainScheme) {
        text.Text.X = right - text.Covers.Right;
        right -= text.Covers.Width() + BottomGap;
      } else {
        text.Text.X = SafeLeft - text.Covers.Left;
      }
      text.Text.Y = safeBottom_ - text.Covers.Bottom;
    }
    for (const BottomText& text : row.Texts) {
      page_.Texts.push_back(text.Text);
      page_.Marks.push_back({.Text = Lit(text.Text)});
      AddButton(text.Text.X + text.Covers.Left - Beside, text.Text.X + text.Covers.Right + Beside, row.Top,
                safeBottom_, text.Scheme, text.Key);
    }
  }

  const PageContents& contents_;
  const PageGround& ground_;
  int height_;
  int safeTop_;
  int safeBottom_;
  TextFitter fitter_;
  MenuPage page_;
};

}  // namespace

MenuPage PlaceFitted(const PageContents& contents, const PageGround& ground, const MenuLook& look,
                     const TextMeasure& measure) {
  return FittedPage(contents, ground, look, measure).Place();
}

}  // namespace quorvelant
