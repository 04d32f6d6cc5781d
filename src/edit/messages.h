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
inline constexpr MessageKind ImportMpeg1{"import-mpeg1", Severity::Error, "MPEG1 Import Error",
                                         "MPEG1 video is not supported in the Ondra version"};
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

inline constexpr MessageKind ImportSampleRate{"import-sample-rate", Severity::Error, "Import Error",
                                              "Unsupported file format - Sample Rate MUST be 48kHz"};
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

// --- the list of command errors ---

inline constexpr MessageKind AskErrorListFile{"ask-error-list-file", Severity::Information,
                                              "File name for error dump?", "Text Files|*.txt"};
inline constexpr MessageKind ErrorListUnwritten{"error-list-unwritten", Severity::Error, "Command Error",
                                                "Unable to write the error list: {}"};

}  // namespace quorvelant::message
