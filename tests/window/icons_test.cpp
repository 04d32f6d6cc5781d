#include "window/icons.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <filesystem>

#include "support/folders.h"
#include "window/actions.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

int CountInked(const QImage& image, const QColor& color) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      count += pixel.alpha() == 255 && pixel.rgb() == color.rgb() ? 1 : 0;
    }
  }
  return count;
}

TEST(Icons, AreThereForEveryActionThatNamesOne) {
  for (const ActionRow& row : ActionTable()) {
    EXPECT_TRUE(row.Icon.empty() || !IconNamed(row.Icon).isNull()) << row.Icon;
  }
  EXPECT_TRUE(IconNamed("no-such-drawing").isNull());
  EXPECT_TRUE(IconNamed("").isNull());
  EXPECT_EQ(ApplicationIcon().availableSizes().size(), 7);
}

// Each drawing has its pixels: 24, and 48 for fine screens.
TEST(Icons, HavePixelsOfBothSizes) {
  LoadResources();
  int count = 0;
  for (const auto& entry : fs::directory_iterator(SourceFile("data/icons/actions"))) {
    if (entry.path().extension() == ".svg") {
      ++count;
      const std::string name = entry.path().stem().string();
      EXPECT_EQ(QImage(IconFile(name, false)).size(), QSize(24, 24)) << name;
      EXPECT_EQ(QImage(IconFile(name, true)).size(), QSize(48, 48)) << name;
    }
  }
  EXPECT_GT(count, 30);
}

TEST(Icons, FollowThePaletteFromLightToDark) {
  const QPalette before = QGuiApplication::palette();
  const QIcon icon = IconNamed("save");
  for (const auto& [text, faint] : {std::pair{QColor(20, 20, 20), QColor(150, 150, 150)},
                                    {QColor(240, 240, 240), QColor(110, 110, 110)}}) {
    QPalette palette = before;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, faint);
    QGuiApplication::setPalette(palette);
    for (const int side : {16, 24, 36, 48}) {
      EXPECT_EQ(icon.pixmap(QSize(side, side), 1.0).size(), QSize(side, side));
    }
    EXPECT_GT(CountInked(icon.pixmap(QSize(24, 24), 2.0).toImage(), text), 50);
    EXPECT_GT(CountInked(icon.pixmap(QSize(24, 24), 2.0, QIcon::Disabled).toImage(), faint), 50);
  }
  QGuiApplication::setPalette(before);
}

}  // namespace
}  // namespace quorvelant
