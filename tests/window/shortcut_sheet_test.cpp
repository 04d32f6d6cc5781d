#include "window/shortcut_sheet.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>
#include <map>

#include "window/actions.h"

namespace quorvelant {
namespace {

std::map<QString, QString> ShownRows(const QTreeWidget& rows) {
  std::map<QString, QString> shown;
  for (int i = 0; i < rows.topLevelItemCount(); ++i) {
    const QTreeWidgetItem* menu = rows.topLevelItem(i);
    for (int k = 0; k < menu->childCount(); ++k) {
      if (!menu->isHidden() && !menu->child(k)->isHidden()) {
        shown.emplace(menu->child(k)->text(0), menu->child(k)->text(1));
      }
    }
  }
  return shown;
}

TEST(ShortcutSheet, HasEachActionWithItsKeysAndNarrowsThem) {
  ShortcutSheet sheet;
  const auto* rows = sheet.findChild<QTreeWidget*>();
  const std::map<QString, QString> all = ShownRows(*rows);
  EXPECT_EQ(all.size(), ActionTable().size());
  EXPECT_EQ(all.at("Save As…"), "Ctrl+Shift+S");
  EXPECT_EQ(all.at("Rename"), "F2");
  auto* search = sheet.findChild<QLineEdit*>();
  QTest::keyClicks(search, "ctrl+shift+s");
  EXPECT_EQ(ShownRows(*rows), (std::map<QString, QString>{{"Save As…", "Ctrl+Shift+S"}}));
  search->setText("no such thing");
  EXPECT_TRUE(ShownRows(*rows).empty());
}

}  // namespace
}  // namespace quorvelant
