#include "ui/chapter_model.h"

#include "base/timecode.h"
#include "model/cls_dvd.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

QString PictureText(const ChapterRow& row) {
  if (!row.Jump) {
    return ChapterModel::tr("not indexed");
  }
  const std::int64_t early = row.Scene.Frame - *row.Jump;
  return early == 0 ? ChapterModel::tr("here")
                    : ChapterModel::tr("%1, %n frame(s) earlier", nullptr, static_cast<int>(early))
                          .arg(Shown(FramesToTimecode(*row.Jump, row.Rate)));
}

QString OperationNames(const UopMask& uops) {
  QStringList names;
  for (std::size_t bit = 0; bit < uops.size(); ++bit) {
    if (uops.test(bit)) {
      names << Shown(CLsDVD::UserOP(bit));
    }
  }
  return names.join(QStringLiteral(", "));
}

QString TextOf(const ChapterRow& row, int number, int column) {
  switch (column) {
    case ChapterModel::Number:
      return QString::number(number);
    case ChapterModel::Name:
      return Shown(row.Scene.Name);
    case ChapterModel::Time:
      return Shown(FramesToTimecode(row.Scene.Frame, row.Rate));
    case ChapterModel::Picture:
      return PictureText(row);
    case ChapterModel::Operations:
      return OperationNames(row.Scene.Uops);
    default:
      return {};
  }
}

}  // namespace

std::vector<ChapterRow> ChapterRowsOf(const Track& track, std::span<const ViewerPicture> pictures) {
  const int rate = FramesPerSecond(track.Standard);
  std::vector<ChapterRow> rows;
  rows.reserve(track.Scenes.size());
  for (const Scene& scene : track.Scenes) {
    const auto after =
        std::ranges::upper_bound(pictures, std::int64_t{scene.Frame}, {}, &ViewerPicture::Frame);
    rows.push_back(
        {scene, after == pictures.begin() ? std::nullopt : std::optional((after - 1)->Frame), rate});
  }
  return rows;
}

ChapterModel::ChapterModel(QObject* parent)
    : MirrorTable({tr("#"), tr("Name"), tr("Time"), tr("Players jump to"), tr("Prohibited operations")},
                  parent) {}

QVariant ChapterModel::data(const QModelIndex& index, int role) const {
  const ChapterRow* const row = RowAt(index);
  if (row == nullptr) {
    return {};
  }
  const int number = NumberOf(index);
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return TextOf(*row, number, index.column());
    case Qt::ToolTipRole:
      return index.column() == Operations ? QVariant(TextOf(*row, number, Operations)) : QVariant();
    case Qt::AccessibleTextRole:
      return index.column() == Number ? tr("Chapter %1, %2, %3")
                                            .arg(number)
                                            .arg(TextOf(*row, number, Name), TextOf(*row, number, Time))
                                      : TextOf(*row, number, index.column());
    default:
      return {};
  }
}

Qt::ItemFlags ChapterModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  // The first one starts the track.
  return index.column() == Time && index.row() > 0 ? flags | Qt::ItemIsEditable : flags;
}

}  // namespace quorvelant
