// Every message of the multiplexer.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr std::string_view MuxErrorTitle = "Mux Error";
inline constexpr std::string_view ChapterMarkTitle = "Chapter Mark";
inline constexpr std::string_view AudioLengthTitle = "Audio Length";
inline constexpr std::string_view UnderflowTitle = "Buffer Underflow Error";

// Files.
inline constexpr MessageKind MuxFileFailed{"mux-file-failed", Severity::Error, MuxErrorTitle, "{}"};
inline constexpr MessageKind MuxSourceNotOpened{"mux-source-not-opened", Severity::Error, MuxErrorTitle,
                                                "The source file {} could not be opened."};
inline constexpr MessageKind MuxSourceShrunk{
    "mux-source-shrunk", Severity::Error, MuxErrorTitle,
    "The source file {} became shorter while it was read: it ends at byte {}, and {} more were announced."};
inline constexpr MessageKind TitleSetFull{
    "title-set-full", Severity::Error, MuxErrorTitle,
    "The title set fills {} VOB files of 1 GB, and the format allows no more. Spread its tracks over more "
    "title sets."};
inline constexpr MessageKind MenuFull{
    "menu-full", Severity::Error, MuxErrorTitle,
    "The menu fills the one VOB file that the format allows it (1 GB). Use shorter menu tracks."};

// Video.
inline constexpr MessageKind MuxTrackEmpty{"mux-track-empty", Severity::Error, MuxErrorTitle,
                                           "Track \"{}\" has no video."};
inline constexpr MessageKind MuxVideoUnnamed{"mux-video-unnamed", Severity::Error, "", "oops"};
inline constexpr MessageKind CodedPictureMissing{"coded-picture-missing", Severity::Error, MuxErrorTitle,
                                                 "The video file {} holds no coded picture."};
inline constexpr MessageKind SequenceHeaderMissing{
    "sequence-header-missing", Severity::Error, MuxErrorTitle,
    "The video file {} has no sequence header before its first picture."};
inline constexpr MessageKind FirstPictureNotIntra{"first-picture-not-intra", Severity::Error, MuxErrorTitle,
                                                  "The first picture of the video file {} is no I picture."};
inline constexpr MessageKind PictureTooLong{
    "picture-too-long", Severity::Error, MuxErrorTitle,
    "The video file {} holds a picture of more than {} bytes. It is damaged, or no MPEG video."};
inline constexpr MessageKind PictureSizeChanges{
    "picture-size-changes", Severity::Error, MuxErrorTitle,
    "The picture size changes from {}x{} to {}x{} in the video file {}. A track has one picture size."};
inline constexpr MessageKind SequenceChanges{"sequence-changes", Severity::Error, MuxErrorTitle,
                                             "The video file {} changes at byte {} from {} to {}. A disc has "
                                             "one of each for all of its titles' tracks: "
                                             "players would show the rest in the wrong shape or at the wrong "
                                             "speed. Make it a track of its own, in a title "
                                             "set of its own."};
inline constexpr MessageKind SequencesApart{"sequences-apart", Severity::Warning, "Video Source",
                                            "In the video file {} no sequence header comes within {:.1f} "
                                            "seconds: players search in coarse steps there, "
                                            "or stutter. This repeats the headers: {}"};
inline constexpr MessageKind SequencesFarApart{
    "sequences-far-apart", Severity::Error, MuxErrorTitle,
    "In the video file {} no sequence header comes within {:.1f} seconds: nothing in between can be searched "
    "or "
    "jumped to, and many players stop. This repeats the headers: {}"};
inline constexpr MessageKind LastPictureCut{
    "last-picture-cut", Severity::Warning, "Video Source",
    "The video file {} ends within a picture: its last picture is incomplete."};

// Damage in a video file: its path and how often it was met; the place is the first of them.
inline constexpr MessageKind PictureIncomplete{
    "picture-incomplete", Severity::Warning, "Video Source",
    "Damage in the video file {}: rows are missing or astray in {} of its pictures, the first at this place. "
    "Players show blocks or frozen parts there. Read the file anew from its source, or encode it again."};
inline constexpr MessageKind PicturesMisnumbered{
    "pictures-misnumbered", Severity::Warning, "Video Source",
    "Damage in the video file {}: pictures are missing or stand twice in {} of its GOPs, the first at this "
    "place. Players stumble there. Read the file anew from its source, or encode it again."};
