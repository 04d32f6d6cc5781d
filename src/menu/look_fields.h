// The tables of a TOML file that say how menus look, as an order and a theme have them.
#pragma once

#include "menu/menu_look.h"
#include "menu/order_fields.h"

namespace quorvelant {

// "backgrounds": picture files by kind of page.
void ReadBackgrounds(OrderFields& fields, const toml::node& value, MenuLook& look);
// "fonts": tables by font slot.
void ReadFonts(OrderFields& fields, const toml::node& value, MenuLook& look);
// "colors" of marks.
void ReadColors(OrderFields& fields, const toml::node& value, MenuLook& look);

}  // namespace quorvelant
