#pragma once

// Names for new elements of the structure.

#include <cstddef>
#include <string>
#include <string_view>

#include "model/project.h"
#include "vm/name_rules.h"

namespace quorvelant {

// The stem with the first number from `number` on that makes it a name which a new element can have.
[[nodiscard]] std::string FreeName(const Project& project, ElementKind kind, std::string_view stem,
                                   std::size_t number);

// What messages call an element: its name, or what stands for one ("VTS1_English", "VTS1").
[[nodiscard]] std::string NameOfElement(const Project& project, std::string_view key);

}  // namespace quorvelant