inline constexpr MessageKind PictureTypeUnknown{
    "picture-type-unknown", Severity::Warning, "Video Source",
    "Damage in the video file {}: the coding type of {} of its pictures is none of I, P and B, the first at "
    "this place. Players can't decode them. Read the file anew from its source, or encode it again."};
inline constexpr MessageKind FieldUnpaired{
    "field-unpaired", Severity::Warning, "Video Source",
    "Damage in the video file {}: fields lack their second field, {} in all, the first before this place. "
    "Players stumble there. Read the file anew from its source, or encode it again."};
inline constexpr MessageKind SequenceHeaderAstray{
    "sequence-header-astray", Severity::Warning, "Video Source",
    "Damage in the video file {}: no GOP with an I picture follows {} of its sequence headers, the first at "
    "this place. Players that jump there show nothing whole. Read the file anew from its source, or encode "
    "it again."};
inline constexpr MessageKind GopBeyondLimit{
    "gop-beyond-limit", Severity::Warning, "Video Source",
    "In the video file {}, what a disc allows (30 fields PAL, 36 NTSC) is too short for {} of its GOPs, the "
    "first at this place. Some players stutter there: encode with GOPs of at most 15 frames (PAL) or 18 "
    "(NTSC)."};

// Stills and slides.
inline constexpr MessageKind StillUnreadable{"still-unreadable", Severity::Error, MuxErrorTitle, "{}"};
inline constexpr MessageKind StillSizeUnfit{
    "still-size-unfit", Severity::Error, "Image size error",
    "Image sizes must be {0}*{1} or {2}*{3} in track \"{4}\": {5} has {6}*{7}"};
inline constexpr MessageKind SlideOfSeveralPictures{
    "slide-of-several-pictures", Severity::Error, MuxErrorTitle,
    "The file {} of track \"{}\" holds more than one picture. A still or a slide is a single one."};
inline constexpr MessageKind SlideNotIntra{"slide-not-intra", Severity::Error, MuxErrorTitle,
                                           "The picture of the video file {} is no I picture."};

// Audio and subtitles.
inline constexpr MessageKind AudioFrameMissing{"audio-frame-missing", Severity::Error, MuxErrorTitle,
                                               "The audio file {} holds no AC3 frame of 48 kHz."};
inline constexpr MessageKind AudioRateChanges{
    "audio-rate-changes", Severity::Error, MuxErrorTitle,
    "The audio file {} changes its sample rate. A disc carries 48 kHz alone."};
inline constexpr MessageKind AudioChanges{
    "audio-changes", Severity::Error, MuxErrorTitle,
    "The audio file {} changes at byte {} from {} to {}. Players keep to what a stream begins with: the rest "
    "would play out of time, or not at all. Encode the whole file anew, of one kind."};
inline constexpr MessageKind AudioDamaged{
    "audio-damaged", Severity::Warning, "Audio Source",
    "Audio stream {} of track \"{}\": its files are damaged in {}, the first in {}. {} of no sound were left "
    "out; for {} ({:.2f} seconds) the frame before is heard again. Take the sound from its source anew."};
inline constexpr MessageKind AudioBroken{
    "audio-broken", Severity::Warning, "Audio Source",
    "Audio stream {} of track \"{}\": its files hold no AC3 frames in {}, the first in {}. The sound after "
    "each may be out of time. Take it from its source anew."};
inline constexpr MessageKind PcmUnfit{
    "pcm-unfit", Severity::Error, MuxErrorTitle,
    "Audio stream {} of track \"{}\": PCM sound of {} bits, {} kHz and {} can't go on a disc."};
inline constexpr MessageKind AudioNeverStarts{
    "audio-never-starts", Severity::Error, AudioLengthTitle,
    "Audio stream {} of track \"{}\" is delayed by {} ms and would start after the picture ends, at {:.1f} "
    "seconds: players offer it, and it stays silent. Lower its Delay, or remove the stream."};
inline constexpr MessageKind AudioStartsLate{
    "audio-starts-late", Severity::Warning, AudioLengthTitle,
    "Audio stream {} of track \"{}\" is delayed by {} ms: some players get out of step where the sound "
    "starts "
    "more than a second after the picture. Put silence before the sound instead."};
inline constexpr MessageKind AudioTooShort{
    "audio-too-short", Severity::Warning, AudioLengthTitle,
    "Audio stream {} of track \"{}\" ends {:.1f} seconds before the picture does."};
