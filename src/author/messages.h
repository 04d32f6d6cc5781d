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
inline constexpr MessageKind FolderWithoutImage{"folder-without-image", Severity::Information,
                                                "Output Folder",
                                                "The folder is complete and stands; its image does not"};

// The lock of the destination, and what a run left that was killed.
inline constexpr MessageKind DestinationBusy{
    "destination-busy", Severity::Error, "Output Folder",
    "Another run makes a disc here ({}); wait for its end, or name another folder"};
inline constexpr MessageKind FolderNotLocked{"folder-not-locked", Severity::Error, "Output Folder",
                                             "The destination cannot be locked for this run: {}"};
inline constexpr MessageKind LockIsForeign{
    "lock-foreign", Severity::Error, "Output Folder",
    "This is where a run locks its destination, and it is no lock of this program: move it away"};
inline constexpr MessageKind LeftoverRemoved{"leftover-removed", Severity::Information, "Output Folder",
                                             "A run that was killed had left {}, which was removed"};
inline constexpr MessageKind LeftoverStays{
    "leftover-stays", Severity::Information, "Output Folder",
    "A run that was killed had left {}, which holds files that are not part of a disc and stays"};
inline constexpr MessageKind FormerRestored{
    "former-restored", Severity::Information, "Output Folder",
    "A run was killed while it put its disc here; the disc before is in its place again"};

// What the disc needs, and what is free. The estimate is sure below the size of the sources alone.
inline constexpr MessageKind SpaceTooLittle{"space-too-little", Severity::Error, "Disk Space",
                                            "The disc needs about {}, and {} is free"};
inline constexpr MessageKind SpaceDoubtful{"space-doubtful", Severity::Warning, SpaceTooLittle.Title,
                                           SpaceTooLittle.Text};

// The media. The size, the largest medium's, and the sizes of tracks.
inline constexpr MessageKind DiscTooLarge{"disc-too-large", Severity::Warning, "Disc Size",
                                          "The disc needs about {}, and the largest medium, a DVD-9, has {}: "
                                          "leave something out. Its tracks take: {}"};
inline constexpr MessageKind ImageTooLarge{
    "image-too-large", Severity::Error, "Disc Size",
    "No medium takes this disc, so no image is made of it; a folder alone (--output) can be"};
inline constexpr MessageKind ImageInFolder{
    "image-in-folder", Severity::Error, "Image",
    "The image would lie in the folder that becomes the disc: name another place for it"};
inline constexpr MessageKind ImageIsSource{"image-is-source", Severity::Error, "Image",
                                           "The image would replace this source: name another file"};

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
inline constexpr MessageKind SourceChanged{
    "source-changed", Severity::Error, "Author Error",
    "The file changed while the disc was made of it, so no disc was made; run again when it is complete"};
inline constexpr MessageKind SourceInDestination{"source-in-destination", Severity::Error, "Author Error",
                                                 "This source lies in the destination under the name of a "
                                                 "disc's file, and the disc would replace it: move "
                                                 "it away, or name another folder"};
inline constexpr MessageKind FileFailed{"file-failed", Severity::Error, "Author Error", "{}"};
// A thread, as a rule.
inline constexpr MessageKind SystemRefused{
    "system-refused", Severity::Error, "Author Error",
    "The system refuses what the run needs, a thread as a rule ({}): are there too many processes?"};
inline constexpr MessageKind LogNotWritten{"log-not-written", Severity::Warning, "Log",
                                           "The log could not be written"};

}  // namespace quorvelant::message
