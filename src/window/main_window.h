// The window: menus, tool bar, panes in docks, the bar of refusals, the status line.
#pragma once

#include <QMainWindow>
#include <memory>

#include "window/actions.h"
#include "window/window_parts.h"

namespace quorvelant {

// Where the window's files are and who answers; a test gives its own.
struct WindowSetup {
  Answerer* Answers = nullptr;  // null: boxes and file dialogs
  std::string StateFolder;
  std::string CacheFolder;
  std::string SettingsPath;
  std::string LogPath;
};

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  explicit MainWindow(WindowSetup setup);
  ~MainWindow() override;

  [[nodiscard]] WindowParts& Parts();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  class Private;
  std::unique_ptr<Private> private_;
};

}  // namespace quorvelant
