// Disc: the structure of the disc.
#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>
#include <string>

#include "edit/structure.h"
#include "ui/disc_model.h"
#include "window/project_tree.h"
#include "window/window_parts.h"

namespace quorvelant {

class DiscPane : public QWidget {
  Q_OBJECT
 public:
  explicit DiscPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  void HandleActions();
  void MakeTitle();
  void MakeLanguage();
  void MakePgc();
  void MakeProgram();
  void PlaceTrack();
  void RemoveChosen();
  void GiveName(const QString& key, const QString& name);
  void ShowHelp();

  // The nearest element at or above what was chosen last of the structure for which `is` holds; empty for
  // none.
  [[nodiscard]] std::string Above(const std::function<bool(const std::string& key)>& is) const;
  [[nodiscard]] std::string EntryChosen() const;
  [[nodiscard]] std::string UnitChosen() const;  // a language or title
  [[nodiscard]] std::string PgcChosen() const;
  void DoAndChoose(const Document::Operation& operation);
  void AskNameAndMake(NewLevel level, const std::string& parent,
                      Outcome (*make)(EditSession& session, std::string_view parent, std::string name));

  WindowParts& parts_;
  DiscModel model_;
  ProjectTree* tree_;
  QLabel* help_;
};

}  // namespace quorvelant
