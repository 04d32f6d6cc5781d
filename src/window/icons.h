// The drawings that the program brings along: Qt finds no theme of icons on a plain system.
#pragma once

#include <QIcon>
#include <QString>
#include <string_view>

namespace quorvelant {

// What the desktop file, the metainfo, the installed icons and the window's own name for them share.
inline constexpr std::string_view ApplicationId = "org.quorvelant.Quorvelant";

// A line drawing of data/icons/actions ("save") in the colour that the palette has for texts at the moment it
// is painted, so that it shows on light and on dark; fainter where the control is disabled. Null where there
// is none of that name.
[[nodiscard]] QIcon IconNamed(std::string_view name);
// In several sizes, for title bars, task lists and the about box.
[[nodiscard]] QIcon ApplicationIcon();

// Names for resources: where the pages and pictures of the manual and the icons are found.
void LoadResources();
[[nodiscard]] QString IconFile(std::string_view name, bool twice);

}  // namespace quorvelant
