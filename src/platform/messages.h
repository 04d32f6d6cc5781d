// What this room refuses. The first value of each text is the file's path.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind PictureUnknown{"picture-unknown", Severity::Error, "",
                                            "{}: this is no picture that can be read"};
inline constexpr MessageKind PictureUnreadable{"picture-unreadable", Severity::Error, "",
                                               "{}: the picture cannot be read: {}"};
inline constexpr MessageKind PictureFormat{"picture-format", Severity::Error, "",
                                           "{}: pictures are written as .bmp or .png"};
inline constexpr MessageKind PictureNotCoded{"picture-not-coded", Severity::Error, "",
                                             "{}: the picture cannot be written"};
inline constexpr MessageKind PictureModuleMissing{
    "picture-module-missing", Severity::Error, "",
    "{}: pictures other than Windows bitmaps need the module {}, which belongs beside the program or in "
    "../lib/quorvelant: {}"};

}  // namespace quorvelant::message
