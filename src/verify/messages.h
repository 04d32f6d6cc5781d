// What this room finds.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind FileMissing{"read-back-missing", Severity::Error, "Read Back",
                                         "The file is missing"};
inline constexpr MessageKind FileSizeWrong{"read-back-file-size", Severity::Error, "Read Back",
                                           "The file has {} bytes, and the tables say {}"};
inline constexpr MessageKind PartSector{"read-back-part-sector", Severity::Error, "Read Back",
                                        "The size is not a multiple of 2048 bytes"};
inline constexpr MessageKind BackupDiffers{"read-back-backup", Severity::Error, "Read Back",
                                           "The backup differs from the IFO"};
inline constexpr MessageKind NotAnIfo{"read-back-no-ifo", Severity::Error, "Read Back",
                                      "The file does not begin as an IFO does"};
inline constexpr MessageKind PointerOutside{"read-back-pointer", Severity::Error, "Read Back",
                                            "The pointer at 0x{:X} leads out of the file"};
inline constexpr MessageKind TableOutside{"read-back-table", Severity::Error, "Read Back",
                                          "The table at sector {} ends out of the file"};
inline constexpr MessageKind SetSizeWrong{"read-back-set-size", Severity::Error, "Read Back",
                                          "The set has {} sectors, and its IFO says {}"};
inline constexpr MessageKind TitleStartWrong{"read-back-title-start", Severity::Error, "Read Back",
                                             "Title {} begins at sector {}, and its set at {}"};
inline constexpr MessageKind NavPackMissing{
    "read-back-nav-missing", Severity::Error, "Read Back",
    "There is no navigation pack at sector {}, where the VOBU map has one"};
inline constexpr MessageKind NavPackAddressWrong{"read-back-nav-address", Severity::Error, "Read Back",
                                                 "The navigation pack at sector {} says it is at {}"};

}  // namespace quorvelant::message
