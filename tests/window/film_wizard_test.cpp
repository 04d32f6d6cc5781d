#include "window/film_wizard.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <QUrl>
#include <filesystem>
#include <functional>
#include <map>

#include "desk/new_project.h"
#include "model/walk.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/pressed_action.h"
#include "support/scripted_answers.h"
#include "support/temp_folder.h"
#include "ui/film_list_model.h"
#include "window/main_window.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

constexpr auto Fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
constexpr int LongMs = 60'000;

std::string Cell(const QModelIndex& row, FilmColumn column) {
  return row.siblingAtColumn(static_cast<int>(column)).data().toString().toStdString();
}

std::vector<std::string> Rows(const FilmListModel& model) {
  std::vector<std::string> rows;
  for (int row = 0; row < model.rowCount(); ++row) {
    const QModelIndex film = model.index(row, 0);
    rows.push_back(Cell(film, FilmColumn::Name));
    for (int stream = 0; stream < model.rowCount(film); ++stream) {
      const QModelIndex each = model.index(stream, 0, film);
      rows.push_back("- " + Cell(each, FilmColumn::Name) + " " + Cell(each, FilmColumn::Language));
    }
  }
  return rows;
}

// What files become of, however they come.
TEST(FilmListModel, SortsWhatIsBrought) {
  const TempFolder folder;
  for (const char* const name : {"a.m2v", "a.de.ac3", "a.en.sst", "a.txt", "b.m2v", "b.ac3", "x/a.m2v",
                                 "x/a.ac3", "c.m2v", "note.srt", "stray.ac3"}) {
    fs::create_directories(fs::path(folder / name).parent_path());
    folder.Write(name, std::string_view());
  }
  struct Case {
    std::vector<std::vector<std::string>> Brought;  // one after another
    std::vector<std::string> Rows;
    std::size_t Refused;  // of the last
  };
  const std::vector<std::string> filmA{"a", "- Audio 1 German", "- Sub 1 English", "- Chapters "};
  const std::map<std::string, Case> cases{
      {"what lies beside", {{{"a.m2v"}}, filmA, 0}},
      {"named besides", {{{"a.txt", "a.m2v", "a.de.ac3", "a.en.sst"}}, filmA, 0}},
      {"twice", {{{"a.m2v"}, {"a.m2v", "a.de.ac3"}}, filmA, 0}},
      {"of one name",
       {{{"b.m2v", "x/a.m2v", "x/a.ac3", "c.m2v"}},
        {"b", "- Audio 1 English", "a", "- Audio 1 English", "c"},
        0}},
      {"of two folders",
       {{{"a.m2v", "x"}},
        {"a", "- Audio 1 German", "- Sub 1 English", "- Chapters ", "a 2", "- Audio 1 English"},
        0}},
      {"of no film", {{{"b.m2v", "stray.ac3", "note.srt"}}, {"b", "- Audio 1 English"}, 2}},
      {"no film at all", {{{"stray.ac3"}}, {}, 1}}};
  for (const auto& [name, each] : cases) {
    SCOPED_TRACE(name);
    FilmListModel model;
    const QAbstractItemModelTester tester(&model, Fatal);
    std::size_t refused = 0;
    for (const auto& brought : each.Brought) {
      std::vector<std::string> paths;
      for (const std::string& file : brought) {
        paths.push_back(folder / file);
      }
      refused = model.Add(paths).size();
    }
    EXPECT_EQ(Rows(model), each.Rows);
    EXPECT_EQ(refused, each.Refused);
  }
}

