// The chapters of a track as a table.
#pragma once

#include <optional>
#include <span>

#include "edit/track_viewer.h"
#include "model/tracks.h"
#include "ui/mirror_table.h"

namespace quorvelant {

struct ChapterRow {
  quorvelant::Scene Scene;
  std::optional<std::int64_t> Jump;  // the frame to which a player jumps; nothing while the film has no index
  int Rate = 25;
  bool operator==(const ChapterRow&) const = default;
};

// A row for each scene of the track. Players jump to the last of `pictures` at or before it.
[[nodiscard]] std::vector<ChapterRow> ChapterRowsOf(const Track& track,
                                                    std::span<const ViewerPicture> pictures);

class ChapterModel : public MirrorTable<ChapterRow> {
  Q_OBJECT
 public:
  enum Column { Number, Name, Time, Picture, Operations, ColumnCount };

  explicit ChapterModel(QObject* parent = nullptr);

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
};

}  // namespace quorvelant
