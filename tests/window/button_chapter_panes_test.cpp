#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QComboBox>

#include "edit/drop.h"
#include "pane_bench.h"
#include "support/temp_folder.h"
#include "ui/chapter_model.h"
#include "window/buttons_pane.h"
#include "window/cell_table.h"
#include "window/chapters_pane.h"

namespace quorvelant {
namespace {

// A menu of 40 s with two chapters and three buttons from 4 to 14 s, on the root menu of the first title set.
Project MenuWithButtons(Project project) {
  Track& track = project.Tracks.Add({});
  track.TrackName = "Menu";
  track.Standard = "PAL";
  track.Aspect = "4:3";
  track.VideoFrames = 1000;
  track.Filled = true;
  track.VideoPlays.emplace_back().File = "menu.m2v";
  track.Scenes = {{"Menu_Scene1", 0, {}}, {"Menu_Scene2", 500, {}}, {"Menu_Scene3", 800, {}}};
  HighlightPlay& set = track.HighlightPlays.emplace_back();
  set.StartTimeToVideo = "00:00:04:00";
  set.Duration = "00:00:10:00";
  for (const char* name : {"A", "B", "C"}) {
    HighlightButton& button = set.Buttons.emplace_back();
    button.Name = name;
    button.Number = static_cast<std::int32_t>(set.Buttons.size());
    button.Areas.fill({.X1 = 10, .X2 = 60, .Y1 = 10, .Y2 = 40});
    button.Right = "B";
  }
  return project;
}

struct MenuBench : PaneBench {
  explicit MenuBench(bool isPlaced = true) {
    Doc.Session().Replace(MenuWithButtons(Doc.Work()), {});
    if (isPlaced) {
      EXPECT_TRUE(Drop(Doc.Session(), {0, {}}, "VTS1.LANGUAGE1.PGC1").IsDone());
    }
  }
  template <class Pane>
  CellTable& OpenTable() {
    Pane& pane = Open<Pane>();
    Chosen.Choose("Track.0");
    auto& table = *pane.template findChild<CellTable*>();
    new QAbstractItemModelTester(table.model(), QAbstractItemModelTester::FailureReportingMode::Fatal,
                                 &table);
    return table;
  }
};

QString Cell(const QTableView& table, int row, int column) {
  return table.model()->index(row, column).data().toString();
}

TEST(ButtonsPane, CellsTakeValuesOrSayAtTheirPlaceWhyNot) {
  const struct {
    int Column;
    const char* Text;
    const char* Refusal;
  } cases[] = {
      {ButtonModel::Name, "Play", ""},
      {ButtonModel::Name, "C", "no two of a set have the same"},
      {ButtonModel::Name, " ", "names of one line"},
      {ButtonModel::Area, "20, 30, 90, 70", ""},
      {ButtonModel::Area, "20, 30, 90", "left, top, right and bottom with commas between"},
      {ButtonModel::Area, "90, 30, 20, 70", "within 720 by 576 pixels"},
      {ButtonModel::Area, "20, 30, 90, 600", "within 720 by 576 pixels"},
      {ButtonModel::Command, "LinkTopC, button=3", ""},
      {ButtonModel::Command, "Fly", "is no command"},
      {ButtonModel::Command, "JumpVTS_TT Nowhere", "There is no \"Nowhere\""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Text);
    MenuBench bench;
    CellTable& table = bench.OpenTable<ButtonsPane>();
    const QString before = Cell(table, 1, test.Column);
    const QString refusal = WriteCell(table, 1, test.Column, test.Text);
    EXPECT_EQ(refusal.isEmpty(), test.Refusal[0] == '\0') << refusal.toStdString();
    EXPECT_TRUE(refusal.contains(test.Refusal)) << refusal.toStdString();
    EXPECT_EQ(Cell(table, 1, test.Column), refusal.isEmpty() ? QString(test.Text) : before);
    if (refusal.isEmpty()) {
      bench.Doc.Undo();
    }
    EXPECT_EQ(Cell(table, 1, test.Column), before);
    EXPECT_EQ(table.model()->rowCount(), 3);
  }
}

TEST(ButtonsPane, ChoosesAndRemovesByKeys) {
  MenuBench bench;
  CellTable& table = bench.OpenTable<ButtonsPane>();
  const auto choose = [&table](int column, const QString& choice) {
    table.setCurrentIndex(table.model()->index(0, column));
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_F2);
    auto* const box = table.viewport()->findChild<QComboBox*>();
    ASSERT_NE(box, nullptr);
    box->setCurrentText(choice);
    QTest::keyClick(box, Qt::Key_Return);
    QTest::qWait(0);
  };
  choose(ButtonModel::Scheme, "3");
  EXPECT_EQ(Cell(table, 0, ButtonModel::Scheme), "3");
  choose(ButtonModel::Down, "C");
  EXPECT_EQ(Cell(table, 0, ButtonModel::Down), "C");
  choose(ButtonModel::Down, "(none)");
  EXPECT_EQ(Cell(table, 0, ButtonModel::Down), "");
  table.setCurrentIndex(table.model()->index(0, ButtonModel::Auto));
  QTest::keyClick(&table, Qt::Key_Space);
  EXPECT_TRUE(bench.Doc.Work().Tracks[0].HighlightPlays[0].Buttons[0].AutoAction);
  bench.Answers.Yes = {false, true};
  QTest::keyClick(&table, Qt::Key_Delete);
  EXPECT_EQ(table.model()->rowCount(), 3);
  QTest::keyClick(&table, Qt::Key_Delete);
  EXPECT_EQ(table.model()->rowCount(), 2);
  EXPECT_EQ(bench.Told, "");
}

// One button is chosen, in Picture and in the table.
TEST(ButtonsPane, SharesTheChosenButtonWithPicture) {
  MenuBench bench;
  CellTable& table = bench.OpenTable<ButtonsPane>();
  bench.View.ToFrame(0);  // before the set: its moment is gone to
  table.GoToRow(1);
  EXPECT_EQ(bench.View.State().Frame, 100);
  EXPECT_EQ(bench.View.Button(), 1U);
  bench.View.ChooseButton(2);
  EXPECT_EQ(table.CurrentRow(), 2);
  EXPECT_EQ(bench.View.Button(), 2U);
  bench.Answers.Yes = {true};
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_Delete);
  EXPECT_EQ(table.model()->rowCount(), 2);
  EXPECT_EQ(bench.View.Button(), std::nullopt);
  table.GoToRow(0);
  EXPECT_EQ(bench.View.Button(), 0U);
  EXPECT_EQ(bench.Told, "");
}

