// What this room tells.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// The destination.
inline constexpr MessageKind DestinationIsNoFolder{"destination-no-folder", Severity::Error, "Output Folder",
                                                   "The destination is not a folder"};
inline constexpr MessageKind DestinationHoldsForeignFile{
    "destination-foreign-file", Severity::Error, "Output Folder",
    R"(The destination holds "{}", which is not part of a disc)"};
inline constexpr MessageKind DestinationHoldsDisc{
    "destination-holds-disc", Severity::Error, "Output Folder",
    "The destination holds a disc already; --force replaces it"};
inline constexpr MessageKind DestinationIsMountPoint{"destination-mount-point", Severity::Error,
                                                     "Output Folder",
                                                     "The destination is a mount point; name a folder in it"};
inline constexpr MessageKind FolderNotMade{"folder-not-made", Severity::Error, "Output Folder",
                                           "The folder for the new disc cannot be made: {}"};
inline constexpr MessageKind FolderNotPlaced{
    "folder-not-placed", Severity::Error, "Output Folder",
    "The disc is complete, but its folder cannot be renamed: {}. It stays as {}"};

// What the disc needs, and what is free. The estimate is sure below the size of the sources alone.
inline constexpr MessageKind SpaceTooLittle{"space-too-little", Severity::Error, "Disk Space",
                                            "The disc needs about {}, and {} are free"};
inline constexpr MessageKind SpaceDoubtful{"space-doubtful", Severity::Warning, SpaceTooLittle.Title,
                                           SpaceTooLittle.Text};

// The streams of a track.
inline constexpr MessageKind StreamsBeyondRate{"streams-beyond-rate", Severity::Error, "Bit Rate",
                                               "The {1} audio streams of track \"{0}\" take {2:.1f} of the "
                                               "{3} Mbit/s that a disc carries, which leaves none "
                                               "for the picture: sound and picture would stop again and "
                                               "again. Leave streams out, or encode them at lower "
                                               "rates"};

// The run.
inline constexpr MessageKind WarningsForbidDisc{
    "warnings-forbid-disc", Severity::Error, "Strict",
    "There were warnings, and --strict makes them failures: no disc was made"};
inline constexpr MessageKind NoTitles{
    "no-titles", Severity::Error, "No Title Error",
    "There are NO titles in your DVD - please drag and drop track scenes onto a title PGC"};
inline constexpr MessageKind ForeignFile{
    "foreign-file", Severity::Error, "Author Error",
    R"(The folder holds "{}", which is not part of a disc: the sector sums could not be entered, so no title )"
    "starts. Move that file away and author again"};
inline constexpr MessageKind FileFailed{"file-failed", Severity::Error, "Author Error", "{}"};
inline constexpr MessageKind LogNotWritten{"log-not-written", Severity::Warning, "Log",
                                           "The log could not be written"};

}  // namespace quorvelant::message
