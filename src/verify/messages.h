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

inline constexpr MessageKind DiscFaulty{
    "verify-faulty", Severity::Warning, "Verify",
    "Reading the disc shows {}, so its ways may be others than those walked: quorvelant verify names them"};
inline constexpr MessageKind DiscUnreadable{"verify-unreadable", Severity::Error, "Verify", "{}"};

// Of a finished disc: what is looked at, what it should be, what it is.
inline constexpr MessageKind ImageDamaged{"verify-image", Severity::Error, "Image",
                                          "{}: expected {}, found {}"};
inline constexpr MessageKind ImageShort{"verify-image-short", Severity::Warning, "Image", ImageDamaged.Text};
inline constexpr MessageKind ImageUnlike{"verify-image-views", Severity::Error, "Image", ImageDamaged.Text};
inline constexpr MessageKind ImageWithoutUdf{"verify-image-no-udf", Severity::Warning, "Image",
                                             ImageDamaged.Text};
inline constexpr MessageKind ImageWithoutIso{"verify-image-no-iso", Severity::Information, "Image",
                                             ImageDamaged.Text};
inline constexpr MessageKind FileWrong{"verify-file", Severity::Error, "Files", ImageDamaged.Text};
inline constexpr MessageKind Unread{"verify-unread", Severity::Error, "Files", ImageDamaged.Text};
inline constexpr MessageKind FileOdd{"verify-file-odd", Severity::Information, "Files", ImageDamaged.Text};
inline constexpr MessageKind BackupUnlike{"verify-backup", Severity::Error, "Files", ImageDamaged.Text};
inline constexpr MessageKind LayoutWrong{"verify-layout", Severity::Error, "Layout", ImageDamaged.Text};
inline constexpr MessageKind LayoutLoose{"verify-layout-loose", Severity::Information, "Layout",
                                         ImageDamaged.Text};
inline constexpr MessageKind TableBroken{"verify-table", Severity::Error, "Tables", ImageDamaged.Text};
inline constexpr MessageKind TableLoose{"verify-table-loose", Severity::Information, "Tables",
                                        ImageDamaged.Text};
inline constexpr MessageKind ReservedSet{"verify-reserved", Severity::Warning, "Tables", ImageDamaged.Text};
inline constexpr MessageKind ChainBroken{"verify-chain", Severity::Error, "Program Chains",
                                         ImageDamaged.Text};
inline constexpr MessageKind CommandWrong{"verify-command", Severity::Error, "Commands", ImageDamaged.Text};
inline constexpr MessageKind CommandLoose{"verify-command-loose", Severity::Information, "Commands",
                                          ImageDamaged.Text};
inline constexpr MessageKind TitleWrong{"verify-title", Severity::Error, "Titles", ImageDamaged.Text};
inline constexpr MessageKind TitleLoose{"verify-title-loose", Severity::Information, "Titles",
                                        ImageDamaged.Text};
inline constexpr MessageKind AttributeWrong{"verify-attributes", Severity::Error, "Attributes",
                                            ImageDamaged.Text};
inline constexpr MessageKind AttributeLoose{"verify-attributes-loose", Severity::Information, "Attributes",
                                            ImageDamaged.Text};
inline constexpr MessageKind AddressMapWrong{"verify-address-map", Severity::Error, "Address Maps",
                                             ImageDamaged.Text};
inline constexpr MessageKind CellWrong{"verify-cell", Severity::Error, "Cells", ImageDamaged.Text};
inline constexpr MessageKind PlayTimeWrong{"verify-time", Severity::Error, "Playback Times",
                                           ImageDamaged.Text};
inline constexpr MessageKind PlayTimeLoose{"verify-time-loose", Severity::Information, "Playback Times",
                                           ImageDamaged.Text};
inline constexpr MessageKind TimeMapWrong{"verify-time-map", Severity::Error, "Time Maps", ImageDamaged.Text};
inline constexpr MessageKind TimeMapLoose{"verify-time-map-loose", Severity::Information, "Time Maps",
                                          ImageDamaged.Text};
inline constexpr MessageKind PackWrong{"verify-pack", Severity::Error, "Packs", ImageDamaged.Text};
inline constexpr MessageKind PackLoose{"verify-pack-loose", Severity::Information, "Packs",
                                       ImageDamaged.Text};
inline constexpr MessageKind PacksClose{"verify-packs-close", Severity::Error, "Packs", ImageDamaged.Text};
inline constexpr MessageKind PacksCloseElsewhere{"verify-packs-close-elsewhere", Severity::Information,
                                                 "Packs", ImageDamaged.Text};
inline constexpr MessageKind StampWrong{"verify-stamp", Severity::Error, "Time Stamps", ImageDamaged.Text};
inline constexpr MessageKind StampLoose{"verify-stamp-loose", Severity::Information, "Time Stamps",
                                        ImageDamaged.Text};
inline constexpr MessageKind NavWrong{"verify-nav", Severity::Error, "Navigation Packs", ImageDamaged.Text};
inline constexpr MessageKind NavLoose{"verify-nav-loose", Severity::Information, "Navigation Packs",
                                      ImageDamaged.Text};
inline constexpr MessageKind SearchWrong{"verify-search", Severity::Error, "Search Tables",
                                         ImageDamaged.Text};
inline constexpr MessageKind SyncWrong{"verify-sync", Severity::Error, "Sync Fields", ImageDamaged.Text};
inline constexpr MessageKind SyncLoose{"verify-sync-loose", Severity::Information, "Sync Fields",
                                       ImageDamaged.Text};
inline constexpr MessageKind HighlightWrong{"verify-highlight", Severity::Error, "Highlights",
                                            ImageDamaged.Text};
inline constexpr MessageKind BufferStarved{"verify-buffer-under", Severity::Error, "Decoder Buffers",
                                           ImageDamaged.Text};
inline constexpr MessageKind BufferOverflow{"verify-buffer-over", Severity::Error, "Decoder Buffers",
                                            ImageDamaged.Text};
inline constexpr MessageKind BufferTight{"verify-buffer-tight", Severity::Information, "Decoder Buffers",
                                         ImageDamaged.Text};
inline constexpr MessageKind VideoBroken{"verify-video", Severity::Error, "Video", ImageDamaged.Text};
inline constexpr MessageKind VideoLoose{"verify-video-loose", Severity::Information, "Video",
                                        ImageDamaged.Text};
inline constexpr MessageKind FramesBroken{"verify-audio", Severity::Error, "Audio", ImageDamaged.Text};
inline constexpr MessageKind AudioLoose{"verify-audio-loose", Severity::Information, "Audio",
                                        ImageDamaged.Text};
inline constexpr MessageKind SubpictureBroken{"verify-subpicture", Severity::Error, "Subpictures",
                                              ImageDamaged.Text};
inline constexpr MessageKind StreamAbsent{"verify-stream", Severity::Error, "Streams", ImageDamaged.Text};
inline constexpr MessageKind StreamLoose{"verify-stream-loose", Severity::Information, "Streams",
                                         ImageDamaged.Text};

}  // namespace quorvelant::message
