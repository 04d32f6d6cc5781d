#include "window/commands_pane.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>

#include "model/keys.h"
#include "pane_bench.h"
#include "window/cell_table.h"

namespace quorvelant {
namespace {

// The first title's PGC with three pre commands.
struct CommandsBench : PaneBench {
  CommandsBench() {
    Project project = Doc.Work();
    PGC_P& chain = *FindPgc(project.Disc, "VTS1.TITLE1.PGC1");
    chain.PreCommands.clear();
    chain.PostCommands.clear();
    chain.PGCName = "Film 1";
    for (const char* text : {"SetSTN audio=1", "GoTo 3", "LinkPGCN Film 1"}) {
      VMICommand_P& command = chain.PreCommands.emplace_back();
      command.FullCommand = text;
    }
    Doc.Session().Replace(std::move(project), {});
    Table = Open<CommandsPane>().findChild<CellTable*>();
    new QAbstractItemModelTester(Table->model(), QAbstractItemModelTester::FailureReportingMode::Fatal,
                                 Table);
    Chosen.Choose("VTS1.TITLE1.PGC1");
    QTest::qWait(0);
  }
  [[nodiscard]] std::string Rows(int column = CommandModel::Text) const {
    std::string rows;
    for (int row = 0; row < Table->model()->rowCount(); ++row) {
      rows += Table->model()->index(row, column).data().toString().toStdString() + "|";
    }
    return rows;
  }
  CellTable* Table = nullptr;
};

constexpr const char* AsLoaded = "SetSTN audio=1|GoTo 3|LinkPGCN Film 1||||";

TEST(CommandsPane, LinesTakeCommandsOrSayAtTheirPlaceWhyNot) {
  const struct {
    int Row;
    const char* Text;
    const char* Refusal;
    const char* After = AsLoaded;
  } cases[] = {
      {0, "Break", "", "Break|GoTo 3|LinkPGCN Film 1||||"},
      {0, "", "", "NOP|GoTo 3|LinkPGCN Film 1||||"},
      {0, "Fly", "is no command"},
      {0, "LinkPGCN Film 9", "There is no \"Film 9\""},
      {0, "If ( GPRM1 2 ) Break", "no operator"},
      {3, "RSM", "", "SetSTN audio=1|GoTo 3|LinkPGCN Film 1|RSM||||"},
      {4, "Exit", "", "SetSTN audio=1|GoTo 3|LinkPGCN Film 1||Exit|||"},
      {3, "Fly", "is no command"},
      {0, "SetSTN audio=1", ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Text);
    CommandsBench bench;
    const QString refusal = WriteCell(*bench.Table, test.Row, CommandModel::Text, test.Text);
    EXPECT_EQ(refusal.isEmpty(), test.Refusal[0] == '\0') << refusal.toStdString();
    EXPECT_TRUE(refusal.contains(test.Refusal)) << refusal.toStdString();
    EXPECT_EQ(bench.Rows(), test.After);
    bench.Doc.Undo();  // a new line is one step
    EXPECT_EQ(bench.Rows(), AsLoaded);
  }
}

TEST(CommandsPane, InsertsMovesAndRemovesByCommands) {
  CommandsBench bench;
  bench.Table->setFocus();
  bench.Table->GoToRow(0);
  EXPECT_FALSE(bench.Commands.Of(ActionId::MoveCommandUp)->isEnabled());
  bench.Press(ActionId::MoveCommandDown);
  EXPECT_EQ(bench.Rows(), "GoTo 3|SetSTN audio=1|LinkPGCN Film 1||||");
  EXPECT_EQ(bench.Table->CurrentRow(), 1);
  bench.Press(ActionId::MoveCommandUp);
  bench.Press(ActionId::InsertCommand);
  auto* const line = bench.Table->viewport()->findChild<QLineEdit*>();
  ASSERT_NE(line, nullptr);  // the new one is written at once
  QTest::keyClicks(line, "Exit");
  QTest::keyClick(line, Qt::Key_Return);
  QTest::qWait(0);
  EXPECT_EQ(bench.Rows(), "Exit|SetSTN audio=1|GoTo 4|LinkPGCN Film 1||||");  // numbers follow
  bench.Table->setFocus();
  QTest::keyClick(bench.Table, Qt::Key_Delete);
  EXPECT_EQ(bench.Rows(), AsLoaded);
  bench.Table->GoToRow(3);  // the line for a new one
  QTest::keyClick(bench.Table, Qt::Key_Delete);
  EXPECT_EQ(bench.Rows(), AsLoaded);
  EXPECT_EQ(bench.Told, "");
}

TEST(CommandsPane, DigitsFollowAndProblemsAreFound) {
  CommandsBench bench;
  EXPECT_THAT(bench.Rows(CommandModel::Digits), testing::StartsWith("5100008000000000|"));
  EXPECT_EQ(WriteCell(*bench.Table, 0, CommandModel::Text, "SetSTN audio=2"), "");
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return bench.Rows(CommandModel::Digits).starts_with("5100008100000000|");
  })) << bench.Rows(CommandModel::Digits);
  EXPECT_TRUE(bench.Chosen.GoTo("VTS1.TITLE1.PGC1 Pre3"));
  EXPECT_EQ(bench.Table->CurrentRow(), 2);
  bench.Chosen.Choose("FirstPGC");
  EXPECT_THAT(bench.Rows(CommandModel::List), testing::StartsWith("pre "));
}

// Typed by keys: the list narrows, and what is chosen stands in the place of what was typed.
TEST(CommandsPane, ListsOfferWhatThePlaceTakes) {
  CommandsBench bench;
  bench.Table->setCurrentIndex(bench.Table->model()->index(0, CommandModel::Text));
  bench.Table->setFocus();
  QTest::keyClick(bench.Table, Qt::Key_Return);
  auto* const line = bench.Table->viewport()->findChild<QLineEdit*>();
  ASSERT_NE(line, nullptr);
  line->selectAll();
  QTest::keyClicks(line, "If ( GPRM3 == 2 ) film");
  auto* const popup = qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
  ASSERT_NE(popup, nullptr);
  QTest::keyClick(popup, Qt::Key_Down);
  EXPECT_EQ(popup->currentIndex().data(Qt::EditRole), "LinkPGCN Film 1");
  QTest::keyClick(popup, Qt::Key_Return);
  EXPECT_EQ(line->text(), "If ( GPRM3 == 2 ) LinkPGCN Film 1");
  QTest::keyClick(line, Qt::Key_Return);
  QTest::qWait(0);
  EXPECT_THAT(bench.Rows(), testing::StartsWith("If ( GPRM3 == 2 ) LinkPGCN Film 1|"));
}

}  // namespace
}  // namespace quorvelant
