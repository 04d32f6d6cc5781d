// Subtitles: the entries of the subtitle stream that is shown.
#pragma once

#include <QWidget>
#include <optional>

#include "edit/overlays.h"
#include "ui/subtitle_model.h"
#include "window/cell_editor.h"
#include "window/subtitle_editor.h"
#include "window/window_parts.h"

namespace quorvelant {

class CellTable;
class SubtitleColors;
class SubtitleStreamBox;

// Choosing a row takes the viewer to it, and the viewer's entry is marked.
class SubtitlesPane : public QWidget {
  Q_OBJECT
 public:
  explicit SubtitlesPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  struct StreamPlace {
    std::size_t Track = 0;
    std::size_t Stream = 0;
    bool operator==(const StreamPlace&) const = default;
  };

  void Build();
  void HandleActions();
  // What the panes look at has changed.
  void FollowChange(const ChangeEvent& event);
  void FollowKey();
  void FollowViewer();
  void GoToShown();
  void FillStreams();
  void ShowStream(std::optional<StreamPlace> place);
  void TakeRows(bool isOther);

  [[nodiscard]] const SubtitleStream* Stream() const;
  [[nodiscard]] std::optional<SubtitlePlace> CurrentPlace() const;
  void ChooseRow(int row);
  void Tick(int row, int column, bool on);
  [[nodiscard]] std::optional<CellRefusal> Commit(const QModelIndex& index, const QString& text);
  void SetHere(bool isEnd, bool along);
  void AddHere();
  void ReplaceHere();
  void GoToEntry(const std::string& key);

  WindowParts& parts_;
  SubtitleEditor editor_;
  SubtitleModel model_;
  SubtitleStreamBox* streams_ = nullptr;
  CellTable* table_ = nullptr;
  SubtitleColors* colors_ = nullptr;
  std::optional<StreamPlace> shown_;
  bool isChoosing_ = false;  // the viewer moves because a row was chosen
};

}  // namespace quorvelant
