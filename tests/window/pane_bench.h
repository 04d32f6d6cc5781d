// What a pane works with, without a window around it.
#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <string>

#include "platform/platform_pictures.h"
#include "support/pressed_action.h"
#include "support/scripted_answers.h"
#include "window/icons.h"
#include "window/window_parts.h"

namespace quorvelant {

class PaneBench {
 public:
  PaneBench() {
    LoadResources();
    new QVBoxLayout(&Host);
    QObject::connect(&Speaks, &Voice::Told, [this](const Message& message) { Told += message.Code; });
  }
  // Shows the pane alone, with the keys.
  template <class Pane>
  Pane& Open() {
    auto* const pane = new Pane(Parts);
    Host.layout()->addWidget(pane);
    Host.resize(1000, 600);
    Host.show();
    Host.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Host));
    return *pane;
  }
  void Press(ActionId id) {
    Commands.Refresh();
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(Commands.Of(id)->isEnabled()) << Commands.Of(id)->text().toStdString();
    quorvelant::Press(*Commands.Of(id));
  }

  ScriptedAnswers Answers;
  Voice Speaks{Answers};
  Document Doc{{}, {}, Speaks};
  Selection Chosen{Doc};
  Jobs Work{Speaks};
  std::unique_ptr<PictureService> Pictures = MakePlatformPictures();
  Viewer View{Doc, Chosen, Work, *Pictures};
  QWidget Host;
  Actions Commands{&Host};
  Settings Options;
  Simulation Player{Doc, Work, *Pictures};
  WindowParts Parts{Doc, Chosen, View, Player, Work, Commands, Answers, *Pictures, Options, {}, {}, {}, {}};
  std::string Told;  // the codes of all messages
};

// Writes a text into a cell by keys alone: what stands in the way, or nothing where the editor is gone.
inline QString WriteCell(QTableView& table, int row, int column, const QString& text) {
  table.setCurrentIndex(table.model()->index(row, column));
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_Return);
  auto* const line = table.viewport()->findChild<QLineEdit*>();
  if (line == nullptr) {
    return QStringLiteral("no editor");
  }
  line->selectAll();
  QTest::keyClick(line, Qt::Key_Delete);
  QTest::keyClicks(line, text);
  QTest::keyClick(line, Qt::Key_Return);
  const auto* const refusal = table.viewport()->findChild<QLabel*>(QStringLiteral("Refusal"));
  if (refusal == nullptr) {
    QTest::qWait(0);  // the editor goes with the next events
    return {};
  }
  const QString words = refusal->text();
  EXPECT_EQ(line->text(), text);  // to be mended
  QTest::keyClick(line, Qt::Key_Escape);
  QTest::qWait(0);
  return words;
}

}  // namespace quorvelant
