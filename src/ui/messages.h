// What the window's document, jobs and models tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind JobBroken{"job-broken", Severity::Error, "Error", "{}"};

// --- files that a user brings ---

inline constexpr MessageKind FileOfNoTrack{"file-of-no-track", Severity::Error, "Import Error",
                                           "'{}' belongs to no track: its name must begin as that of a "
                                           "track's video does (film.m2v, film.de.ac3), or "
                                           "put it on the track, in Media, that it belongs to"};
inline constexpr MessageKind FileNotHere{"file-not-here", Severity::Error, "Import Error",
                                         "'{}' is not a file of this computer: fetch it first"};
inline constexpr MessageKind FileIsProject{"file-is-project", Severity::Error, "Import Error",
                                           "'{}' is a project: File, Open… opens it"};
inline constexpr MessageKind FolderWithoutFilms{
    "folder-without-films", Severity::Error, "Import Error",
    "The folder '{}' holds nothing that a track is made of: video, sound, subtitle lists (.sst) or pictures"};
inline constexpr MessageKind FolderFilesPassedOver{"folder-files-passed-over", Severity::Information,
                                                   "Import",
                                                   "{} files of the folder '{}' are of no kind that a track "
                                                   "is made of and are passed over, the first is '{}'"};
// --- buttons on the picture ---

inline constexpr MessageKind ButtonTooSmall{"button-too-small", Severity::Error, "New Button Error",
                                            "A button is more than 2 pixels wide and high"};
// The bitmap under buttons, and why.
inline constexpr MessageKind ButtonShadeUnwritten{
    "button-shade-unwritten", Severity::Error, "New Button Error",
    "Buttons show by a subtitle, and its bitmap cannot be written beside the project: {}"};
// The text.
inline constexpr MessageKind ColorUnfit{"color-unfit", Severity::Error, "Colour Error",
                                        "\"{}\" is no colour: one is written as #rrggbb"};

// --- the simulation ---

inline constexpr MessageKind NothingToPlay{
    "nothing-to-play", Severity::Warning, "Simulate",
    "No title and no menu holds anything that could be played: put a track onto the disc first"};
inline constexpr MessageKind SimulationEnded{
    "simulation-ended", Severity::Warning, "Simulate",
    "The project was changed, so the disc was taken out: F5 plays the disc as it is now"};

}  // namespace quorvelant::message
