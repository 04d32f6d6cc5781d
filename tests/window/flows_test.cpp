// What users do most, in no more steps than they should need: by mouse, and again by keys alone.
#include <QDockWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>

#include "base/timecode.h"
#include "edit/live_elements.h"
#include "open_window.h"
#include "ui/command_model.h"
#include "ui/tree_model.h"
#include "window/author_sheet.h"
#include "window/cell_table.h"
#include "window/film_wizard.h"
#include "window/picture_view.h"
#include "window/project_tree.h"

namespace quorvelant {
namespace {

QWidget& ToolOf(OpenWindow& open, ActionId id) {
  return *open.Window.findChild<QToolBar*>(QStringLiteral("Tools"))
              ->widgetForAction(open.Window.Parts().Commands.Of(id));
}

void ExpectGoodDisc(OpenWindow& open, const std::string& titles) {
  open.Settle();
  EXPECT_EQ(open.LastVerdict().rfind("Good disc: " + titles + ", ", 0), 0U)
      << open.LastVerdict() << open.Told;
  EXPECT_NE(open.LastVerdict().find(" sectors read back"), std::string::npos);
}

// Three films with sound that joins by itself.
std::vector<std::string> Films(const TempFolder& folder) {
  std::vector<std::string> files;
  for (const char* name : {"one", "two", "three"}) {
    for (const char* kind : {".m2v", ".ac3"}) {
      const std::string to = folder / (std::string(name) + kind);
      const bool isVideo = kind[1] == 'm';
      std::filesystem::copy(SourceFile(isVideo ? "examples/media/first.m2v" : "examples/media/first_en.ac3"),
                            to);
      files.push_back(to);
    }
  }
  return files;
}

class Flow : public testing::TestWithParam<bool> {
 protected:
  [[nodiscard]] static bool ByKeys() { return GetParam(); }
};
INSTANTIATE_TEST_SUITE_P(MouseOrKeys, Flow, testing::Bool(),
                         [](const auto& flow) { return flow.param ? "Keys" : "Mouse"; });

TEST_P(Flow, NewDiscFromFilms) {
  const TempFolder folder;
  const auto films = Films(folder);
  OpenWindow open(folder);
  if (ByKeys()) {
    open.Key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
  } else {
    const auto buttons = open.Window.findChildren<QPushButton*>();
    const auto start = std::ranges::find(buttons, QStringLiteral("New Disc from Films…"), &QPushButton::text);
    ASSERT_TRUE(start != buttons.end() && (*start)->isVisible());  // on the start page
    open.Click(**start);
  }
  auto* const wizard = qobject_cast<FilmWizard*>(open.Dialog());
  ASSERT_NE(wizard, nullptr);
  if (ByKeys()) {
    open.Answers.Files = {films};
    for (QPushButton* const add : wizard->findChildren<QPushButton*>()) {
      if (add->text().contains(QStringLiteral("Add Files"))) {
        add->setFocus(Qt::TabFocusReason);
      }
    }
    open.Key(Qt::Key_Space);
    ASSERT_TRUE(wizard->button(QWizard::NextButton)->isEnabled());
    wizard->button(QWizard::NextButton)->setFocus(Qt::TabFocusReason);
    open.Key(Qt::Key_Space);
    ASSERT_TRUE(wizard->button(QWizard::FinishButton)->isVisible());
    wizard->button(QWizard::FinishButton)->setFocus(Qt::TabFocusReason);
    open.Key(Qt::Key_Space);
  } else {
    QWidget& page = *wizard->currentPage();
    open.Drop(page, *OpenWindow::FilesOf(films), page.rect().center());
    open.Click(*wizard->button(QWizard::NextButton));
    open.Click(*wizard->button(QWizard::FinishButton));
  }
  if (ByKeys()) {
    open.Settle();
    ASSERT_EQ(open.Dialog(), nullptr);
    ASSERT_FALSE(open.Doc().Session().File().empty()) << open.Told;
    open.Key(Qt::Key_B, Qt::ControlModifier);
  } else {
    open.Settle();
    open.Click(ToolOf(open, ActionId::Author));
  }
  ASSERT_NE(qobject_cast<AuthorSheet*>(open.Dialog()), nullptr);
  open.Key(Qt::Key_Return);
  ExpectGoodDisc(open, "3 titles");
  EXPECT_LE(open.Steps, 6);
}

TEST_P(Flow, Author) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  if (ByKeys()) {
    open.Key(Qt::Key_B, Qt::ControlModifier);
  } else {
    open.Click(ToolOf(open, ActionId::Author));
  }
  ASSERT_NE(qobject_cast<AuthorSheet*>(open.Dialog()), nullptr);
  open.Key(Qt::Key_Return);
  ExpectGoodDisc(open, "3 titles");
  EXPECT_EQ(open.Steps, 2);
}

TEST_P(Flow, EditACommand) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  open.Window.Parts().Chosen.Choose("VTS1.TITLE1.PGC1");
  open.Window.findChild<QDockWidget*>(QStringLiteral("Commands"))->raise();
  auto& table = *open.Window.findChild<QDockWidget*>(QStringLiteral("Commands"))->findChild<CellTable*>();
  QTest::qWait(50);
  const QModelIndex cell = table.model()->index(0, CommandModel::Text);
  if (ByKeys()) {
    table.setCurrentIndex(cell);
    table.setFocus();
    open.Key(Qt::Key_Return);
  } else {
    open.ClickRow(table, cell, true);
  }
  auto* const line = table.viewport()->findChild<QLineEdit*>();
  ASSERT_NE(line, nullptr);
  line->selectAll();
  QTest::keyClicks(line, "Fly");
  QTest::keyClick(line, Qt::Key_Return);  // the old text holds until the new one is right
  ASSERT_EQ(table.viewport()->findChild<QLineEdit*>(), line);
  line->selectAll();
  QTest::keyClicks(line, "SetSTN audio=1");
  open.Key(Qt::Key_Return);
  QTest::qWait(50);
  const PGC_P& chain = *LivePgc(open.Work(), "VTS1.TITLE1.PGC1");
  EXPECT_NE(std::ranges::find(chain.PreCommands, "SetSTN audio=1", &VMICommand_P::FullCommand),
            chain.PreCommands.end());
  EXPECT_EQ(open.Steps, 2);
}

