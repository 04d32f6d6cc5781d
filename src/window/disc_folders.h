// Where the discs of projects were made last.
#pragma once

#include <QString>
#include <string>

#include "ui/document.h"

namespace quorvelant {

// Kept beside the project, not in it: to make a disc elsewhere is no edit. A project without a file is
// remembered until another one takes its place.
class DiscFolders : public QObject {
  Q_OBJECT
 public:
  // Nothing outlives the program where there is no folder for its state.
  DiscFolders(Document& document, const std::string& stateFolder, QObject* parent);

  // The last one; else the project's own, else one by its name. An absolute path of this system.
  [[nodiscard]] QString Proposed() const;
  // What a user writes counts from the project's folder, or from home while it has none; "~" is home.
  [[nodiscard]] QString Absolute(const QString& written) const;
  void Remember(const QString& folder);

 private:
  [[nodiscard]] QString Key() const;
  [[nodiscard]] QString OwnFolder() const;

  Document& document_;
  QString file_;     // that remembers; empty for none
  QString session_;  // of the present project
  QString sessionOwn_;
};

}  // namespace quorvelant
