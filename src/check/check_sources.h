// Every source that a project names, opened and looked at.
#pragma once

#include <string_view>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"
#include "picture/picture_service.h"

namespace quorvelant {

// Titles of the findings: what the trouble is.
inline constexpr std::string_view SourceMissing = "Missing Source";
inline constexpr std::string_view SourceRefused = "Refused Source";        // no disc can carry it
inline constexpr std::string_view SourceMismatched = "Mismatched Source";  // not like the first, or the track
inline constexpr std::string_view SourceNote = "Source";

// Looks at the head of each video and audio file of the live tracks, in their order, and codes every
// subtitle. A finding's place is the play's key with the track's name, its text names the file. Errors keep
// the disc from being right, warnings do not.
std::vector<Message> CheckSources(const Project& project, const Rules& rules, PictureLoader& pictures,
                                  UserInterface& ui);

}  // namespace quorvelant
