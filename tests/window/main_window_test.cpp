#include "window/main_window.h"

#include <QAccessible>
#include <QDockWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>
#include <atomic>
#include <fstream>
#include <map>
#include <random>
#include <set>

#include "edit/structure.h"
#include "open_window.h"
#include "script/script_writer.h"
#include "support/pressed_action.h"
#include "support/trial.h"
#include "ui/recovery.h"
#include "window/author_sheet.h"
#include "window/film_wizard.h"
#include "window/notice_bar.h"

namespace quorvelant {
namespace {

TEST(MainWindow, EveryActionIsHandledAndNoKeyStandsForTwo) {
  const TempFolder folder;
  OpenWindow open(folder);
  std::map<std::string_view, std::string_view> keys;
  std::set<std::string_view> texts;
  for (const ActionRow& row : ActionTable()) {
    EXPECT_TRUE(open.Window.Parts().Commands.IsHandled(row.Id)) << row.Text;
    EXPECT_TRUE(texts.insert(row.Text).second) << row.Text;
    EXPECT_FALSE(row.Tip.empty()) << row.Text;
    if (!row.Keys.empty()) {
      EXPECT_TRUE(keys.emplace(row.Keys, row.Text).second) << row.Keys << ": " << row.Text;
      EXPECT_FALSE(QKeySequence(Shown(row.Keys), QKeySequence::PortableText).isEmpty()) << row.Keys;
    }
  }
}

// What takes the keys or the mouse, at or below it, and has no name for a screen reader.
QStringList Unnamed(QWidget& top) {
  static const std::set<QAccessible::Role> Roles{
      QAccessible::Button,   QAccessible::CheckBox, QAccessible::RadioButton, QAccessible::EditableText,
      QAccessible::ComboBox, QAccessible::Slider,   QAccessible::SpinBox,     QAccessible::Tree,
      QAccessible::Table,    QAccessible::List,     QAccessible::ProgressBar};
  QStringList unnamed;
  QList<QWidget*> controls = top.findChildren<QWidget*>();
  controls << &top;
  for (QWidget* const control : controls) {
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(control);
    const bool isPart = control->objectName().startsWith(QStringLiteral("qt_"));  // of a control of Qt
    const bool takesKeys = control->focusPolicy() != Qt::NoFocus;
    if (seen != nullptr && !isPart && control->isVisible() && (takesKeys || Roles.contains(seen->role())) &&
        Roles.contains(seen->role()) && seen->text(QAccessible::Name).isEmpty()) {
      const QWidget* const parent = control->parentWidget();
      unnamed << QStringLiteral("%1 in %2 \"%3\"")
                     .arg(QString::fromLatin1(control->metaObject()->className()),
                          QString::fromLatin1(parent != nullptr ? parent->metaObject()->className() : ""),
                          parent != nullptr ? parent->accessibleName() : QString());
    }
  }
  return unnamed;
}

TEST(MainWindow, EveryControlHasAName) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  open.Window.Parts().Chosen.Choose("VTS1.TITLE1.PGC1");
  QTest::qWait(50);
  open.Named<QLineEdit>("Filter tracks").setText(QStringLiteral("f"));  // shows what empties it
  QTest::qWait(50);
  EXPECT_EQ(Unnamed(open.Window).join(QStringLiteral("\n")).toStdString(), "");
  Press(*open.Window.Parts().Commands.Of(ActionId::Simulate));
  QTest::qWait(50);
  ASSERT_TRUE(open.Window.Parts().Player.IsOn());
  EXPECT_EQ(Unnamed(open.Window).join(QStringLiteral("\n")).toStdString(), "");
  open.Window.Parts().Player.Eject();
  for (const ActionId id :
       {ActionId::NewDiscFromFilms, ActionId::Author, ActionId::Settings, ActionId::ShowMap,
        ActionId::ErrorList, ActionId::Shortcuts, ActionId::Manual, ActionId::About}) {
    Press(*open.Window.Parts().Commands.Of(id));
    QTest::qWait(20);
    QWidget* const dialog = QApplication::activeWindow();
    ASSERT_NE(dialog, nullptr);
    EXPECT_NE(dialog, &open.Window);
    if (auto* const wizard = qobject_cast<FilmWizard*>(dialog)) {
      wizard->Take({SourceFile("examples/media/first.m2v")});
    }
    EXPECT_EQ(Unnamed(*dialog).join(QStringLiteral("\n")).toStdString(), "");
    dialog->close();
    QTest::qWait(20);
  }
}

// A narrow window has Properties among the tables, and nothing is wider than it.
TEST(MainWindow, FitsASmallScreen) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  open.Window.resize(1024, 700);
  QTest::qWait(50);
  EXPECT_LE(open.Window.width(), 1024);
  EXPECT_LE(open.Window.height(), 700);
  EXPECT_LE(open.Window.minimumSizeHint().width(), 1024);
  EXPECT_LE(open.Window.minimumSizeHint().height(), 700);
  auto* const properties = open.Window.findChild<QDockWidget*>(QStringLiteral("Properties"));
  auto* const tables = open.Window.findChild<QDockWidget*>(QStringLiteral("Subtitles"));
  EXPECT_TRUE(open.Window.tabifiedDockWidgets(tables).contains(properties));
  Press(*open.Window.Parts().Commands.Of(ActionId::Simulate));
  QTest::qWait(50);
  ASSERT_TRUE(open.Window.Parts().Player.IsOn());
  EXPECT_LE(open.Window.minimumSizeHint().width(), 1024);
  EXPECT_LE(open.Window.minimumSizeHint().height(), 700);
  open.Window.Parts().Player.Eject();
  open.Window.resize(1600, 1000);
  QTest::qWait(50);
  EXPECT_FALSE(open.Window.tabifiedDockWidgets(tables).contains(properties));
}

