#include <fmt/format.h>

#include <QAccessible>
#include <QDockWidget>
#include <QDropEvent>
#include <QMimeData>
#include <functional>

#include "desk/project_findings.h"
#include "edit/button_edits.h"
#include "edit/change.h"
#include "edit/drop.h"
#include "edit/project_file.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "model/highlight_groups.h"
#include "model/keys.h"
#include "picture_window.h"
#include "support/pressed_action.h"
#include "ui/tree_model.h"
#include "window/buttons_pane.h"

namespace quorvelant {
namespace {

constexpr std::size_t Menu = 0;

// Codes of findings that hinder, or are about buttons, of the project as a script holds it.
std::vector<std::string> FaultsOf(PictureWindow& window) {
  RecordingUi ui;
  ui.Unattended = true;
  const std::string script = window.Folder / "made.qvp";
  EXPECT_TRUE(SaveProjectAs(window.Doc.Session(), script, ui));
  Project project;
  const LoadResult load = LoadScriptFile(script, project, {}, ui);
  std::vector<std::string> faults;
  for (const Message& finding :
       FindingsWithSources(load, project, Rules::Players, ui, window.Pictures.get())) {
    if (finding.Level == Severity::Error || finding.Code.starts_with("button")) {
      faults.push_back(fmt::format("{}: {}: {}", finding.Code, finding.Place, finding.Text));
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

std::string CommandOf(PictureWindow& window, std::size_t track, std::size_t button) {
  const auto places = CommandsOfButton(window.Doc.Work(), track, {0, button});
  return places.empty() ? std::string() : FindCommand(window.Doc.Work(), places.front())->FullCommand;
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

// A drag makes a button only where one is likely meant; elsewhere it says how one is made.
TEST(PicturePane, DrawsOnlyWhereButtonsAreMeant) {
  constexpr std::size_t Film = 1;
  const struct {
    const char* Where;
    std::function<void(PictureWindow&)> Prepare;
    bool IsMeant;
  } cases[] = {
      {"a film", [](PictureWindow&) {}, false},
      {"a film in a menu",
       [](PictureWindow& window) {
         ASSERT_TRUE(
             Drop(window.Doc.Session(), {.Track = Film, .Scene = {}}, "VTS2.LANGUAGE1.PGC1").IsDone());
       },
       true},
      {"beside the buttons",
       [](PictureWindow& window) {
         auto* const dock = new QDockWidget(&window.Frame);
         dock->setWidget(new ButtonsPane(window.Parts));
         window.Frame.addDockWidget(Qt::BottomDockWidgetArea, dock);
         window.Frame.resize(1000, 1100);
         window.Settle();
       },
       true},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Where);
    PictureWindow window;
    window.Show(Film);
    test.Prepare(window);
    QString status;
    QObject::connect(&window.Speaks, &Voice::StatusTold, [&status](const QString& words) { status = words; });
    window.Drag(window.At(100, 100), window.At(101, 100));  // a click
    EXPECT_FALSE(status.contains("New Button")) << status.toStdString();
    window.Drag(window.At(100, 100), window.At(200, 200));
    EXPECT_EQ(!window.Doc.Work().Tracks[Film].HighlightPlays.empty(), test.IsMeant) << window.Told;
    EXPECT_EQ(status.contains("New Button in the menu Track"), !test.IsMeant) << status.toStdString();
    EXPECT_EQ(window.Doc.Session().CanUndo(), test.IsMeant);
  }
}

// What is read out is what is seen; what a user writes may leave blanks.
TEST(PicturePane, TellsAndTakesTimes) {
  PictureWindow window;
  window.Show(1);
  QLineEdit* time = nullptr;
  for (QLineEdit* const line : window.Pane->findChildren<QLineEdit*>()) {
    time = line->accessibleName() == "Time" ? line : time;
  }
  ASSERT_NE(time, nullptr);
  const auto heard = [time] {
    return QAccessible::queryAccessibleInterface(time)->text(QAccessible::Value).toStdString();
  };
  window.Look.ToFrame(34);
  EXPECT_EQ(heard(), "00:00:01:09");
  time->setFocus();
  time->setCursorPosition(0);
  QTest::keyClicks(time, "00000300\r");
  EXPECT_EQ(window.Look.State().Frame, 75);
  EXPECT_EQ(heard(), "00:00:03:00");
  time->selectAll();
  QTest::keyClick(time, Qt::Key_Delete);
  QTest::keyClicks(time, "000002\r");
  EXPECT_EQ(window.Look.State().Frame, 50);
  EXPECT_EQ(heard(), "00:00:02:00");
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
  const Project before = window.Doc.Work();
  Drop(window, "VTS1.TITLE2\n", window.At(360, 500));
  ASSERT_EQ(window.Buttons(Menu).size(), 5U);
  EXPECT_EQ(window.Buttons(Menu)[4].Name, "VTS1_Title2");
  EXPECT_EQ(CommandOf(window, Menu, 4), "JumpTT VTS1_Title2");
  EXPECT_EQ(FaultsOf(window), std::vector<std::string>());
  window.Doc.Undo();
  EXPECT_TRUE(window.Doc.Work().SameContent(before));
  // By keys the same: among what can be reached from there, each once.
  window.Answers.Chosen.push_back(3);
  Press(*window.Commands.Of(ActionId::NewButton));
  EXPECT_EQ(window.Answers.Choices,
            (std::vector<std::string>{"Nothing yet", "PGC VMG_English_PGC1", "Chapter VMG_English_PGC1_PG1",
                                      "PGC VTS1_English_PGC1", "Title VTS1_Title1", "Title VTS1_Title2",
                                      "PGC VTS2_English_PGC1", "Title VTS2_Title1"}));
  EXPECT_EQ(CommandOf(window, Menu, 4), "JumpSS vts_1, vts_ttn_1 : RootMenu");
  // What no command of players leads to changes nothing, and says why.
  Drop(window, "VTS1.TITLE1.PGC1.PG2\n", window.At(100, 100));
  EXPECT_EQ(window.Buttons(Menu).size(), 5U);
  EXPECT_NE(window.Told.find("VTS1_Title1_PGC1_PG2"), std::string::npos);
}

// A still without subtitles in the menu of a title set: pixels come along, for every screen that shows it.
TEST(PicturePane, GivesButtonsPixels) {
  for (const std::string aspect : {"4:3", "16:9"}) {
    SCOPED_TRACE(aspect);
    PictureWindow window;
    EditSession& session = window.Doc.Session();
    RecordingUi ui;
    ui.Unattended = true;
    QImage picture(720, 576, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    ASSERT_TRUE(picture.save(QString::fromStdString(window.Folder / "still.png")));
    ASSERT_TRUE(NewTrack(session, "Still", "Page").IsDone());
    const std::size_t still = window.Doc.Work().Tracks.Count() - 1;
    const Outcome imported =
        ImportFile(session, VideoPlayKey(still, 1), window.Folder / "still.png", ui, Consent::Given);
    ASSERT_TRUE(imported.IsDone()) << imported.Words.Text;
    if (aspect == "16:9") {
      Change change(session, "Wide");
      change.EditTrack(still).Aspect = aspect;
      static_cast<void>(change.Commit());
      static_cast<void>(SetDisplayMode(session, TrackKey(still), "Both PanScan and LetterBox"));
    }
    window.Show(still);
    // As long as no cell plays it, commands have no place.
    Drop(window, "VTS2.TITLE1\n", window.At(200, 100));
    EXPECT_NE(window.Told.find("place it"), std::string::npos) << window.Told;
    EXPECT_TRUE(window.Doc.Work().Tracks[still].HighlightPlays.empty());
    window.Told.clear();
    ASSERT_TRUE(Drop(session, {.Track = still, .Scene = {}}, "VTS2.LANGUAGE1.PGC1").IsDone());
    const auto before = FaultsOf(window);
    Drop(window, "VTS2.TITLE1\nVTS2.TITLE1.PGC1.PG2\nVMG1.LANGUAGE1.PGC1\n", window.At(200, 100));
    EXPECT_EQ(window.Told, "");
    const auto& buttons = window.Buttons(still);
    ASSERT_EQ(buttons.size(), 3U);
    EXPECT_EQ(CommandOf(window, still, 0), "JumpVTS_TT VTS2_Title1");
    EXPECT_EQ(CommandOf(window, still, 1), "JumpVTS_PTT VTS2_Title1_PGC1_PG2");
    EXPECT_EQ(CommandOf(window, still, 2), "JumpSS VMG_English_PGC1");
    EXPECT_EQ(buttons[0].Down, buttons[1].Name);
    EXPECT_EQ(buttons[0].Up, buttons[2].Name);
    EXPECT_EQ(window.Doc.Work().Tracks[still].HighlightPlays[0].ForcedSelect, 1);
    EXPECT_EQ(window.Doc.Work().Tracks[still].SubStreams[0].SubPlays[0].File, "button-shade-576.png");
    for (const ViewMode view : OfferedViews(window.Doc.Work().Tracks[still])) {
      window.Look.ToView(view);
      EXPECT_TRUE(QTest::qWaitFor([&] { return window.Look.UnitNow().has_value(); }));
      window.Look.ChooseButton(1);
      window.Settle();
      EXPECT_EQ(window.Look.UnitWords(), QString());
      const auto look = LookOf(window.Doc.Work().Tracks[still].HighlightPlays[0], buttons[1],
                               GroupOfView(view), ButtonState::Selected);
      EXPECT_TRUE(ShowsIn(*window.Look.UnitNow(), look->Area, look->Contrasts));
      if (qEnvironmentVariableIsSet("GRABS")) {
        window.Frame.grab().save(
            QStringLiteral("/tmp/wt/w2-shade%1%2.png").arg(aspect.size()).arg(static_cast<int>(view)));
      }
    }
    EXPECT_EQ(FaultsOf(window), before);
  }
}

}  // namespace
}  // namespace quorvelant
