#include "menu/page_painter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "disc/video_standard.h"
#include "menu/backdrop.h"
#include "menu/mark_colors.h"
#include "menu/page_text.h"

namespace quorvelant {

namespace {

constexpr int Whole = 255;

// The colour of a pixel of which `share` of 255 is covered.
Color Mixed(Color under, Color over, int share) {
  Color mixed = 0;
  for (const unsigned shift : {0U, 8U, 16U}) {
    const int below = static_cast<int>(under >> shift & 255U);
    const int above = static_cast<int>(over >> shift & 255U);
    mixed |= static_cast<Color>((below * (Whole - share) + above * share + Whole / 2) / Whole) << shift;
  }
  return mixed;
}

// A part of a picture; ends are the first beyond it.
struct Area {
  int Left;
  int Top;
  int Right;
  int Bottom;

  [[nodiscard]] Area Within(const Picture& picture) const {
    return {std::max(Left, 0), std::max(Top, 0), std::min(Right, picture.Width),
            std::min(Bottom, picture.Height)};
  }
  [[nodiscard]] Area Grown(int by) const { return {Left - by, Top - by, Right + by, Bottom + by}; }
};

Area AreaOf(const PageBox& box) {
  return {box.X1, box.Y1, box.X2 + 1, box.Y2 + 1};
}

void FillArea(Picture& picture, const Area& area, Color color) {
  const Area inside = area.Within(picture);
  for (int y = inside.Top; y < inside.Bottom; ++y) {
    for (int x = inside.Left; x < inside.Right; ++x) {
      picture.Set(x, y, color);
    }
  }
}

void FillRim(Picture& picture, const Area& area, int rim, Color color) {
  FillArea(picture, {area.Left, area.Top, area.Right, area.Top + rim}, color);
  FillArea(picture, {area.Left, area.Bottom - rim, area.Right, area.Bottom}, color);
  FillArea(picture, {area.Left, area.Top, area.Left + rim, area.Bottom}, color);
  FillArea(picture, {area.Right - rim, area.Top, area.Right, area.Bottom}, color);
}

void Paste(Picture& picture, const Picture& part, int left, int top) {
  const Area inside = Area{left, top, left + part.Width, top + part.Height}.Within(picture);
  for (int y = inside.Top; y < inside.Bottom; ++y) {
    for (int x = inside.Left; x < inside.Right; ++x) {
      picture.Set(x, y, part.At(x - left, y - top));
    }
  }
}

// How much of each pixel a mark covers, 0 to 255, on a picture of that size.
class Coverage {
 public:
  explicit Coverage(const Area& area)
      : area_(area),
        width_(std::max(area.Right - area.Left, 0)),
        height_(std::max(area.Bottom - area.Top, 0)),
        cover_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

  // Of a text, drawn into the area.
  static Coverage OfText(const PageText& text, TextStyle style, const Area& area, PictureService& pictures) {
    Coverage coverage(area);
    if (coverage.cover_.empty()) {
      return coverage;
    }
    Picture letters(coverage.width_, coverage.height_);
    style.Color = 0xFFFFFF;
    pictures.DrawText(letters, text.X - area.Left, text.Y - area.Top, text.Text, style);
    for (std::size_t i = 0; i < coverage.cover_.size(); ++i) {
      coverage.cover_[i] = letters.Pixels[3 * i];
    }
    return coverage;
  }

  // Of a filled area within a wider one.
  static Coverage OfArea(const Area& filled, const Area& around) {
    Coverage coverage(around);
    for (int y = filled.Top; y < filled.Bottom; ++y) {
      const auto row = coverage.cover_.begin() +
                       static_cast<std::ptrdiff_t>(y - around.Top) * coverage.width_ + filled.Left -
                       around.Left;
      std::fill_n(row, filled.Right - filled.Left, static_cast<std::uint8_t>(Whole));
    }
    return coverage;
  }

  // Each pixel becomes the mean of those up to `reach` away in a row, then in a column.
  void Blur(int reach) {
    BlurLines(reach, width_, height_, 1, width_);
    BlurLines(reach, height_, width_, width_, 1);
  }

  // Lays a colour on the picture, `percent` dense and moved down by `drop`.
  void Lay(Picture& picture, Color color, int percent, int drop) const {
    const Area inside = Area{area_.Left, area_.Top + drop, area_.Right, area_.Bottom + drop}.Within(picture);
    for (int y = inside.Top; y < inside.Bottom; ++y) {
      for (int x = inside.Left; x < inside.Right; ++x) {
        const int share = std::min(At(x, y - drop) * percent / 100, Whole);
        if (share > 0) {
          picture.Set(x, y, Mixed(picture.At(x, y), color, share));
        }
      }
    }
  }

