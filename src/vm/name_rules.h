// Which names an element of the disc may have.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/message.h"
#include "model/project.h"

namespace quorvelant {

enum class ElementKind : std::uint8_t { Title, Pgc, Program, Cell };

// Why an element cannot have a name; nothing where it can: a name is no empty text, not "none", that of no
// other live element of its kind (blanks and case aside), on one line, and commands read it as they stand
// ("LinkPGCN" with it leads to that PGC). `own` is the key of the element that is renamed; its former name is
// free.
[[nodiscard]] std::optional<Message> RefuseName(const Project& project, ElementKind kind,
                                                std::string_view name, std::string_view own = {});

// The same, whatever the names of others are.
[[nodiscard]] std::optional<Message> RefuseNameForm(ElementKind kind, std::string_view name,
                                                    std::string_view own = {});

}  // namespace quorvelant
