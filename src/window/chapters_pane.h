// Chapters: the scenes of the shown track.
#pragma once

#include <QWidget>
#include <optional>

#include "ui/chapter_model.h"
#include "window/cell_editor.h"
#include "window/window_parts.h"

namespace quorvelant {

class CellTable;

// Choosing a row takes the viewer to it, and Properties shows its user operations.
class ChaptersPane : public QWidget {
  Q_OBJECT
 public:
  explicit ChaptersPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  void Build();
  void HandleActions();
  void Follow(bool isOther);
  void FollowKey();
  void ChooseRow(int row);
  [[nodiscard]] std::optional<CellRefusal> Commit(const QModelIndex& index, const QString& text);
  void AddHere();
  void Import();
  void MoveOntoPictures();
  void RemoveRow();

  WindowParts& parts_;
  ChapterModel model_;
  CellTable* table_ = nullptr;
  std::optional<std::size_t> track_;
  bool isChoosing_ = false;
};

}  // namespace quorvelant
