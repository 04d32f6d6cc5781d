// What is done when the last line of a script was read: the stages that turn records into a project.
#pragma once

#include "script/reader_state.h"
#include "script/script_reader.h"

namespace quorvelant {

inline constexpr std::string_view DefaultPalette = "Default";

// Runs the stages in their order. `result` gets what they find; false when a stage failed.
bool BuildProject(ReaderState& state, const LoadOptions& options, UserInterface& ui, LoadResult& result);

}  // namespace quorvelant
