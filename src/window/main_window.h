// The window: menus, tool bar, panes in docks, the bar of refusals, the status line.
#pragma once

#include <QMainWindow>
#include <memory>
#include <string>
#include <vector>

#include "window/actions.h"
#include "window/window_parts.h"

namespace quorvelant {

// Where the window's files are and who answers; a test gives its own.
struct WindowSetup {
  Answerer* Answers = nullptr;  // null: boxes and file dialogs
  std::string StateFolder = {};
  std::string CacheFolder = {};
  std::string SettingsPath = {};
  std::string LogPath = {};
};

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  explicit MainWindow(WindowSetup setup);
  ~MainWindow() override;

  [[nodiscard]] WindowParts& Parts();
  // Opens projects, and takes other files in as source material. Paths of this system.
  void Open(const std::vector<std::string>& files);
  // Once the window stands: what a program that broke off has left.
  void OfferLeftWork();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AddRecentMenu();
  void HandleHistory();
  void Connect();
  void ShowState();
  void ChooseFirst();
  void RestoreState();
  void KeepState() const;
  [[nodiscard]] bool MayStopJobs();

  class Private;
  std::unique_ptr<Private> private_;
};

}  // namespace quorvelant