  [[nodiscard]] const Area& Where() const { return area_; }
  [[nodiscard]] int At(int x, int y) const {
    return cover_[static_cast<std::size_t>(y - area_.Top) * static_cast<std::size_t>(width_) +
                  static_cast<std::size_t>(x - area_.Left)];
  }

 private:
  void BlurLines(int reach, int length, int lines, int step, int lineStep) {
    std::vector<int> line(static_cast<std::size_t>(length));
    const auto level = [&line](int i) -> int& { return line[static_cast<std::size_t>(i)]; };
    for (int start = 0; start < lines; ++start) {
      const auto at = [&](int i) {
        return static_cast<std::size_t>(start) * static_cast<std::size_t>(lineStep) +
               static_cast<std::size_t>(i) * static_cast<std::size_t>(step);
      };
      for (int i = 0; i < length; ++i) {
        level(i) = cover_[at(i)];
      }
      int sum = 0;
      for (int i = -reach; i < length; ++i) {
        sum += i + reach < length ? level(i + reach) : 0;
        sum -= i - reach - 1 >= 0 ? level(i - reach - 1) : 0;
        if (i >= 0) {
          cover_[at(i)] = static_cast<std::uint8_t>(sum / (2 * reach + 1));
        }
      }
    }
  }

  Area area_;
  int width_;
  int height_;
  std::vector<std::uint8_t> cover_;
};

class PagePainter {
 public:
  PagePainter(const MenuPage& page, const MenuLook& look, bool isNtsc, PictureService& pictures)
      : page_(page), look_(look), height_(FullHeight(isNtsc)), pictures_(pictures) {}

  [[nodiscard]] Picture Normal(PageKind kind, std::size_t track, const ThumbnailSource& thumbnails) {
    Picture picture = Background(kind);
    for (const PageThumbnail& place : page_.Thumbnails) {
      PlaceThumbnail(picture, place, thumbnails ? thumbnails(track, place.Scene) : Picture());
    }
    for (const PageBox& accent : page_.Accents) {
      FillArea(picture, AreaOf(accent), look_.Accent);
    }
    for (const PageText& text : page_.Texts) {
      DrawShaded(picture, text);
    }
    return picture;
  }

  [[nodiscard]] Picture Sublayer(const MarkColors& colors) {
    Picture picture(FullWidth, height_);
    FillArea(picture, {0, 0, FullWidth, height_}, colors.Pattern);
    for (const PageMark& mark : page_.Marks) {
      if (mark.Box && mark.Frame > 0) {
        FillRim(picture, AreaOf(*mark.Box), mark.Frame, colors.Background);
      } else if (mark.Box) {
        FillArea(picture, AreaOf(*mark.Box), colors.Background);
      }
      if (mark.Text) {
        MarkText(picture, *mark.Text, colors);
      }
    }
    return picture;
  }

 private:
  [[nodiscard]] Picture Background(PageKind kind) {
    const std::string& file = look_.Backgrounds.at(static_cast<std::size_t>(kind));
    if (file.empty()) {
      return PaintBackdrop(look_.Ground, FullWidth, height_);
    }
    const Picture picture = pictures_.Load(file);
    return picture.Width == FullWidth && picture.Height == height_
               ? picture
               : pictures_.Scale(picture, FullWidth, height_, true);
  }

  // Framed by a line where the theme shades; a dark place where there is no picture.
  void PlaceThumbnail(Picture& page, const PageThumbnail& place, const Picture& picture) {
    constexpr Color Empty = 0x202020;
    const Area area{place.X, place.Y, place.X + place.Width, place.Y + place.Height};
    if (look_.ShadePercent > 0) {
      ShadeUnder(page, area);
    }
    if (picture.Width < 1 || picture.Height < 1) {
      FillArea(page, area, Empty);
      return;
    }
    Paste(page, pictures_.Scale(picture, place.Width, place.Height, true), place.X, place.Y);
  }

  // A soft shadow that falls below a picture.
  void ShadeUnder(Picture& page, const Area& area) const {
    constexpr int Reach = 6;
    constexpr int Drop = 3;
    constexpr Color Dark = 0;
    constexpr int Percent = 45;
    const Area wide = area.Grown(2 * Reach);
    Coverage shade = Coverage::OfArea(area, wide);
    shade.Blur(Reach);
    shade.Lay(page, Dark, Percent, Drop);
  }

