// What the operations on a project tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// --- the import of video ---

inline constexpr MessageKind ImportUnusable{"import-unusable", Severity::Error, "Import Error",
                                            "'{}' can't be imported: {}"};
// The coding ("MPEG2"), the standard and the attribute.
inline constexpr MessageKind ImportIncompatible{"import-incompatible", Severity::Error, "Import Error",
                                                "The video file has incompatible {} attributes -> {}; {}"};
inline constexpr MessageKind ImportMpeg1{
    "import-mpeg1", Severity::Error, "MPEG1 Import Error",
    "MPEG1 video is not supported in the Ondra version: '{}'. This makes "
    "MPEG2 of it: {}"};
inline constexpr MessageKind ImageSize{"image-size", Severity::Error, "Image size error",
                                       "Image sizes must be 720*576 or 360*288 or 720*480 or 360*240"};
inline constexpr MessageKind ImportNotStill{
    "import-not-still", Severity::Error, "Still Import Error",
    "Video Stream is NOT a still - please reselect a video file with only 1 frame or a BMP Image"};
inline constexpr MessageKind ImportNeedsPulldown{"import-needs-pulldown", Severity::Warning, "Import Warning",
                                                 "Video source is 23.976fps and is not pulldowned"};
inline constexpr MessageKind ImportVideoUnlike{"import-video-unlike", Severity::Error, "Video File Error",
                                               "This Video File has different Attributes to Source File"};

// --- the import of audio; those of severity Information are questions ---

inline constexpr MessageKind ImportSampleRate{
    "import-sample-rate", Severity::Error, "Import Error",
    "Unsupported file format - Sample Rate MUST be 48kHz: '{}'. This "
    "makes one that fits: {}"};
inline constexpr MessageKind ImportAudioUnlike{
    "import-audio-unlike", Severity::Error, "Audio Play Error",
    "This Audio Play has different parameters to the Audio Play #1"};
inline constexpr MessageKind AskAc3BitRate{
    "ask-ac3-bit-rate", Severity::Information, "Audio Bitrate Error",
    "Maximum Audio Bitrate for DVD is 448Kpbs. This source exceeds that ({}). Continuing will make a "
    "non-standard DVD. Do you want to continue?"};
inline constexpr MessageKind AskDtsBitRate{
    "ask-dts-bit-rate", Severity::Information, "Audio Bitrate Error",
    "Incorrect bitrate of DTS audio. This source is ({}). Continuing will make a non-standard DVD. Do you "
    "want to continue?"};
inline constexpr MessageKind AskPcmRate{
    "ask-pcm-rate", Severity::Information, "PCM Data Rate Error",
    "PCM Data Rate is non-dvd standard. Continuing will result in non-standard DVD and will probably fail. "
    "Do you want to continue?"};

// --- scenes, chapters and subtitle streams ---

inline constexpr MessageKind TooManyScenes{"too-many-scenes", Severity::Error, "New Scene Error",
                                           "Max Number of Scenes reached (99)"};
inline constexpr MessageKind SceneTimeMissing{"scene-time-missing", Severity::Error, "New Scene Error",
                                              "Please set a valid Timestamp"};
inline constexpr MessageKind SceneTimeTooLate{"scene-time-too-late", Severity::Error, "New Scene Error",
                                              "Timestamp exceeds Video Length"};
inline constexpr MessageKind SceneTimeNearEnd{"scene-time-near-end", Severity::Error, "New Scene Error",
                                              "Timestamp is too close to end of Video Stream"};
inline constexpr MessageKind SceneTimeTaken{"scene-time-taken", Severity::Error, "New Scene Error",
                                            "This Timestamp already exists, please select another"};
inline constexpr MessageKind CorrectedSceneTimeTaken{
    "corrected-scene-time-taken", Severity::Error, "New Scene Error",
    "This Corrected Timestamp already exists, please select another"};
inline constexpr MessageKind AnalysisWithoutFile{
    "analysis-without-file", Severity::Error, "Analysis Error",
    "You must specify a Video/Still file before analysis can be completed"};
inline constexpr MessageKind ScenesRemoved{
    "scenes-removed", Severity::Error, "Scene Error",
    "One or more Scene times were greater than the Video length, and have been removed"};
inline constexpr MessageKind ChapterListUnreadable{
    "chapter-list-unreadable", Severity::Error, "Chapter List Error",
    "The chapter list '{}' cannot be read or is larger than 1 MB"};
inline constexpr MessageKind ChapterListEmpty{"chapter-list-empty", Severity::Error, "Chapter List Error",
                                              "The chapter list '{}' holds no line with \"chapter=\""};
inline constexpr MessageKind SubtitlesNeedVideo{
    "subtitles-need-video", Severity::Error, "Sub Import Error",
    "Please select a video/still file first, so that the correct subtitle display modes can be set"};
inline constexpr MessageKind StreamIDsLocked{
    "stream-ids-locked", Severity::Information, "",
    "This track is part of a PGC, so existing Audio / Subpicture IDs have been locked"};
// The title reads as it always did.
inline constexpr MessageKind BitmapDeselected{"bitmap-deselected", Severity::Error, "Bitamp View Error",
                                              "Requested Bitmap does not exist - deselecting this SPU"};
inline constexpr MessageKind ForcedNeeded{
    "forced-needed", Severity::Error, "",
    "Subtitles must always be set to Forced when highlight buttons exist"};

// --- the list of command errors ---

inline constexpr MessageKind AskErrorListFile{"ask-error-list-file", Severity::Information,
                                              "File name for error dump?", "Text Files|*.txt"};
inline constexpr MessageKind ErrorListUnwritten{"error-list-unwritten", Severity::Error, "Command Error",
                                                "Unable to write the error list: {}"};

// --- the import of subtitle scripts; those of severity Information with a "?" are questions ---

inline constexpr MessageKind SubtitlesNotOpened{
    "subtitles-not-opened", Severity::Error, "Sub Import Error",
    "The subtitle script cannot be opened. Is there a file of that name, and may you read it?"};
inline constexpr MessageKind SubtitlesTooLarge{"subtitles-too-large", Severity::Error, "Sub Import Error",
                                               "The subtitle script is larger than 16 MB"};
inline constexpr MessageKind SubtitlesEmpty{"subtitles-empty", Severity::Warning, "Sub Import Error",
                                            "The subtitle script has no entries"};
inline constexpr MessageKind SubtitleLinePassedOver{
    "subtitle-line-passed-over", Severity::Warning, "Sub Import Error",
    "This line of the list is passed over: a number, a start, an end and a file name with tabs between are "
    "expected"};

inline constexpr MessageKind PaletteNameTaken{"palette-name-taken", Severity::Error, "New Palette Error",
                                              "This palette name already exists - reselect"};

inline constexpr MessageKind PaletteImport{
    "palette-import", Severity::Information, "Import Palette",
    "This sst file has a palette included - would you like to import it?"};
inline constexpr MessageKind PaletteNew{"palette-new", Severity::Information, "New Palette",
                                        "What is the name of your new Palette?"};
inline constexpr MessageKind PaletteUsedByChains{
    "palette-used-by-pgcs", Severity::Information, "New Palette",
    "The palette \"{1}\" is taken by {0} of the PGCs that show the track"};
inline constexpr MessageKind PaletteKeptByChains{"palette-kept-by-pgcs", Severity::Warning, "New Palette",
                                                 "These PGCs show the track and keep the palette that they "
                                                 "have: {}. The subtitles show in its colours; for "
                                                 "their own, name \"{}\" in PaletteUsed"};

}  // namespace quorvelant::message