TEST(FilmListModel, ChangesByWhatTheUserDoes) {
  FilmListModel model;
  const QAbstractItemModelTester tester(&model, Fatal);
  model.Add({SourceFile("examples/media/first.m2v"), SourceFile("examples/media/second.m2v")});
  const std::vector<std::string> first{
      "first",           "- Audio 1 German", "- Audio 2 English", "- Sub 1 German",
      "- Sub 2 English", "second",           "- Audio 1 English"};
  ASSERT_EQ(Rows(model), first);
  const auto at = [&model](int film, int stream, FilmColumn column) {
    const QModelIndex row = model.index(film, stream < 0 ? static_cast<int>(column) : 0);
    return stream < 0 ? row : model.index(stream, static_cast<int>(column), row);
  };
  EXPECT_FALSE(model.CanMove(at(0, 1, FilmColumn::Name), 1)) << "sound among subtitles";
  EXPECT_FALSE(model.CanMove(at(0, -1, FilmColumn::Name), -1));
  model.Move(at(0, 3, FilmColumn::Name), -1);
  model.Move(at(0, 0, FilmColumn::Name), 1);
  EXPECT_TRUE(model.setData(at(0, 0, FilmColumn::Language), "French"));
  EXPECT_FALSE(model.setData(at(0, 0, FilmColumn::Language), "Klingon"));
  EXPECT_FALSE(model.setData(at(0, -1, FilmColumn::Name), " "));
  EXPECT_TRUE(model.setData(at(0, -1, FilmColumn::Name), "Holiday"));
  EXPECT_TRUE(model.setData(at(0, -1, FilmColumn::After), "Next film"));
  model.Move(at(1, -1, FilmColumn::Name), -1);
  model.Remove(at(1, 1, FilmColumn::Name));
  EXPECT_EQ(Rows(model), (std::vector<std::string>{"second", "- Audio 1 English", "Holiday",
                                                   "- Audio 1 French", "- Sub 1 English", "- Sub 2 German"}));
  const std::vector<OrderedFilm> films = model.Films();
  EXPECT_EQ(films.at(1).After, AfterFilm::Next);
  EXPECT_EQ(films.at(1).Audio.size(), 1U);
  EXPECT_EQ(model.SubtitleLanguages(), (std::vector<std::string>{"English", "German"}));
  model.Remove(at(1, -1, FilmColumn::Name));
  EXPECT_EQ(model.rowCount(), 1);
}

TEST(FilmLook, NamesWhatSubtitlesShowFor) {
  struct Case {
    bool IsWide;
    bool HasPanScan;
    std::string Mode;
  };
  const std::vector<Case> cases{
      {true, false, "Wide/Letter"}, {false, true, "Wide/PS"}, {false, false, "Normal"}};
  for (const Case& each : cases) {
    FilmFileLook video;
    video.IsWide = each.IsWide;
    video.PanScan = each.HasPanScan;
    EXPECT_EQ(SubtitleLabel(2, SubtitleModeOf(video)), "Sub 2 (" + each.Mode + ")");
    EXPECT_EQ(SubtitleExplanation(2, SubtitleModeOf(video)),
              "Subtitle Track 2 showing " + each.Mode + " subtitles");
  }
}

// The wizard over a window, with films in a folder of their own.
class FilmWizardOver : public testing::Test {
 protected:
  FilmWizardOver() : window_(SetupOf()) {
    for (const auto& entry : fs::directory_iterator(SourceFile("examples/media"))) {
      fs::copy(entry.path(), films_.Path());
    }
    window_.show();
    window_.activateWindow();
  }

  WindowSetup SetupOf() {
    WindowSetup setup;
    setup.Answers = &answers_;
    setup.StateFolder = state_ / "state";
    setup.CacheFolder = state_ / "cache";
    return setup;
  }

  FilmWizard& Wizard() {
    if (window_.findChild<FilmWizard*>() == nullptr) {
      Press(*window_.Parts().Commands.Of(ActionId::NewDiscFromFilms));
    }
    auto* const wizard = window_.findChild<FilmWizard*>();
    EXPECT_TRUE(QTest::qWaitForWindowActive(wizard));
    return *wizard;
  }

  template <class Widget>
  Widget& Named(const QString& name) {
    for (Widget* const widget : Wizard().findChildren<Widget*>()) {
      if (widget->accessibleName() == name) {
        return *widget;
      }
    }
    ADD_FAILURE() << "no " << name.toStdString();
    static auto* const none = new Widget;
    return *none;
  }

