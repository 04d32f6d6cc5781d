#include <iostream>

#include "edit/button_sets.h"
#include "check/findings.h"
#include "desk/project_findings.h"
#include "model/highlight_groups.h"
#include "picture_window.h"
#include "ui/tree_model.h"

#include <QDropEvent>
#include <QMimeData>

namespace quorvelant {
namespace {

constexpr std::size_t Menu = 0;

// Codes of findings of a severity, with the sources looked at.
std::vector<std::string> FaultsOf(PictureWindow& window) {
  RecordingUi ui;
  ui.Unattended = true;
  std::vector<std::string> faults;
  for (const Message& finding :
       FindingsWithSources({}, window.Doc.Work(), Rules::Players, ui, window.Pictures.get())) {
    if (finding.Level == Severity::Error || std::string_view(finding.Code).starts_with("button")) {
      faults.push_back(std::string(finding.Code) + ": " + finding.Place + ": " + finding.Text);
    }
  }
  return faults;
}

void Drop(PictureWindow& window, const std::string& keys, QPoint at) {
  QMimeData data;
  data.setData(QString::fromLatin1(KeysMimeType), QByteArray::fromStdString(keys));
  QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window.View(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window.View(), &drop);
}

TEST(PicturePane, Grabs) {
  PictureWindow window;
  for (const unsigned track : {0U, 1U, 3U, 4U}) {
    window.Show(track);
    window.Look.ChooseButton(1);
    window.Settle();
    window.Frame.grab().save(QStringLiteral("/tmp/wt/w2-grab%1.png").arg(track));
  }
}

// Every gesture of the mouse and what it leaves in the set.
TEST(PicturePane, EditsButtonsByTheMouse) {
  PictureWindow window;
  window.Show(Menu);
  const auto before = window.Buttons(Menu);
  ASSERT_EQ(before.size(), 4U);
  const auto& second = before[1].Areas[0];

  // On a button: it moves, by what the mouse went, and stays within the picture.
  window.Drag(window.At(200, 280), window.At(220, 270));
  EXPECT_EQ(window.Buttons(Menu)[1].Areas[0].X1, second.X1 + 20);
  EXPECT_EQ(window.Buttons(Menu)[1].Areas[0].Y2, second.Y2 - 10);
  EXPECT_EQ(window.Look.Button(), 1U);
  window.Drag(window.At(200, 280), window.At(-500, 280));
  EXPECT_EQ(window.Buttons(Menu)[1].Areas[0].X1, 0);
  EXPECT_EQ(window.Buttons(Menu)[1].Areas[0].X2, second.X2 - second.X1);

  // On a handle: an edge follows.
  const auto moved = window.Buttons(Menu)[1].Areas[0];
  window.Drag(window.At(moved.X2 + 1, (moved.Y1 + moved.Y2) / 2), window.At(600, 400));
  EXPECT_NEAR(window.Buttons(Menu)[1].Areas[0].X2, 600, 1);
  EXPECT_EQ(window.Buttons(Menu)[1].Areas[0].Y2, moved.Y2);

  // With Alt: a link, in the direction in which the other lies.
  window.Drag(window.At(300, 210), window.At(300, 420), Qt::AltModifier);
  EXPECT_EQ(window.Buttons(Menu)[0].Down, "Button4");
  window.Drag(window.At(300, 420), window.At(10, 10), Qt::AltModifier);  // off any button: nothing
  EXPECT_EQ(window.Buttons(Menu)[3].Up, before[3].Up);

  // On nothing: a new one, of three pixels at least, whose commands stand in the cell.
  window.Drag(window.At(300, 500), window.At(302, 540));
  EXPECT_EQ(window.Buttons(Menu).size(), 4U);
  window.Drag(window.At(400, 540), window.At(300, 500));
  ASSERT_EQ(window.Buttons(Menu).size(), 5U);
  EXPECT_EQ(window.Buttons(Menu)[4].Areas[0], (HighlightArea{.X1 = 300, .X2 = 400, .Y1 = 500, .Y2 = 540}));
  EXPECT_EQ(window.Buttons(Menu)[4].Name, "Button_1");
  EXPECT_EQ(window.Look.Button(), 4U);
  EXPECT_TRUE(FindButton(window.Buttons(Menu), window.Buttons(Menu)[4].Up));

  // Each was one step.
  for (int steps = 0; steps < 5; ++steps) {
    window.Doc.Undo();
  }
  EXPECT_EQ(window.Buttons(Menu), before);
  EXPECT_EQ(window.Told, "");
}

TEST(PicturePane, EditsButtonsByKeys) {
  PictureWindow window;
  window.Show(Menu);
  const auto before = window.Buttons(Menu);
  const auto area = [&] { return window.Buttons(Menu)[0].Areas[0]; };
  window.View().setFocus();
  QTest::keyClick(&window.View(), Qt::Key_Tab);
  EXPECT_EQ(window.Look.Button(), 0U);
  QTest::keyClick(&window.View(), Qt::Key_Right);
  QTest::keyClick(&window.View(), Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(area(), (HighlightArea{.X1 = 121, .X2 = 601, .Y1 = 200, .Y2 = 238}));
  QTest::keyClick(&window.View(), Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(area(), (HighlightArea{.X1 = 121, .X2 = 600, .Y1 = 200, .Y2 = 238}));
  // Alt links to the nearest that way, then to the next.
  QTest::keyClick(&window.View(), Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(window.Buttons(Menu)[0].Down, "Button3");
  QTest::keyClick(&window.View(), Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(window.Buttons(Menu)[0].Down, "Button4");
  window.Answers.Texts.push_back("Play");
  QTest::keyClick(&window.View(), Qt::Key_F2);
  EXPECT_EQ(window.Buttons(Menu)[0].Name, "Play");
  EXPECT_EQ(window.Buttons(Menu)[1].Up, "Play");
  window.Answers.Texts.push_back("Button2");  // another's
  QTest::keyClick(&window.View(), Qt::Key_F2);
  EXPECT_EQ(window.Buttons(Menu)[0].Name, "Play");
  EXPECT_NE(window.Told.find("Button2"), std::string::npos);
  window.Answers.Yes.push_back(true);
  QTest::keyClick(&window.View(), Qt::Key_Delete);
  EXPECT_EQ(window.Buttons(Menu).size(), 3U);
  EXPECT_EQ(window.Buttons(Menu)[0].Name, "Button2");
  // To the last, and then out of the picture.
  for (int tab = 0; tab < 4; ++tab) {
    QTest::keyClick(&window.View(), Qt::Key_Tab);
  }
  EXPECT_FALSE(window.View().hasFocus());
  while (window.Doc.Session().CanUndo()) {
    window.Doc.Undo();
  }
  EXPECT_EQ(window.Buttons(Menu), before);
}

// What lies under the buttons: pixels of the screen against codes of the unit.
TEST(PicturePane, DrawsButtonsByTheirCodes) {
  PictureWindow window;
  window.Show(Menu);
  const auto colorAt = [&](int column, int line) {
    return QColor(window.View().grab().toImage().pixel(window.At(column, line)));
  };
  ASSERT_TRUE(window.Look.UnitNow());
  EXPECT_EQ(window.Look.UnitNow()->At(143, 277), PixelCode::Pattern);
  EXPECT_EQ(window.Look.UnitNow()->At(250, 277), PixelCode::Background);
  const QColor selected = colorAt(143, 277);
  const auto palette = ShownPalette(window.Doc.Work(), Menu, 0, {});
  EXPECT_EQ(selected.red(), palette[2] & 0xFF);
  EXPECT_EQ(selected.blue(), palette[2] >> 16);
  auto* const shown = window.Frame.findChild<QComboBox*>();
  ASSERT_NE(shown, nullptr);
  for (QComboBox* box : window.Frame.findChildren<QComboBox*>()) {
    if (box->accessibleName() == "Buttons shown as") {
      box->setCurrentIndex(2);
    }
  }
  EXPECT_EQ(colorAt(143, 277).red(), palette[3] & 0xFF);
  window.Look.ChooseButton(0);  // the others are normal then: see-through
  EXPECT_NE(colorAt(143, 277), selected);
}

// A title on the picture of a menu: button, name, command, links and pixels in one step.
TEST(PicturePane, MakesButtonsOfElements) {
  PictureWindow window;
  window.Show(Menu);
  EXPECT_EQ(FaultsOf(window), std::vector<std::string>());
  // Another still, which the menu shows, without buttons or subtitles of its own.
  const Project before = window.Doc.Work();
  Drop(window, "VTS1.TITLE2\n", window.At(360, 500));
  const auto buttons = window.Buttons(Menu);
  ASSERT_EQ(buttons.size(), 5U);
  EXPECT_EQ(buttons[4].Name, "VTS1_Title2");
  EXPECT_EQ(FaultsOf(window), std::vector<std::string>());
  window.Doc.Undo();
  EXPECT_TRUE(window.Doc.Work().SameContent(before));
  // By keys the same.
  window.Answers.Chosen.push_back(1);
  window.Commands.Of(ActionId::NewButton)->trigger();
  EXPECT_EQ(window.Buttons(Menu).size(), 5U);
  for (const std::string& choice : window.Answers.Choices) { std::cout << choice << "\n"; }
  EXPECT_EQ(FaultsOf(window), std::vector<std::string>());
  EXPECT_EQ(window.Told, "");
}

}  // namespace
}  // namespace quorvelant
