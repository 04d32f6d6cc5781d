#pragma once

// The source material under work: tracks, plays, streams and scenes come and are changed. No file is opened
// here. Keys are those of model/keys.h; one that names nothing live of the kind an operation takes is
// refused.

#include <functional>
#include <string>
#include <string_view>

#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// A track of a type ("Motion", "Still", "SlideShow"), an empty name taking the proposed one. Slideshows last
// as long as their sound, and their last subtitle as long as they do, where the settings say so.
Outcome NewTrack(EditSession& session, std::string_view type, std::string name);
// Scenes keep their names, by which cells know them.
Outcome RenameTrack(EditSession& session, std::string_view track, std::string name);
// Into a track's video list or an audio stream, each of whose last plays must have a file.
Outcome AddPlay(EditSession& session, std::string_view listOrStream);
Outcome AddAudio(EditSession& session, std::string_view track);
// Without entries, which are added one by one or from a list.
Outcome AddSubtitles(EditSession& session, std::string_view track);

// The fields of a stream: language, extension, number, delay, display mode, marks. `set` writes to a copy and
// may refuse. A number must be free in its track, and stays while a PGC uses the track; a display mode must
// be one that the track admits.
Outcome SetAudio(EditSession& session, std::string_view stream, const std::function<void(AudioStream&)>& set);
Outcome SetSubtitles(EditSession& session, std::string_view stream,
                     const std::function<void(SubtitleStream&)>& set);

// How a 16:9 track, or one made for pan-scan, shows on a 4:3 screen: one of `OfferedDisplayModes`.
Outcome SetDisplayMode(EditSession& session, std::string_view track, std::string_view mode);
// How long a slide shows; empty for the time of the settings.
Outcome SetSlide(EditSession& session, std::string_view play, std::string_view duration);
// Whether a slideshow lasts as long as its sound, and its last subtitle or button set as long as it does.
Outcome SetEnds(EditSession& session, std::string_view track, bool extendSlide, bool extendSubtitle);

// A scene at a timecode, moved onto a picture at which a chapter can start where the files have indexes.
Outcome NewScene(EditSession& session, std::string_view track, std::string_view timecode);
// The scene starts at another time, by the same rules; its cells go with it. The first one stays.
Outcome MoveScene(EditSession& session, std::string_view scene, std::string_view timecode);
// User operations that players refuse while the scene plays.
Outcome SetSceneUops(EditSession& session, std::string_view scene, const UopMask& uops);

}  // namespace quorvelant
