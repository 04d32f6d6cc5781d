// What a load and a save of a script tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// --- the load ends, or says why it will not be authored ---

inline constexpr MessageKind ScriptUnreadable{
    "script-unreadable", Severity::Error, "Script Error",
    "Unable to read script file: {}. Is there a file of that name, and may you read it?"};
inline constexpr MessageKind ScriptReadFailed{
    "script-read-failed", Severity::Error, "Script Error",
    "The script cannot be read to its end, because the system refuses to read on: {}"};
inline constexpr MessageKind ScriptIsWide{
    "script-utf16", Severity::Error, "Script Error",
    "The script is UTF-16 text; please save it as plain (ANSI or UTF-8) text: {}"};
inline constexpr MessageKind ScriptStopped{"script-stopped", Severity::Error, "Script Error",
                                           "The load of the script was stopped: {}"};
inline constexpr MessageKind ScriptTooLarge{"script-too-large", Severity::Error, "Script Error",
                                            "The script holds more than a disc can: {}"};
// A second scene of one name; the value is its line.
inline constexpr MessageKind SceneRepeated{
    "scene-repeated", Severity::Error, "",
    "Errors in script; unrecognised command in current segment :- {} (Repeated)"};
inline constexpr MessageKind StandardsMixed{
    "standards-mixed", Severity::Error, "DataLayout Error",
    "Different video standards (PAL / NTSC) are being attempted to be included in the structure"};
inline constexpr MessageKind CommandErrorsNoted{
    "command-errors", Severity::Error, "Command Error",
    "There were some errors noted in the script file - An error list will now be shown"};

// --- findings on lines, names and commands ---

inline constexpr MessageKind NoProject{
    "no-project", Severity::Error, "No Project",
    "No line of the file is one of a project script: is this the right file?"};
inline constexpr MessageKind LineSkipped{"skipped-line", Severity::Warning, "Skipped Line", "{}: \"{}\""};
inline constexpr MessageKind MoreLinesSkipped{"more-skipped-lines", Severity::Warning, "Skipped Line",
                                              "Lines passed over besides: {}"};
inline constexpr MessageKind ValueDoubtful{"doubtful-value", Severity::Warning, "Doubtful Value",
                                           "{}: \"{}\""};
inline constexpr MessageKind MoreValuesDoubtful{"more-doubtful-values", Severity::Warning, "Doubtful Value",
                                                "Doubtful values besides: {}"};
inline constexpr MessageKind BraceUnclosed{
    "unclosed-brace", Severity::Error, "Unclosed Brace",
    "The script ends within {}; is its end missing? The outermost opens in line {}"};
inline constexpr MessageKind CommandTargetMissing{"command-target-missing", Severity::Error, "Command Error",
                                                  "{} names a target that does not exist: \"{}\""};
inline constexpr MessageKind SceneUnknown{"scene-unknown", Severity::Error, "Unknown Scene",
                                          "The cell uses a scene that no track has: \"{}\""};
inline constexpr MessageKind PaletteUnknown{
    "palette-unknown", Severity::Warning, "Unknown Palette",
    R"(The PGC names a palette that the project does not have, so {}: "{}")"};

// --- the save ---

inline constexpr MessageKind ScriptSaved{"script-saved", Severity::Information, "Script Success",
                                         "Script file has been saved to: {}"};
inline constexpr MessageKind ScriptSaveFailed{"script-save-failed", Severity::Error, "Script Error",
                                              "Unable to write script file: {} ({})"};

}  // namespace quorvelant::message
