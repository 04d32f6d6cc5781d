// Problems: the findings on the project, live.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QWidget>

#include "ui/message_list.h"
#include "ui/project_health.h"
#include "window/short_label.h"
#include "window/window_parts.h"

namespace quorvelant {

class ProblemsPane : public QWidget {
  Q_OBJECT
 public:
  explicit ProblemsPane(WindowParts& parts, QWidget* parent = nullptr);

 signals:
  // "Problems 1 ✖ 2 ⚠"
  void TabWords(const QString& words);
  // "Check" was asked for.
  void Asked();

 private:
  void HandleCheck();
  void ShowFound();
  void ShowChosen();
  [[nodiscard]] QString EmptyWords() const;
  void GoThere();
  void Mend();
  [[nodiscard]] const Message* Chosen() const;

  WindowParts& parts_;
  ProjectHealth& health_;
  MessageList* list_;
  QLabel* empty_;
  QTableView* table_;
  ShortLabel* whole_;  // all of the chosen one's text
  QPushButton* go_;
  QPushButton* mend_;
  bool isCheckAsked_ = false;
};

}  // namespace quorvelant
