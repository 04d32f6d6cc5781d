// The program's version.
#pragma once

#include <string>
#include <string_view>

namespace quorvelant {

// As `--version` prints it.
std::string_view ProgramVersion();

// The caption of the program: "Quorvelant Ondra Version " with major, minor, "0" and revision.
std::string VersionCaption();

}  // namespace quorvelant
