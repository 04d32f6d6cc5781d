// Follows the video of one VOB: its pictures, their times, and the decoder's buffer.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "verify/decoder_buffer.h"
#include "verify/ifo_tables.h"
#include "verify/scanned_packet.h"
#include "verify/video_headers.h"
#include "verify/vob_place.h"

namespace quorvelant {

// What the video of a VOBU came to. Times are half ticks of 90 kHz, in which an NTSC field is whole.
struct VobuVideo {
  int Pictures = 0;
  bool EndsWithCode = false;
  std::vector<std::uint32_t> ReferenceEnds = {};  // last sectors of its first three reference pictures
  std::uint32_t CodeEnd = 0;               // last sector of the sequence end code, where it ends with one
  std::optional<std::int64_t> Start = {};  // of its first picture shown
  std::int64_t Stop = 0;                   // of its last
};

class VideoWalk {
 public:
  VideoWalk(const VobTeller& teller, const IfoVideo& video, bool known);

  void Feed(const ScannedPacket& packet);
  // The VOBU that begins at this sector has no more video.
  void EndVobu(std::uint32_t sector);
  // The VOB has no more.
  void EndVob();

  [[nodiscard]] const std::vector<VobuVideo>& Vobus() const { return vobus_; }
  [[nodiscard]] DecoderBuffer& Buffer() { return buffer_; }

 private:
  // A frame: one picture, or a pair of fields.
  struct Frame {
    char Kind = '?';
    int Reference = 0;
    int Fields = 2;
    std::uint64_t Start = 0;
    std::uint64_t End = 0;
    std::uint64_t DataEnd = 0;
    std::uint64_t Second = 0;
    unsigned Structure = 3;
    std::size_t Vobu = 0;
    std::uint32_t Sector = 0;
    std::optional<std::uint32_t> Pts = {};
    std::optional<std::uint32_t> Dts = {};
    bool AfterEnd = false;
    std::optional<std::int64_t> Shown = {};    // half ticks
    std::optional<std::int64_t> Decoded = {};  // half ticks
  };
  struct Chunk {
    std::uint64_t At;
    std::uint64_t End;
    std::uint32_t Sector;
    std::optional<std::uint32_t> Pts;
    std::optional<std::uint32_t> Dts;
  };
  struct Group {
    std::vector<int> References = {};
    bool Closed = false;
    bool BrokenLink = false;
  };

  [[nodiscard]] std::int64_t FieldTime() const { return video_.IsNtsc() ? 3003 : 3600; }
  [[nodiscard]] std::uint32_t SectorOf(std::uint64_t at) const;

  std::vector<Frame> TakeFrames(VobuVideo& vobu);
  void TakeExtension(const VideoHeader& header, std::vector<Frame>& frames, bool& mpeg2) const;
  void TakePicture(const VideoHeader& header, std::uint64_t start, bool afterEnd, std::vector<Frame>& frames);
  void CheckStart(std::uint32_t sector, const std::vector<Frame>& frames) const;
  void CheckGroups(std::uint32_t sector) const;
  void CheckSequence(std::uint32_t sector, const VideoHeader& header, bool mpeg2) const;
  void Stamp(std::vector<Frame>& frames, std::uint32_t sector) const;
  void Show(std::size_t index);
  void Place(Frame& frame, std::int64_t clock);
  void Decode(Frame& frame, std::optional<std::int64_t> before);
  void Release();

  const VobTeller* teller_;
  IfoVideo video_;
  bool known_;  // whether the IFO says what video it is
  DecoderBuffer buffer_;
  std::vector<VobuVideo> vobus_;

  // Of the VOBU under way.
  VideoHeaders finder_;
  std::vector<Chunk> chunks_;
  std::vector<Group> groups_;

  bool endedBefore_ = false;                // the last VOBU with video ended with a sequence end code
  std::array<std::uint8_t, 8> sequence_{};  // the last sequence header that was looked at

  // Frames in decoding order, until both their times are known.
  std::deque<Frame> frames_;
  std::size_t released_ = 0;           // from the front, whose decoding times the buffer knows
  std::optional<std::size_t> held_;    // the reference frame that waits to be shown
  std::vector<std::size_t> unplaced_;  // shown before any time stamp
  std::optional<std::int64_t> clock_;  // half ticks: when the next frame is shown
  bool still_ = false;                 // a sequence ended: the frame before may stay
};

}  // namespace quorvelant
