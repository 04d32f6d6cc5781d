#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <QUrl>

#include "edit/live_elements.h"
#include "edit/project_file.h"
#include "support/folders.h"
#include "support/pressed_action.h"
#include "support/recording_ui.h"
#include "support/scripted_answers.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"
#include "ui/tree_model.h"
#include "window/main_window.h"

namespace quorvelant {
namespace {

// A window over a project of its own, with the trees by their names.
class Trees : public testing::Test {
 protected:
  Trees()
      : window_({.Answers = &answers_,
                 .StateFolder = folder_ / "state",
                 .CacheFolder = folder_ / "cache",
                 .SettingsPath = {},
                 .LogPath = {}}) {
    window_.resize(1280, 900);
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  void OpenExample() {
    RecordingUi ui;
    ui.Unattended = true;
    ASSERT_TRUE(OpenProjectFile(Doc().Session(), SourceFile("examples/demo.qvp"), false, ui));
  }

  Document& Doc() { return window_.Parts().Doc; }
  const std::string& Chosen() { return window_.Parts().Chosen.Key(); }
  void Choose(const std::string& key) { window_.Parts().Chosen.Choose(key); }

  QTreeView& Tree(const char* name) {
    for (QTreeView* tree : window_.findChildren<QTreeView*>()) {
      if (tree->accessibleName() == QLatin1String(name)) {
        return *tree;
      }
    }
    throw std::runtime_error(name);
  }

  static QModelIndex Find(const QTreeView& tree, const std::string& key) {
    const QAbstractItemModel& model = *tree.model();
    const QModelIndexList found =
        model.match(model.index(0, 0), TreeModel::KeyRole, QString::fromStdString(key), 1,
                    Qt::MatchExactly | Qt::MatchRecursive);
    return found.value(0);
  }

  // As a user does it: after the keys, when all that was put off has come.
  void Trigger(ActionId id) {
    QCoreApplication::processEvents();
    QAction& action = *window_.Parts().Commands.Of(id);
    ASSERT_TRUE(action.isEnabled()) << action.text().toStdString();
    Press(action);
    QCoreApplication::processEvents();
  }
  bool IsEnabled(ActionId id) {
    QCoreApplication::processEvents();
    return window_.Parts().Commands.Of(id)->isEnabled();
  }

  // Moves what is dragged over a row and lets it go there; false where the row does not take it.
  static bool DropOn(QTreeView& tree, const std::string& key, const QMimeData& data) {
    const QModelIndex row = Find(tree, key);
    tree.scrollTo(row);
    const QPoint place =
        key.empty() ? QPoint(5, tree.viewport()->height() - 5) : tree.visualRect(row).center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree.viewport(), &enter);
    QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree.viewport(), &move);
    if (!enter.isAccepted() || !move.isAccepted()) {
      QDragLeaveEvent leave;
      QCoreApplication::sendEvent(tree.viewport(), &leave);
      return false;
    }
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree.viewport(), &drop);
    return true;
  }

  void WaitForJobs() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.Parts().Work.AnyRunning(); }, 20000));
    QCoreApplication::processEvents();
  }
  std::string TextOf(const char* tree, const std::string& key) {
    return Find(Tree(tree), key).data(Qt::AccessibleTextRole).toString().toStdString();
  }
  void EnterName(const QString& name) {
    QLineEdit* line = nullptr;
    for (QLineEdit* each : window_.findChildren<QLineEdit*>()) {
      const bool isInTree = qobject_cast<QTreeView*>(each->parentWidget()->parentWidget()) != nullptr;
      line = isInTree && each->accessibleName() == QLatin1String("Name") ? each : line;
    }
    ASSERT_NE(line, nullptr);
    line->selectAll();
    QTest::keyClicks(line, name);
    QTest::keyClick(line, Qt::Key_Return);
    QCoreApplication::processEvents();
  }

  std::string Film(const std::string& name) { return folder_.Write(name, BuildStream({})); }
  std::string Sound(const std::string& name) {
    std::string frames;
    for (int i = 0; i < 20; ++i) {
      frames.append(Ac3Head(0x14)).append(768 - Ac3Head(0x14).size(), '\0');
    }
    return folder_.Write(name, frames);
  }

  TempFolder folder_;
  ScriptedAnswers answers_;
  MainWindow window_;
};