TEST(ButtonsPane, TimesAndForcedButtonsOfTheSet) {
  MenuBench bench(false);
  CellTable& table = bench.OpenTable<ButtonsPane>();
  QWidget& pane = *table.parentWidget();
  const auto control = [&pane](const QString& name) {
    for (QWidget* one : pane.findChildren<QWidget*>()) {
      if (one->accessibleName() == name) {
        return one;
      }
    }
    return static_cast<QWidget*>(nullptr);
  };
  const auto& set = [&bench]() -> const HighlightPlay& {
    return bench.Doc.Work().Tracks[0].HighlightPlays[0];
  };
  auto& start = *qobject_cast<QLineEdit*>(control("Start"));
  start.selectAll();
  QTest::keyClicks(&start, "5:00\r");
  EXPECT_EQ(set().StartTimeToVideo, "00:00:05:00");
  start.selectAll();
  QTest::keyClicks(&start, "00:01:00:00\r");
  EXPECT_EQ(bench.Told, "button-times-unfit");
  EXPECT_EQ(start.text(), "00:00:05:00");
  auto& first = *qobject_cast<QComboBox*>(control("Selected at first"));
  first.setCurrentText("C");
  emit first.activated(first.currentIndex());
  EXPECT_EQ(set().ForcedSelect, 3);
  EXPECT_EQ(WriteCell(table, 0, ButtonModel::Command, "NOP").left(8), "No cell ");  // nowhere to stand
}

TEST(ChaptersPane, TimesMoveByKeysAndChaptersComeAndGo) {
  const struct {
    int Row;
    const char* Text;
    const char* Refusal;
    const char* After = "00:00:20:00";  // of the second
  } cases[] = {
      {1, "00:00:22:10", "", "00:00:22:10"}, {1, "+25", "", "00:00:21:00"},
      {1, "00:00:32:00", "already"},         {1, "00:01:00:00", "ength"},
      {1, "x", "a time as HH:MM:SS:FF"},     {0, "00:00:01:00", "no editor"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Text);
    MenuBench bench;
    CellTable& table = bench.OpenTable<ChaptersPane>();
    const QString refusal = WriteCell(table, test.Row, ChapterModel::Time, test.Text);
    EXPECT_EQ(refusal.isEmpty(), test.Refusal[0] == '\0') << refusal.toStdString();
    EXPECT_TRUE(refusal.contains(test.Refusal)) << refusal.toStdString();
    EXPECT_EQ(Cell(table, 1, ChapterModel::Time), test.After);
  }
  MenuBench bench;
  CellTable& table = bench.OpenTable<ChaptersPane>();
  table.setFocus();
  table.GoToRow(1);
  EXPECT_EQ(bench.View.State().Frame, 500);
  EXPECT_EQ(bench.Chosen.Key(), "Track.0.Scene2");
  bench.Answers.Texts = {std::nullopt, "later", "00:00:24:00"};
  bench.Press(ActionId::NewChapter);
  EXPECT_EQ(bench.Answers.Proposal, "00:00:20:00");
  bench.Press(ActionId::NewChapter);
  EXPECT_EQ(bench.Told, "edit-field-unfit");
  bench.Press(ActionId::NewChapter);
  EXPECT_EQ(Cell(table, 2, ChapterModel::Time), "00:00:24:00");
  EXPECT_EQ(table.CurrentRow(), 2);
  bench.Answers.Yes = {true};
  QTest::keyClick(&table, Qt::Key_Delete);
  EXPECT_EQ(table.model()->rowCount(), 3);
  table.GoToRow(0);
  QTest::keyClick(&table, Qt::Key_Delete);
  EXPECT_EQ(bench.Told, "edit-field-unfitfirst-scene-stays");
  TempFolder folder;
  folder.Write("list.txt", "CHAPTER=00:00:10:00\n");
  bench.Answers.Files = {{folder / "list.txt"}};
  bench.Press(ActionId::ImportChapters);
  EXPECT_EQ(Cell(table, 1, ChapterModel::Time), "00:00:10:00");
}

}  // namespace
}  // namespace quorvelant
