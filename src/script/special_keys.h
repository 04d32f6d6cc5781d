// What the rows of keys cannot say: code for single keys.
#pragma once

#include <span>

#include "script/key.h"

namespace quorvelant {

// A key that fills no field of its own, or one that only code can find.
struct SpecialKey {
  std::string_view Words;  // as those of a `Key`
  KeyReader Reader;
  std::size_t Number = 0;  // handed on
  Takes Value = Takes::Anything;
};
std::span<const SpecialKey> SpecialKeys();

// --- for rows of keys ---

bool ReadFile(ReaderState& state, std::string_view value, std::size_t number);
bool ReadSceneTime(ReaderState& state, std::string_view value, std::size_t number);
bool ReadFolder(ReaderState& state, std::string_view value, std::size_t number);

// A second scene of one name ends the load: cells find their scene by it.
void EnterScene(ReaderState& state, Scene& scene);
// A slide has a duration of its own when the script gives one.
void FixDuration(ReaderState& state, VideoPlay& play);
// A data file may give its picture size in place of the standard.
void StandardOfSize(ReaderState& state, DataFile_P& data);
template <class Stream>
void FixNumber(ReaderState& state, Stream& stream) {
  stream.StreamNumberFixed = true;
  state.Traits.StreamNumbersGiven = true;
}
// A bitmap shows at the corner that its origin or its area gives: where they differ, by the rules.
void TakeOrigin(ReaderState& state, SubPicturePlay& play);
void TakeArea(ReaderState& state, SubPicturePlay& play);
// One subpicture stream of the open PGC's maps, for every display.
bool ReadSubDecodes(ReaderState& state, std::string_view value, std::size_t number);
// A script of the other dialect may count a drop-frame stream's times as a clock shows them.
void CountDropFrames(ReaderState& state, std::string& timecode);
std::string WithoutDropFrames(std::string_view timecode);
template <std::string SubPicturePlay::*Time>
void CountFrames(ReaderState& state, SubPicturePlay& play) {
  CountDropFrames(state, play.*Time);
}

std::string ShowSceneTime(const Scene& scene, int framesPerSecond);
// From its end where it has one.
std::string ShowDuration(const SubPicturePlay& play, int framesPerSecond);

// The open file of the data folder is called `name`; or the open play takes the data file of that name.
bool NameDataFile(ReaderState& state, std::string_view name);

}  // namespace quorvelant