TEST_F(Trees, RenameInPlace) {
  OpenExample();
  struct Case {
    const char* Tree;
    std::string Key;
    QString Name;
    std::string Told;
  };
  const std::vector<Case> cases{{"Disc", "VTS1.TITLE1", "Film 1", "title \"Film 1\""},
                                {"Disc", "VTS1.TITLE1.PGC1", "Main", "pgc \"Main\""},
                                {"Disc", "VTS1.TITLE1.PGC1.PG1.CELL1", "Start",
                                 "cell \"Cell1 -> First; Scene_1\""},  // a cell is told by what it shows
                                {"Media", "Track.1", "Feature", "track \"Feature\""}};
  for (const Case& each : cases) {
    Choose(each.Key);
    Trigger(ActionId::Rename);
    EnterName(each.Name);
    EXPECT_TRUE(QTest::qWaitFor([&] { return TextOf(each.Tree, each.Key) == each.Told; })) << each.Told;
  }
  EXPECT_EQ(LiveCell(Doc().Work(), "VTS1.TITLE1.PGC1.PG1.CELL1")->CellName, "Start");
  for (const char* key : {"FirstPGC", "VTS1", "VTS1.LANGUAGE1", "Track.1.Scene1", "Track.1.Audio1"}) {
    Choose(key);
    EXPECT_FALSE(IsEnabled(ActionId::Rename)) << key;
  }
}

TEST_F(Trees, RemoveAfterTheQuestion) {
  OpenExample();
  struct Case {
    std::string Key;
    bool Yes;
    std::string Title;
    std::string ChosenThen;
  };
  const std::vector<Case> cases{
      {"VTS1.TITLE1.PGC1.PG2", false, "VM Reference Error", "VTS1.TITLE1.PGC1.PG2"},
      {"VTS1.TITLE1.PGC1.PG2", true, "VM Reference Error", "VTS1.TITLE1.PGC1"},
      {"VTS2", true, "VM Reference Error", ""},
      {"Track.1.Audio2", true, "Confirm Removal", "Track.1"},
      {"VMG1", true, "", "VMG1"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.Key);
    answers_.Questions.clear();
    answers_.Yes = {each.Yes};
    Choose(each.Key);
    Trigger(ActionId::Remove);
    ASSERT_EQ(answers_.Questions.size(), each.Title.empty() ? 0U : 1U);
    EXPECT_EQ(each.Title.empty() ? "" : answers_.Questions[0].Title, each.Title);
    EXPECT_EQ(Chosen(), each.ChosenThen);
  }
  answers_.Yes.clear();
}

TEST_F(Trees, MakeStructure) {
  OpenExample();
  const auto make = [this](const std::string& at, ActionId id, const std::string& chosen,
                           const std::string& told) {
    Choose(at);
    Trigger(id);
    EXPECT_EQ(Chosen(), chosen);
    EXPECT_EQ(TextOf("Disc", chosen), told);
  };
  make("VTS1", ActionId::NewTitleSet, "VTS3", "entry \"VTS3\"");
  answers_.Texts = {"Third", "Extra", "Part"};
  make("VTS1.TITLE1.PGC1", ActionId::NewTitle, "VTS1.TITLE3", "title \"Third\"");
  make("VTS1.TITLE3", ActionId::NewPgc, "VTS1.TITLE3.PGC2", "pgc \"Extra\"");
  make("VTS1.TITLE3.PGC2", ActionId::NewProgram, "VTS1.TITLE3.PGC2.PG1", "program \"Part\"");
  answers_.Chosen = {0};
  Choose("VMG1");
  Trigger(ActionId::NewLanguage);
  EXPECT_EQ(answers_.Choices.size(), 135U);  // all but English
  EXPECT_EQ(Chosen(), "VMG1.LANGUAGE2");

  // Into the program that is chosen; where a title is, it asks.
  Choose("VTS1.TITLE3.PGC2.PG1");
  Choose("Track.2.Scene2");
  answers_.Choices.clear();
  Trigger(ActionId::PlaceTrack);
  EXPECT_TRUE(answers_.Choices.empty());
  EXPECT_EQ(TextOf("Disc", Chosen()), "cell \"Cell1 -> Second; Scene_2\"");
  Choose("VTS1.TITLE3");
  Choose("Track.2.Scene2");
  answers_.Chosen = {0};
  Trigger(ActionId::PlaceTrack);
  EXPECT_FALSE(answers_.Choices.empty());
}

