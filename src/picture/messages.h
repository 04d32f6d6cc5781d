// What this room refuses. The first value of each text is the file's path.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind PictureWithoutPixels{"picture-without-pixels", Severity::Error, "",
                                                  "{}: a picture of {}x{} has no pixels"};
inline constexpr MessageKind PictureTooLarge{
    "picture-too-large", Severity::Error, "",
    "{}: a picture of {}x{} is too large (at most {} pixels a side and {} in all)"};

inline constexpr MessageKind PictureMissing{"picture-missing", Severity::Error, "",
                                            "{}: the file does not exist"};
inline constexpr MessageKind PictureNoFile{"picture-no-file", Severity::Error, "", "{}: this is not a file"};
inline constexpr MessageKind PictureNotOpened{"picture-not-opened", Severity::Error, "",
                                              "{}: the file cannot be opened"};
inline constexpr MessageKind PictureFileTooLarge{"picture-file-too-large", Severity::Error, "",
                                                 "{}: a picture file of {} bytes is too large"};
inline constexpr MessageKind PictureNotWhole{"picture-not-whole", Severity::Error, "",
                                             "{}: the file cannot be read to its end"};
inline constexpr MessageKind PictureFileEmpty{"picture-file-empty", Severity::Error, "",
                                              "{}: the file is empty"};
inline constexpr MessageKind PictureNotWritten{"picture-not-written", Severity::Error, "",
                                               "{}: the picture cannot be written: {}"};

inline constexpr MessageKind PictureNotBitmap{"picture-not-bitmap", Severity::Error, "",
                                              "{}: only Windows bitmaps (.bmp) can be read here."};
inline constexpr MessageKind BitmapUnknown{"bitmap-unknown", Severity::Error, "", "{}: this is no bitmap"};
inline constexpr MessageKind BitmapTruncated{"bitmap-truncated", Severity::Error, "",
                                             "{}: the bitmap is shorter than its header says"};
inline constexpr MessageKind BitmapPacking{
    "bitmap-packing", Severity::Error, "",
    "{}: a bitmap of {} bits a pixel with compression {} cannot be read"};
inline constexpr MessageKind BitmapHeader{"bitmap-header", Severity::Error, "",
                                          "{}: a bitmap header of {} bytes is not known"};
inline constexpr MessageKind BitmapMask{"bitmap-mask", Severity::Error, "",
                                        "{}: a colour mask of the bitmap has gaps"};

}  // namespace quorvelant::message