inline constexpr MessageKind AudioTooLong{
    "audio-too-long", Severity::Warning, AudioLengthTitle,
    "Audio stream {} of track \"{}\" is {:.1f} seconds longer than the picture: the rest is left out."};
inline constexpr MessageKind SubtitleNotMade{"subtitle-not-made", Severity::Error, MuxErrorTitle,
                                             "Track \"{}\", subtitle stream {}, entry {}: {}"};

inline constexpr MessageKind AudioLate{
    "audio-late", Severity::Warning, UnderflowTitle,
    "Audio stream {} of track \"{}\" sends {} too late, the first at {:.1f} seconds, by up to {:.1f} ms. The "
    "sound drops out there. Lower the bit rate of the picture or of the sound, or leave streams out."};
inline constexpr MessageKind SubtitlesLate{
    "subtitles-late", Severity::Warning, UnderflowTitle,
    "Subpicture stream {} of track \"{}\" sends {} too late, the first at {:.1f} seconds, by up to {:.1f} "
    "ms. They show late or not at all. Lower the bit rate of the picture, or use smaller bitmaps."};
inline constexpr MessageKind SubtitlesPastEnd{
    "subtitles-past-end", Severity::Warning, "Subtitle Length",
    "Subpicture stream {} of track \"{}\" has {} past the end of the picture, the first of them entry {}: "
    "they never show. Look at their times."};
inline constexpr MessageKind SubtitlesOverfill{"subtitles-overfill", Severity::Error, MuxErrorTitle,
                                               "Track \"{}\", subpicture stream {}, entry {}: with those "
                                               "sent before it the player has to keep {} bytes, and "
                                               "its buffer holds {}. Some of them would not show. Let fewer "
                                               "entries follow each other so closely, or use "
                                               "smaller bitmaps."};

// Buttons: the sets of which no navigation pack tells, and why of the first.
inline constexpr MessageKind ButtonsNeverShow{
    "buttons-never-show", Severity::Error, "Button Times",
    "Track \"{}\": {} of its sets of buttons never show, the first of them entry {}, which starts at {:.1f} "
    "seconds: {}. Viewers can choose nothing of it: let it start earlier, or remove it."};

// Chapter marks.
inline constexpr MessageKind MarkOpensNoCell{
    "mark-opens-no-cell", Severity::Error, ChapterMarkTitle,
    R"(Scene "{}" of track "{}" opens no cell: its mark at frame {} {}. Players can't jump to it. {})"};
inline constexpr MessageKind MarkBeyondCells{
    "mark-beyond-cells", Severity::Error, ChapterMarkTitle,
    "Scene \"{}\" of track \"{}\" opens no cell: its mark at frame {} comes after the {} cells that a track "
    "has "
    "room for. Players can't jump to it. Remove marks, or cut the track in two."};
inline constexpr MessageKind MarkWithinSlide{
    "mark-within-slide", Severity::Warning, ChapterMarkTitle,
    "Scene \"{}\" of track \"{}\" begins within a slide, at frame {}: its cell opens at frame {}, and no "
    "picture shows there until the next slide."};

// The player's buffers. The two of severity Warning are asked, not told.
inline constexpr MessageKind GopTooLong{"gop-too-long", Severity::Error, "Gop Error",
                                        "GOP length has exceeded 36 fields (18 frames) - Aborting"};
inline constexpr MessageKind BitRateTooHigh{"bit-rate-too-high", Severity::Error, "Excessive Bitrate Error",
                                            "Unrecoverable Excessive Bitrate Error - Aborting\n"
                                            "Try reducing the quantity of audio streams or Video bitrate"};
inline constexpr MessageKind BufferFull{
    "buffer-full", Severity::Warning, "Serious Buffer Fault",
    "A serious buffer error has occured. Would you like to reset the buffer - THIS MAY CAUSE A STUTTER IN "
    "THE PLAYBACK!"};
inline constexpr MessageKind BufferUnderflow{
    "buffer-underflow", Severity::Warning, UnderflowTitle,
    "A Buffer Underflow has been noted (probably due to excessive bitrate) at sector {}.\n"
    "The DVD may not play smoothly. Do you want to continue mux (This error will not be reported again)?"};
inline constexpr MessageKind BufferUnderflowRefused{"buffer-underflow-refused", Severity::Error,
                                                    UnderflowTitle,
                                                    "The build was ended at the first buffer underflow."};

}  // namespace quorvelant::message
