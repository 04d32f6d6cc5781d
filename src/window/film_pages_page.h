// The third page of the wizard: the pages of the menus, before they are made.
#pragma once

#include <QLabel>
#include <QListWidget>
#include <QWizardPage>

#include "ui/film_disc.h"

namespace quorvelant {

class FilmPagesPage : public QWizardPage {
  Q_OBJECT
 public:
  explicit FilmPagesPage(QWidget* parent);

  void ShowBusy();
  void Show(const PaintedFilmPages& painted);

 private:
  QLabel* words_;
  QListWidget* pages_;
};

}  // namespace quorvelant
