// Projects of every shape, for properties that hold for all of them.
#pragma once

#include <cstdint>

#include "model/project.h"

namespace quorvelant {

// A project whose texts, numbers and colours are drawn by the rows of the vocabulary, so that each key is
// there. The same seed gives the same project.
Project GeneratedProject(std::uint32_t seed);

}  // namespace quorvelant
