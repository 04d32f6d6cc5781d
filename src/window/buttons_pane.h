// Buttons: the set of the moment that is shown.
#pragma once

#include <QWidget>
#include <optional>

#include "edit/button_edits.h"
#include "ui/button_model.h"
#include "window/cell_editor.h"
#include "window/window_parts.h"

class QComboBox;
class QLineEdit;

namespace quorvelant {

class CellTable;

// The set follows the viewer; another one can be chosen, and the viewer goes to it.
class ButtonsPane : public QWidget {
  Q_OBJECT
 public:
  explicit ButtonsPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  struct SetPlace {
    std::size_t Track = 0;
    std::size_t Set = 0;
    bool operator==(const SetPlace&) const = default;
  };

  void Build();
  [[nodiscard]] QLayout* BuildTools();
  void FollowChange(const ChangeEvent& event);
  void FollowViewer();
  void ShowSet(std::optional<SetPlace> place);
  void FillTools();
  void TakeRows(bool isOther);

  [[nodiscard]] const HighlightPlay* Set() const;
  [[nodiscard]] std::vector<ButtonRow> RowsOfSet() const;
  void ChooseSet(std::size_t set);
  [[nodiscard]] QStringList ChoicesOf(const QModelIndex& index) const;
  [[nodiscard]] std::string CommandKey(const QModelIndex& index) const;
  [[nodiscard]] std::optional<CellRefusal> Commit(const QModelIndex& index, const QString& text);
  [[nodiscard]] Outcome Write(EditSession& session, const ButtonPlace& place, int column,
                              const QString& text);
  void SetTimes();
  void SetForced(Force force, const QComboBox& from);
  void RemoveRow();
  // The button that is chosen in Picture is the one of the current row.
  void FollowButton();
  void ChooseRow(int row);

  WindowParts& parts_;
  ButtonModel model_;
  CellTable* table_ = nullptr;
  QComboBox* sets_ = nullptr;
  QLineEdit* start_ = nullptr;
  QLineEdit* duration_ = nullptr;
  QComboBox* select_ = nullptr;
  QComboBox* action_ = nullptr;
  std::optional<SetPlace> shown_;
  bool isFollowing_ = false;  // the row moves because something else did
};

}  // namespace quorvelant
