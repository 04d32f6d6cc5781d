#include "ui/button_model.h"

#include "ui/shown_text.h"

namespace quorvelant {

namespace {

QString AreaText(const HighlightArea& area) {
  return QStringLiteral("%1, %2, %3, %4").arg(area.X1).arg(area.Y1).arg(area.X2).arg(area.Y2);
}

QString TextOf(const ButtonRow& row, int column) {
  const HighlightButton& button = row.Button;
  switch (column) {
    case ButtonModel::Number:
      return QString::number(button.Number);
    case ButtonModel::Name:
      return Shown(button.Name);
    case ButtonModel::Scheme:
      return QString::number(button.ColorScheme);
    case ButtonModel::Area:
    case ButtonModel::Letterbox:
    case ButtonModel::PanScan:
      return AreaText(button.Areas.at(static_cast<std::size_t>(column - ButtonModel::Area)));
    case ButtonModel::Left:
      return Shown(button.Left);
    case ButtonModel::Right:
      return Shown(button.Right);
    case ButtonModel::Up:
      return Shown(button.Up);
    case ButtonModel::Down:
      return Shown(button.Down);
    case ButtonModel::Command:
      return row.Command;
    default:
      return {};
  }
}

}  // namespace

ButtonModel::ButtonModel(QObject* parent)
    : MirrorTable({tr("#"), tr("Name"), tr("Scheme"), tr("Auto action"), tr("Area"), tr("Letterbox area"),
                   tr("Pan-scan area"), tr("Left"), tr("Right"), tr("Up"), tr("Down"), tr("Command")},
                  parent) {}

QVariant ButtonModel::data(const QModelIndex& index, int role) const {
  const ButtonRow* const row = RowAt(index);
  if (row == nullptr) {
    return {};
  }
  const int column = index.column();
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return column == Auto ? QVariant() : QVariant(TextOf(*row, column));
    case Qt::CheckStateRole:
      return column == Auto ? QVariant(row->Button.AutoAction ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::ToolTipRole:
      return column == Command && row->Command.isNull()
                 ? QVariant(tr("No cell plays the scene of these buttons"))
                 : QVariant();
    case Qt::AccessibleTextRole:
      if (column == Number) {
        return tr("Button %1, %2, %3").arg(row->Button.Number).arg(Shown(row->Button.Name), row->Command);
      }
      return column == Auto ? headerData(column, Qt::Horizontal) : QVariant(TextOf(*row, column));
    default:
      return {};
  }
}

Qt::ItemFlags ButtonModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (!index.isValid() || index.column() == Number) {
    return flags;
  }
  return flags | (index.column() == Auto ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool ButtonModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role == Qt::CheckStateRole && RowAt(index) != nullptr) {
    emit TickWanted(index.row(), value.toInt() == Qt::Checked);
  }
  return false;
}

}  // namespace quorvelant
