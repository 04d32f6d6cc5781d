// What is told of settings, of fields by their names, and of pictures of films.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind SettingsNotRead{
    "settings-not-read", Severity::Warning, "Settings",
    "The settings cannot be read, and the built-in ones hold: mend the file or its permissions"};
inline constexpr MessageKind SettingsNotWritten{"settings-not-written", Severity::Warning, "Settings",
                                                "The settings could not be written"};
inline constexpr MessageKind PictureNotIntra{"picture-not-intra", Severity::Error, "Picture",
                                             "there is no picture that stands on its own"};
// `edit`: a line of it, its fields, and what a run of lines meets.
inline constexpr MessageKind EditLineNoJson{"edit-line-no-json", Severity::Error, "Edit Error",
                                            "This is no JSON object: {}"};
inline constexpr MessageKind EditLineWithoutWord{
    "edit-line-without-op", Severity::Error, "Edit Error",
    R"(A line is a JSON object with its operation in "op", such as {{"op":"new-title-set"}})"};
inline constexpr MessageKind EditFieldMissing{"edit-field-missing", Severity::Error, "Edit Error",
                                              R"("{}" lacks the field "{}")"};
inline constexpr MessageKind EditFieldUnknown{
    "edit-field-unknown", Severity::Error, "Edit Error",
    R"("{}" has no field "{}"; these it takes ("?" after those that may be missing): {})"};
inline constexpr MessageKind EditTakesNoField{"edit-takes-no-field", Severity::Error, "Edit Error",
                                              R"("{}" has no field "{}": it takes none)"};
inline constexpr MessageKind EditNoFields{
    "edit-no-fields", Severity::Error, "Edit Error",
    "\"{}\" has no fields to set; titles, PGCs, cells, title sets, tracks, plays, streams and scenes have"};
inline constexpr MessageKind EditFieldUnfit{"edit-field-unfit", Severity::Error, "Edit Error",
                                            "\"{}\" is {}; {} is expected"};
// Of lists and objects, whose values a message does not show.
inline constexpr MessageKind EditListUnfit{"edit-list-unfit", Severity::Error, "Edit Error",
                                           "\"{}\" does not fit: {} is expected"};
// What author would ask, and answer by itself.
inline constexpr MessageKind RunAsks{"question", Severity::Warning, "", "{}"};

}  // namespace quorvelant::message
