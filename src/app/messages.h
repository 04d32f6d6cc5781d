// What the two command lines tell by themselves.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// `command`
inline constexpr MessageKind CommandNameMissing{"command-name-missing", Severity::Error, "Command Error",
                                                R"("{}": nothing in the project is named "{}")"};
inline constexpr MessageKind CommandNameUnnumbered{
    "command-name-unnumbered", Severity::Warning, "Command Warning",
    R"("{}": the number of "{}" is not known without a project (--project); 1 stands for it)"};
inline constexpr MessageKind CommandNotDigits{"command-not-digits", Severity::Error, "Command Error",
                                              "\"{}\" is not 16 hexadecimal digits"};

// `convert`
inline constexpr MessageKind SourcesMoved{
    "sources-moved", Severity::Warning, "Sources Not Found",
    R"(Relative paths count from the script's folder: beginning with "{}", {} of its sources would be looked for in "{}")"};

inline constexpr MessageKind ScriptNotWhole{
    "script-not-whole", Severity::Error, "Script Error",
    "Nothing was written, because the project was not read whole: mend what is told of it first"};
inline constexpr MessageKind ConvertLosesLines{
    "convert-loses-lines", Severity::Error, "Script Error",
    "{} of this script would be lost for good: name another file to write, or say --force"};

// Files that a command writes.
inline constexpr MessageKind OutputNotPlain{"output-not-plain", Severity::Error, "Output",
                                            "No file can be written here: {}"};
inline constexpr MessageKind OutputIsSource{"output-is-source", Severity::Error, "Output",
                                            "This is the file that is read: name another one to write"};
inline constexpr MessageKind OutputFolderMissing{"output-folder-missing", Severity::Error, "Output",
                                                 "There is no folder '{}': make it first"};
inline constexpr MessageKind OutputInDisc{
    "output-in-disc", Severity::Error, "Output",
    "This is the disc's folder, or lies within it: name a file outside of it"};
inline constexpr MessageKind OutputExists{"output-exists", Severity::Error, "Output",
                                          "The file exists already; --force replaces it"};
inline constexpr MessageKind LogInTheWay{
    "log-in-the-way", Severity::Error, "Log",
    "No log can be begun here, in place of the project, of a source or within the disc: name another file"};
inline constexpr MessageKind ResultsNotWritten{"results-not-written", Severity::Error, "Output",
                                               "The results could not be written to standard output"};

// `probe` and `index`; the first two take why a file cannot be read.
inline constexpr MessageKind ProbeRefused{"probe-refused", Severity::Error, "Probe Error", "{}"};
inline constexpr MessageKind IndexRefused{"index-refused", Severity::Error, "Index Error", "{}"};
inline constexpr MessageKind IndexWithoutVideo{"index-without-video", Severity::Error, "Index Error",
                                               "it holds no MPEG video to index; probe tells what it is"};
inline constexpr MessageKind IndexOfBitmap{"index-of-bitmap", Severity::Error, "Index Error",
                                           "a bitmap has no index"};

// `picture` and `still`
inline constexpr MessageKind PictureWithoutVideo{
    "picture-without-video", Severity::Error, "Picture",
    "this is no MPEG video; probe tells what it is, and which line makes video of it"};
// The size, and a line for a shell.
inline constexpr MessageKind StillSizeOther{"still-size-other", Severity::Error, "Still",
                                            "Image sizes must be 720*576 or 360*288 or 720*480 or 360*240; "
                                            "this is {}*{}. This makes one that fits: {}"};
inline constexpr MessageKind StillNotWritten{"still-not-written", Severity::Error, "Still",
                                             "the stream cannot be written: {}"};

// `subtitles`
inline constexpr MessageKind TrackNotFound{"track-not-found", Severity::Error, "Subtitles",
                                           "the project has no track {} (a number from 1, or a name)"};
inline constexpr MessageKind SubtitleStreamNotFound{"subtitle-stream-not-found", Severity::Error, "Subtitles",
                                                    "track {} has no subtitle stream {}"};
inline constexpr MessageKind SubtitleStreamsFull{"subtitle-streams-full", Severity::Error, "Subtitles",
                                                 "track {} has all 32 subtitle streams already"};
inline constexpr MessageKind OtherDialect{"other-dialect", Severity::Error, "Subtitles",
                                          "this script is of the other dialect, which is read and not "
                                          "written: name the project file to write (.qvp) "
                                          "with --output"};