  void Drop(const std::vector<std::string>& names) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& name : names) {
      urls << QUrl::fromLocalFile(QString::fromStdString(films_ / name));
    }
    data.setUrls(urls);
    const QPoint middle = Wizard().rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Wizard(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Wizard(), &drop);
  }

  void Click(QWizard::WizardButton button) { QTest::mouseClick(Wizard().button(button), Qt::LeftButton); }

  bool IsGone() {
    return QTest::qWaitFor([this] { return window_.findChild<FilmWizard*>() == nullptr; }, LongMs);
  }

  // What stands where the user is told why not.
  std::string Why() {
    auto& why = Named<QPlainTextEdit>("Why the disc is not made");
    EXPECT_TRUE(QTest::qWaitFor([&why] { return why.isVisible(); }, LongMs));
    return why.toPlainText().toStdString();
  }

  void ExpectDisc(const std::string& project, std::size_t titles, bool hasPages) {
    const EditSession& session = window_.Parts().Doc.Session();
    EXPECT_EQ(session.File(), project);
    EXPECT_FALSE(session.IsUnsaved());
    EXPECT_EQ(TitleCount(session.Work()), titles);
    EXPECT_TRUE(fs::exists(project));
    EXPECT_EQ(fs::exists(fs::path(project).replace_extension(".menus")), hasPages);
  }

  TempFolder films_;
  TempFolder state_;
  ScriptedAnswers answers_;
  MainWindow window_;
};

// The flow with the mouse: the action, a drop, Next, Finish.
TEST_F(FilmWizardOver, MakesADiscOfDroppedFilms) {
  Drop({"first.m2v", "second.m2v"});
  Click(QWizard::NextButton);
  Click(QWizard::FinishButton);
  ASSERT_TRUE(IsGone());
  ExpectDisc(films_ / "disc.qvp", 2, true);
  EXPECT_EQ(TempFolder::Read(films_ / "disc.qvp").find(films_ / ""), std::string::npos)
      << "its films move with it";
}

// Where there is nothing to choose, there are no menus; files come by the dialog.
TEST_F(FilmWizardOver, MakesADiscOfFilesFromTheDialog) {
  answers_.Files = {{films_ / "second.m2v"}};
  for (QPushButton* const button : Wizard().findChildren<QPushButton*>()) {
    if (button->text() == "&Add Files…") {
      QTest::mouseClick(button, Qt::LeftButton);
    }
  }
  Click(QWizard::NextButton);
  Click(QWizard::FinishButton);
  ASSERT_TRUE(IsGone());
  ExpectDisc(films_ / "second.qvp", 1, false);
}

// The pages show before anything is made, and what the second page says holds for the disc.
TEST_F(FilmWizardOver, ShowsThePagesFirst) {
  Drop({"first.m2v", "second.m2v"});
  Click(QWizard::NextButton);
  Named<QComboBox>("Theme").setCurrentIndex(1);
  Named<QComboBox>("Language of labels").setCurrentText("German");
  Named<QComboBox>("Subtitles at start").setCurrentText("German");
  Named<QLineEdit>("Project file").setText(QString::fromStdString(films_ / "mine"));
  Click(QWizard::NextButton);
  auto& pages = Named<QListWidget>("Pages");
  ASSERT_TRUE(QTest::qWaitFor([&pages] { return pages.count() > 0; }, LongMs));
  QStringList names;
  for (int row = 0; row < pages.count(); ++row) {
    names << pages.item(row)->text();
    EXPECT_FALSE(pages.item(row)->icon().isNull());
  }
  EXPECT_TRUE(names.contains("Menu of first")) << names.join(", ").toStdString();
  EXPECT_TRUE(names.contains("Titles")) << names.join(", ").toStdString();
  EXPECT_FALSE(fs::exists(films_ / "mine.menus"));
  Click(QWizard::FinishButton);
  ASSERT_TRUE(IsGone());
  ExpectDisc(films_ / "mine.qvp", 2, true);
}

// Whatever keeps the disc from being made, the user is told in the wizard, and nothing is left behind.
TEST_F(FilmWizardOver, TellsWhatKeepsADiscFromBeingMade) {
  films_.Write("taken.qvp", std::string_view("mine"));
  fs::create_directories(films_ / "full.menus");
  films_.Write("full.menus/letter.txt", std::string_view("dear"));
  struct Case {
    std::string Project;
    bool Replace;
    std::string Why;  // empty: the user stays without a word
  };
  const std::map<std::string, Case> cases{
      {"no folder", {"nowhere/disc.qvp", false, "There is no folder"}},
      {"not replaced", {"taken.qvp", false, ""}},
      {"other files among the pages", {"full.qvp", true, "holds more than pages"}}};
  Drop({"first.m2v"});
  Click(QWizard::NextButton);
  for (const auto& [name, each] : cases) {
    SCOPED_TRACE(name);
    Named<QLineEdit>("Project file").setText(QString::fromStdString(films_ / each.Project));
    if (each.Project.find('/') == std::string::npos) {
      answers_.Yes = {each.Replace};
    }
    Click(QWizard::FinishButton);
    if (!each.Why.empty()) {
      EXPECT_NE(Why().find(each.Why), std::string::npos) << Why();
    }
    EXPECT_TRUE(Wizard().button(QWizard::FinishButton)->isEnabled());
    EXPECT_TRUE(window_.Parts().Doc.Session().File().empty());
  }
  EXPECT_EQ(answers_.Harms, 2);
  EXPECT_EQ(TempFolder::Read(films_ / "taken.qvp"), "mine");
  EXPECT_EQ(TempFolder::Read(films_ / "full.menus/letter.txt"), "dear");
}

