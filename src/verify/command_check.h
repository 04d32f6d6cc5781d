// The bytes of a navigation command against the layout of its type.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "disc/command_hex.h"
#include "verify/messages.h"

namespace quorvelant {

struct CommandFault {
  bool IsIllegal = false;  // else bits are set that the format reserves, which players pass over
  std::size_t Byte = 0;    // of the command
  std::string Expected;
  std::string Seen;
};

// The first thing that is wrong, what is illegal ahead of what is reserved. Registers, streams and targets
// count by their numbers alone: whether they are there is for those who know the disc.
[[nodiscard]] std::optional<CommandFault> FaultOf(const CommandBytes& command);

// `isOurs`: this program made the disc, and sets no reserved bits.
[[nodiscard]] inline const MessageKind& KindOf(const CommandFault& fault, bool isOurs) {
  return fault.IsIllegal ? message::CommandWrong : isOurs ? message::ReservedSet : message::CommandLoose;
}

}  // namespace quorvelant