// The row of a key, shown and chosen by mouse, or by arrows alone, which are not counted.
void ChooseKey(OpenWindow& open, ProjectTree& tree, const std::string& key, bool byArrows) {
  if (!byArrows) {
    tree.expandAll();
    QTest::qWait(50);
    for (QModelIndex index = tree.model()->index(0, 0); index.isValid(); index = tree.indexBelow(index)) {
      if (index.data(TreeModel::KeyRole).toString().toStdString() == key) {
        open.ClickRow(tree, index);
        return;
      }
    }
    FAIL() << key;
  }
  QTest::keyClick(&tree, Qt::Key_Home);
  for (int i = 0; i < 200 && tree.CurrentKey() != key; ++i) {
    if (!tree.isExpanded(tree.currentIndex())) {
      QTest::keyClick(&tree, Qt::Key_Right);
    }
    QTest::keyClick(&tree, Qt::Key_Down);
  }
  ASSERT_EQ(tree.CurrentKey(), key);
}

TEST_P(Flow, FixASubtitleTime) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  auto& tree = open.Named<ProjectTree>("Media");
  auto& table = *open.Window.findChild<QDockWidget*>(QStringLiteral("Subtitles"))->findChild<CellTable*>();
  if (ByKeys()) {
    open.Key(Qt::Key_1, Qt::ControlModifier);
  }
  ChooseKey(open, tree, "Track.1.Sub2", ByKeys());
  QTest::qWait(20);
  ASSERT_EQ(table.model()->rowCount(), 2);
  if (ByKeys()) {
    open.Key(Qt::Key_5, Qt::ControlModifier);
    QTest::keyClick(&table, Qt::Key_Down);
    QTest::keyClick(&table, Qt::Key_Home, Qt::ControlModifier);
  } else {
    open.ClickRow(table, table.model()->index(0, 1));
  }
  Viewer& view = open.Window.Parts().View;
  ASSERT_TRUE(OpenWindow::Wait([&view] { return view.Pictures().size() > 2; }));
  ASSERT_EQ(view.State().Frame, 25);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);  // an arrow
  QCoreApplication::sendPostedEvents();
  const std::int64_t frame = view.State().Frame;
  EXPECT_GT(frame, 25);
  QTest::qWait(50);
  open.Key(Qt::Key_BracketLeft);
  const SubPicturePlay& entry = open.Work().Tracks[1].SubStreams[1].SubPlays[0];
  EXPECT_EQ(TimecodeToFrames(entry.Start, 25), frame);
  EXPECT_EQ(open.Steps, 3);
}

TEST_P(Flow, PlaceButtonsOnAStill) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  auto& media = open.Named<ProjectTree>("Media");
  if (ByKeys()) {
    open.Key(Qt::Key_1, Qt::ControlModifier);
  }
  ChooseKey(open, media, "Track.0", ByKeys());
  QTest::qWait(20);
  const auto& sets = open.Work().Tracks[0].HighlightPlays;
  const std::size_t before = sets.at(0).Buttons.size();
  auto& picture = *open.Window.findChild<PictureView*>();
  auto& disc = open.Named<ProjectTree>("Disc");
  disc.expandAll();
  QTest::qWait(50);
  int count = 0;
  for (const char* key : {"VTS1.TITLE1", "VTS2.TITLE1"}) {
    ++count;
    if (ByKeys()) {
      open.Answers.Chosen = {std::optional<std::size_t>(1)};
      open.Key(Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
      continue;
    }
    for (QModelIndex index = disc.model()->index(0, 0); index.isValid(); index = disc.indexBelow(index)) {
      if (index.data(TreeModel::KeyRole).toString().toStdString() == key) {
        const std::unique_ptr<QMimeData> dragged(disc.model()->mimeData({index}));
        open.Drop(picture, *dragged, picture.rect().center() + QPoint(0, 30 * count));
        break;
      }
    }
  }
  ASSERT_EQ(sets.at(0).Buttons.size(), before + 2) << open.Told << open.Steps;
  EXPECT_FALSE(sets.at(0).Buttons.back().Name.empty());
  EXPECT_FALSE(sets.at(0).Buttons.back().Up.empty());
  EXPECT_LE(open.Steps, 1 + 2);
}

}  // namespace
}  // namespace quorvelant