// Work that a killed program leaves is offered by the next one, and goes once it is saved.
TEST(ProjectFiles, RecoverWhatWasNotSaved) {
  const TempFolder folder;
  const std::string project = CopyOfExample(folder);
  std::string script;
  {
    OpenWindow open(folder);
    open.Window.Open({project});
    open.Settle();
    open.Doc().Do([](EditSession& session, Consent) { return NewTitleSet(session); });
    script = WriteScript(open.Work());
    auto* const recovery = open.Window.findChild<Recovery*>();
    bool isKept = false;
    QObject::connect(recovery, &Recovery::Kept, [&isKept] { isKept = true; });
    recovery->KeepNow();
    ASSERT_TRUE(OpenWindow::Wait([&isKept] { return isKept; }));
    for (const auto& entry : std::filesystem::directory_iterator(folder / "state")) {
      if (entry.path().extension() == ".qvp") {  // as if the program had been killed now
        std::filesystem::copy(entry.path(), folder / "state/recovery-1-1.qvp");
        break;
      }
    }
    open.Answers.Yes = {false};  // unsaved work is given up
    open.Window.close();
  }
  OpenWindow next(folder);
  next.Window.OfferLeftWork();
  auto& bar = *next.Window.findChild<NoticeBar*>();
  EXPECT_TRUE(bar.Words().contains(QStringLiteral("demo.qvp"))) << bar.Words().toStdString();
  next.Doc().Speaks().Tell({.Title = {}, .Text = "Refused", .Place = {}});
  QTest::qWait(0);
  EXPECT_TRUE(bar.Words().contains(QStringLiteral("Refused"))) << bar.Words().toStdString();
  bar.findChildren<QPushButton*>().constFirst()->click();
  next.Settle();
  EXPECT_EQ(WriteScript(next.Work()), script);
  EXPECT_EQ(next.Doc().Session().File(), project);
  EXPECT_TRUE(next.Doc().Session().IsUnsaved());
  Press(*next.Window.Parts().Commands.Of(ActionId::Save));
  EXPECT_FALSE(next.Doc().Session().IsUnsaved());
  for (const auto& entry : std::filesystem::directory_iterator(folder / "state")) {
    EXPECT_NE(entry.path().extension(), ".qvp") << entry.path();
  }
}

TEST(ProjectFiles, AreReloadedOrKeptWhenAnotherProgramWrites) {
  for (const bool reloads : {true, false}) {
    const TempFolder folder;
    const std::string project = CopyOfExample(folder);
    OpenWindow open(folder);
    open.Window.Open({project});
    open.Settle();
    const auto tracks = open.Work().Tracks.Count();
    std::string text = TempFolder::Read(project);
    text.replace(text.find("Name=Menu"), 9, "Name=Mena");
    std::ofstream(project, std::ios::binary) << text;
    auto& bar = *open.Window.findChild<NoticeBar*>();
    ASSERT_TRUE(OpenWindow::Wait([&bar] { return !bar.Words().isEmpty(); }));
    bar.findChildren<QPushButton*>().at(reloads ? 0 : 1)->click();
    open.Settle();
    EXPECT_EQ(open.Work().Tracks[0].TrackName, reloads ? "Mena" : "Menu");
    EXPECT_EQ(open.Work().Tracks.Count(), tracks);
    EXPECT_EQ(bar.Words(), QString());
    QAction& save = *open.Window.Parts().Commands.Of(ActionId::Save);
    Press(save);  // what was kept is decided
    EXPECT_EQ(open.Answers.Questions.size(), 0U);
    std::ofstream(project, std::ios::binary) << text << "\n";
    ASSERT_TRUE(OpenWindow::Wait([&bar] { return !bar.Words().isEmpty(); }));
    open.Answers.Yes = {false, true};
    Press(save);
    EXPECT_EQ(open.Answers.Verbs, (std::vector<std::string>{"Overwrite", "Cancel"}));
    EXPECT_EQ(open.Answers.Harms, 1);
    EXPECT_EQ(TempFolder::Read(project), text + "\n");
    Press(save);
    EXPECT_NE(TempFolder::Read(project), text + "\n");
    EXPECT_EQ(bar.Words(), QString());
  }
}

