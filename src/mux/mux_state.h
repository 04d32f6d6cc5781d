// Everything that changes while a track is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/bytes.h"
#include "disc/clock.h"
#include "disc/video_standard.h"
#include "disc/vob_records.h"
#include "mux/audio_stream.h"
#include "mux/decode_schedule.h"
#include "mux/mux_track.h"
#include "mux/picture_source.h"
#include "mux/slides.h"
#include "mux/subpicture_stream.h"
#include "mux/video_buffer.h"
#include "mux/vob_output.h"

namespace quorvelant {

struct MuxState {
  // What it works on and with.
  const MuxInput& Input;
  MuxBuild& Build;
  VobOutput& Output;
  const FrameTiming& Timing;
  std::uint16_t VobId;
  PictureSource Pictures;
  std::vector<AudioState> Audio;             // in the order of the stream map
  std::vector<SubpictureState> Subpictures;  // by stream number

  // Clocks of the VOB, which begins at 0.
  Clock LastScr = {};                           // of the sector written last
  Clock NavScr = {};                            // of the latest navigation pack
  std::optional<std::int64_t> AudioLimit = {};  // ticks: sound from here on waits; nothing: none does

  // Time shown, in fields, the current picture included.
  std::int64_t ElapsedFields = 0;    // in the VOB
  std::int64_t CellStartFields = 0;  // ElapsedFields when the cell began
  std::int64_t VobuStartFields = 0;  // ElapsedFields when the VOBU began
  int PreviousLengthFields = 2;      // length of the picture before the current one

  // Decoding.
  DecodeSchedule Schedule;
  VideoBuffer Buffer = {};

  // The picture being written.
  PictureUnit Picture = {};
  DecodeTimes Times = {};
  std::size_t Written = 0;          // bytes of it
  std::size_t DataBytes = 0;        // of it, without the zero bytes that fill it up
  std::uint32_t DataEndSector = 0;  // where the latest of those bytes went
  bool FirstPack = true;            // the first video pack of the VOB is still to come
  ByteSpan OpenPack = {};           // what is left of a pack whose rest the next pictures fill
  std::int64_t LatestPts = 0;       // ticks: units of subpictures that start by then are due

  SlideState Slides = {};  // of a still or slideshow track

  // Records.
  std::vector<VobuRecord> Vobus = {};
  std::vector<CellRecord> Cells = {};
  std::size_t CellMark = 0;                     // index in Input.Marks of the mark that opened the cell
  std::size_t NextMark = 1;                     // index in Input.Marks of the mark that opens the next cell
  std::size_t ReferencesInVobu = 0;             // reference frames ended in the VOBU
  bool ReferencePairOpen = false;               // the last of them is a first field
  std::vector<std::size_t> FirstUnsynced = {};  // per stream of Audio: first VOBU without an audio pack

  int LongVobusTold = 0;  // 1: that a VOBU is long; 2: that it is too long to be searched
  std::uint64_t BytesSinceProgress = 0;

  std::int64_t FieldsBeforePicture() const {
    return ElapsedFields - Picture.ShownFields();
  }  // of the picture
  Clock TimeOfFields(std::int64_t fields) const {
    return {fields * Timing.FramePeriod * Clock::UnitsPerTick / 2};
  }
  // Presentation time, in whole ticks, of what is shown after so many fields.
  std::int64_t PtsOfFields(std::int64_t fields) const {
    return VideoStartPts + TimeOfFields(fields).WholeTicks();
  }
};

}  // namespace quorvelant
