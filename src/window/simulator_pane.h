// Beside a disc that is played: every command that ran, and what the player has in its registers.
#pragma once

#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QWidget>
#include <cstddef>

#include "ui/simulation.h"
#include "window/window_parts.h"

namespace quorvelant {

class SimulatorPane : public QWidget {
  Q_OBJECT
 public:
  explicit SimulatorPane(WindowParts& parts, QWidget* parent = nullptr);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildRegisters();
  void Follow();
  void ShowSteps();
  void ShowRegisters();
  void GoTo(const QListWidgetItem* item);

  WindowParts& parts_;
  Simulation& player_;
  QListWidget* steps_;
  QTableWidget* registers_;
  QPushButton* goThere_;
  QSplitter* lists_;
  std::size_t shown_ = 0;  // steps up to this one stand in the list
};

}  // namespace quorvelant
