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

// The same, with what its sources say.
[[nodiscard]] Findings AllFindings(const Project& project, const CommandCheck& commands, const Rules& rules,
                                   UserInterface& ui);

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
  // Whether both are of the project as it stands, as its sources last were.
  [[nodiscard]] bool IsOfPresent() const { return wholeRevision_ == document_.Revision(); }
  [[nodiscard]] bool HasLooked() const { return wholeRevision_ != NeverLooked; }
  // A project that nobody has put anything into has no findings: they would tell what is missing in nothing.
  [[nodiscard]] bool IsBlank() const;
  // Also files that another program has changed.
  void LookAgain();

 signals:
  void FoundChanged();
  void NeedsChanged();
  void BecameWhole();

 private:
  static constexpr std::uint64_t NeverLooked = ~std::uint64_t{0};

  explicit ProjectHealth(Document& document);
  struct Seen {
    quorvelant::Findings Own;
    quorvelant::Findings OfSources;
    DiscNeeds Needs;
  };
  void Look();
  void Forget();
  void Show(Seen seen, bool isWhole, std::uint64_t revision);

  Document& document_;
  QTimer idle_;
  quorvelant::Findings found_;
  quorvelant::Findings sources_;  // as they were last looked at
  DiscNeeds needs_;
  std::uint64_t wholeRevision_ = NeverLooked;
  bool hasLooked_ = false;
  LatestWork<Seen> own_;
  LatestWork<Seen> whole_;
};

}  // namespace quorvelant
