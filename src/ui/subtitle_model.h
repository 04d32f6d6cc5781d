// The subtitles of a stream as a table.
#pragma once

#include <array>
#include <optional>

#include "model/tracks.h"
#include "ui/mirror_table.h"

namespace quorvelant {

class SubtitleModel : public MirrorTable<SubPicturePlay> {
  Q_OBJECT
 public:
  enum Column { Number, Start, Duration, End, Bitmap, Colours, Forced, Used, ColumnCount };
  enum Role { SwatchRole = Qt::UserRole };  // of `Colours`: four QColor, from E2 to the background

  explicit SubtitleModel(QObject* parent = nullptr);

  void SetRate(int framesPerSecond);
  void SetPalette(const std::array<Color, 16>& colors);
  // The row that the viewer shows.
  void Mark(std::optional<std::size_t> row);

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // Of a tick alone: who shows the table is asked, and the answer comes as a new state.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

 signals:
  void TickWanted(int row, int column, bool on);

 private:
  [[nodiscard]] QString TextOf(const SubPicturePlay& entry, int number, int column) const;
  [[nodiscard]] QString Described(const SubPicturePlay& entry, int number, bool isMarked) const;

  int rate_ = 25;
  std::array<Color, 16> palette_{};
  std::optional<std::size_t> marked_;
};

}  // namespace quorvelant
