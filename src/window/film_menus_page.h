// The second page of the wizard: the menus, and where the project goes.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QWizardPage>
#include <string>

#include "ui/film_list_model.h"
#include "window/window_parts.h"

namespace quorvelant {

class FilmMenusPage : public QWizardPage {
  Q_OBJECT
 public:
  FilmMenusPage(WindowParts& parts, FilmListModel& films, QWidget* parent);

  void initializePage() override;
  void cleanupPage() override {}  // what was chosen stays on the way back
  // The films with what this page says of them.
  [[nodiscard]] DiscOrder Order() const;
  // Path of the script to write; empty where none is told.
  [[nodiscard]] std::string Project() const;
  // Asks for it with a file dialog.
  void AskForProject();

 private:
  void Build();
  void AddThemeFolder();
  void OfferSubtitles();
  void ExplainSubtitles();
  void ShowState();

  WindowParts& parts_;
  FilmListModel& films_;
  QCheckBox* menus_;
  QComboBox* theme_;
  QPushButton* themeFolder_;
  QComboBox* labels_;
  QCheckBox* audio_;
  QCheckBox* subtitlePages_;
  QCheckBox* chapterPages_;
  QComboBox* start_;
  QComboBox* subtitles_;
  QLabel* subtitlesSay_;
  QSpinBox* chapters_;
  QLineEdit* project_;
};

}  // namespace quorvelant
