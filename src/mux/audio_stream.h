// One audio stream of a track while it is written: its clock, its frames, its packs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/bytes.h"
#include "base/rules.h"
#include "disc/clock.h"
#include "mux/arrivals.h"
#include "mux/audio_source.h"
#include "mux/mux_track.h"
#include "mux/next_sector.h"
#include "mux/packet.h"
#include "mux/pcm_format.h"

namespace quorvelant {

// Of the player, as the packs are timed for: 4096 where that is enough, which it is for all but AC3 above
// 512 kbit/s and PCM above about 2 Mbit/s. Those take as much as keeps their frames in time beside
// `streams` streams; the packs declare 58 KiB.
std::int64_t AudioBufferBytes(std::int64_t frameBytes, std::int64_t frameTicks, std::size_t streams);

struct AudioState {
  const MuxAudioStream* Input = nullptr;
  AudioSource Source;
  PcmFormat Pcm;                        // of a PCM stream
  Ac3Frame Kind = {};                   // of an AC3 stream: that of its first frame
  std::size_t Breaks = 0;               // of the chain of frames, where they are not mended
  std::string FirstBreak = {};          // "file@byte"
  std::optional<Message> Changed = {};  // where sound of another kind went on
  std::int64_t FrameBytes = 0;          // on the disc
  std::int64_t FrameTicks = 0;
  std::int64_t BufferBytes = 0;  // of the player

  // When the next pack goes.
  int PacksSent = 0;    // 0, 1, then 2 for all that follow
  Clock FirstScr = {};  // of the first two packs
  Clock SecondScr = {};
  Clock Due = {};         // the player's buffer has room for the next pack from here on
  Clock NextScr = {};     // the same on the grid of sectors; 0 when the stream has ended
  std::int64_t Fill = 0;  // bytes in the player's buffer, the next pack's included
  Clock DecodeTime = {};  // when the frame leaves that buffer that left it last

  // What the next pack begins with.
  std::int64_t NextPts = 0;        // ticks: of the next frame to start
  std::size_t OpenFrameBytes = 0;  // AC3: of the frame begun in the previous pack, still to come
  int OpenFrameSamples = 0;        // PCM: samples of it already written
  int FrameNumber = 0;             // PCM: of the next frame, 0 to 19

  LateArrivals Late = {};

  // What it asks of NextSectorKind.
  AudioClaim Claim() const;
  // Sound of the sources that was not sent.
  double SecondsLeft() const;
};

// Opens the sources (file slots 2 to 9) and sets the first clocks. Raises MuxFault where a source cannot
// be carried.
std::vector<AudioState> OpenAudioStreams(Random& files, const MuxInput& input, const Rules& rules);

// What one pack carries.
struct AudioPack {
  std::size_t PayloadBytes = 0;
  int Frames = 0;              // that start in it
  std::size_t FirstFrame = 0;  // offset of the first of them in the payload
};

// Where the sound of a stream just opened ends, in ticks on the VOB's clock, by the length of its files.
std::int64_t AudioEndPts(const AudioState& stream);

// Fills `sector` with the stream's next pack. No frame that sounds at or after `limit` (ticks) is begun.
// There must be something to send: the claim lies below the limit and the source is not exhausted.
AudioPack WriteAudioPack(AudioState& stream, ByteSpan sector, SystemClockReference scr,
                         std::optional<std::int64_t> limit);

// The clocks after a pack of `payloadBytes` sent at `scr`.
void AdvanceAudioClock(AudioState& stream, Clock scr, std::size_t payloadBytes);

// Moves the next pack onto the grid of sectors that starts at `scr`, not before it is due.
void AlignAudioClock(AudioState& stream, Clock scr);

// The two kinds of payload. Each consumes the source and moves the frame state on.
AudioPack WriteAc3Pack(AudioState& stream, ByteSpan sector, SystemClockReference scr,
                       std::optional<std::int64_t> limit);
AudioPack WritePcmPack(AudioState& stream, ByteSpan sector, SystemClockReference scr,
                       std::optional<std::int64_t> limit);
// Passes what stands before the first AC3 frame and takes the frame size from it.
// `rules` tell whether later frames are mended.
void FindFirstAc3Frame(AudioState& stream, const Rules& rules);

}  // namespace quorvelant
