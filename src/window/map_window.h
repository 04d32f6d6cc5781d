// The navigation of the project's disc as a chart.
#pragma once

#include <QDialog>
#include <QGraphicsView>
#include <QListWidget>

#include "player/nav_findings.h"
#include "window/window_parts.h"

namespace quorvelant {

// Chains as boxes in columns by their domain, commands as arrows; what nobody reaches is red. A box that is
// clicked, or a row of the list beside it, leads to its place in the project. It shows the project as it was
// when the window came up.
class MapWindow : public QDialog {
  Q_OBJECT
 public:
  explicit MapWindow(WindowParts& parts, QWidget* parent = nullptr);

 private:
  void Draw(const NavMap& map);
  void List(const NavMap& map);
  void GoTo(const QString& key);

  WindowParts& parts_;
  QGraphicsView* chart_;
  QListWidget* chains_;
};

}  // namespace quorvelant
