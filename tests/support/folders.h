// Where the checkout and the build lie, known to one translation unit alone.
#pragma once

#include <string>
#include <string_view>

namespace quorvelant {

// The path of a file of the checkout, `relative` to its root.
std::string SourceFile(std::string_view relative);
// The path of a file of the build folder.
std::string BuildFile(std::string_view relative);

}  // namespace quorvelant
