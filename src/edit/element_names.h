#pragma once

// Names for new elements of the structure.

#include <cstddef>
#include <string>
#include <string_view>

#include "edit/session.h"
#include "vm/name_rules.h"

namespace quorvelant {

// The stem with the first number from `number` on that makes it a name which no element has; another stem
// where commands cannot carry this one. Names that a change has given so far are not known here.
[[nodiscard]] std::string FreeName(const EditSession& session, ElementKind kind, std::string_view stem,
                                   std::size_t number);

// What messages call an element: its name, or what stands for one ("VTS1_English", "VTS1").
[[nodiscard]] std::string NameOfElement(const Project& project, std::string_view key);

}  // namespace quorvelant
