#include "ui/overlay_image.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "edit/live_elements.h"
#include "model/chain_palette.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

bool Plays(const Cell_P& cell, const Track& shown, std::size_t track, std::int64_t frame, bool atFrame) {
  if (cell.SegmentUsed != static_cast<std::int32_t>(track)) {
    return false;
  }
  if (!atFrame) {
    return true;
  }
  // The scene that the frame lies in is the last that starts at or before it.
  const auto after = std::ranges::upper_bound(shown.Scenes, frame, {}, &Scene::Frame);
  const auto scene = after == shown.Scenes.begin() ? 0 : (after - shown.Scenes.begin()) - 1;
  return cell.pScene == scene;
}

// The PGC of a key, itself or one that the element stands in.
const PGC_P* ChainAt(const Project& project, std::string_view key) {
  const PGC_P* found = nullptr;
  for (const auto& at : LivePgcs(project)) {
    const std::string_view chain = at.Key();
    if (key.starts_with(chain) && (key.size() == chain.size() || key[chain.size()] == '.')) {
      found = at.Chain;
    }
  }
  return found;
}

const PGC_P* ChainPlaying(const Project& project, std::size_t track, std::int64_t frame,
                          const std::string& chosenKey) {
  const Track& shown = project.Tracks[track];
  const auto plays = [&](const PGC_P& chain, bool atFrame) {
    return std::ranges::any_of(
        LiveCells(chain), [&](const Cell_P* cell) { return Plays(*cell, shown, track, frame, atFrame); });
  };
  if (const PGC_P* chosen = ChainAt(project, chosenKey); chosen != nullptr && plays(*chosen, false)) {
    return chosen;
  }
  for (const bool atFrame : {true, false}) {
    for (const auto& at : LivePgcs(project)) {
      if (plays(*at.Chain, atFrame)) {
        return at.Chain;
      }
    }
  }
  return nullptr;
}

std::array<QRgb, 4> PixelsOf(const PaletteColors& palette, const ColorQuad& colors,
                             const ColorQuad& contrasts) {
  constexpr int AlphaStep = 17;  // 15 is opaque
  std::array<QRgb, 4> pixels{};
  for (std::size_t code = 0; code < pixels.size(); ++code) {
    const std::size_t place = QuadPlace(static_cast<PixelCode>(code));
    const Color color = palette.at(static_cast<std::size_t>(colors.at(place)) & 15U);
    pixels.at(code) =
        qPremultiply(qRgba(static_cast<int>(color & 0xFFU), static_cast<int>(color >> 8U & 0xFFU),
                           static_cast<int>(color >> 16U & 0xFFU), (contrasts.at(place) & 15) * AlphaStep));
  }
  return pixels;
}

void Paint(QImage& image, const ShownUnit& unit, HighlightArea area, const std::array<QRgb, 4>& pixels) {
  area.X1 = std::max({area.X1, unit.Area.X1, 0});
  area.Y1 = std::max({area.Y1, unit.Area.Y1, 0});
  area.X2 = std::min({area.X2, unit.Area.X2, image.width() - 1});
  area.Y2 = std::min({area.Y2, unit.Area.Y2, image.height() - 1});
  for (int line = area.Y1; line <= area.Y2; ++line) {
    auto* const row = reinterpret_cast<QRgb*>(image.scanLine(line));
    for (int column = area.X1; column <= area.X2; ++column) {
      row[column] = pixels.at(static_cast<std::size_t>(unit.At(column, line)));
    }
  }
}

}  // namespace

PaletteColors ShownPalette(const Project& project, std::size_t track, std::int64_t frame,
                           const std::string& chosenKey) {
  const PGC_P* const chain = ChainPlaying(project, track, frame, chosenKey);
  const Palette_P* const palette =
      chain != nullptr ? PaletteOf(*chain, project) : PaletteOf(PGC_P(), project);
  return palette != nullptr ? palette->PaletteColors : LegiblePalette;
}

std::optional<ButtonLook> LookOf(const HighlightPlay& set, const HighlightButton& button, std::size_t group,
                                 ButtonState state) {
  if (state == ButtonState::Normal || group >= button.Areas.size()) {
    return std::nullopt;
  }
  const auto scheme = static_cast<std::size_t>(std::clamp(button.ColorScheme, 1, 3)) - 1;
  const ColorScheme& colors = set.Schemes.at(scheme);
  const bool selected = state == ButtonState::Selected;
  return ButtonLook{.Area = button.Areas.at(group),
                    .Colors = selected ? colors.SelectionColor : colors.ActionColor,
                    .Contrasts = selected ? colors.SelectionContrast : colors.ActionContrast};
}

QImage OverlayImage(const ShownUnit& unit, const PaletteColors& palette, bool ntsc,
                    const std::vector<ButtonLook>& buttons) {
  QImage image(ScreenWidth, ScreenHeight(ntsc), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  Paint(image, unit, {.X1 = 0, .X2 = image.width(), .Y1 = 0, .Y2 = image.height()},
        PixelsOf(palette, unit.ColorIndexes, unit.Contrasts));
  std::for_each(buttons.rbegin(), buttons.rend(), [&](const ButtonLook& look) {
    Paint(image, unit, look.Area, PixelsOf(palette, look.Colors, look.Contrasts));
  });
  return image;
}

bool ShowsIn(const ShownUnit& unit, const HighlightArea& area, const ColorQuad& contrasts) {
  for (int line = std::max(area.Y1, unit.Area.Y1); line <= std::min(area.Y2, unit.Area.Y2); ++line) {
    for (int column = std::max(area.X1, unit.Area.X1); column <= std::min(area.X2, unit.Area.X2); ++column) {
      if (contrasts.at(QuadPlace(unit.At(column, line))) > 0) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace quorvelant
