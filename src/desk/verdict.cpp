#include "desk/verdict.h"

#include <fmt/format.h>

#include <string_view>

#include "base/counted.h"

namespace quorvelant {

namespace {

std::string Count(std::size_t count, std::string_view one) {
  return count == 0 ? fmt::format("no {}s", one) : Counted(count, one);
}

}  // namespace

Verdict VerdictOn(const Findings& findings, bool strict) {
  const std::size_t errors = CountOf(findings, Severity::Error);
  const std::size_t warnings = CountOf(findings, Severity::Warning);
  return {errors, warnings, errors == 0 && (!strict || warnings == 0)};
}

std::string VerdictWords(const Verdict& verdict) {
  return fmt::format("{}: {}, {}", verdict.Ready ? "ready to author" : "not ready to author",
                     Count(verdict.Errors, "error"), Count(verdict.Warnings, "warning"));
}

}  // namespace quorvelant
