// What is asked before a disc is made.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <functional>

#include "base/rules.h"
#include "disc/disc_media.h"
#include "ui/project_health.h"
#include "window/project_files.h"
#include "window/window_parts.h"

namespace quorvelant {

// The folder, the size against the medium, the findings and the rules. Enter makes the disc.
class AuthorSheet : public QDialog {
  Q_OBJECT
 public:
  AuthorSheet(WindowParts& parts, const DiscMedium& medium, QWidget* parent);

  [[nodiscard]] std::string Folder() const;  // a path of this system
  [[nodiscard]] const Rules& RulesUsed() const;
  [[nodiscard]] bool IsStrict() const { return strict_->isChecked(); }

 private:
  void Browse();
  void ShowHealth();

  WindowParts& parts_;
  ProjectHealth& health_;
  DiscMedium medium_;
  QLineEdit* folder_;
  QLabel* size_;
  QLabel* findings_;
  QComboBox* rules_;
  QCheckBox* strict_;
};

// Does what "Author…" says: the sheet, the questions before a run, and the job.
class AuthorAction : public QObject {
  Q_OBJECT
 public:
  AuthorAction(WindowParts& parts, ProjectFiles& files, std::function<const DiscMedium&()> medium,
               QWidget& window);

 signals:
  void Began();

 private:
  void Ask();
  void Make(const AuthorSheet& sheet);

  WindowParts& parts_;
  std::function<const DiscMedium&()> medium_;
  QWidget& window_;
};

}  // namespace quorvelant
