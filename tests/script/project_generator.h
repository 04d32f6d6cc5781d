// Projects of every shape, for properties that hold for all of them.
#pragma once

#include <cstdint>

#include "model/project.h"

namespace quorvelant {

// A project in the state in which a load leaves one: keys and names by place, cells linked to their scenes,
// commands encoded. The same seed gives the same project.
Project GeneratedProject(std::uint32_t seed);

}  // namespace quorvelant
