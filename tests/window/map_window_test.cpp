#include "window/map_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QFontInfo>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QLabel>
#include <QListWidget>
#include <QTest>

#include "edit/structure.h"
#include "open_window.h"
#include "support/pressed_action.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

class OpenMap {
 public:
  OpenMap() {
    Open.Window.Open({CopyOfExample(Folder)});
    Open.Settle();
  }
  MapWindow& Show() {
    Open.Key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::qWait(20);
    return *Open.Window.findChild<MapWindow*>();
  }
  bool AddTitle() {
    return Open.Doc()
        .Do([](EditSession& session, Consent) { return NewTitle(session, "VTS2", "Alone"); })
        .has_value();
  }

  TempFolder Folder;
  OpenWindow Open{Folder};
};

int Lost(const MapWindow& map) {
  return static_cast<int>(map.findChild<QListWidget*>()
                              ->findItems(QStringLiteral("nobody comes here"), Qt::MatchContains)
                              .size());
}

// Every chain has a box and a row; what nobody reaches says so, and box and row lead to its place.
TEST(MapOfTheDisc, ShowsWhatNobodyReaches) {
  OpenMap bench;
  ASSERT_TRUE(bench.AddTitle());
  MapWindow& map = bench.Show();
  auto& chains = *map.findChild<QListWidget*>();
  auto& chart = *map.findChild<MapChart*>();
  ASSERT_EQ(Lost(map), 1);
  EXPECT_GT(chains.count(), 1);
  const auto lost = chains.findItems(QStringLiteral("nobody comes here"), Qt::MatchContains).front();
  chains.setCurrentItem(lost);
  EXPECT_EQ(lost->data(Qt::AccessibleDescriptionRole).toString(),
            QStringLiteral("Here lead: nothing. It leads to: nothing."));
  EXPECT_THAT(chains.item(0)->data(Qt::AccessibleDescriptionRole).toString().toStdString(),
              testing::HasSubstr("It leads to: title menu (VMG1.LANGUAGE1.PGC1)"));
  auto& words = *map.findChild<QLabel*>(QStringLiteral("Words"));
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&words)->text(QAccessible::Name), words.text());
  QTest::keyClick(&chains, Qt::Key_Return);
  EXPECT_EQ(Shown(bench.Open.Window.Parts().Chosen.Key()), lost->data(Qt::UserRole).toString());

  QList<QGraphicsItem*> boxes = chart.scene()->items();
  boxes.removeIf([](const QGraphicsItem* item) { return !item->data(0).isValid(); });
  ASSERT_EQ(boxes.size(), chains.count());
  for (QGraphicsItem* const box : boxes) {
    chart.ensureVisible(box);
    const QPoint place = chart.mapFromScene(box->sceneBoundingRect().center());
    QTest::mouseClick(chart.viewport(), Qt::LeftButton, {}, place);
    ASSERT_EQ(chains.currentRow(), box->data(0).toInt());
    ASSERT_EQ(Shown(bench.Open.Window.Parts().Chosen.Key()),
              chains.currentItem()->data(Qt::UserRole).toString());
  }
  const double before = chart.transform().m11();
  EXPECT_GE(before * QFontInfo(chart.scene()->font()).pixelSize(), 8);
  for (const auto& [key, grows] : {std::pair(Qt::Key_Plus, true), std::pair(Qt::Key_Minus, false)}) {
    const double now = chart.transform().m11();
    QTest::keyClick(&map, key, Qt::ControlModifier);
    QTest::qWait(150);  // a key of its own shows as pressed
    EXPECT_EQ(chart.transform().m11() > now, grows);
  }
  EXPECT_NEAR(chart.transform().m11(), before, 0.01);
}

// It is never a map of what the project was without saying so.
TEST(MapOfTheDisc, FollowsTheProject) {
  OpenMap bench;
  MapWindow& map = bench.Show();
  const int all = map.findChild<QListWidget*>()->count();
  EXPECT_EQ(Lost(map), 0);
  ASSERT_TRUE(bench.AddTitle());
  EXPECT_TRUE(OpenWindow::Wait([&map] { return Lost(map) == 1; }, 5000));
  map.SetPatience(-1);  // as where it takes long
  bench.Open.Doc().Undo();
  EXPECT_EQ(Lost(map), 1);
  EXPECT_THAT(map.findChild<QLabel*>(QStringLiteral("Words"))->text().toStdString(),
              testing::HasSubstr("has changed"));
  QTest::keyClick(&map, Qt::Key_F5);
  QTest::qWait(150);
  EXPECT_EQ(Lost(map), 0);
  Press(*bench.Open.Window.Parts().Commands.Of(ActionId::NewProject));
  QTest::qWait(50);
  QTest::keyClick(&map, Qt::Key_F5);
  QTest::qWait(150);
  EXPECT_LT(map.findChild<QListWidget*>()->count(), all);
}

}  // namespace
}  // namespace quorvelant
