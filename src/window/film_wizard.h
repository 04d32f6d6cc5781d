// From films to a disc in three pages.
#pragma once

#include <QWizard>

#include "window/films_page.h"
#include "window/project_files.h"

namespace quorvelant {

// Finish is there from the second page on; the disc is made beside the window and takes the place of the
// project.
class FilmWizard : public QWizard {
  Q_OBJECT
 public:
  FilmWizard(WindowParts& parts, ProjectFiles& files, QWidget* parent);

  void Take(const std::vector<std::string>& files) { films_->Take(files); }
  void accept() override;

 private:
  WindowParts& parts_;
  ProjectFiles& files_;
  FilmOrder order_;
  FilmsPage* films_;
  MenusPage* menus_;
};

}  // namespace quorvelant
