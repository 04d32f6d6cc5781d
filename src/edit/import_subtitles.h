// Subtitle scripts as entries of a track.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

// Adds the entries of a script file to the list of a track's stream, and offers its palette to the
// project (unattended: taken, under the proposed name). The PGCs that show the track take the palette where
// they have none; both is told. A relative bitmap folder counts from the script's.
// What is wrong with the file is told; whether entries were added.
bool ImportSubtitleScript(Project& project, std::size_t trackIndex, std::size_t streamIndex,
                          const std::string& file, bool subRipMode, const Rules& rules, UserInterface& ui);

// Tells how many of the entries have no file: a script made elsewhere often names a folder of another
// machine.
void WarnOfMissingBitmaps(const Project& project, std::span<const SubPicturePlay> added, UserInterface& ui);

}  // namespace quorvelant
