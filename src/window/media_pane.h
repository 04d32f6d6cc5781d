// Media: the source material: tracks with their plays, streams and scenes.
#pragma once

#include <QLineEdit>
#include <QWidget>
#include <string>
#include <vector>

#include "ui/media_import.h"
#include "ui/media_model.h"
#include "window/project_tree.h"
#include "window/window_parts.h"

namespace quorvelant {

// Files that are dropped on a row are meant for its track.
class MediaPane : public QWidget {
  Q_OBJECT
 public:
  explicit MediaPane(WindowParts& parts, QWidget* parent = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void HandleActions();
  void MakeTrack();
  void AskFiles();
  void TellOfProjects(const std::vector<std::string>& projects);
  void AddVideo();
  void AddSound();
  void AddSubtitleStream();
  void MakeChapter();
  void TakeChapterList();
  void MoveChapters();
  void RemoveChosen();
  void GiveName(const QString& key, const QString& name);

  // The live track of what was chosen last in the source material.
  [[nodiscard]] std::optional<std::size_t> TrackChosen() const;
  [[nodiscard]] bool HasSourceChosen() const;
  void DoAndChoose(const Document::Operation& operation);
  // Asks for files of a kind and adds each as a stream; the language is that of its name.
  void AddStreams(std::string_view title, std::vector<FileFilter> kinds, bool isSound);

  WindowParts& parts_;
  MediaModel model_;
  MediaImport import_;
  QLineEdit* words_;
  ProjectTree* tree_;
};

}  // namespace quorvelant
