#include "ui/subtitle_model.h"

#include <QFont>
#include <QVariantList>

#include "base/timecode.h"
#include "subpicture/subtitle_times.h"
#include "ui/color_text.h"
#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

QString FileName(const std::string& path) {
  return Shown(std::string_view(path).substr(path.find_last_of("/\\") + 1));
}

}  // namespace

SubtitleModel::SubtitleModel(QObject* parent)
    : MirrorTable({tr("#"), tr("Start"), tr("Duration"), tr("End"), tr("Bitmap"), tr("Colours"), tr("Forced"),
                   tr("Used")},
                  parent) {}

void SubtitleModel::SetRate(int framesPerSecond) {
  rate_ = framesPerSecond;
}

void SubtitleModel::SetPalette(const std::array<Color, 16>& colors) {
  if (palette_ != colors) {
    palette_ = colors;
    if (rowCount() > 0) {
      emit dataChanged(index(0, Colours), index(rowCount() - 1, Colours));
    }
  }
}

void SubtitleModel::Mark(std::optional<std::size_t> row) {
  if (marked_ == row) {
    return;
  }
  const std::optional<std::size_t> before = std::exchange(marked_, row);
  for (const auto& each : {before, marked_}) {
    if (each && *each < Rows().size()) {
      emit dataChanged(index(static_cast<int>(*each), 0), index(static_cast<int>(*each), ColumnCount - 1));
    }
  }
}

QString SubtitleModel::TextOf(const SubPicturePlay& entry, int number, int column) const {
  const auto end = EndOf(entry, rate_);
  const std::int64_t start = TimecodeToFrames(entry.Start, rate_);
  switch (column) {
    case Number:
      return QString::number(number);
    case Start:
      return Shown(FramesToTimecode(start, rate_));
    case Duration:  // until the next one starts
      return end ? Shown(FramesToTimecode(*end - start, rate_)) : QStringLiteral("…");
    case End:
      return end ? Shown(FramesToTimecode(*end, rate_)) : QStringLiteral("…");
    case Bitmap:
      return FileName(entry.File);
    case Colours:
      return QStringLiteral("%1 %2 %3 %4")
          .arg(entry.ColorE2)
          .arg(entry.ColorE1)
          .arg(entry.ColorP)
          .arg(entry.ColorBg);
    default:
      return {};
  }
}

QString SubtitleModel::Described(const SubPicturePlay& entry, int number, bool isMarked) const {
  QString text = tr("Subtitle %1, %2 to %3, %4")
                     .arg(number)
                     .arg(TextOf(entry, number, Start), TextOf(entry, number, End), FileName(entry.File));
  text += entry.Forced ? tr(", forced") : QString();
  text += entry.Used ? QString() : tr(", not used");
  return isMarked ? text + tr(", shown") : text;
}

QVariant SubtitleModel::data(const QModelIndex& index, int role) const {
  const SubPicturePlay* const entry = RowAt(index);
  if (entry == nullptr) {
    return {};
  }
  const int column = index.column();
  const int number = NumberOf(index);
  const bool isMarked = marked_ == static_cast<std::size_t>(index.row());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return column < Forced ? QVariant(TextOf(*entry, number, column)) : QVariant();
    case Qt::CheckStateRole:
      if (column == Forced || column == Used) {
        return (column == Forced ? entry->Forced : entry->Used) ? Qt::Checked : Qt::Unchecked;
      }
      return {};
    case Qt::FontRole:
      if (isMarked) {
        QFont bold;
        bold.setBold(true);
        return bold;
      }
      return {};
    case Qt::ToolTipRole:
      return column == Bitmap ? QVariant(PlainToolTip(Shown(entry->File))) : QVariant();
    case Qt::AccessibleTextRole:
      if (column == Number) {
        return Described(*entry, number, isMarked);
      }
      return column < Forced ? QVariant(TextOf(*entry, number, column)) : headerData(column, Qt::Horizontal);
    case SwatchRole:
      if (column == Colours) {
        QVariantList colors;
        for (const std::int32_t one : {entry->ColorE2, entry->ColorE1, entry->ColorP, entry->ColorBg}) {
          colors << QColorOf(palette_.at(static_cast<std::size_t>(one) % palette_.size()));
        }
        return colors;
      }
      return {};
    default:
      return {};
  }
}

Qt::ItemFlags SubtitleModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (index.column() == Start || index.column() == Duration || index.column() == End) {
    flags |= Qt::ItemIsEditable;
  }
  if (index.column() == Forced || index.column() == Used) {
    flags |= Qt::ItemIsUserCheckable;
  }
  return flags;
}

bool SubtitleModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role == Qt::CheckStateRole && RowAt(index) != nullptr) {
    emit TickWanted(index.row(), index.column(), value.toInt() == Qt::Checked);
  }
  return false;
}

}  // namespace quorvelant
