// The navigation of the project's disc as a chart.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <cstdint>

#include "player/nav_map.h"
#include "window/map_chart.h"
#include "window/window_parts.h"

namespace quorvelant {

// Chains as boxes in columns by their domain, commands as arrows; what nobody reaches is red, and says so. A
// box that is clicked leads to its place in the project, as does its row in the list beside it. It follows
// the project; on a disc whose ways take long to walk it says that it is old instead, and is drawn anew on
// demand.
class MapWindow : public QDialog {
  Q_OBJECT
 public:
  explicit MapWindow(WindowParts& parts, QWidget* parent = nullptr);

  // How long it may take to draw for each change of the project.
  void SetPatience(std::int64_t milliseconds) { patience_ = milliseconds; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] QLayout* Keys();
  QPushButton* Key(const QString& text, const QString& keys);
  void Draw();
  void List(const NavMap& map, const NavChart& chart);
  void Age();  // the project has changed
  void GoTo(int row);

  WindowParts& parts_;
  MapChart* chart_;
  QListWidget* chains_;
  QLabel* words_;
  QPushButton* anew_;
  QTimer soon_;
  std::int64_t patience_ = 150;
  std::int64_t took_ = 0;
  bool isOld_ = true;
};

}  // namespace quorvelant
