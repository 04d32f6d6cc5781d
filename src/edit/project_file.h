#pragma once

// Projects under work as files. Each that gives a project up asks about unsaved work first (nobody there:
// no); a save that was given up or failed ends it.

#include <functional>
#include <optional>
#include <string>

#include "base/user_interface.h"
#include "edit/session.h"

namespace quorvelant {

// Whether the present work may be given up, by the end of the program too: it is saved, or need not be.
[[nodiscard]] bool MayLeave(EditSession& session, UserInterface& ui);
// Asks, and starts on the default structure.
bool NewProject(EditSession& session, UserInterface& ui);
// Loads a script of either dialect; findings of the load are told. With `analyse` chapters move to pictures
// at which they can start. Where the script cannot be loaded the session stays as it was; where it was not
// read or understood as a whole, the session has no file to save to. Where it names no folder for the disc,
// that of the settings holds.
bool OpenProjectFile(EditSession& session, const std::string& script, bool analyse, UserInterface& ui);
// The same in two halves, the first of which touches no session: it may run beside the window. Nothing where
// the script cannot be loaded.
struct OpenedProject {
  Project Work;
  std::string File;    // that it may be saved to; empty where it was not read or understood as a whole
  std::string Script;  // what stood in that file
};
using TrackAnalysis = std::function<void(Project& project, std::size_t track)>;
[[nodiscard]] std::optional<OpenedProject> ReadProjectFile(const std::string& script, const Rules& rules,
                                                           UserInterface& ui,
                                                           const TrackAnalysis& analyse = {});
void TakeProject(EditSession& session, OpenedProject opened);
// A project that was not saved, from its text as a script at `name` would hold it. No file belongs to it.
[[nodiscard]] std::optional<OpenedProject> ReadProjectText(const std::string& text, const std::string& name,
                                                           const Rules& rules, UserInterface& ui);
// The text of a script, with which a session keeps its comments; empty where it cannot be read.
[[nodiscard]] std::string ScriptTextOf(const std::string& script);
// Into the file the project came from, or one that is asked for; its comments stay. Where somebody else has
// written to that file since, it is asked about (nobody there: no). What a script does not hold is told.
bool SaveProject(EditSession& session, bool otherPath, UserInterface& ui);
bool SaveProjectAs(EditSession& session, const std::string& path, UserInterface& ui);

}  // namespace quorvelant
