// Where the project that comes with the program lies.
#pragma once

#include <QString>

namespace quorvelant {

// The script of the example; empty where it is not installed.
[[nodiscard]] QString ExampleProject();

}  // namespace quorvelant
