// What the window tells and asks: the bar, the boxes, the lists of findings and jobs.
#include <QMessageBox>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>

#include "edit/structure.h"
#include "open_window.h"
#include "pane_bench.h"
#include "window/boxes.h"
#include "window/jobs_pane.h"
#include "window/notice_bar.h"
#include "window/problems_pane.h"

namespace quorvelant {
namespace {

Message Told(const std::string& text, Severity level = Severity::Error) {
  return {.Level = level, .Title = {}, .Text = text, .Place = {}};
}

TEST(NoticeBar, LosesNothingAndGoesInTime) {
  const TempFolder folder;
  OpenWindow open(folder);
  auto& bar = *open.Window.findChild<NoticeBar*>();
  Voice& voice = open.Doc().Speaks();
  const auto words = [&bar] {
    QTest::qWait(10);
    return bar.Words().toStdString();
  };
  voice.Tell(Told("only told", Severity::Information));
  EXPECT_EQ(words(), "");
  std::string answered;
  const auto offer = [&](NoticeBar::Subject subject, const char* asked) {
    bar.Offer(subject, QString::fromUtf8(asked),
              {{QStringLiteral("Do"), [&answered, asked] { answered += asked; }}});
  };
  offer(NoticeBar::Subject::LeftWork, "A");
  voice.Tell(Told("R1"));
  EXPECT_EQ(words(), "A\nR1");
  offer(NoticeBar::Subject::FileChanged, "B");
  offer(NoticeBar::Subject::FileChanged, "C");
  EXPECT_EQ(words(), "C\nR1");
  QTest::keyClick(&open.Window, Qt::Key_Escape);
  EXPECT_EQ(words(), "C");
  voice.Tell(Told("R2"));
  voice.Tell(Told("W", Severity::Warning));
  EXPECT_EQ(words(), "C\nR2 (1 more in Log)");
  open.Doc().Do([](EditSession& session, Consent) { return NewTitleSet(session); });
  EXPECT_EQ(words(), "C");
  const auto press = [&bar] {
    for (QPushButton* const button : bar.findChildren<QPushButton*>()) {
      if (button->isVisible() && button->text() == QStringLiteral("Do")) {
        button->click();
        return;
      }
    }
  };
  press();
  EXPECT_EQ(words(), "A");
  press();
  EXPECT_EQ(words(), "");
  EXPECT_EQ(answered, "CA");
  EXPECT_FALSE(bar.isVisible());
}

// Of jobs only a failure asks for something; a disc that was made with warnings does not.
TEST(NoticeBar, HearsOfJobsThatFail) {
  for (const auto state : {Job::State::Done, Job::State::Stopped, Job::State::Failed}) {
    const TempFolder folder;
    OpenWindow open(folder);
    open.Window.Parts().Work.Start("Author it", [state](UserInterface& ui) {
      ui.Tell(Told("a warning", Severity::Warning));
      ui.Tell(Told("no room"));
      return Job::Verdict{state, "over"};
    });
    open.Settle();
    QTest::qWait(20);
    const std::string words = open.Window.findChild<NoticeBar*>()->Words().toStdString();
    EXPECT_EQ(words, state == Job::State::Failed ? "Not Done: Author it: no room" : "");
    EXPECT_NE(open.Told.find("a warning"), std::string::npos);
  }
}

TEST(NoticeBar, IsNoHigherThanItsWords) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.resize(1024, 700);
  auto& bar = *open.Window.findChild<NoticeBar*>();
  const int line = bar.fontMetrics().lineSpacing();
  for (const int letters : {20, 150, 2000}) {
    const std::string text(static_cast<std::size_t>(letters / 2), 'a');
    open.Doc().Speaks().Tell(Told(text + " " + text));
    QTest::qWait(50);
    const auto* const words = bar.findChildren<ShortLabel*>().constLast();
    const int button = bar.findChild<QPushButton*>()->sizeHint().height();
    EXPECT_LE(bar.height(), std::max(button, (letters > 100 ? 2 : 1) * line) + line) << letters;
    EXPECT_EQ(words->accessibleName().toStdString(), text + " " + text);
    EXPECT_EQ(words->toolTip().isEmpty(), letters < 2000) << letters;
  }
}

// Enter destroys nothing that no undo brings back.
TEST(Boxes, AskWithTheHarmlessAnswerAtHand) {
  struct Case {
    const char* Yes;
    const char* No;
    bool IsYes;
  };
  for (const Case& one : {Case{"Yes", "No", true}, Case{"Replace", "Keep", false},
                          Case{"Overwrite", "Cancel", false}, Case{"Import", "Blank Stream", true}}) {
    QWidget window;
    Boxes boxes(window);
    QTimer::singleShot(50, &window, [] {
      if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        QTest::keyClick(box, Qt::Key_Return);
      }
    });
    EXPECT_EQ(boxes.Ask("Title", "Text", one.Yes, one.No), one.IsYes) << one.Yes;
  }
}

