#pragma once

// The files of a film become a track.

#include "base/user_interface.h"
#include "edit/film_files.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// Adds a track of the film's video, sound, subtitles and chapter list, under the film's name or, where a
// track has it, that with the next free number. Nobody is asked: sound beyond the disc's rates is refused. A
// refusal names the file in its place. Gives the track's key.
Outcome AddFilmTrack(EditSession& session, const FilmFiles& film, UserInterface& ui);

}  // namespace quorvelant
