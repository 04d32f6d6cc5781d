#include "desk/project_findings.h"

#include <string>
#include <string_view>

#include "author/author.h"
#include "author/messages.h"
#include "base/passing_ui.h"
#include "check/check.h"
#include "desk/messages.h"
#include "script/load_findings.h"

namespace quorvelant {

namespace {

// What a run asks is a finding where no disc is made.
class QuestionsKept : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& /*message*/) override {}  // the result holds what is told
  bool Ask(std::string_view title, std::string_view text, bool unattended) override {
    Asked.push_back(MessageOf(message::RunAsks, {}, text));
    Asked.back().Title = title;
    return unattended;
  }
  // Its stages are those of making a disc.
  void Status(std::string_view /*words*/) override { PassingUi::Status("Reading the sources"); }

  Findings Asked;
};

}  // namespace

Findings ProjectFindings(const LoadResult& load, const Project& project, const Rules& rules) {
  Findings findings = LoadFindings(load);
  if (load.Loaded) {
    Append(findings, CheckProject(project, rules));
  }
  return findings;
}

Findings FindingsWithSources(const LoadResult& load, const Project& project, const Rules& rules,
                             UserInterface& ui, PictureLoader* pictures, std::uint64_t* needed) {
  Findings findings = ProjectFindings(load, project, rules);
  if (!load.Loaded) {
    return findings;
  }
  DiscPlan plan = PlanDisc(project, rules, ui, pictures);
  if (needed != nullptr) {
    *needed = plan.NeededBytes();
  }
  Append(findings, std::move(plan.Findings));
  if (!HasErrors(findings) && !plan.HasTitles()) {
    findings.push_back(MessageOf(message::NoTitles, {}));
  }
  return findings;
}

Findings FindingsOfWholeSources(const LoadResult& load, const Project& project, const Rules& rules,
                                UserInterface& ui, PictureLoader& pictures, std::uint64_t* needed) {
  Findings findings = ProjectFindings(load, project, rules);
  if (HasErrors(findings) || !load.Loaded) {
    return FindingsWithSources(load, project, rules, ui, &pictures, needed);
  }
  QuestionsKept run(ui);
  AuthorResult tried = TryOut(project, rules, &pictures, run);
  if (needed != nullptr) {
    *needed = tried.Bytes;
  }
  Append(findings, std::move(tried.Findings));
  Append(findings, std::move(run.Asked));
  return findings;
}

}  // namespace quorvelant
