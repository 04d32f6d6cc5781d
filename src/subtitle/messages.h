// What this room tells and asks.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind SubtitlesNotOpened{
    "subtitles-not-opened", Severity::Error, "Sub Import Error",
    "The subtitle script cannot be opened. Is there a file of that name, and may you "
    "read it?"};
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

// Questions.
inline constexpr MessageKind PaletteImport{
    "palette-import", Severity::Information, "Import Palette",
    "This sst file has a palette included - would you like to import it?"};
inline constexpr MessageKind PaletteNew{"palette-new", Severity::Information, "New Palette",
                                        "What is the name of your new Palette?"};

}  // namespace quorvelant::message