  void DrawShaded(Picture& picture, const PageText& text) {
    const TextStyle style = StyleOf(text, look_);
    if (look_.ShadePercent > 0) {
      constexpr int Reach = 2;
      constexpr int Drop = 1;
      constexpr int Spread = 2;  // the blur thins letters out
      Coverage shade = Coverage::OfText(text, style, AreaCovered(text, style).Grown(2 * Reach), pictures_);
      shade.Blur(Reach);
      shade.Lay(picture, look_.Shade, Spread * look_.ShadePercent, Drop);
    }
    pictures_.DrawText(picture, text.X, text.Y, text.Text, style);
  }

  [[nodiscard]] Area AreaCovered(const PageText& text, const TextStyle& style) {
    const TextSize size = pictures_.MeasureText(text.Text, style);
    return {text.X + std::min(0, size.InkLeft), text.Y + std::min(0, size.InkTop),
            text.X + std::max(size.Width, size.InkRight), text.Y + std::max(size.Height, size.InkBottom)};
  }

  // In the steps of coverage that the colours tell apart.
  void MarkText(Picture& picture, const PageText& text, const MarkColors& colors) {
    TextStyle style = StyleOf(text, look_);
    style.Smooth = colors.Emphasis1 != colors.Pattern;
    const Coverage letters =
        Coverage::OfText(text, style, AreaCovered(text, style).Within(picture), pictures_);
    const std::array<Color, 4> steps{colors.Pattern, colors.Emphasis1, colors.Emphasis2, colors.Background};
    constexpr int Step = Whole / 3;
    const Area& area = letters.Where();
    for (int y = area.Top; y < area.Bottom; ++y) {
      for (int x = area.Left; x < area.Right; ++x) {
        const int share = letters.At(x, y);
        const auto step =
            static_cast<std::size_t>(style.Smooth ? (share + Step / 2) / Step : share / Whole * 3);
        if (step > 0) {
          picture.Set(x, y, steps.at(step));
        }
      }
    }
  }

  const MenuPage& page_;
  const MenuLook& look_;
  int height_;
  PictureService& pictures_;
};

constexpr int BoxMarkContrast = 6;

// What a player shows of a mark's pixel, of 255.
int ShareOf(Color color) {
  return color == SoftMarks.Background  ? Whole
         : color == SoftMarks.Emphasis2 ? Whole * TwoThirdsMarkContrast / FullMarkContrast
         : color == SoftMarks.Emphasis1 ? Whole * ThirdMarkContrast / FullMarkContrast
                                        : 0;
}

}  // namespace

PaintedPage PaintPage(const MenuPage& page, PageKind kind, std::size_t track, const MenuLook& look,
                      bool isNtsc, const ThumbnailSource& thumbnails, PictureService& pictures,
                      const Rules& rules) {
  PagePainter painter(page, look, isNtsc, pictures);
  return {.Normal = painter.Normal(kind, track, thumbnails), .Sublayer = painter.Sublayer(MarksOf(rules))};
}

Picture PreviewPage(const PaintedPage& painted, const MenuPage& page, std::size_t button,
                    const MenuLook& look) {
  Picture preview = painted.Normal;
  if (button < page.Buttons.size() && button < page.Marks.size()) {
    const MenuButton& chosen = page.Buttons[button];
    const PageMark& mark = page.Marks[button];
    // A box that covers a thumbnail lets it shine through.
    const int contrast =
        mark.Box && mark.Frame == 0 && chosen.ColorScheme == 1 ? BoxMarkContrast : FullMarkContrast;
    const Area area = Area{chosen.X1, chosen.Y1, chosen.X2 + 1, chosen.Y2 + 1}.Within(preview);
    for (int y = std::max(area.Top, SublayerRise); y < area.Bottom; ++y) {
      for (int x = area.Left; x < area.Right; ++x) {
        const int share = ShareOf(painted.Sublayer.At(x, y - SublayerRise)) * contrast / FullMarkContrast;
        preview.Set(x, y, Mixed(preview.At(x, y), look.Selection, share));
      }
    }
  }
  constexpr Color Line = 0x60C060;
  const int acrossEdge = preview.Width / 10;
  const int downEdge = preview.Height / 10;
  const Area safe{acrossEdge, downEdge, preview.Width - acrossEdge, preview.Height - downEdge};
  FillRim(preview, safe.Grown(1), 1, Line);
  return preview;
}

}  // namespace quorvelant
