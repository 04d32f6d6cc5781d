// One track in, sectors and records out.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/log.h"
#include "base/random.h"
#include "base/rules.h"
#include "base/user_interface.h"
#include "disc/clock.h"
#include "disc/vob_records.h"
#include "model/tracks.h"
#include "mux/vob_output.h"
#include "picture/picture_loader.h"

namespace quorvelant {

class CodedBitmaps;

enum class TrackKind { Motion, Still, SlideShow };

// One file of the track's video list. Paths are paths of this system.
struct MuxVideoFile {
  std::string Path;
  bool ImageSource = false;  // a bitmap, encoded when it is due
  bool HoldFlag = false;     // shown for a time: a slide, or a timed still
  std::int64_t HoldFrames = 0;
};

// One audio stream that is to be written (AC3 or PCM, MuxThisStream set).
struct MuxAudioStream {
  int StreamNumber = 0;  // 0 to 7: substream id and sync field
  bool Pcm = false;
  std::vector<std::string> Paths;
  std::vector<std::uint64_t> DataOffsets;  // first byte of sound in each file, by the rules in force
  std::vector<std::uint64_t> DataBytes;    // bytes of sound in each file
  int DelayMs = 0;
  bool Emphasis = false;
  bool Mute = false;
  AudioTraits Traits;
};

// One subpicture stream that is to be written.
struct MuxSubStream {
  int StreamNumber = 0;  // 0 to 31
  const SubtitleStream* Stream = nullptr;
  // Of each play: the cell that shows its scene holds by a still time (no stop sequence then).
  std::vector<bool> CellHolds;
};

// One set of buttons with its commands. Times are 90 kHz ticks on the VOB's clock.
struct MuxHighlight {
  const HighlightPlay* Play = nullptr;
  std::vector<std::string> CommandHex;  // per button, 16 digits; a button without one does nothing
  std::int64_t StartPts = 0;
  std::int64_t EndPts = 0;           // not above StartPts: until the next set begins
  std::int64_t SelectionEndPts = 0;  // 0 for the end of the set
};

// One chapter mark: a scene of the track and what its cell carries into the navigation packs.
struct MuxMark {
  int Scene = 0;           // index in the track's scenes
  std::int64_t Frame = 0;  // from the start of the track
  std::string Name;
  std::uint32_t UopMask = 0;
  bool HoldsByStillTime = false;
  bool Plays = true;  // a cell of the domain plays the scene
};

// A track as the multiplexer sees it. Nothing here is written to.
struct MuxInput {
  int TrackIndex = 0;
  std::string Name;  // for messages
  std::string Aspect;
  TrackKind Kind = TrackKind::Motion;
  bool Ntsc = false;
  bool Mpeg2 = true;
  std::vector<MuxVideoFile> Video;
  std::vector<MuxAudioStream> Audio;
  std::vector<MuxSubStream> Subpictures;
  std::vector<MuxHighlight> Highlights;  // by start
  std::vector<MuxMark> Marks;            // in order; the first is the start of the track
  std::string DisplayMode;
  bool Infinite = false;  // a still that waits for ever
  bool ExtendSlideForAudio = false;
  bool ExtendFinalSubtitle = false;
  std::string SourceFolder;  // relative bitmap paths count from here
};

// What holds for a whole build; the counters go on from track to track.
struct MuxBuild {
  UserInterface& Ui;
  Log& RunLog;
  Random& Files;  // with the slots of `slot`, up to slot::Last
  quorvelant::Rules Rules;
  bool RemoveSeqEnd = true;             // overwrite sequence end codes in the middle of a track
  bool DryRun = false;                  // everything but writing
  PictureLoader* Pictures = nullptr;    // for bitmaps of other formats than ".bmp"
  const CodedBitmaps* Coded = nullptr;  // subtitles' bitmaps that need not be read and coded again

  int UnderflowCount = 0;
  bool UnderflowSeen = false;
  int BufferFaultCount = 0;  // serious faults of the video buffer
  bool StopRequested = false;
  // Of `SourceBytesTotal`, over all tracks: progress. A bitmap counts as the largest still.
  std::uint64_t SourceBytesDone = 0;
  std::uint64_t SourceBytesTotal = 0;
};

enum class MuxOutcome {
  Done,
  Failed,   // told already
  Stopped,  // by the user's request
};

// Appends the track to the VOB set as one VOB and adds its records to `records`.
MuxOutcome MuxTrack(const MuxInput& input, MuxBuild& build, VobOutput& output, VobSetRecords& records);

}  // namespace quorvelant
