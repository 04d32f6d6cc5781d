// The source material as rows: tracks, and below each its files, streams, buttons and scenes.
#pragma once

#include "ui/tree_model.h"

namespace quorvelant {

class MediaModel : public TreeModel {
  Q_OBJECT
 public:
  enum Column { Name, Time, Format, Language, Stream, OnDisc };

  explicit MediaModel(Document& document);

 protected:
  [[nodiscard]] TreeNode TreeOf(const Project& project) const override;
  void TellFacts(const ChangeEvent& event, const FactTaker& take) const override;
  [[nodiscard]] bool CanDrag(const std::string& key, std::string_view kind) const override;
  [[nodiscard]] bool CanDropOn(std::string_view kind) const override;
};

}  // namespace quorvelant
