// What a button leads to, told by the key of an element.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "edit/button_commands.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// The command by which something at a live cell or PGC leads to another live element: a title, a PGC, a
// chapter (program), a cell, First Play, a title set or language unit by its menu. Nothing where players take
// no such command there, or where it would lead to another element of the same name.
[[nodiscard]] std::optional<std::string> TextLeadingTo(const Project& project, const Rules& rules,
                                                       std::string_view from, std::string_view target);

// Gives a button of a saved set the command that leads to an element, in every cell that plays it. Refused
// where no cell plays it, or one of them cannot lead there.
Outcome AimButton(EditSession& session, std::size_t track, const ButtonPlace& button,
                  std::string_view target);

// The elements that the buttons of a track can lead to at a frame, in the order of the disc, with their names
// ("Title Film 1").
struct ButtonAim {
  std::string Key;
  std::string Words;
};
[[nodiscard]] std::vector<ButtonAim> AimsAt(const Project& project, const Rules& rules, std::size_t track,
                                            std::int64_t frame);
// What a button that leads there is to be called: the name of the element; empty for none.
[[nodiscard]] std::string NameOfAim(const Project& project, std::string_view key);

}  // namespace quorvelant
