#include "edit/palettes.h"

#include <fmt/format.h>

#include <algorithm>

#include "edit/messages.h"
#include "model/walk.h"

namespace quorvelant {

bool PaletteNameExists(const Project& project, std::string_view name) {
  return std::ranges::any_of(project.Palettes,
                             [&](const Palette_P& palette) { return palette.Name() == name; });
}

bool AddPalette(Project& project, const std::string& name, const PaletteColors& colors, UserInterface& ui) {
  if (PaletteNameExists(project, name)) {
    ui.Tell(MessageOf(message::PaletteNameTaken, {}));
    return false;
  }
  project.Palettes.Add({.Key = name, .PaletteColors = colors});
  return true;
}

std::optional<std::string> AskAndAddPalette(Project& project, const PaletteColors& colors,
                                            UserInterface& ui) {
  // Each refusal raises the proposed number: an answer that is always the proposal comes to an end.
  for (std::size_t number = project.Palettes.Count() + 1;; ++number) {
    auto name =
        ui.AskText(message::PaletteNew.Title, message::PaletteNew.Text, fmt::format("Palette_{}", number));
    if (!name || name->empty()) {
      return std::nullopt;
    }
    if (AddPalette(project, *name, colors, ui)) {
      return name;
    }
  }
}

bool UpdatePalette(Project& project, std::string_view name, const PaletteColors& colors) {
  const auto found = std::ranges::find_if(
      project.Palettes, [&](const Palette_P& palette) { return IsLive(palette) && palette.Name() == name; });
  if (found == project.Palettes.end()) {
    return false;
  }
  found->PaletteColors = colors;
  return true;
}

PaletteColors PaletteFrom(std::span<const Color> colors) {
  PaletteColors palette{};
  std::ranges::copy(colors.first(std::min(colors.size(), palette.size())), palette.begin());
  return palette;
}

}  // namespace quorvelant
