#include "ui/picture_geometry.h"

#include <gtest/gtest.h>

#include <QTransform>

#include "ui/button_areas.h"

namespace quorvelant {
namespace {

// The true shape of each view in a space, and every corner there and back.
TEST(PictureGeometry, KeepsTheShapeOfEachView) {
  struct Case {
    ViewMode View;
    bool Ntsc;
    QRectF Space;
    QRectF Screen;
    QRectF Target;
    QRectF Source;  // of a picture of 720 x 576
  };
  const QRectF whole(0, 0, 720, 576);
  const std::vector<Case> cases{
      {ViewMode::Normal, false, {0, 0, 800, 600}, {0, 0, 800, 600}, {0, 0, 800, 600}, whole},
      {ViewMode::Normal, true, {0, 0, 1000, 600}, {100, 0, 800, 600}, {100, 0, 800, 600}, whole},
      {ViewMode::Wide, false, {0, 0, 1600, 1200}, {0, 150, 1600, 900}, {0, 150, 1600, 900}, whole},
      {ViewMode::LetterBox, false, {0, 0, 800, 600}, {0, 0, 800, 600}, {0, 75, 800, 450}, whole},
      {ViewMode::Pan, false, {10, 20, 400, 300}, {10, 20, 400, 300}, {10, 20, 400, 300}, {90, 0, 540, 576}}};
  for (const Case& each : cases) {
    const PictureGeometry geometry(each.View, each.Ntsc, each.Space);
    EXPECT_EQ(geometry.Screen(), each.Screen);
    EXPECT_EQ(geometry.PictureTarget(), each.Target);
    EXPECT_EQ(geometry.PictureSource({720, 576}), each.Source);
    const int lines = each.Ntsc ? 480 : 576;
    for (const QPoint pixel : {QPoint(0, 0), QPoint(719, lines - 1), QPoint(359, 7), QPoint(1, lines / 2)}) {
      EXPECT_EQ(geometry.PixelAt(geometry.ToSpace(QPointF(pixel) + QPointF(0.5, 0.5))), pixel);
    }
    const HighlightArea all{.X1 = 0, .X2 = 719, .Y1 = 0, .Y2 = lines - 1};
    EXPECT_EQ(geometry.ToSpace(all), each.Screen);
    // Corners in any order, cut at the edges of the picture.
    EXPECT_EQ(geometry.AreaBetween(each.Screen.bottomRight() + QPointF(50, 50),
                                   each.Screen.topLeft() - QPointF(50, 50)),
              all);
  }
  EXPECT_GE(PictureGeometry(ViewMode::Wide, false, {}).Screen().width(), 1.0);  // a pane that is folded up
}

// At the edges of the picture there may be no room for the least button.
TEST(ButtonAreas, AreResizedWithinThePicture) {
  const struct {
    HighlightArea Area;
    QPoint By;
    HighlightArea Resized;
  } cases[] = {
      {{.X1 = 10, .X2 = 50, .Y1 = 10, .Y2 = 50}, {5, -5}, {.X1 = 10, .X2 = 55, .Y1 = 10, .Y2 = 45}},
      {{.X1 = 10, .X2 = 50, .Y1 = 10, .Y2 = 50}, {-500, 900}, {.X1 = 10, .X2 = 13, .Y1 = 10, .Y2 = 575}},
      {{.X1 = 718, .X2 = 719, .Y1 = 574, .Y2 = 575}, {1, 1}, {.X1 = 718, .X2 = 719, .Y1 = 574, .Y2 = 575}},
      {{.X1 = 717, .X2 = 719, .Y1 = 575, .Y2 = 575}, {-5, -5}, {.X1 = 717, .X2 = 719, .Y1 = 575, .Y2 = 575}},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(ResizedBy(test.Area, test.By, 576), test.Resized) << test.Area.X1;
  }
}

// What covers one part of the picture in every view, and the way back.
TEST(PictureGeometry, FindsAnAreaOfThePictureInEachView) {
  struct Case {
    ViewMode View;
    HighlightArea Whole, Shown;
    bool Returns;
  };
  const HighlightArea area{.X1 = 180, .X2 = 539, .Y1 = 96, .Y2 = 288};
  const std::vector<Case> cases{
      {ViewMode::Normal, area, area, true},
      {ViewMode::Wide, area, area, true},
      {ViewMode::LetterBox, area, {.X1 = 180, .X2 = 539, .Y1 = 144, .Y2 = 288}, true},
      {ViewMode::Pan, area, {.X1 = 120, .X2 = 599, .Y1 = 96, .Y2 = 288}, true},
      {ViewMode::Pan,
       {.X1 = 0, .X2 = 200, .Y1 = 0, .Y2 = 20},
       {.X1 = 0, .X2 = 147, .Y1 = 0, .Y2 = 20},
       false}};
  for (const Case& each : cases) {
    EXPECT_EQ(AreaInView(each.Whole, each.View, false), each.Shown);
    EXPECT_EQ(AreaFromView(each.Shown, each.View, false) == each.Whole, each.Returns);
  }
}

}  // namespace
}  // namespace quorvelant
