#pragma once

// The files of a film become a track.

#include <cstddef>
#include <string>

#include "base/user_interface.h"
#include "edit/film_files.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// Adds a track of the film's video, sound, subtitles and chapter list, under the film's name or, where a
// track has it, that with the next free number. Nobody is asked: sound beyond the disc's rates is refused. A
// refusal names the file in its place. Gives the track's key.
Outcome AddFilmTrack(EditSession& session, const FilmFiles& film, UserInterface& ui);
// The same where questions are asked, in one step of the history.
Outcome AddFilmTrack(EditSession& session, const FilmFiles& film, UserInterface& ui, Consent consent);

// A file onto the last play of a track where that is empty, otherwise onto a new one; in one step. The length
// of several videos is that of all.
Outcome AddFilmPlay(EditSession& session, std::size_t track, const std::string& file, UserInterface& ui,
                    Consent consent);
// One more stream of a track from a file, with the language that is told; in one step. Gives the stream's
// key.
Outcome AddFilmAudio(EditSession& session, const std::string& track, const FilmFiles::Stream& audio,
                     UserInterface& ui, Consent consent);
Outcome AddFilmSubtitles(EditSession& session, const std::string& track, const FilmFiles::Stream& subtitles,
                         UserInterface& ui);
// The scenes of a chapter list, after those that the track has were moved onto pictures; in one step.
Outcome AddFilmChapters(EditSession& session, const std::string& track, const std::string& list,
                        UserInterface& ui, Consent consent);

}  // namespace quorvelant
