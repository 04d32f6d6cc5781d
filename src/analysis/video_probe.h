// Everything that one walk over a whole video file tells about it.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>

#include "analysis/video_info.h"

namespace quorvelant {

inline constexpr std::int64_t MostVideoBitRate = 9'800'000;   // bit/s, DVD-Video
inline constexpr std::int64_t DecoderBufferBits = 1'835'008;  // ISO/IEC 13818-2 table 8-13, main level

struct VideoProbe {
  VideoInfo Info;
  std::uint64_t FileBytes = 0;
  bool StartsWithSequence = false;  // the first header is a sequence header

  std::int64_t PictureHeaders = 0;
  std::int64_t FieldPictures = 0;  // of them: pictures that are one field
  std::int64_t IPictures = 0;
  std::int64_t PPictures = 0;
  std::int64_t BPictures = 0;
  std::int64_t RepeatFlags = 0;      // pictures with repeat_first_field
  std::int64_t DisplayedFields = 0;  // a repeated field included
  std::int64_t ProgressiveFrames = 0;

  std::int64_t Sequences = 0;
  std::int64_t Groups = 0;
  std::int64_t ClosedGroups = 0;  // by their flag
  // Groups in which B pictures are shown before the I picture: closed ones among them predict those
  // backwards alone, or lie.
  std::int64_t GroupsLedByB = 0;
  std::map<std::int64_t, std::int64_t> GroupLengths;  // frames of a group -> groups of that length
  std::int64_t LongestGroupFields = 0;                // as displayed

  std::int64_t DeclaredBitRate = 0;  // bit/s, of the first sequence header; 0 when open
  double MeanBitRate = 0;            // bit/s over the display time
  double PeakBitRate = 0;            // highest over one second of pictures in coded order
  // The most bits by which pictures run ahead of `MostVideoBitRate`: what a decoder must have taken in
  // before.
  double PeakBacklogBits = 0;
  bool ProgressiveSequence = false;
  int Profile = 0;  // profile_and_level_indication; 0x48 is main profile at main level

  // Coded frames: a pair of field pictures is one.
  std::int64_t Frames() const { return PictureHeaders - FieldPictures + FieldPictures / 2; }
  double ExactFrameRate() const;  // 30 stands for 30000/1001, 23.976 for 24000/1001
  double Seconds() const;         // of display; 0 when the rate is unknown
};

// Walks the whole file. Nothing if it cannot be opened or read, which was told, or when the user stopped it.
std::optional<VideoProbe> ProbeVideo(const std::string& file, UserInterface& ui);

}  // namespace quorvelant
