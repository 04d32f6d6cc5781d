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
// Why, and the folder.
inline constexpr MessageKind DiscFolderRefused{"disc-folder-refused", Severity::Error, "Output Folder",
                                               "{} ('{}'): choose another folder, or an empty one"};
inline constexpr MessageKind DiscKept{"disc-kept", Severity::Information, "Output Folder",
                                      "The disc in '{}' stays: choose another folder, or an empty one"};
// The job's title, and why.
inline constexpr MessageKind JobFailed{"job-failed", Severity::Error, "Not Done", "{}: {}"};
inline constexpr MessageKind LeftWorkFound{"left-work-found", Severity::Warning, "Recovery",
                                           "The program broke off with unsaved changes to {}, kept at {}"};
inline constexpr MessageKind ProjectChangedOnDisk{"project-changed-on-disk", Severity::Warning, "Project",
                                                  "'{}' was changed by another program"};
inline constexpr MessageKind AskOverwriteProject{
    "ask-overwrite-project", Severity::Information, "Save Project",
    "'{}' was changed since it was read here. Overwrite what it holds now?"};
inline constexpr MessageKind FilesLocated{"files-located", Severity::Information, "Files",
                                          "Files found: {}; still missing: {}"};

}  // namespace quorvelant::message
