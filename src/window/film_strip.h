// The strip below the pages of the wizard: what is being made, and what keeps it from being made.
#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include "check/findings.h"
#include "ui/jobs.h"

namespace quorvelant {

class FilmStrip : public QWidget {
  Q_OBJECT
 public:
  explicit FilmStrip(QWidget* parent);

  void ShowJob(const Job& job);
  void ShowFaults(const Findings& faults);
  void ShowWords(const QString& words);
  void Clear();

 signals:
  void StopPressed();

 private:
  QLabel* words_;
  QProgressBar* bar_;
  QPushButton* stop_;
  QPlainTextEdit* faults_;
};

}  // namespace quorvelant
