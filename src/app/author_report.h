// What `quorvelant author` prints: the run ahead and what came of it.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "author/author.h"
#include "author/disc_plan.h"

namespace quorvelant {

// One JSON object on one line. Bytes that are no UTF-8 become the replacement character.
std::string JsonLine(const nlohmann::ordered_json& object);

// The run ahead: titles with their tracks and streams, source sizes, the space needed and free.
std::string PlanText(const DiscPlan& plan, std::optional<std::uint64_t> freeBytes);
std::string PlanJson(const DiscPlan& plan, std::optional<std::uint64_t> freeBytes);

// The finished run: a line a title, sizes, underflows.
std::string ResultText(const AuthorResult& result, const DiscPlan& plan, const std::string& folder,
                       bool dryRun);
std::string ResultJson(const AuthorResult& result, const DiscPlan& plan, const std::string& folder,
                       bool dryRun);

// "4.37 GB", "1.2 MB", "512 bytes"; a GB is 10^9 bytes.
std::string SizeText(std::uint64_t bytes);

}  // namespace quorvelant