inline constexpr MessageKind LinesWouldBeLost{
    "lines-would-be-lost", Severity::Error, "Subtitles",
    "Lines of this script ({} in all) are not understood and would be lost: name another file to write with "
    "--output"};

inline constexpr MessageKind EditLineTooLong{"edit-line-too-long", Severity::Error, "Edit Error",
                                             "The line is longer than 1 MiB"};
inline constexpr MessageKind EditWordUnknown{"edit-op-unknown", Severity::Error, "Edit Error",
                                             "\"{}\" is no operation; these are: {}"};
inline constexpr MessageKind EditNothingToUndo{"edit-nothing-to-undo", Severity::Error, "Edit Error",
                                               "There is no step to undo"};
inline constexpr MessageKind EditNothingToRedo{"edit-nothing-to-redo", Severity::Error, "Edit Error",
                                               "There is no step to redo"};
inline constexpr MessageKind EditOtherDialect{
    "edit-other-dialect", Severity::Error, "Edit Error",
    "This script is of the other dialect, which is read and not written: name the project to write (.qvp) "
    "with -o"};
inline constexpr MessageKind EditLosesLines{
    "edit-loses-lines", Severity::Error, "Edit Error",
    "Lines of this script ({} in all) are not understood and would be lost: name another file to write with "
    "-o"};
inline constexpr MessageKind EditRunFailed{"edit-not-done", Severity::Error, "Edit Error",
                                           "The operation was stopped or could not be done"};
inline constexpr MessageKind EditDiscThere{"edit-disc-there", Severity::Error, "Edit Error",
                                           R"(The folder holds a disc already: "force":true replaces it)"};
inline constexpr MessageKind EditNotAgreed{
    "edit-not-agreed", Severity::Error, "Edit Error",
    R"(The question was not agreed to: the next line must be the same with "agree":true)"};
inline constexpr MessageKind EditNotSaved{"edit-not-saved", Severity::Information, "Edit",
                                          R"(The changes are not saved: {{"op":"save"}} writes the project)"};

// `wizard`
inline constexpr MessageKind OrderStandsAlone{
    "order-stands-alone", Severity::Error, "Wizard",
    "'{}' describes the whole disc: name no other file with it, and no --auto"};
inline constexpr MessageKind WizardOptionUnfit{"wizard-option-unfit", Severity::Error, "Wizard",
                                               "{} is \"{}\"; {} is expected"};
inline constexpr MessageKind PreviewUnwritten{"preview-unwritten", Severity::Error, "Wizard",
                                              "No previews can be written to '{}': {}"};

// Any command: faults that no room knew.
inline constexpr MessageKind OutOfMemory{"out-of-memory", Severity::Error, "Error",
                                         "There is not enough memory for this"};
inline constexpr MessageKind UnexpectedFault{"unexpected-fault", Severity::Error, "Error", "{}"};

// The switch form.
inline constexpr MessageKind NoScript{"no-script", Severity::Information, "", "No script file specified"};
inline constexpr MessageKind NoDestination{"no-destination", Severity::Information, "",
                                           "No Destination folder specified"};
inline constexpr MessageKind ScriptNotFound{"script-not-found", Severity::Information, "",
                                            "Unable to find script file: {}"};
inline constexpr MessageKind CommandErrorRow{"command-error-row", Severity::Error, "", "{}"};
inline constexpr MessageKind DiscComplete{"disc-complete", Severity::Information, "Author Success",
                                          "DVD Authoring Complete"};

// `check`.
inline constexpr MessageKind CheckStopped{"check-stopped", Severity::Error, "Stopped",
                                          "The check was stopped before it had seen everything"};

// `walk`: the word.
inline constexpr MessageKind KeyUnknown{
    "key-unknown", Severity::Error, "Unknown Key",
    R"("{}" is no key: Up, Down, Left, Right, OK, a number, end, wait, skip, Menu, Title, Return, Resume, Next, )"
    "Previous, Top, title 2, chapter 3, audio 1, subtitle 1, point at 2"};

// `author`.
inline constexpr MessageKind RunStopped{"run-stopped", Severity::Information, "Stopped",
                                        "The run was stopped; the destination is as it was"};

// `iso`.
inline constexpr MessageKind ImageStopped{"image-stopped", Severity::Information, "Stopped",
                                          "The run was stopped; no image was made"};

}  // namespace quorvelant::message
