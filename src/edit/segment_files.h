#pragma once

// Files come into a project under work. These read files, so they take the user interface: for progress, the
// wish to stop and warnings. Errors and questions come with the outcome. Files are named as a script would
// hold them: relative paths count from the project's folder.

#include <string>
#include <string_view>

#include "base/user_interface.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// A file onto a video or audio play. All plays of a list must be alike, whichever came first; a track that
// cells show keeps its standard and aspect. A slide makes a chapter where the settings say so. Rates beyond
// the disc's are asked, and so are cells that go because their scenes lie past the end of the new video.
Outcome ImportFile(EditSession& session, std::string_view play, const std::string& file, UserInterface& ui,
                   Consent consent);
// The entries of a subtitle script, after those that the stream has.
Outcome ImportSubtitleList(EditSession& session, std::string_view stream, const std::string& file,
                           UserInterface& ui);
// A scene for each line of a chapter list; lines that make none are told.
Outcome ImportChapters(EditSession& session, std::string_view track, const std::string& list,
                       UserInterface& ui);
// The length of the track, and its chapters onto pictures at which one can start. Scenes past the end go,
// with the cells that show them, which is asked.
Outcome Analyse(EditSession& session, std::string_view track, UserInterface& ui, Consent consent);

}  // namespace quorvelant
