// A window in which the disc of the example is played.
#pragma once

#include <gtest/gtest.h>

#include <QListWidget>
#include <QTest>
#include <filesystem>
#include <string>

#include "open_window.h"
#include "support/temp_folder.h"
#include "ui/simulation.h"
#include "window/player_pane.h"

namespace quorvelant {

// The example, where a line of its script stands otherwise, with the disc put in by its key.
class PlayedWindow {
 public:
  explicit PlayedWindow(const std::string& line = {}, const std::string& instead = {},
                        const std::string& lost = {}) {
    const std::string project = CopyOfExample(Folder);
    std::string script = TempFolder::Read(project);
    if (!line.empty()) {
      EXPECT_NE(script.find(line), std::string::npos) << line;
      script.replace(script.find(line), line.size(), instead);
      Folder.Write("examples/demo.qvp", script);
    }
    if (!lost.empty()) {
      std::filesystem::remove(Folder / lost);
    }
    Open.Window.Open({project});
    Open.Settle();
    Open.Key(Qt::Key_F5);
    QTest::qWait(0);
  }
  [[nodiscard]] Simulation& Player() { return Open.Window.Parts().Player; }
  [[nodiscard]] PlayerPane& Pane() { return *Open.Window.findChild<PlayerPane*>(); }
  [[nodiscard]] std::string Screen() { return Pane().Screen().accessibleDescription().toStdString(); }
  [[nodiscard]] QListWidget& Steps() { return Open.Named<QListWidget>("What the player did"); }
  [[nodiscard]] std::string Log() {
    std::string log;
    for (int row = 0; row < Steps().count(); ++row) {
      log += Steps().item(row)->text().toStdString() + "\n";
    }
    return log;
  }
  // Where it is, once a key that shows for a moment has acted.
  [[nodiscard]] std::string Where() {
    QTest::qWait(200);
    return Player().Words().toStdString();
  }
  // A picture with what lies over it is there.
  [[nodiscard]] bool IsDrawn() {
    return OpenWindow::Wait([this] { return Player().Look() != nullptr && Player().Look()->IsReady(); });
  }

  TempFolder Folder;
  OpenWindow Open{Folder};
};

}  // namespace quorvelant
