// Every source that a project names.
#pragma once

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "model/project.h"
#include "picture/picture_loader.h"

namespace quorvelant {

// Looks whether the files of the live tracks are there, and at what the project alone says of its sources:
// the kinds of audio streams, the links between buttons. A finding's place is a project key. Ends early when
// the user asks to stop.
[[nodiscard]] Findings LookForSources(const Project& project, UserInterface& ui);

// The same, and opens them: looks at the head of each video and audio file, and codes every subtitle. The
// places of what the files show name the track too.
[[nodiscard]] Findings OpenSources(const Project& project, const Rules& rules, PictureLoader& pictures,
                                   UserInterface& ui);

}  // namespace quorvelant
