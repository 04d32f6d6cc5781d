// Times as users write them.
#pragma once

#include <QString>
#include <cstdint>

namespace quorvelant {

// The frames of "00:12:05:10", "12:5:10" (minutes, seconds, frames), or of "+10" and "-10" as so many more or
// fewer than `former`. Raises a MessageError where the text is none of these.
[[nodiscard]] std::int64_t FramesIn(const QString& text, std::int64_t former, int framesPerSecond);

}  // namespace quorvelant
