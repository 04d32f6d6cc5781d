// What this room tells.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// The folder.
inline constexpr MessageKind IsoNoDisc{"iso-no-disc", Severity::Error, "Image",
                                       "The folder holds no VIDEO_TS.IFO: it is no disc"};
inline constexpr MessageKind IsoFileMissing{"iso-file-missing", Severity::Error, "Image",
                                            "The disc is not whole: this file is missing"};
inline constexpr MessageKind IsoPartSector{
    "iso-part-sector", Severity::Error, "Image",
    "The file has {} bytes, and a disc's files consist of sectors of 2048: it is not whole"};
inline constexpr MessageKind IsoFileTooLarge{"iso-file-too-large", Severity::Error, "Image",
                                             "The file has {} bytes, and a file of a disc at most {}"};
inline constexpr MessageKind IsoNotAnIfo{"iso-no-ifo", Severity::Error, "Image",
                                         "The file does not begin as an IFO does"};
inline constexpr MessageKind IsoBackupSize{"iso-backup-size", Severity::Error, "Image",
                                           "The backup has {} bytes, and its IFO {}"};
inline constexpr MessageKind IsoSetCount{"iso-set-count", Severity::Error, "Image",
                                         "The tables tell of {} title sets, and a disc has 1 to 99"};
inline constexpr MessageKind IsoCellsOutside{
    "iso-cells-outside", Severity::Error, "Image",
    "The disc is not whole: its cells take {} sectors, and the files that hold them have {}"};
// The file's sector, where the file ahead of it ends, and the IFO; all count from the Video Manager.
inline constexpr MessageKind IsoTablesDisagree{
    "iso-tables-disagree", Severity::Error, "Image",
    "The tables put the file at sector {}, and the files ahead of it end at {} (see {}): the sums of sectors "
    "were not entered, or a file was changed"};
inline constexpr MessageKind IsoBackupDiffers{
    "iso-backup-differs", Severity::Warning, "Image",
    "The backup differs from its IFO: one of them is damaged, and the image has both as they are"};
inline constexpr MessageKind IsoInDisc{
    "iso-in-disc", Severity::Error, "Image",
    "The image would stand within the disc that it is made of: name a file outside of it"};
inline constexpr MessageKind IsoLeftOut{"iso-left-out", Severity::Information, "Image",
                                        R"("{}" is no file of this disc and is left out)"};

// The layout.
inline constexpr MessageKind IsoTooLarge{
    "iso-too-large", Severity::Error, "Image",
    "The disc takes {:.3f} GB, and the largest medium, a DVD-9, has {:.3f} GB"};
inline constexpr MessageKind IsoBackupNear{
    "iso-backup-near", Severity::Warning, "Image",
    "The backup lies in the same block of 16 sectors as its IFO, so one scratch can take both"};
inline constexpr MessageKind IsoBreakAt{
    "iso-break", Severity::Information, "Layer Break",
    "The image needs a disc of two layers. The second one begins at sector {}, with cell {} of program chain "
    "{} of title set {}"};
inline constexpr MessageKind IsoBreakNone{
    "iso-break-none", Severity::Warning, "Layer Break",
    "The image needs a disc of two layers, and no cell begins at a block of 16 sectors between sector {} and "
    "{}, where the second one may begin: players may stop for a moment within a scene"};

// The file.
inline constexpr MessageKind IsoBusy{"iso-busy", Severity::Error, "Image",
                                     "Another run makes this image; wait for its end, or name another file"};
inline constexpr MessageKind IsoAsideForeign{
    "iso-aside-foreign", Severity::Error, "Image",
    "This is where a run writes its image, and no run of this program has left it: move it away"};
inline constexpr MessageKind IsoLeftoverTaken{"iso-leftover-taken", Severity::Information, "Image",
                                              "A run that was killed had left {}, which is written anew"};
inline constexpr MessageKind IsoNotPlaced{
    "iso-not-placed", Severity::Error, "Image",
    "The image is complete, but cannot take its name: {}. It stays as {}"};
inline constexpr MessageKind IsoSpace{"iso-space", Severity::Error, "Disk Space",
                                      "The image has {:.3f} GB, and {:.3f} GB is free"};
inline constexpr MessageKind IsoSourceChanged{"iso-source-changed", Severity::Error, "Image",
                                              "The file changed while it was copied, so no image was made"};
inline constexpr MessageKind IsoFileFailed{"iso-file-failed", Severity::Error, "Image", "{}"};

// The volume.
inline constexpr MessageKind IsoLabelUnfit{
    "iso-label-unfit", Severity::Error, "Image",
    R"("{}" is no volume name: it has 1 to 32 of the letters A to Z, digits and "_". This would be one: {})"};
inline constexpr MessageKind IsoDateUnfit{
    "iso-date-unfit", Severity::Error, "Image",
    R"(SOURCE_DATE_EPOCH is "{}", which is no number of seconds between 1970 and 2155)"};

}  // namespace quorvelant::message
