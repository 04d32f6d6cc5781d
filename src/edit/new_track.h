// How the source material grows: new tracks, plays, streams and scenes, with their limits and names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/user_interface.h"
#include "model/tracks.h"

namespace quorvelant {

// Live tracks that a user can add one by one; tracks that are made with a name are not counted against it.
inline constexpr std::size_t MostTracksByHand = 4;

inline constexpr std::string_view AskImportScript =
    "Would you like to import an sst subtitle file (if NO then a blank stream will be created for individual "
    "sub import in the track Viewer";

// A track's only scene when it is new: "<name>_Scene1" at frame 0.
Scene DefaultScene(std::string_view trackName);

// Adds a track of a type ("Motion", "Still", "SlideShow") with an empty video play and its default scene.
// An empty name becomes "Track_" and the number of tracks there have ever been, plus 1; beyond the limit by
// hand nothing is added then and the answer is nullptr.
Track* NewSegment(Tracks& tracks, std::string_view type, std::string_view name);

// Each list's last live play must have a file before the next play can be added; nullptr otherwise.
VideoPlay* AddVideoPlay(Track& track);
AudioPlay* AddAudioPlay(AudioStream& stream);
// A stream "Audio Stream n" with the lowest free number, the defaults and one empty play; nullptr when all
// eight numbers are in use.
AudioStream* AddAudioStream(Track& track);

// A stream "Subtitle Stream n" with the lowest free number and the first display mode that the track
// admits. nullptr when it was refused: told before the track has a video, silent when all 32 numbers are in
// use.
SubtitleStream* AddEmptySubtitleStream(Track& track, UserInterface& ui);

// A new subtitle stream, and whether the user wants a subtitle script read into it.
struct NewSubtitleStream {
  SubtitleStream* Stream = nullptr;  // nullptr when it was refused
  bool ImportScript = false;
};
// The same, asking whether a script is to be read into it.
NewSubtitleStream AddSubtitleStream(Track& track, UserInterface& ui);

// Moves a frame onto the nearest preceding one at which a chapter can start.
using FrameCorrection = std::function<std::int64_t(std::int64_t frame)>;

// Adds a scene at a timecode of the track, named "<track>_Scene" and the next number; the scenes stay in
// the order of time. A refusal is told and gives false. The length is checked when it is known.
// `framesPerSecond` is that of the track's standard.
bool AddScene(Track& track, std::string_view timecode, int framesPerSecond, UserInterface& ui,
              const FrameCorrection& correct = {});

// The display modes to choose from for a track, by its aspect and the 4:3 displays that it permits.
std::vector<std::string_view> OfferedDisplayModes(const Track& track);
// Sets the track's display mode to the first on offer when the present one is not.
void SetVideoInfo(Track& track);
// The display modes that a subtitle stream of the track may have. A 4:3 picture has one display.
std::vector<std::string_view> AdmittedSubDisplayModes(const Track& track);

}  // namespace quorvelant
