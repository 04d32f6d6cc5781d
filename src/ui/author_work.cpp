#include "ui/author_work.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "author/author.h"
#include "base/counted.h"
#include "ui/project_health.h"

namespace quorvelant {

namespace {

std::size_t CountOfTold(Findings findings) {
  std::erase_if(findings, [](const Message& finding) { return finding.Level == Severity::Information; });
  return OnceEach(std::move(findings)).size();
}

std::string WhyNot(const Findings& findings) {
  const auto error = std::ranges::find(findings, Severity::Error, &Message::Level);
  return error == findings.end() ? "No disc was made" : "No disc: " + error->Text;
}

Job::Verdict VerdictOf(const AuthorResult& result, const Findings& before, const std::string& folder) {
  if (result.Outcome == AuthorOutcome::Stopped) {
    return {Job::State::Stopped, "Stopped: no disc was made"};
  }
  Findings all = before;
  Append(all, result.Findings);
  if (result.Outcome != AuthorOutcome::Done) {
    return {Job::State::Failed, WhyNot(all)};
  }
  return {
      Job::State::Done,
      fmt::format("Good disc: {}, {}, {} sectors read back", Counted(result.Titles.size(), "title"),
                  Counted(CountOfTold(std::move(all)), "finding"), GroupedDigits(result.Bytes / SectorBytes)),
      folder};
}

}  // namespace

std::string GroupedDigits(std::uint64_t number) {
  std::string grouped;
  const std::string digits = std::to_string(number);
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) {
      grouped += ' ';
    }
    grouped += digits[i];
  }
  return grouped;
}

Job::Work AuthorWork(std::shared_ptr<const Project> project, CommandCheck commands, AuthorOrder order) {
  return [project = std::move(project), commands = std::move(commands),
          order = std::move(order)](UserInterface& ui) mutable {
    const Findings findings = OwnFindings(*project, commands, order.Rules);
    for (const Message& finding : findings) {
      ui.Tell(finding);
    }
    if (HasErrors(findings)) {
      return Job::Verdict{Job::State::Failed, WhyNot(findings)};
    }
    order.WarnedBefore = CountOf(findings, Severity::Warning) > 0;
    return VerdictOf(Author(*project, order, ui), findings, order.Folder);
  };
}

}  // namespace quorvelant
