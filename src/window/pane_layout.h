// Where the panes of a window stand.
#pragma once

#include <QByteArray>
#include <QDockWidget>
#include <QMainWindow>
#include <QStackedWidget>
#include <map>
#include <string>
#include <vector>

#include "window/window_parts.h"

namespace quorvelant {

class PlayerPane;

// Media and Disc at the left, Picture in the middle with the tables below it, Properties at the right,
// findings and jobs at the bottom. In a narrow window Properties is one of the tables. While a disc is
// played, the player takes the place of Picture, and Simulator stands beside it.
class PaneLayout : public QObject {
  Q_OBJECT
 public:
  // The window takes the panes. `empty` stands in the place of Picture while `IsEmpty`.
  PaneLayout(QMainWindow& window, WindowParts& parts, QWidget* empty);

  // By its name: "Media", "Picture".
  [[nodiscard]] QWidget* Pane(const QString& name) const { return panes_.at(name); }
  [[nodiscard]] QStringList Names() const { return order_; }
  void Reset();
  // Raises the pane and gives it the keys.
  void GoTo(const QString& name);
  void Step(int by);
  // The words on the pane's tab.
  void SetTab(const QString& name, const QString& words);
  void SetEmpty(bool isEmpty);
  // Follows the window's width as long as nobody has moved a pane.
  void Adapt();

  [[nodiscard]] QByteArray State() const;
  void Restore(const QByteArray& state);

 private:
  void Add(const QString& name, QWidget* pane, Qt::DockWidgetArea area);
  void HandleActions(Actions& actions);
  void HandleSimulation(WindowParts& parts);
  void ShowPlayer(bool isOn);
  void ShowMiddle();
  void Proportion();  // the shares of a fresh layout
  [[nodiscard]] QString Shown(const QStringList& group) const;
  [[nodiscard]] QString Focused() const;

  QMainWindow& window_;
  QStackedWidget* middle_;
  QStringList order_;  // as F6 goes
  std::map<QString, QWidget*> panes_;
  std::map<QString, QDockWidget*> docks_;
  std::map<QString, QWidget*> lastFocus_;
  PlayerPane* player_ = nullptr;
  bool isEmpty_ = false;
  bool isNarrow_ = false;
  bool isRestored_ = false;
};

}  // namespace quorvelant
