// What is wrong with the project, and what its disc needs, while it is worked on.
#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

#include "check/findings.h"
#include "ui/disc_needs.h"
#include "ui/document.h"
#include "ui/latest_work.h"

namespace quorvelant {

// What the project and its commands say themselves; no source is looked at.
[[nodiscard]] Findings OwnFindings(const Project& project, const CommandCheck& commands, const Rules& rules);

// Looks at the project a moment after each change, in a worker: first at what it says itself, then at its
// sources. One for each document.
class ProjectHealth : public QObject {
  Q_OBJECT
 public:
  [[nodiscard]] static ProjectHealth& Of(Document& document);

  [[nodiscard]] const quorvelant::Findings& Found() const { return found_; }
  [[nodiscard]] const DiscNeeds& Needs() const { return needs_; }
  // Whether both are of the project as it stands, sources included.
  [[nodiscard]] bool IsWhole() const { return wholeRevision_ == document_.Revision() && hasLooked_; }
  // Also files that another program has changed.
  void LookAgain();

 signals:
  void FoundChanged();
  void NeedsChanged();
  void BecameWhole();

 private:
  explicit ProjectHealth(Document& document);
  struct Seen {
    quorvelant::Findings Own;
    quorvelant::Findings OfSources;
    DiscNeeds Needs;
  };
  void Look();
  void Show(Seen seen, bool isWhole, std::uint64_t revision);

  Document& document_;
  QTimer idle_;
  quorvelant::Findings found_;
  quorvelant::Findings sources_;  // as they were last looked at
  DiscNeeds needs_;
  std::uint64_t wholeRevision_ = 0;
  bool hasLooked_ = false;
  LatestWork<Seen> own_;
  LatestWork<Seen> whole_;
};

}  // namespace quorvelant
