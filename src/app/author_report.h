// What `quorvelant author` prints: the run to come and what came of it.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "author/author_result.h"
#include "author/disc_plan.h"

namespace quorvelant {

// One JSON object on one line. Bytes that are no UTF-8 become the replacement character.
[[nodiscard]] std::string JsonLine(const nlohmann::ordered_json& object);

// The first event of a run: what speaks, and of what.
[[nodiscard]] std::string BeginJson(const std::string& project);

// The run to come: titles with their tracks and streams, source sizes, the space needed and free.
[[nodiscard]] std::string PlanText(const DiscPlan& plan, std::optional<std::uint64_t> freeBytes);
[[nodiscard]] std::string PlanJson(const DiscPlan& plan, std::optional<std::uint64_t> freeBytes);

// What was asked for, as far as a report names it.
struct ReportedRun {
  std::string Folder;  // empty where an image alone was asked for
  std::string Image;   // empty where none was
  bool DryRun = false;
};

// The finished run: a line a title, sizes, underflows.
[[nodiscard]] std::string ResultText(const AuthorResult& result, const ReportedRun& run);
[[nodiscard]] std::string ResultJson(const AuthorResult& result, const ReportedRun& run);

}  // namespace quorvelant
