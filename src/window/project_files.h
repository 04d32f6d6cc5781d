// The project as a file: new, open, save, what was left unsaved, and what became of it on the disk.
#pragma once

#include <QMenu>
#include <QObject>
#include <QWidget>
#include <functional>
#include <string>

#include "edit/project_file.h"
#include "ui/file_watch.h"
#include "ui/recent_files.h"
#include "ui/recovery.h"
#include "window/notice_bar.h"
#include "window/window_parts.h"

namespace quorvelant {

class ProjectFiles : public QObject {
  Q_OBJECT
 public:
  ProjectFiles(WindowParts& parts, NoticeBar& notices, QWidget& window);

  // A project (.qvp), or a script of the other dialect (.scp).
  [[nodiscard]] static bool IsProject(const QString& file);
  // Asks about unsaved work, then loads beside the window.
  void Open(const std::string& file);
  // Reads or makes a project in a job; `done` gets it in the window's thread.
  using Reading = std::function<std::optional<OpenedProject>(UserInterface& ui)>;
  void Load(const std::string& title, Reading read, std::function<void(OpenedProject opened)> done);
  // Once nothing is being read or made; at once where nothing is.
  void WhenSettled(std::function<void()> then);
  // Another project that is in no file yet, or in one by now. False where present work is to stay.
  bool Take(OpenedProject opened, bool isUnsaved);
  // Whether the present work may go: it is saved, given up, or there is none.
  [[nodiscard]] bool MayLeave();
  bool Save();
  bool SaveAs();
  // Offers what a program that broke off has left. True where there was any.
  bool OfferLeftWork();

  [[nodiscard]] RecentFiles& Recent() { return recent_; }
  void FillRecentMenu(QMenu& menu);
  // The name for the window's caption.
  [[nodiscard]] QString Caption() const;

 signals:
  void Opened();

 private:
  void HandleActions();
  void AskOpen();
  void OpenExample();
  void LocateFiles();
  void Mend(const std::string& missing, const std::string& found);
  void Recover(const LeftWork& left);
  void OfferReload();
  bool SaveTo(const std::string& path);
  void Settle();

  WindowParts& parts_;
  NoticeBar& notices_;
  QWidget& window_;
  RecentFiles recent_;
  Recovery recovery_;
  FileWatch watch_;
  std::string kept_;  // what another program wrote that the user saw and does not want; empty for none
  std::size_t loading_ = 0;
  std::vector<std::function<void()>> waiting_;
};

}  // namespace quorvelant
