// Themes of menus: those built in, and the user's own in a folder.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/message.h"
#include "base/rules.h"
#include "menu/menu_look.h"

namespace quorvelant {

// The first is what a look without a theme has; the last has the traditional fonts.
[[nodiscard]] std::span<const std::string_view> MenuThemeNames();

struct CompletedLook {
  std::optional<MenuLook> Look;  // none where there are errors
  std::vector<Message> Errors;
};

// The look with everything that it leaves open filled in by its theme. A name that is no built-in theme is a
// folder, whose theme.toml is read; its paths count from there.
[[nodiscard]] CompletedLook CompleteLook(const MenuLook& look, const Rules& rules);

}  // namespace quorvelant