TEST_F(Trees, TakeDrags) {
  OpenExample();
  QTreeView& disc = Tree("Disc");
  QMimeData scene;
  scene.setData(QString::fromLatin1(KeysMimeType), "Track.2.Scene2");
  QSignalSpy status(&Doc().Speaks(), &Voice::StatusTold);
  EXPECT_FALSE(DropOn(disc, "FirstPGC", scene));
  EXPECT_TRUE(DropOn(disc, "VTS1.TITLE1.PGC1", scene));
  EXPECT_EQ(Chosen(), "VTS1.TITLE1.PGC1.PG4.CELL1");
  QMimeData foreign;
  foreign.setData(QString::fromLatin1(KeysMimeType), "VTS1.TITLE2");
  EXPECT_FALSE(DropOn(disc, "VTS1.TITLE1.PGC1", foreign));

  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(QString::fromStdString(Sound("another.de.ac3")))});
  EXPECT_FALSE(DropOn(disc, "VTS1.TITLE1.PGC1", files));  // the window takes them
  EXPECT_TRUE(DropOn(Tree("Media"), "Track.0", files));
  EXPECT_EQ(Doc().Work().Tracks[0].AudioStreams.back().Language, "German");
}

TEST_F(Trees, TakeFilesByTheDialog) {
  const auto& tracks = Doc().Work().Tracks;
  const std::string film = Film("film.m2v");
  answers_.Files = {{film, Sound("film.ac3")}};
  Trigger(ActionId::ImportFile);
  WaitForJobs();
  ASSERT_EQ(tracks.Count(), 1U);
  EXPECT_EQ(TextOf("Media", Chosen()), "track \"film\"");

  answers_.Files = {{Sound("film_fr.ac3")}};
  Trigger(ActionId::AddAudio);
  EXPECT_EQ(Chosen(), "Track.0.Audio2");
  EXPECT_EQ(tracks[0].AudioStreams[1].Language, "French");
  answers_.Yes = {false};
  Trigger(ActionId::AddSubtitles);
  EXPECT_EQ(Chosen(), "Track.0.Sub1");
  answers_.Files = {{Film("more.m2v")}};
  Trigger(ActionId::AddVideo);
  WaitForJobs();
  EXPECT_EQ(Chosen(), "Track.0.Video2");
  EXPECT_EQ(tracks[0].VideoFrames, 96);

  answers_.Texts = {"00:00:01:00"};
  Trigger(ActionId::NewChapter);
  EXPECT_EQ(tracks[0].Scenes.at(1).Frame, 24);  // where a picture is that a player can jump to
  answers_.Files = {{folder_.Write("list.txt", "chapter=00:00:02:00\n")}};
  Trigger(ActionId::ImportChapters);
  EXPECT_EQ(tracks[0].Scenes.size(), 3U);
  Trigger(ActionId::MoveChapters);
  answers_.Chosen = {1};
  answers_.Texts = {"Menu"};
  Trigger(ActionId::NewTrack);
  EXPECT_EQ(TextOf("Media", Chosen()), "track \"Menu\"");
  EXPECT_EQ(tracks[1].TrackType, "Still");
  EXPECT_FALSE(IsEnabled(ActionId::AddVideo));  // a still has one picture
}

TEST_F(Trees, FilterRows) {
  OpenExample();
  QTreeView& media = Tree("Media");
  auto* const words = media.parentWidget()->findChild<QLineEdit*>();
  QTest::keyClicks(words, "german");
  EXPECT_EQ(media.model()->rowCount(), 1);
  EXPECT_TRUE(Find(media, "Track.1.Audio2").isValid());
  EXPECT_FALSE(Find(media, "Track.1.Audio1").isValid());
  words->clear();
  EXPECT_EQ(media.model()->rowCount(), 5);
}

}  // namespace
}  // namespace quorvelant
