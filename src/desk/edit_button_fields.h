// Sets of buttons as a line of `quorvelant edit` says them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "desk/edit_line.h"
#include "edit/button_sets.h"

namespace quorvelant {

// The frame of a timecode "HH:MM:SS:FF". Raises a MessageError where the text is none.
[[nodiscard]] std::int64_t FrameOf(const JsonField& field, int framesPerSecond);

// What a line of a project can hold, without the blanks around it. Raises a MessageError where nothing is
// left or lines break.
[[nodiscard]] std::string LineTextOf(const JsonField& field);

// So many numbers. Raises a MessageError where there are others.
[[nodiscard]] std::vector<std::int32_t> NumbersOf(const JsonField& field, std::size_t count,
                                                  std::int64_t least, std::int64_t most);
// Indexes into the palette, or contrasts, in the order E2, E1, P, Bg.
[[nodiscard]] ColorQuad QuadOf(const JsonField& field);

// The set with what the line says of it: "time", "duration", "schemes", "buttons", "forcedSelect" and
// "forcedAction", where they stand. What is not said of a scheme or of a button that the set has stays.
// Raises a MessageError where something does not fit.
[[nodiscard]] EditedSet WithFields(EditedSet set, const Track& track, const EditLine& line);

}  // namespace quorvelant
