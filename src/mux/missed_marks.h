// Marks that open no cell.
#pragma once

#include <cstddef>

#include "mux/mux_state.h"

namespace quorvelant {

// Tells of the marks from `first` to before `last` (indexes in Input.Marks): why each opens no cell, and the
// nearest frame that would. One whose scene is played ends the build where the rules refuse such a disc.
void ReportMissedMarks(MuxState& state, std::size_t first, std::size_t last);

}  // namespace quorvelant
