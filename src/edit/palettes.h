// The project's palettes: sixteen colours under a name.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

using PaletteColors = std::array<Color, 16>;

// Names are compared exactly.
bool PaletteNameExists(const Project& project, std::string_view name);

// Adds a palette unless the name exists, which is told; whether it was added.
bool AddPalette(Project& project, const std::string& name, const PaletteColors& colors, UserInterface& ui);

// Asks for the new palette's name until it is an unused one, proposing "Palette_" and a number, and adds
// the palette. Its name; nothing when the user gives up or leaves the name empty.
std::optional<std::string> AskAndAddPalette(Project& project, const PaletteColors& colors, UserInterface& ui);

// Replaces the colours of the palette with that name; whether there is one.
bool UpdatePalette(Project& project, std::string_view name, const PaletteColors& colors);

// The first sixteen of the colours; black where there are fewer.
PaletteColors PaletteFrom(std::span<const Color> colors);

}  // namespace quorvelant
