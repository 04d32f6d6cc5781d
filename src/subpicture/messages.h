// What this room refuses. The first value of each text is the path of the bitmap.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind SubpictureOutside{
    "subpicture-outside", Severity::Error, "",
    "{}: no line of this subtitle's bitmap lies within the picture"};
inline constexpr MessageKind SubpictureTooLarge{
    "subpicture-too-large", Severity::Error, "",
    "{}: the bitmap makes a subtitle of {} bytes, and a player takes no more than {}"};

}  // namespace quorvelant::message
