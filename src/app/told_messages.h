// What was told already.
#pragma once

#include <fmt/format.h>

#include <string>
#include <unordered_set>

#include "base/message.h"

namespace quorvelant {

class ToldMessages {
 public:
  // Whether this is the first message of its kind, place and text; it is told from then on.
  [[nodiscard]] bool IsNew(const Message& message) {
    return told_.insert(fmt::format("{}\n{}\n{}", message.Code, message.Place, message.Text)).second;
  }

 private:
  std::unordered_set<std::string> told_;
};

}  // namespace quorvelant
