// Every source that a project names.
#pragma once

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "model/project.h"
#include "picture/picture_loader.h"

namespace quorvelant {

// Looks at the head of each video and audio file of the live tracks, whether the files of subtitles are
// there, and at what the project alone says of its sources: the kinds of audio streams, the links between
// buttons. A finding's place is a project key. Ends early when the user asks to stop.
[[nodiscard]] Findings LookForSources(const Project& project, UserInterface& ui,
                                      const Rules& rules = Rules::Players);

// The same, and codes every subtitle and looks at buttons and the ages of indexes. Places name the track too.
[[nodiscard]] Findings OpenSources(const Project& project, const Rules& rules, PictureLoader& pictures,
                                   UserInterface& ui);

}  // namespace quorvelant
