// "New Disc from Films…": from films to a project with menus, in three pages.
#pragma once

#include <QWizard>
#include <functional>
#include <string>
#include <vector>

#include "ui/film_disc.h"
#include "ui/jobs.h"
#include "window/project_files.h"
#include "window/window_parts.h"

namespace quorvelant {

class FilmListPage;
class FilmMenusPage;
class FilmPagesPage;
class FilmStrip;

// The project is made in a session of its own, beside the window; the present one stays until it is whole.
class FilmWizard : public QWizard {
  Q_OBJECT
 public:
  FilmWizard(WindowParts& parts, ProjectFiles& files, QWidget* parent);
  ~FilmWizard() override;

  // Files and folders, for its first page.
  void Take(const std::vector<std::string>& files);

  // Makes the project and saves it; the wizard closes when that is done.
  void accept() override;
  // Stops what is being made.
  void reject() override;

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void EnterPage(int id);
  void PaintPages();
  // Where the project goes and whether it may go there; false where the user stays.
  bool MayMake(FilmDiscOrder& order);
  void Make(FilmDiscOrder order);
  // One piece of work at a time: what runs is stopped, and the next one begins when it has ended.
  void Run(std::function<void()> start, std::function<void()> ended);
  void Begin();
  void SetMaking(bool isMaking);
  [[nodiscard]] FilmDiscOrder Order() const;

  struct Errand {
    std::function<void()> Start;  // a job
    std::function<void()> Ended;
  };

  WindowParts& parts_;
  ProjectFiles& files_;
  FilmListPage* films_;
  FilmMenusPage* menus_;
  FilmPagesPage* pages_;
  FilmStrip* strip_;
  Errand next_;
  Job* job_ = nullptr;
  bool isMaking_ = false;
  bool isLeaving_ = false;
};

}  // namespace quorvelant
