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
    QTest::qWaitForWindowActive(&window_);
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
    action.trigger();
    QCoreApplication::processEvents();
  }
  bool IsEnabled(ActionId id) {
    QCoreApplication::processEvents();
    return window_.Parts().Commands.Of(id)->isEnabled();
  }

  void DropFiles(QTreeView& tree, const QPoint& place, const std::vector<std::string>& files) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& file : files) {
      urls.append(QUrl::fromLocalFile(QString::fromStdString(file)));
    }
    data.setUrls(urls);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree.viewport(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree.viewport(), &drop);
  }

  std::string Film(const std::string& name) { return folder_.Write(name, BuildStream({})); }
  std::string Sound(const std::string& name) {
    std::string frames;
    for (int i = 0; i < 20; ++i) {
      frames += Ac3Head(0x14) + std::string(768 - 7, '\0');
    }
    return folder_.Write(name, frames);
  }

  TempFolder folder_;
  ScriptedAnswers answers_;
  MainWindow window_;
};

TEST_F(Trees, Look) {
  OpenExample();
  QCoreApplication::processEvents();
  Choose("VTS1.TITLE1.PGC1");
  QTest::qWait(500);
  window_.grab().save(QStringLiteral("/tmp/w1_look.png"));
}

}  // namespace
}  // namespace quorvelant
