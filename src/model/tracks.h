// The source material of a project: tracks with their streams and scenes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/uops.h"

namespace quorvelant {

// A colour as a 32-bit value: red in the low byte, then green, then blue.
using Color = std::uint32_t;

struct VideoPlay {
  std::string File;  // as the script holds it
  bool Removed = false;
  std::string SlideDuration;  // timecode
  bool DurationSet = false;   // this slide has its own duration
  bool operator==(const VideoPlay&) const = default;
};

struct AudioPlay {
  std::string File;
  bool Removed = false;
  bool operator==(const AudioPlay&) const = default;
};

// What a quick scan learnt from a stream's first file. Not saved in scripts; all 0 when unknown.
struct AudioTraits {
  std::int32_t FrameBytes = 0;  // AC3: one frame; PCM: 1/600 second
  std::int32_t BitRate = 0;     // kbit/s; PCM: channels times bits times kHz
  std::int32_t SampleRate = 0;  // kHz
  std::int32_t ChannelCount = 0;
  std::int32_t Quantisation = 0;  // bits, PCM only
  std::int32_t ServiceMode = 0;   // AC3 bit stream mode
  bool operator==(const AudioTraits&) const = default;
};

struct AudioStream {
  std::vector<AudioPlay> AudioPlays;
  std::int32_t Delay = 0;  // milliseconds
  std::string Language = "English";
  std::string Extension = "Normal";
  std::string Format;  // "AC3", "PCM" or "DTS"
  std::string StreamName;
  bool Removed = false;
  std::int32_t StreamNumber = 0;   // audio stream ID, 0 to 7
  bool StreamNumberFixed = false;  // given by the script
  std::int32_t Emphasis = 0;       // PCM only, 1 for on
  std::int32_t Mute = 0;           // PCM only, 1 for on
  bool MuxThisStream = false;      // written by BuildAudioMap alone
  AudioTraits Traits;
  bool operator==(const AudioStream&) const = default;
};

// One subtitle: a bitmap, how its colours become the four pixel codes, where and when it shows.
struct SubPicturePlay {
  Color ConversionE2 = 0;
  Color ConversionE1 = 0;
  Color ConversionP = 0;
  Color ConversionBg = 0;
  std::int32_t ColorE2 = 0;  // palette indexes, 0 to 15
  std::int32_t ColorE1 = 0;
  std::int32_t ColorP = 0;
  std::int32_t ColorBg = 0;
  std::int32_t ContrastE2 = 0;  // 0 to 15
  std::int32_t ContrastE1 = 0;
  std::int32_t ContrastP = 0;
  std::int32_t ContrastBg = 0;
  std::int32_t X1 = 0;  // position on the 720-wide picture; X1 and Y1 may be negative
  std::int32_t X2 = 0;
  std::int32_t Y1 = 0;
  std::int32_t Y2 = 0;
  std::string SPNumber;
  std::string Start;  // timecodes relative to the track
  std::string End;    // may be empty
  std::string File;
  bool Used = true;
  std::string Duration;
  bool Forced = false;
  std::string StopTime;  // overrides End minus Start for the stop sequence
  bool operator==(const SubPicturePlay&) const = default;
};

struct SubtitleStream {
  std::vector<SubPicturePlay> SubPlays;
  std::string DisplayMode;     // "Normal", "Wide", "Pan", "LetterBox", "Wide/Letter", "Pan/Letter"
  std::int32_t DropFrame = 0;  // timecodes of this stream are drop-frame
  std::string StreamName;
  std::string Language = "English";
  std::string Extension = "Normal";
  bool Removed = false;
  std::int32_t StreamNumber = 0;  // subpicture stream ID, 0 to 31
  bool StreamNumberFixed = false;
  bool MuxThisStream = false;  // written by BuildSubMap alone
  bool operator==(const SubtitleStream&) const = default;
};

// Four values in the order E2, E1, P, Bg.
using ColorQuad = std::array<std::int32_t, 4>;

struct ColorScheme {
  ColorQuad SelectionColor{};
  ColorQuad SelectionContrast{};
  ColorQuad ActionColor{};
  ColorQuad ActionContrast{};
  bool operator==(const ColorScheme&) const = default;
};

struct HighlightArea {
  std::int32_t X1 = 0;
  std::int32_t X2 = 0;
  std::int32_t Y1 = 0;
  std::int32_t Y2 = 0;
  bool operator==(const HighlightArea&) const = default;
};

struct HighlightButton {
  std::string Name;
  std::int32_t Number = 0;       // from 1
  std::int32_t ColorScheme = 1;  // 1 to 3
  bool AutoAction = false;
  std::array<HighlightArea, 3> Areas;  // in the order of ButtonMode1 to ButtonMode3
  std::string Up;                      // names of the neighbours
  std::string Down;
  std::string Right;
  std::string Left;
  bool operator==(const HighlightButton&) const = default;
};

struct HighlightPlay {
  std::array<std::string, 3> ButtonModes;  // "wide", "letter", "pan" or empty
  std::array<ColorScheme, 3> Schemes;
  std::vector<HighlightButton> Buttons;
  std::string StartTimeToVideo;  // timecodes on the track
  std::string Duration;
  std::string SelectionEndTime;  // "00:00:00:00" for none
  std::int32_t Offset = 0;       // number of the first button
  std::int32_t NumericalButtons = 0;
  std::int32_t ForcedSelect = 0;  // button number, 0 for none
  std::int32_t ForcedAction = 0;
  bool operator==(const HighlightPlay&) const = default;
};

struct Scene {
  std::string Name;
  std::int32_t Frame = 0;  // first frame, from the start of the track
  UopMask Uops;
  bool operator==(const Scene&) const = default;
};

struct Track {
  std::vector<VideoPlay> VideoPlays;
  std::vector<AudioStream> AudioStreams;
  std::vector<Scene> Scenes;
  std::vector<SubtitleStream> SubStreams;
  std::vector<HighlightPlay> HighlightPlays;
  bool IDsLocked = false;  // fixed by a PGC that uses the track
  bool ExtendSlideForAudio = false;
  bool ExtendFinalSubtitle = false;
  std::int32_t VideoFrames = 0;      // 0 when unknown
  std::int32_t FrameCount = 0;       // as saved in the script
  std::string TrackType = "Motion";  // "Motion", "Still", "SlideShow"
  bool Filled = false;
  bool Removed = false;
  bool HasAudio = false;
  std::string TrackName;
  std::string Standard;    // "PAL" or "NTSC"; empty until a video is set
  std::string Aspect;      // "4:3" or "16:9"; this and the next four are learnt from the first file
  bool Pan = false;        // 4:3 output by pan-scan is possible
  bool Letter = false;     // 4:3 output by letterbox is possible
  std::string Resolution;  // picture size text, e.g. "720x576"
  std::string Coding;      // "MPEG1" or "MPEG2"
  bool HasSubs = false;
  bool HasHighlights = false;
  bool UsedInStructure = false;
  std::string DisplayMode = "Not Specified";
  bool operator==(const Track&) const = default;
};

inline constexpr std::size_t MostScenes = 99;

// The array of tracks. An index never changes: removal sets the track's flag.
class Tracks {
 public:
  Track& Add(Track track) { return tracks_.emplace_back(std::move(track)); }
  std::size_t Count() const { return tracks_.size(); }  // live and removed
  Track& operator[](std::size_t index) { return tracks_[index]; }
  const Track& operator[](std::size_t index) const { return tracks_[index]; }
  // Takes the last track away as if it had never been added. There must be one.
  void DropLast() { tracks_.pop_back(); }
  void Clear() { tracks_.clear(); }
  auto begin() { return tracks_.begin(); }
  auto end() { return tracks_.end(); }
  auto begin() const { return tracks_.begin(); }
  auto end() const { return tracks_.end(); }
  bool operator==(const Tracks&) const = default;

 private:
  std::vector<Track> tracks_;
};

}  // namespace quorvelant
