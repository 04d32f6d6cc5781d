// Making a disc beside the window.
#pragma once

#include <memory>

#include "author/author_order.h"
#include "check/findings.h"
#include "model/project.h"
#include "ui/jobs.h"
#include "vm/check_commands.h"

namespace quorvelant {

// The work of a job that makes the disc of a copy of the project. What was found is told first; errors end
// it. Its verdict is "Good disc: 3 titles, 0 findings, 1 904 211 sectors read back", or why there is none.
[[nodiscard]] Job::Work AuthorWork(std::shared_ptr<const Project> project, CommandCheck commands,
                                   AuthorOrder order);

// "1 904 211"
[[nodiscard]] std::string GroupedDigits(std::uint64_t number);

}  // namespace quorvelant