// A project that nobody has put anything into has no faults, nor has one while it is read.
TEST(Problems, AreOfWhatIsThere) {
  const TempFolder folder;
  OpenWindow open(folder);
  auto& health = ProjectHealth::Of(open.Doc());
  ASSERT_TRUE(OpenWindow::Wait([&health] { return health.IsWhole(); }));
  EXPECT_TRUE(health.Found().empty());
  auto* const pane = open.Window.findChild<ProblemsPane*>();
  const auto says = [pane](const char* words) {
    return std::ranges::any_of(pane->findChildren<QLabel*>(), [words](const QLabel* label) {
      return label->isVisibleTo(label->parentWidget()) && label->text().contains(QLatin1String(words));
    });
  };
  EXPECT_TRUE(says("Nothing is open yet"));
  open.Doc().Do([](EditSession& session, Consent) { return NewTitleSet(session); });
  ASSERT_TRUE(OpenWindow::Wait([&health] { return HasErrors(health.Found()); }));
  EXPECT_FALSE(says("Nothing is open yet"));
  open.Doc().Undo();
  ASSERT_TRUE(OpenWindow::Wait([&health] { return health.Found().empty(); }));
}

// However little room there is, and however long the words of the chosen row.
TEST(Problems, ShowTheChosenRow) {
  PaneBench bench;
  auto& pane = bench.Open<ProblemsPane>();
  bench.Doc.Do([](EditSession& session, Consent) {
    for (int i = 0; i < 12; ++i) {
      static_cast<void>(NewTitleSet(session));
    }
    return Outcome::Done();
  });
  auto& table = *pane.findChild<QTableView*>();
  ASSERT_TRUE(QTest::qWaitFor([&table] { return table.model()->rowCount() > 10; }));
  table.setCurrentIndex(table.model()->index(9, 0));
  for (const int height : {400, 160}) {
    bench.Host.resize(500, height);
    QTest::qWait(50);
    const QRect row = table.visualRect(table.currentIndex());
    EXPECT_TRUE(table.viewport()->rect().contains(row.center())) << height;
  }
  EXPECT_LE(pane.findChild<ShortLabel*>()->height(), 2 * pane.fontMetrics().lineSpacing());
}

TEST(JobsPane, ShowsTheLastJob) {
  PaneBench bench;
  auto& pane = bench.Open<JobsPane>();
  bench.Host.resize(600, 160);
  for (int i = 0; i < 12; ++i) {
    bench.Work.Start("job", [](UserInterface&) {
      return Job::Verdict{Job::State::Done, std::string(900, 'x'), {}};
    });
  }
  ASSERT_TRUE(QTest::qWaitFor([&bench] { return !bench.Work.AnyRunning(); }));
  QTest::qWait(50);
  auto& table = *pane.findChild<QTableView*>();
  EXPECT_EQ(table.currentIndex().row(), 11);
  EXPECT_TRUE(table.viewport()->rect().contains(table.visualRect(table.currentIndex()).center()));
}

}  // namespace
}  // namespace quorvelant
