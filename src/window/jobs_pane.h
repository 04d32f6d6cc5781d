// Jobs: long work: its stage, share, rate and verdict.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QWidget>

#include "ui/jobs_model.h"
#include "window/short_label.h"
#include "window/window_parts.h"

namespace quorvelant {

class JobsPane : public QWidget {
  Q_OBJECT
 public:
  explicit JobsPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  [[nodiscard]] Job* Chosen() const;
  void ChooseLast();
  void ShowChosen();

  WindowParts& parts_;
  JobsModel* model_;
  QLabel* empty_;
  QTableView* table_;
  ShortLabel* verdict_;
  QPushButton* stop_;
  QPushButton* open_;
  QPushButton* play_;
};

}  // namespace quorvelant
