// What is asked before a disc is made.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <optional>
#include <string>

#include "base/rules.h"
#include "disc/disc_media.h"
#include "ui/latest_work.h"
#include "ui/project_health.h"
#include "window/disc_folders.h"
#include "window/project_files.h"
#include "window/window_parts.h"

namespace quorvelant {

// The folder, the size against the medium, the findings and the rules. Enter makes the disc. What keeps it
// from being made stands above the buttons, and the sheet stays until it is made or cancelled.
class AuthorSheet : public QDialog {
  Q_OBJECT
 public:
  AuthorSheet(WindowParts& parts, const DiscFolders& folders, const DiscMedium& medium, QWidget* parent);

  [[nodiscard]] std::string Folder() const;  // an absolute path of this system; empty for none
  [[nodiscard]] const Rules& RulesUsed() const;
  [[nodiscard]] bool IsStrict() const { return strict_->isChecked(); }
  // Why the disc is not made as it was just asked for; until something else is asked for.
  void Refuse(const QString& words);

 signals:
  void Wanted();

 private:
  [[nodiscard]] QFormLayout* MakeForm();
  [[nodiscard]] QWidget* MakeHold();
  [[nodiscard]] QWidget* MakeButtons();
  void Browse();
  void LookAtClassic();
  void ShowHealth();
  void ShowSize();
  [[nodiscard]] const Findings* Found() const;  // under the rules used; null while they are looked for
  [[nodiscard]] QString WhatHoldsBack() const;

  WindowParts& parts_;
  const DiscFolders& folders_;
  ProjectHealth& health_;
  DiscMedium medium_;
  QLineEdit* folder_;
  QLabel* size_;
  QLabel* findings_;
  QComboBox* rules_;
  QCheckBox* strict_;
  QLabel* holdSign_;
  QLabel* hold_;
  QPushButton* make_ = nullptr;
  QString refusal_;
  std::optional<Findings> classic_;
  LatestWork<Findings> classicLook_;
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
  void Make(AuthorSheet& sheet);

  WindowParts& parts_;
  DiscFolders folders_;
  std::function<const DiscMedium&()> medium_;
  QWidget& window_;
};

}  // namespace quorvelant
