// The program's version, as `--version` prints it.
#pragma once

#include <string_view>

namespace quorvelant {

std::string_view ProgramVersion();

}  // namespace quorvelant
