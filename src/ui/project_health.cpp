#include "ui/project_health.h"

#include <algorithm>
#include <functional>
#include <string>
#include <unordered_set>
#include <utility>

#include "author/messages.h"
#include "check/check.h"
#include "model/walk.h"
#include "script/load_findings.h"

namespace quorvelant {

namespace {

constexpr int IdleMs = 250;

// Errors first, each once; otherwise as they were found.
Findings Sorted(Findings findings) {
  std::unordered_set<std::string> seen;
  std::erase_if(findings, [&seen](const Message& finding) {
    return !seen.insert(finding.Place + '\n' + finding.Text).second;
  });
  std::ranges::stable_sort(findings, std::greater<>(), &Message::Level);
  return findings;
}

Findings SourceFindings(const DiscPlan& plan, const Findings& own) {
  Findings findings = plan.Findings;
  if (!HasErrors(own) && !HasErrors(findings) && !plan.HasTitles()) {
    findings.push_back(MessageOf(message::NoTitles, {}));
  }
  return findings;
}

}  // namespace

Findings OwnFindings(const Project& project, const CommandCheck& commands, const Rules& rules) {
  LoadResult load;
  load.Loaded = true;
  load.TakenCount = 1;
  load.Commands = commands;
  Findings findings = LoadFindings(load);
  Append(findings, CheckProject(project, rules));
  return findings;
}

Findings AllFindings(const Project& project, const CommandCheck& commands, const Rules& rules,
                     UserInterface& ui) {
  Findings findings = OwnFindings(project, commands, rules);
  Append(findings, SourceFindings(PlanDisc(project, rules, ui), findings));
  return Sorted(std::move(findings));
}

ProjectHealth& ProjectHealth::Of(Document& document) {
  auto* const there = document.findChild<ProjectHealth*>(QString(), Qt::FindDirectChildrenOnly);
  return there != nullptr ? *there : *new ProjectHealth(document);
}

ProjectHealth::ProjectHealth(Document& document) : QObject(&document), document_(document) {
  idle_.setSingleShot(true);
  idle_.setInterval(IdleMs);
  connect(&idle_, &QTimer::timeout, this, &ProjectHealth::Look);
  connect(&document_, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this](const ChangeEvent& event) {
            if (event.Replaced) {
              Forget();
            }
            idle_.start();
          });
  idle_.start();
}

bool ProjectHealth::IsBlank() const {
  const EditSession& session = document_.Session();
  return Live(document_.Work().Tracks).empty() && session.File().empty() && !session.CanUndo() &&
         !session.IsUnsaved();
}

// What was found on another project.
void ProjectHealth::Forget() {
  sources_.clear();
  found_.clear();
  needs_ = {};
  wholeRevision_ = NeverLooked;
  emit FoundChanged();
  emit NeedsChanged();
}

void ProjectHealth::LookAgain() {
  hasLooked_ = false;
  idle_.start();
}

void ProjectHealth::Look() {
  const std::uint64_t revision = document_.Revision();
  if (IsBlank()) {
    own_.Start([](UserInterface&) { return Seen(); }, [](const Seen&) {});  // ends what is under way
    whole_.Start([](UserInterface&) { return Seen(); },
                 [this, revision](Seen seen) { Show(std::move(seen), true, revision); });
    return;
  }
  const CommandCheck commands = document_.Session().Commands();
  const auto project = std::make_shared<const Project>(document_.Work());
  const Rules rules = document_.Session().RulesInForce();
  own_.Start(
      [project, commands, rules](UserInterface&) {
        return Seen{OwnFindings(*project, commands, rules), {}, {}};
      },
      [this, revision](Seen seen) {
        if (wholeRevision_ != revision || !hasLooked_) {
          Show(std::move(seen), false, revision);
        }
      });
  whole_.Start(
      [project, commands, rules](UserInterface& ui) {
        Seen seen{OwnFindings(*project, commands, rules), {}, {}};
        const DiscPlan plan = PlanDisc(*project, rules, ui);
        seen.OfSources = SourceFindings(plan, seen.Own);
        seen.Needs = NeedsOf(plan, ui);
        return seen;
      },
      [this, revision](Seen seen) { Show(std::move(seen), true, revision); });
}

void ProjectHealth::Show(Seen seen, bool isWhole, std::uint64_t revision) {
  if (isWhole) {
    sources_ = std::move(seen.OfSources);
    needs_ = std::move(seen.Needs);
    wholeRevision_ = revision;
    hasLooked_ = true;
  }
  Findings findings = std::move(seen.Own);
  Append(findings, sources_);
  found_ = Sorted(std::move(findings));
  emit FoundChanged();
  if (isWhole) {
    emit NeedsChanged();
  }
  if (IsWhole()) {
    emit BecameWhole();
  }
}

}  // namespace quorvelant