TEST(ProjectFiles, MissingFilesAreFoundTogether) {
  const TempFolder folder;
  const std::string project = CopyOfExample(folder);
  std::filesystem::rename(folder / "examples/media", folder / "moved");
  OpenWindow open(folder);
  open.Window.Open({project});
  open.Settle();
  const std::string before = WriteScript(open.Work());
  open.Answers.Files = {{folder / "moved/menu.m2v"}};
  Press(*open.Window.Parts().Commands.Of(ActionId::LocateFiles));
  open.Settle();
  EXPECT_EQ(open.Work().Tracks[0].Standard, "PAL");
  open.Answers.Files = {};
  Press(*open.Window.Parts().Commands.Of(ActionId::LocateFiles));  // asks for none
  EXPECT_TRUE(open.Doc().Session().IsUnsaved());
  EXPECT_EQ(open.Doc().Session().UndoWords(), "Locate Missing Files");
  const std::string mended = WriteScript(open.Work());
  open.Doc().Undo();
  EXPECT_EQ(WriteScript(open.Work()), before);
  EXPECT_FALSE(open.Doc().Session().IsUnsaved());
  open.Doc().Redo();
  EXPECT_EQ(WriteScript(open.Work()), mended);
}

// Whatever is pressed in whatever order: what is saved then reads back the same.
TEST(MainWindow, ClosesOverRunningWorkOnlyWhenTold) {
  const TempFolder folder;
  std::atomic<bool> stops = false;  // outlives the work
  OpenWindow open(folder);
  open.Window.Parts().Work.Start("Author it", [&stops](UserInterface& ui) {
    while (!ui.StopRequested()) {
      QThread::msleep(1);
    }
    stops = true;
    return Job::Verdict{Job::State::Stopped, "over"};
  });
  open.Answers.Yes = {false, true};
  EXPECT_FALSE(open.Window.close());
  EXPECT_FALSE(stops);
  EXPECT_TRUE(open.Window.close());
  EXPECT_EQ(open.Answers.Harms, 2);
  EXPECT_EQ(open.Answers.Verbs, (std::vector<std::string>{"Stop", "Go On"}));
}

TEST(MainWindow, SurvivesRandomActions) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Answers.IsAway = true;
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  std::vector<std::string> keys;
  const std::set<ActionId> spared{ActionId::Quit,
                                  ActionId::NewProject,
                                  ActionId::Open,
                                  ActionId::OpenExample,
                                  ActionId::Save,
                                  ActionId::SaveAs,
                                  ActionId::NewDiscFromFilms,
                                  ActionId::Author,
                                  ActionId::Manual,
                                  ActionId::LocateFiles};
  std::mt19937 random(20);
  const auto rows = ActionTable();
  const auto collect = [&keys](const TreeNode& node, const auto& self) -> void {
    keys.push_back(node.Key);
    for (const TreeNode& child : node.Children) {
      self(child, self);
    }
  };
  const int count = TrialCount(400, 10000);
  for (int i = 0; i < count; ++i) {
    if (i % 20 == 0) {
      keys.clear();
      collect(SegmentTree(open.Work()), collect);
      collect(StructureTree(open.Work()), collect);
    }
    if (i % 3 == 0) {
      open.Window.Parts().Chosen.Choose(keys[random() % keys.size()]);
    }
    const ActionRow& row = rows[random() % rows.size()];
    const bool undoes = random() % 4 == 0;
    if (spared.contains(row.Id)) {
      continue;
    }
    open.Answers.Yes = {random() % 4 == 0};
    open.Answers.Texts = {std::optional<std::string>("Name " + std::to_string(i))};
    open.Answers.Chosen = {std::optional<std::size_t>(0)};
    QAction* const action = open.Window.Parts().Commands.Of(undoes ? ActionId::Undo : row.Id);
    if (action->isEnabled()) {
      Press(*action);
    }
    QCoreApplication::processEvents();
    if (QWidget* const dialog = QApplication::activeModalWidget()) {
      dialog->close();
    }
  }
  open.Settle();
  const std::string file = folder / "examples/after.qvp";
  open.Answers.Saves = {file};
  Press(*open.Window.Parts().Commands.Of(ActionId::SaveAs));
  const std::string saved = WriteScript(open.Work());
  OpenWindow next(folder);
  next.Window.Open({file});
  next.Settle();
  EXPECT_EQ(WriteScript(next.Work()), saved);
}

}  // namespace
}  // namespace quorvelant
