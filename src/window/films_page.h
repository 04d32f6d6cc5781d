// The pages of the wizard that makes a disc of films.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QWizardPage>

#include "ui/disc_making.h"
#include "ui/film_order.h"
#include "ui/latest_work.h"
#include "window/window_parts.h"

namespace quorvelant {

// The films with their streams and languages. Files are dropped anywhere on it.
class FilmsPage : public QWizardPage {
  Q_OBJECT
 public:
  FilmsPage(WindowParts& parts, FilmOrder& order);

  void Take(const std::vector<std::string>& files);
  [[nodiscard]] bool isComplete() const override;

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void Fill();
  void AddFilm(std::size_t number);
  void AddStreams(QTreeWidgetItem& film, const std::vector<OrderedStream>& streams, bool isSound, bool isWide,
                  bool hasPanScan);
  void Browse();
  void RemoveChosen();
  void Move(int by);
  [[nodiscard]] int ChosenFilm() const;

  WindowParts& parts_;
  FilmOrder& order_;
  QTreeWidget* tree_;
  QLabel* refusals_;
  QPushButton* remove_;
  QPushButton* up_;
  QPushButton* down_;
  bool isFilling_ = false;
};

// How the menus look, what they offer, and where the project goes.
class MenusPage : public QWizardPage {
  Q_OBJECT
 public:
  MenusPage(WindowParts& parts, FilmOrder& order);

  void initializePage() override;
  [[nodiscard]] bool isComplete() const override;
  [[nodiscard]] DiscOrder Order() const;
  [[nodiscard]] std::string ProjectFile() const { return project_->text().trimmed().toStdString(); }

 private:
  void Browse();

  WindowParts& parts_;
  FilmOrder& order_;
  QCheckBox* menus_;
  QComboBox* theme_;
  QComboBox* labels_;
  QCheckBox* audio_;
  QCheckBox* subtitles_;
  QCheckBox* chapters_;
  QComboBox* insertion_;
  QComboBox* start_;
  QLineEdit* project_;
  std::string proposed_;
};

// The pages as they will be.
class PreviewsPage : public QWizardPage {
  Q_OBJECT
 public:
  PreviewsPage(WindowParts& parts, const MenusPage& menus);

  void initializePage() override;

 private:
  void Show(const PagePreviews& previews);
  void ShowChosen();

  WindowParts& parts_;
  const MenusPage& menus_;
  QLabel* words_;
  QListWidget* list_;
  QLabel* picture_;
  std::vector<QImage> pictures_;
  LatestWork<PagePreviews> painting_;
};

}  // namespace quorvelant
