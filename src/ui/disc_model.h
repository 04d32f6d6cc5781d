// The structure of the disc as rows: First Play, title sets, languages, titles, PGCs, programs, cells and the
// buttons that these show.
#pragma once

#include <optional>

#include "edit/drop.h"
#include "ui/tree_model.h"

namespace quorvelant {

// What a drag of a source's key would place; nothing for other keys.
[[nodiscard]] std::optional<Dropped> DroppedOf(std::string_view key);
// The PGC or program that takes what is dropped on a row: of a cell its program, of a language or title its
// only PGC. Other keys as they are.
[[nodiscard]] std::string DropTarget(const Project& project, const std::string& key);

// Tracks and scenes can be dropped on it.
class DiscModel : public TreeModel {
  Q_OBJECT
 public:
  enum Column { Name, Time, Contents, Details };

  explicit DiscModel(Document& document);

  bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                       const QModelIndex& parent) const override;
  // Places what is dropped, by operations of the document.
  bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                    const QModelIndex& parent) override;

 signals:
  void DropRefused(const QString& why) const;  // while it is dragged
  void Placed(const QString& key);             // of the first new cell

 protected:
  [[nodiscard]] TreeNode TreeOf(const Project& project) const override;
  void TellFacts(const ChangeEvent& event, const FactTaker& take) const override;
  [[nodiscard]] bool CanDrag(const std::string& key, std::string_view kind) const override;
  [[nodiscard]] bool CanDropOn(std::string_view kind) const override;
};

}  // namespace quorvelant
