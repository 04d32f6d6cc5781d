#include "script/load_findings.h"

#include <fmt/format.h>

#include "base/counted.h"
#include "script/messages.h"

namespace quorvelant {

namespace {

std::string PlaceOf(const LoadResult& load, std::size_t line) {
  return fmt::format("{}:{}", load.File, line);
}

// The lines that were kept; `more` tells how many of `count` were not.
void AddLines(std::vector<Message>& findings, const LoadResult& load, const std::vector<SkippedLine>& lines,
              std::size_t count, const MessageKind& kind, const MessageKind& more) {
  for (const SkippedLine& line : lines) {
    findings.push_back(MessageOf(kind, PlaceOf(load, line.Number), line.Reason, line.Text));
  }
  if (count > lines.size()) {
    findings.push_back(MessageOf(more, load.File, count - lines.size()));
  }
}

void AddTextFindings(std::vector<Message>& findings, const LoadResult& load) {
  const bool failed = !load.Failure.Text.empty();
  if (load.TakenCount == 0 && !failed) {
    findings.push_back(MessageOf(message::NoProject, load.File));
    return;
  }
  AddLines(findings, load, load.Skipped, load.SkippedCount, message::LineSkipped, message::MoreLinesSkipped);
  AddLines(findings, load, load.Doubted, load.DoubtedCount, message::ValueDoubtful,
           message::MoreValuesDoubtful);
  if (load.UnclosedCount > 0 && !failed) {
    findings.push_back(MessageOf(message::BraceUnclosed, PlaceOf(load, load.LineCount),
                                 Counted(load.UnclosedCount, "open brace"), load.UnclosedLine));
  }
  if (failed) {
    findings.push_back(load.Failure);
  }
}

}  // namespace

std::vector<Message> LoadFindings(const LoadResult& load) {
  std::vector<Message> findings;
  AddTextFindings(findings, load);
  for (const CommandError& row : load.Commands.Errors) {
    findings.push_back(MessageOf(message::CommandTargetMissing,
                                 fmt::format("{}/{}/{}/{}", row.VTS, row.TitleOrLanguage, row.PGC, row.CELL),
                                 row.Type, row.Command));
  }
  findings.insert(findings.end(), load.Commands.Warnings.begin(), load.Commands.Warnings.end());
  findings.insert(findings.end(), load.Notes.begin(), load.Notes.end());
  return findings;
}

}  // namespace quorvelant
