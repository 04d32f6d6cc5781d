// What this room refuses.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// --- bitmaps; the first value is the path of the bitmap ---

inline constexpr MessageKind SubpictureOutside{
    "subpicture-outside", Severity::Error, "",
    "{}: no line of this subtitle's bitmap lies within the picture"};
inline constexpr MessageKind SubpictureTooLarge{
    "subpicture-too-large", Severity::Error, "",
    "{}: the bitmap makes a subtitle of {} bytes, and a player takes no more than {}"};

// --- times; their values are timecodes ---

inline constexpr MessageKind SubtitleExists{"subtitle-exists", Severity::Error, "New Sub Error",
                                            "A Subpicture already exists at this timestamp"};
inline constexpr MessageKind SubtitleWithoutRoom{
    "subtitle-without-room", Severity::Error, "New Sub Error",
    "The next Subpicture starts a frame later ({}), and leaves no room for this one"};
inline constexpr MessageKind SubtitleMeetsNext{
    "subtitle-meets-next", Severity::Error, "Sub Overlap error",
    "The new Start Time and Duration ({}) will result in an overlap of the next subtitle ({})"};
inline constexpr MessageKind SubtitleMeetsEarlier{
    "subtitle-meets-earlier", Severity::Error, "Sub Overlap error",
    "The new Start Time ({}) will result in an overlap of the previous subtitle, which ends at {}"};
inline constexpr MessageKind SubtitlePastEnd{"subtitle-past-end", Severity::Error, "Sub Time Error",
                                             "The Start Time ({}) is not before the end of the track ({})"};
inline constexpr MessageKind SubtitleTimesUnfit{
    "subtitle-times-unfit", Severity::Error, "Sub Time Error",
    "A subtitle starts at frame 0 or later and lasts a frame at least"};

}  // namespace quorvelant::message
