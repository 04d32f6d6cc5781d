// The files of a disc, written from its plan.
#pragma once

#include <string>

#include "author/author_order.h"
#include "author/author_result.h"
#include "author/disc_plan.h"
#include "base/log.h"
#include "base/user_interface.h"

namespace quorvelant {

struct DiscWriting {
  const DiscPlan& Plan;
  const AuthorOrder& Order;
  std::string Folder;  // takes the files; it is there, unless nothing is written
  UserInterface& Ui;
  Log& RunLog;
};

// Title sets first, the Video Manager last; what no file knows of the others is left open. Files of an
// earlier run that have no successor stay. A run that fails or is stopped leaves what it had written. The
// figures go into `result` as they come. Raises FileError.
[[nodiscard]] AuthorOutcome WriteDisc(const DiscWriting& writing, AuthorResult& result);

}  // namespace quorvelant
