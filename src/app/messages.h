// What the two command lines tell by themselves.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// The switch form.
inline constexpr MessageKind NoScript{"no-script", Severity::Information, "", "No script file specified"};
inline constexpr MessageKind NoDestination{"no-destination", Severity::Information, "",
                                           "No Destination folder specified"};
inline constexpr MessageKind ScriptNotFound{"script-not-found", Severity::Information, "",
                                            "Unable to find script file: {}"};
inline constexpr MessageKind CommandErrorRow{"command-error-row", Severity::Error, "", "{}"};
inline constexpr MessageKind SettingsNotWritten{"settings-not-written", Severity::Warning, "Settings",
                                                "The settings could not be written"};
inline constexpr MessageKind DiscComplete{"disc-complete", Severity::Information, "Author Success",
                                          "DVD Authoring Complete"};

// `author`.
inline constexpr MessageKind RunStopped{"run-stopped", Severity::Information, "Stopped",
                                        "The run was stopped; the destination is as it was"};

// Any command: a fault that no room knew.
inline constexpr MessageKind UnexpectedFault{"unexpected-fault", Severity::Error, "Error", "{}"};

}  // namespace quorvelant::message
