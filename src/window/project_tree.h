// A tree of the project in a pane.
#pragma once

#include <QSortFilterProxyModel>
#include <QTreeView>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/tree_model.h"
#include "window/window_parts.h"

namespace quorvelant {

// Chooses for all panes what is chosen in it, and follows what they choose. Names are edited in place. The
// kind of a row stands before its name.
class ProjectTree : public QTreeView {
  Q_OBJECT
 public:
  // The menu at a row or between rows mirrors `menu`; nothing stands for a line.
  ProjectTree(WindowParts& parts, TreeModel& model, std::vector<std::optional<ActionId>> menu,
              QWidget* parent = nullptr);

  // Rows of which the text, or one below, has these words; all for an empty text.
  void Filter(const QString& words);
  // What stands in the middle while there is no row.
  void SetHint(const QString& words);
  // Opens an editor where the row can be renamed.
  void EditName(const std::string& key);
  [[nodiscard]] std::string CurrentKey() const;
  [[nodiscard]] std::string KeyAt(const QPoint& place) const;  // in the viewport; empty between rows

  // Columns as wide as what they show; the first gives way until the second stands in view, or one can no
  // longer read it.
  void FitColumns();

 signals:
  void Renamed(const QString& key, const QString& name);  // by its editor

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;
  void focusInEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void FitNames();
  void ChooseCurrent();
  void ShowChosen();
  void OpenLevels(const QModelIndex& parent, int levels);
  void TakeIn();
  [[nodiscard]] QModelIndex IndexOf(const std::string& key) const;

  WindowParts& parts_;
  TreeModel& model_;
  QSortFilterProxyModel filter_;
  std::vector<std::optional<ActionId>> menu_;
  QString hint_;
  int wholeNames_ = 0;  // what the first column would take
  bool isFollowing_ = false;
  bool holdsChosen_ = false;  // what the panes look at is a row of this tree
  bool isFitting_ = false;
  bool isSetByHand_ = false;
};

}  // namespace quorvelant
