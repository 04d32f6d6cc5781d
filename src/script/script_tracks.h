// The tracks block of a script.
#pragma once

#include "model/project.h"
#include "script/script_text.h"

namespace quorvelant {

// Every live track that has a first file. Without any track the block is a lone "}".
void WriteTracks(ScriptText& text, const Project& project);

// The prohibited operations, one a line.
void WriteUops(ScriptText& text, const UopMask& uops);

// The frame rate in which a script counts the times of a track: that of its standard, or of the project's
// while the track has none.
int TrackFramesPerSecond(const Project& project, const Track& track);

}  // namespace quorvelant
