// A set of buttons as a table.
#pragma once

#include <QString>

#include "model/tracks.h"
#include "ui/mirror_table.h"

namespace quorvelant {

struct ButtonRow {
  HighlightButton Button;
  QString Command;  // null where no cell plays the scene
  bool operator==(const ButtonRow&) const = default;
};

class ButtonModel : public MirrorTable<ButtonRow> {
  Q_OBJECT
 public:
  // The areas stand in the order of the button's.
  enum Column {
    Number,
    Name,
    Scheme,
    Auto,
    Area,
    Letterbox,
    PanScan,
    Left,
    Right,
    Up,
    Down,
    Command,
    ColumnCount
  };

  explicit ButtonModel(QObject* parent = nullptr);

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

 signals:
  void TickWanted(int row, bool on);  // of `Auto`
};

}  // namespace quorvelant
