// A whole window in a folder of its own, pressed by mouse and keys.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <filesystem>
#include <string>
#include <vector>

#include "support/folders.h"
#include "support/scripted_answers.h"
#include "support/temp_folder.h"
#include "ui/shown_text.h"
#include "window/main_window.h"

namespace quorvelant {

struct OpenWindow {
  explicit OpenWindow(const TempFolder& folder) : Window(SetupIn(folder)) {
    QObject::connect(&Doc().Speaks(), &Voice::Told,
                     [this](const Message& message) { Told += message.Text + "\n"; });
    Window.show();
    Window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
  }
  WindowSetup SetupIn(const TempFolder& folder) {
    WindowSetup setup;
    setup.Answers = &Answers;
    setup.StateFolder = folder / "state";
    setup.CacheFolder = folder / "cache";
    setup.SettingsPath = folder / "settings.ini";
    setup.LogPath = folder / "state/run.log";
    return setup;
  }

  // --- looking ---

  [[nodiscard]] Document& Doc() { return Window.Parts().Doc; }
  [[nodiscard]] const Project& Work() { return Doc().Work(); }
  // The control of that accessible name, at or below a widget.
  template <class Kind>
  Kind& Named(const char* name, QWidget* above = nullptr) {
    for (Kind* const found : (above != nullptr ? above : &Window)->findChildren<Kind*>()) {
      if (found->accessibleName() == QString::fromUtf8(name)) {
        return *found;
      }
    }
    throw std::runtime_error(std::string("no control is named ") + name);
  }
  // The index of the first row, anywhere below, whose text holds these words.
  static QModelIndex Row(const QAbstractItemModel& model, const QString& words,
                         const QModelIndex& below = {}) {
    for (int row = 0; row < model.rowCount(below); ++row) {
      const QModelIndex index = model.index(row, 0, below);
      if (index.data().toString().contains(words)) {
        return index;
      }
      if (const QModelIndex found = Row(model, words, index); found.isValid()) {
        return found;
      }
    }
    return {};
  }
  [[nodiscard]] QDialog* Dialog() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
  template <class Condition>
  static bool Wait(Condition condition, int ms = 20000) {
    return QTest::qWaitFor(condition, ms);
  }
  // Until no job runs.
  void Settle() {
    EXPECT_TRUE(Wait([this] { return !Window.Parts().Work.AnyRunning(); }, 60000));
    QTest::qWait(0);
  }
  // Of the disc that was made last.
  [[nodiscard]] std::string LastVerdict() {
    std::string words;
    for (const auto& job : Window.Parts().Work.All()) {
      words = job->Title().starts_with("Author") ? job->Words() : words;
    }
    return words;
  }

  // --- steps of a user, counted ---

  void Click(QWidget& control) {
    ++Steps;
    QTest::mouseClick(&control, Qt::LeftButton);
    QCoreApplication::sendPostedEvents();
  }
  void ClickRow(QAbstractItemView& view, const QModelIndex& index, bool twice = false) {
    ++Steps;
    ASSERT_TRUE(index.isValid());
    view.scrollTo(index);
    const QRect row = view.visualRect(index);
    const QPoint place(row.left() + 4, row.center().y());  // a name may be wider than the pane
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    if (twice) {
      QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
    }
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    ++Steps;
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const top = modal != nullptr ? modal : &Window;
    top->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(top));
    QWidget* const target = top->focusWidget() != nullptr ? top->focusWidget() : top;
    QTest::keyClick(target, key, modifiers);
    QCoreApplication::sendPostedEvents();
  }
  static std::unique_ptr<QMimeData> FilesOf(const std::vector<std::string>& files) {
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const std::string& file : files) {
      urls << QUrl::fromLocalFile(Shown(file));
    }
    data->setUrls(urls);
    return data;
  }
  void Drop(QWidget& target, const QMimeData& data, const QPoint& place) {
    ++Steps;
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&target, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&target, &drop);
  }

  ScriptedAnswers Answers;
  MainWindow Window;
  int Steps = 0;
  std::string Told;
};

// The example with its media, in the folder.
inline std::string CopyOfExample(const TempFolder& folder) {
  std::filesystem::copy(SourceFile("examples"), folder / "examples",
                        std::filesystem::copy_options::recursive);
  return folder / "examples/demo.qvp";
}

}  // namespace quorvelant
