// What the window tells and asks by itself.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind AskLeaveUnsaved{"ask-leave-unsaved", Severity::Information, "Save Project",
                                             "\"{}\" has changes that are not saved. Save them?"};
inline constexpr MessageKind AskReplaceFilmDisc{
    "ask-replace-film-disc", Severity::Information, "Replace Project",
    "'{}' exists already. Replace it, with the pages of its menus?"};
inline constexpr MessageKind AskStopJobs{"ask-stop-jobs", Severity::Information, "Confirm End",
                                         "A job is still running. Stop it and close the window?"};
inline constexpr MessageKind AskReplaceDisc{"ask-replace-disc", Severity::Information, "Output Folder",
                                            "'{}' holds a disc already. Replace it?"};
inline constexpr MessageKind LeftWorkFound{"left-work-found", Severity::Warning, "Recovery",
                                           "The program broke off with unsaved changes to {}, kept at {}"};
inline constexpr MessageKind ProjectChangedOnDisk{"project-changed-on-disk", Severity::Warning, "Project",
                                                  "'{}' was changed by another program"};
inline constexpr MessageKind FilesLocated{"files-located", Severity::Information, "Files",
                                          "Files found: {}; still missing: {}"};

}  // namespace quorvelant::message
