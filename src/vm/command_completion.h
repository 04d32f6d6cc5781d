// What a user can go on with while a command is typed, and why what was typed is not right.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/message.h"
#include "base/rules.h"
#include "model/project.h"
#include "vm/command_choices.h"

namespace quorvelant {

struct CommandOffer {
  std::string Text;
  std::string_view Note;  // what it is: "Jump to PGC", "PGC", "register"
  bool operator==(const CommandOffer&) const = default;
};

// What can stand from `Begin` (bytes of the text) on.
struct CommandOffers {
  std::size_t Begin = 0;
  std::vector<CommandOffer> Offers;
};

// For commands of one place. Holds no reference to the project once it is made.
class CommandCompletion {
 public:
  CommandCompletion(const Project& project, const Rules& rules, const CommandStand& stand);

  // By what stands before the cursor: commands, or what compares in the brackets of an "If", or links after
  // the ";" of a set. Commands come whole, with every name that their place has for them.
  [[nodiscard]] CommandOffers At(std::string_view before) const;

 private:
  std::vector<CommandOffer> commands_;
  std::vector<CommandOffer> links_;
};

// What is wrong with a text, and where (bytes of it).
struct CommandTrouble {
  Message Words;
  std::size_t Begin = 0;
  std::size_t End = 0;
};
// Nothing where its bytes do what it says: a command whose names stand for elements of the project.
[[nodiscard]] std::optional<CommandTrouble> TroubleIn(std::string_view text, NameIndex& names);

}  // namespace quorvelant
