// What the wizard and its menus tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// --- the description of a disc as a file ---

inline constexpr MessageKind OrderUnreadable{"order-unreadable", Severity::Error, "Order Error",
                                             "'{}' cannot be read or is larger than 1 MiB"};
inline constexpr MessageKind OrderNoToml{"order-no-toml", Severity::Error, "Order Error",
                                         "This is no TOML: {}"};
inline constexpr MessageKind OrderKeyUnknown{"order-key-unknown", Severity::Error, "Order Error",
                                             "There is no key \"{}\" in {}; these are: {}"};
inline constexpr MessageKind OrderKeyMissing{"order-key-missing", Severity::Error, "Order Error",
                                             "{} needs the key \"{}\""};
inline constexpr MessageKind OrderValueUnfit{"order-value-unfit", Severity::Error, "Order Error",
                                             "\"{}\" must be {}"};

// --- an order, before anything is made of it ---

inline constexpr MessageKind OrderWithoutFilms{"order-without-films", Severity::Error, "Order Error",
                                               "There is no video: a disc needs one at least"};
inline constexpr MessageKind WizardTracksExceeded{"wizard-tracks-exceeded", Severity::Error,
                                                  "New Track error", "A maximum of 99 tracks can be created"};
inline constexpr MessageKind WizardStreamsExceeded{"wizard-streams-exceeded", Severity::Error,
                                                   "New Track error",
                                                   "'{}' has {} streams of {}, and takes {}: leave out {}"};
inline constexpr MessageKind StartSubtitlesMissing{"start-subtitles-missing", Severity::Error, "Order Error",
                                                   "No film has subtitles in {}, to show at the start"};
inline constexpr MessageKind FontMissing{
    "font-missing", Severity::Error, "Font Error",
    R"(There is no font "{}" here ("{}" would be taken): install it, or name one that `fc-list` lists)"};
inline constexpr MessageKind BackgroundUnfit{"background-unfit", Severity::Error, "Background Error",
                                             "'{}': {}"};
inline constexpr MessageKind LettersMissing{
    "letters-missing", Severity::Error, "Font Error",
    "\"{}\" has letters that no installed font has ({}): install one that has them"};

// --- chapters ---

inline constexpr MessageKind ChapterNoTime{"chapter-no-time", Severity::Error, "Chapter List Error",
                                           "\"{}\" is no time: HH:MM:SS or HH:MM:SS:FF is expected"};
inline constexpr MessageKind ChaptersExceed{"chapters-exceed", Severity::Error, "Chapter List Error",
                                            "'{}' would have {} chapters, and a film has {} at most"};
inline constexpr MessageKind ChapterNamesExceed{"chapter-names-exceed", Severity::Error, "Chapter List Error",
                                                "{} names are told for '{}', which has {} chapters"};
inline constexpr MessageKind ChapterFallsOnOther{
    "chapter-falls-on-other", Severity::Warning, "Chapter List",
    "{} is left out: in '{}' it falls on the picture where the chapter before starts"};
inline constexpr MessageKind ChaptersEndEarly{"chapters-end-early", Severity::Warning, "Chapter List",
                                              "'{}' has its 99 chapters before {}: the last one is long"};

// --- the wizard; the question is of severity Information ---

inline constexpr MessageKind AskIndexing{
    "ask-indexing", Severity::Information, "Chapter Menus",
    "File indexing may be required to create Chapter Menus - this can take a few mins. Proceed with "
    "indexing?"};
inline constexpr MessageKind StartSubtitlesDiffer{
    "start-subtitles-differ", Severity::Warning, "Order",
    "'{}' has its subtitles in {} as another stream than the film before: others show at its start"};
inline constexpr MessageKind PagesShareFiles{"pages-share-files", Severity::Error, "Menu Error",
                                             "Pages of '{}' and '{}' would be painted over each other, for "
                                             "they are named alike: rename one of the films"};
inline constexpr MessageKind MenusNotMade{"menus-not-made", Severity::Error, "Menu Error", "{}"};
inline constexpr MessageKind LabelsMissing{
    "labels-missing", Severity::Error, "Label Error",
    "There are no labels in {}: choose one of {}, or give your own under [labels]"};
inline constexpr MessageKind LabelUnknown{"label-unknown", Severity::Error, "Label Error",
                                          "No page says \"{}\"; own labels stand for these: {}"};
inline constexpr MessageKind LabelWithoutNumber{
    "label-without-number", Severity::Error, "Label Error",
    R"("{}" stands for "{}" on several buttons, which would all read alike: it needs "{{}}" for the number)"};
inline constexpr MessageKind MenusProduced{"menus-produced", Severity::Information, "", "Menus Produced"};

// --- the folder of pages ---

inline constexpr MessageKind PagesThere{"pages-there", Severity::Error, "Menu Pages",
                                        "The folder '{}' exists already; --force replaces it"};
inline constexpr MessageKind PagesInTheWay{"pages-in-the-way", Severity::Error, "Menu Pages",
                                           "'{}' is to be a folder of pages, and is none"};
inline constexpr MessageKind PagesAmongOthers{
    "pages-among-others", Severity::Error, "Menu Pages",
    "The folder '{}' holds more than pages and is not replaced: move it away"};
inline constexpr MessageKind PagesWithoutFolder{"pages-without-folder", Severity::Error, "Menu Pages",
                                                "There is no folder '{}': make it first"};
inline constexpr MessageKind PagesUnwritten{"pages-unwritten", Severity::Error, "Menu Pages",
                                            "The pages cannot be written to '{}': {}"};

// --- themes ---

inline constexpr MessageKind ThemeMissing{
    "theme-missing", Severity::Error, "Theme Error",
    "There is no theme '{}': these are built in: {}; a theme of your own is a folder with a theme.toml"};

}  // namespace quorvelant::message
