// What is done when the last line of a script was read: the stages that turn records into a project.
#pragma once

#include "script/script_reader.h"
#include "script/script_state.h"

namespace quorvelant {

inline constexpr std::string_view DefaultPalette = "Default";

inline constexpr std::string_view UnknownSceneTitle = "Unknown Scene";
inline constexpr std::string_view UnknownSceneText = "The cell uses a scene that no track has: ";
inline constexpr std::string_view UnknownPaletteTitle = "Unknown Palette";
inline constexpr std::string_view UnknownPaletteText =
    "The PGC names a palette that the project does not have, so \"Default\" is used: ";

// Runs the stages in their order. `result` gets what they find; false when a stage failed.
bool BuildProject(ReaderState& state, const LoadOptions& options, UserInterface& ui, LoadResult& result);

}  // namespace quorvelant
