// The first page of the wizard: the films.
#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <QWizardPage>
#include <string>
#include <vector>

#include "ui/film_list_model.h"
#include "ui/latest_work.h"
#include "window/window_parts.h"

namespace quorvelant {

class FilmListPage : public QWizardPage {
  Q_OBJECT
 public:
  FilmListPage(WindowParts& parts, QWidget* parent);

  [[nodiscard]] FilmListModel& List() { return list_; }
  void AddFiles(const std::vector<std::string>& paths);

  [[nodiscard]] bool isComplete() const override { return !list_.IsEmpty(); }
  void initializePage() override;
  // Stays where it is known that no disc can be made of the films.
  bool validatePage() override;

 private:
  void Build();
  QWidget* BuildButtons();
  void AskForFiles();
  void MoveCurrent(int by);
  void Follow();  // the list, with a new look at its files
  void ShowState();
  void ShowFaults();

  WindowParts& parts_;
  FilmListModel list_;
  QTreeView* films_;
  QLabel* empty_;
  QPlainTextEdit* faults_;
  QPushButton* remove_ = nullptr;
  QPushButton* up_ = nullptr;
  QPushButton* down_ = nullptr;
  std::vector<Message> refused_;  // of the files that came last
  LatestWork<FilmsLook> looking_;
};

}  // namespace quorvelant
