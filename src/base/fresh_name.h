// Names that nobody has yet.
#pragma once

#include <string>
#include <string_view>

namespace quorvelant {

// `stem` and eight hexadecimal digits drawn for this call. Whoever makes a file or folder of that name makes
// it exclusively and draws again where the name is taken.
[[nodiscard]] std::string FreshName(std::string_view stem);

// Whether `name` could have been drawn with `stem`.
[[nodiscard]] bool IsFreshName(std::string_view name, std::string_view stem);

}  // namespace quorvelant