// A film that no disc carries is told with its remedy, and the wizard stays at the films until it is gone.
TEST_F(FilmWizardOver, StaysAtFilmsThatNoDiscCarries) {
  films_.Write("bad.m2v", std::string_view("no video at all"));
  Drop({"bad.m2v", "second.m2v"});
  auto& faults = Named<QPlainTextEdit>("What keeps the disc from being made");
  ASSERT_TRUE(QTest::qWaitFor([&faults] { return faults.isVisible(); }, LongMs));
  EXPECT_NE(faults.toPlainText().indexOf("bad.m2v"), -1);
  Click(QWizard::NextButton);
  EXPECT_EQ(Wizard().currentId(), 0);
  Named<QTreeView>("Films").setFocus();
  QTest::keyClick(&Named<QTreeView>("Films"), Qt::Key_Delete);
  ASSERT_TRUE(QTest::qWaitFor([&faults] { return !faults.isVisible(); }, LongMs));
  Click(QWizard::NextButton);
  EXPECT_EQ(Wizard().currentId(), 1);
}

// Unsaved work of the former project is asked about first, and stays where the user stays.
TEST_F(FilmWizardOver, AsksAboutUnsavedWork) {
  window_.Parts().Doc.Session().MarkUnsaved();
  answers_.IsAway = true;
  Drop({"second.m2v"});
  Click(QWizard::NextButton);
  Click(QWizard::FinishButton);
  EXPECT_EQ(answers_.Questions.size(), 1U);
  EXPECT_FALSE(fs::exists(films_ / "second.qvp"));
  answers_.Yes = {false};  // Discard
  Click(QWizard::FinishButton);
  ASSERT_TRUE(IsGone());
  ExpectDisc(films_ / "second.qvp", 1, false);
}

// Stopped in the middle, it leaves nothing; closed in the middle, it goes.
TEST_F(FilmWizardOver, LeavesNothingWhereItIsStopped) {
  for (const bool closes : {false, true}) {
    SCOPED_TRACE(closes);
    Drop({"first.m2v", "second.m2v"});
    Click(QWizard::NextButton);
    Click(QWizard::FinishButton);
    if (closes) {
      Wizard().reject();
      ASSERT_TRUE(IsGone());
    } else {
      for (QPushButton* const button : Wizard().findChildren<QPushButton*>()) {
        if (button->text() == "&Stop") {
          button->click();
        }
      }
      ASSERT_TRUE(
          QTest::qWaitFor([this] { return Wizard().button(QWizard::FinishButton)->isEnabled(); }, LongMs));
      Wizard().reject();
      ASSERT_TRUE(IsGone());
    }
    EXPECT_FALSE(fs::exists(films_ / "disc.qvp"));
    EXPECT_FALSE(fs::exists(films_ / "disc.menus"));
    EXPECT_TRUE(window_.Parts().Doc.Session().File().empty());
  }
}

TEST_F(FilmWizardOver, NamesEveryControl) {
  for (int page = 0; page < 3; ++page) {
    for (QWidget* const widget : Wizard().findChildren<QWidget*>()) {
      const QString kind = widget->metaObject()->className();
      const bool isPart = kind == "QComboBoxPrivateContainer" || widget->objectName().startsWith("qt_");
      if (widget->isVisible() && widget->focusPolicy() != Qt::NoFocus && !isPart) {
        QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << kind.toStdString() << " of page " << page;
      }
    }
    if (page == 0) {
      Drop({"second.m2v"});
    }
    Wizard().next();
  }
}

}  // namespace
}  // namespace quorvelant
