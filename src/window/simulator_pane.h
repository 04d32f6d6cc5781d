// The remote of a player, what it has in its registers, and every command that it ran.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <QTimer>
#include <QWidget>

#include "ui/simulation.h"
#include "window/window_parts.h"

namespace quorvelant {

class SimulatorPane : public QWidget {
  Q_OBJECT
 public:
  explicit SimulatorPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  [[nodiscard]] QLayout* BuildRemote();
  void BuildRegisters();
  void Follow();
  void ShowSteps();
  void Wait();  // for the cell to end, where time runs

  WindowParts& parts_;
  Simulation& player_;
  QLabel* words_;
  QCheckBox* runs_;
  QTableWidget* registers_;
  QListWidget* steps_;
  QTimer clock_;
};

}  // namespace quorvelant
