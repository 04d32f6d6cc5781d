#include "verify/video_walk.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "disc/start_codes.h"

namespace quorvelant {
namespace {

constexpr std::int64_t VideoBufferBytes = 232LL * 1024;
constexpr std::int64_t ClockTicksPerHalf = 150;  // 27 MHz
constexpr std::int64_t Rounding = 2;             // half ticks that a time stamp may be off

std::string Halves(std::int64_t half) {
  return fmt::format("{:g}", static_cast<double>(half) / 2);
}

}  // namespace

VideoWalk::VideoWalk(const VobTeller& teller, const IfoVideo& video, bool known)
    : teller_(&teller), video_(video), known_(known), buffer_(teller, "video buffer") {
  buffer_.SetSize(VideoBufferBytes);
}

void VideoWalk::Feed(const ScannedPacket& packet) {
  const std::uint64_t at = buffer_.Total();
  const ByteView data = packet.Payload;
  buffer_.Arrive(packet.Sector, packet.Begin, packet.End, data.size());
  chunks_.push_back({at, at + data.size(), packet.Sector, packet.Pts, packet.Dts});
  finder_.Feed(data, at, packet.Headers, packet.CarriesOn);
}

std::uint32_t VideoWalk::SectorOf(std::uint64_t at) const {
  const auto after = std::ranges::upper_bound(chunks_, at, {}, &Chunk::At);
  return after == chunks_.begin() ? chunks_.front().Sector : std::prev(after)->Sector;
}

void VideoWalk::EndVobu(std::uint32_t sector) {
  vobus_.emplace_back();
  if (chunks_.empty()) {
    return;
  }
  finder_.Finish(buffer_.Total());
  VobuVideo& vobu = vobus_.back();
  std::vector<Frame> frames = TakeFrames(vobu);
  CheckStart(sector, frames);
  CheckGroups(sector);
  Stamp(frames, sector);
  for (const Frame& frame : frames) {
    if (frame.Kind != 'B' && vobu.ReferenceEnds.size() < 3) {
      vobu.ReferenceEnds.push_back(SectorOf(frame.DataEnd - 1));
    }
  }
  vobu.Pictures = static_cast<int>(frames.size());
  if (!frames.empty()) {
    vobu.CodeEnd = vobu.EndsWithCode ? SectorOf(frames.back().End - 1) : 0;
    frames.front().AfterEnd = frames.front().AfterEnd || endedBefore_;
    endedBefore_ = vobu.EndsWithCode;
  }
  for (Frame& frame : frames) {
    frames_.push_back(frame);
    const std::size_t index = frames_.size() - 1;
    if (frame.Kind == 'B') {
      Show(index);
      continue;
    }
    std::optional<std::int64_t> before;
    if (held_) {
      Show(*held_);
      before = frames_[*held_].Shown;
    }
    Decode(frames_[index], before);
    held_ = index;
  }
  Release();
  buffer_.Settle();
  finder_.Clear();
  chunks_.clear();
  groups_.clear();
}

std::vector<VideoWalk::Frame> VideoWalk::TakeFrames(VobuVideo& vobu) {
  std::vector<Frame> frames;
  std::optional<std::uint64_t> unit;  // the first header of the coming picture
  bool afterEnd = false;
  bool mpeg2 = false;
  const VideoHeader* sequence = nullptr;
  for (const VideoHeader& header : finder_.Headers()) {
    if (header.Code == start_code::Extension) {
      TakeExtension(header, frames, mpeg2);
      continue;
    }
    if (!frames.empty() && frames.back().End == 0) {
      frames.back().End = header.At;
      frames.back().DataEnd = header.DataEnd;
    }
    unit = unit.value_or(header.At);
    if (header.Code == start_code::Sequence) {
      sequence = &header;
    } else if (header.Code == start_code::Group) {
      groups_.push_back(
          {.Closed = (header.Rest[3] & 0x40U) != 0, .BrokenLink = (header.Rest[3] & 0x20U) != 0});
    } else if (header.Code == start_code::SequenceEnd) {
      if (!frames.empty()) {
        frames.back().End = header.At + StartCodeBytes;
      }
      unit.reset();
      afterEnd = true;
    } else {
      TakePicture(header, *unit, afterEnd, frames);
      unit.reset();
      afterEnd = false;
    }
  }
  if (!frames.empty() && frames.back().End == 0) {
    frames.back().End = buffer_.Total();
    frames.back().DataEnd = finder_.DataEnd();
  }
  vobu.EndsWithCode = afterEnd;
  if (sequence != nullptr && sequence->Rest != sequence_) {
    sequence_ = sequence->Rest;
    CheckSequence(chunks_.front().Sector, *sequence, mpeg2);
  }
  return frames;
}

void VideoWalk::TakeExtension(const VideoHeader& header, std::vector<Frame>& frames, bool& mpeg2) const {
  const unsigned id = header.Rest[0] >> 4U;
  if (id == extension_id::Sequence) {
    mpeg2 = true;
  } else if (id == extension_id::PictureCoding && !frames.empty() && frames.back().Second == 0) {
    Frame& frame = frames.back();
    frame.Structure = header.Rest[2] & 3U;
    const bool repeats = (header.Rest[3] & 2U) != 0 && (header.Rest[4] & 0x80U) != 0;
    frame.Fields = repeats && frame.Structure == 3 ? 3 : 2;
  }
}

void VideoWalk::TakePicture(const VideoHeader& header, std::uint64_t start, bool afterEnd,
                            std::vector<Frame>& frames) {
  constexpr std::string_view Kinds = "?IPBD???";
  const int reference = header.Rest[0] << 2U | header.Rest[1] >> 6U;
  if (!frames.empty() && frames.back().Structure != 3 && frames.back().Second == 0 &&
      frames.back().Reference == reference) {
    frames.back().Second = start;  // a pair of fields makes one frame
    frames.back().End = 0;
    return;
  }
  frames.push_back({.Kind = Kinds[header.Rest[1] >> 3U & 7U],
                    .Reference = reference,
                    .Start = start,
                    .Vobu = vobus_.size() - 1,
                    .Sector = SectorOf(start),
                    .AfterEnd = afterEnd});
  if (groups_.empty()) {
    groups_.emplace_back();
  }
  groups_.back().References.push_back(reference);
}

// A VOBU's video begins with a sequence header, a GOP header and an I picture.
void VideoWalk::CheckStart(std::uint32_t sector, const std::vector<Frame>& frames) const {
  std::string order;
  for (const VideoHeader& header : finder_.Headers()) {
    if (header.Code != start_code::Extension && order.size() < 3) {
      order += header.Code == start_code::Sequence  ? 'S'
               : header.Code == start_code::Group   ? 'G'
               : header.Code == start_code::Picture ? 'P'
                                                    : 'E';
    }
  }
  if (order != "SGP" || finder_.Headers().front().At != chunks_.front().At || frames.front().Kind != 'I') {
    teller_->Tell(message::VideoBroken, sector, 0, "VOBU", "video",
                  "sequence header, GOP header and I picture at its start", "other headers");
  }
  const auto odd =
      std::ranges::find_if(frames, [](const Frame& each) { return each.Kind == '?' || each.Kind == 'D'; });
  if (odd != frames.end()) {
    teller_->Tell(message::VideoBroken, odd->Sector, 0, "picture header", "picture_coding_type", "I, P or B",
                  "another");
  }
}

void VideoWalk::CheckGroups(std::uint32_t sector) const {
  for (const Group& group : groups_) {
    std::vector<int> references = group.References;
    std::ranges::sort(references);
    // An editor that cuts before a GOP takes its first B pictures away, and may leave the numbers as they
    // were.
    const int first = group.BrokenLink && !references.empty() ? references.front() : 0;
    for (std::size_t i = 0; i < references.size(); ++i) {
      if (const int wanted = first + static_cast<int>(i); references[i] != wanted) {
        teller_->Tell(message::VideoBroken, sector, 0, "GOP", "temporal_reference", wanted, references[i]);
        break;
      }
    }
    if (first != 0) {
      teller_->Tell(message::VideoLoose, sector, 0, "GOP", "temporal_reference", 0, first);
    }
  }
}

void VideoWalk::CheckSequence(std::uint32_t sector, const VideoHeader& header, bool mpeg2) const {
  const auto word = static_cast<std::uint32_t>(GetBytes(header.Rest, 0, 4));
  const int width = static_cast<int>(word >> 20U);
  const int height = static_cast<int>(word >> 8U & 0xFFFU);
  const bool wide = (word >> 4U & 15U) == 3;
  const auto bad = [&](const char* field, const auto& expected, const auto& seen) {
    teller_->Tell(message::AttributeWrong, sector, 0, "sequence header", field, expected, seen);
  };
  const std::int64_t bitRate = static_cast<std::int64_t>(GetBytes(header.Rest, 4, 4) >> 14U) * 400;
  constexpr std::int64_t MostBits = 9'800'000;
  constexpr std::int64_t MostMpeg1Bits = 1'856'000;
  if (bitRate > (mpeg2 ? MostBits : MostMpeg1Bits)) {
    teller_->Tell(message::VideoLoose, sector, 0, "sequence header", "bit_rate",
                  fmt::format("at most {}", mpeg2 ? MostBits : MostMpeg1Bits), bitRate);
  }
  if (!known_) {
    return;
  }
  if (mpeg2 != video_.IsMpeg2()) {
    bad("coding", video_.IsMpeg2() ? "MPEG-2 as V_ATR" : "MPEG-1 as V_ATR", mpeg2 ? "MPEG-2" : "MPEG-1");
  }
  if (width != video_.Width() || height != video_.Height()) {
    bad("size", fmt::format("{}x{} as V_ATR", video_.Width(), video_.Height()),
        fmt::format("{}x{}", width, height));
  }
  if ((word & 15U) != (video_.IsNtsc() ? 4 : 3)) {
    bad("frame_rate_code", video_.IsNtsc() ? 4 : 3, word & 15U);
  }
  if (mpeg2 && wide != video_.IsWide()) {
    bad("aspect_ratio_information", video_.IsWide() ? "16:9 as V_ATR" : "4:3 as V_ATR",
        wide ? "16:9" : "4:3");
  }
}

// Gives the frames the time stamps of the packets in which they begin.
void VideoWalk::Stamp(std::vector<Frame>& frames, std::uint32_t sector) const {
  for (const Chunk& chunk : chunks_) {
    if (!chunk.Pts) {
      continue;
    }
    const auto begins = [&](std::uint64_t at) { return chunk.At <= at && at < chunk.End; };
    const auto frame = std::ranges::lower_bound(frames, chunk.At, {}, &Frame::Start);
    if (frame != frames.end() && begins(frame->Start)) {
      frame->Pts = chunk.Pts;
      frame->Dts = chunk.Dts;
    } else if (std::ranges::none_of(
                   frames, [&](const Frame& each) { return each.Second != 0 && begins(each.Second); })) {
      teller_->Tell(message::StampWrong, chunk.Sector, 0, "PES header", "PTS", "none where no picture begins",
                    *chunk.Pts);
    }
  }
  if (!frames.empty() && !frames.front().Pts) {
    teller_->Tell(message::StampWrong, sector, 0, "PES header", "PTS", "one for the first picture of a VOBU",
                  "none");
  }
}

// Frames are shown one after the other; time stamps say the same.
void VideoWalk::Show(std::size_t index) {
  Frame& frame = frames_[index];
  still_ = still_ || frame.AfterEnd;
  if (!clock_) {
    if (!frame.Pts) {
      unplaced_.push_back(index);
      return;
    }
    clock_ = 2 * std::int64_t{*frame.Pts};
    for (const std::size_t each : unplaced_) {
      *clock_ -= FieldTime() * frames_[each].Fields;
    }
    for (const std::size_t each : unplaced_) {
      Place(frames_[each], *clock_);
    }
    unplaced_.clear();
  }
  if (frame.Pts) {
    const std::int64_t gap = 2 * std::int64_t{*frame.Pts} - *clock_;
    if (std::abs(gap) > Rounding) {
      if (!still_ || gap < 0) {
        teller_->Tell(message::StampWrong, frame.Sector, 0, "PES header", "PTS",
                      Halves(*clock_) + " by the order of pictures", *frame.Pts);
      }
      clock_ = 2 * std::int64_t{*frame.Pts};
    }
    still_ = false;
  }
  Place(frame, *clock_);
}

void VideoWalk::Place(Frame& frame, std::int64_t clock) {
  frame.Shown = clock;
  clock_ = clock + FieldTime() * frame.Fields;
  VobuVideo& vobu = vobus_[frame.Vobu];
  vobu.Start = std::min(vobu.Start.value_or(clock), clock);
  vobu.Stop = std::max(vobu.Stop, *clock_);
  if (frame.Kind == 'B') {
    Decode(frame, clock);
  }
}

// `before`: when the frame is decoded by the order of pictures, if that is known.
void VideoWalk::Decode(Frame& frame, std::optional<std::int64_t> before) {
  const auto stamp = frame.Dts ? frame.Dts : frame.Pts;
  std::optional<std::int64_t> time = before;
  if ((!time || frame.AfterEnd) && stamp) {
    time = 2 * std::int64_t{*stamp};
  }
  if (frame.Dts && frame.Pts && *frame.Dts > *frame.Pts) {
    teller_->Tell(message::StampWrong, frame.Sector, 0, "PES header", "DTS",
                  fmt::format("at most the PTS {}", *frame.Pts), *frame.Dts);
  }
  if (time && stamp && std::abs(2 * std::int64_t{*stamp} - *time) > Rounding) {
    teller_->Tell(message::StampWrong, frame.Sector, 0, "PES header", frame.Dts ? "DTS" : "PTS",
                  Halves(*time) + " by the order of pictures", *stamp);
    time = frame.Dts ? 2 * std::int64_t{*frame.Dts} : time;
  }
  frame.Decoded = time;
}

// Hands the pictures whose decoding times are known to the buffer, and lets go of those that were shown.
void VideoWalk::Release() {
  for (; released_ < frames_.size() && frames_[released_].Decoded; ++released_) {
    const Frame& frame = frames_[released_];
    const std::int64_t time = *frame.Decoded * ClockTicksPerHalf;
    if (frame.Second != 0) {
      buffer_.AddUnit(frame.Second, time);
      buffer_.AddUnit(frame.End, time + FieldTime() * ClockTicksPerHalf);
    } else {
      buffer_.AddUnit(frame.End, time);
    }
  }
  std::size_t done = 0;
  while (done < released_ && frames_[done].Shown) {
    ++done;
  }
  frames_.erase(frames_.begin(), frames_.begin() + static_cast<std::ptrdiff_t>(done));
  released_ -= done;
  if (held_) {
    held_ = *held_ - done;
  }
  for (std::size_t& each : unplaced_) {
    each -= done;
  }
}

void VideoWalk::EndVob() {
  if (held_) {
    Show(*held_);
    held_.reset();
  }
  if (!unplaced_.empty()) {
    teller_->Tell(message::StampWrong, frames_[unplaced_.front()].Sector, 0, "PES header", "PTS",
                  "one on a picture of the VOB", "none");
  }
  frames_.clear();
  released_ = 0;
  unplaced_.clear();
}

}  // namespace quorvelant
