#include "mux/arrivals.h"

#include <algorithm>

#include "base/counted.h"
#include "mux/messages.h"
#include "mux/mux_state.h"

namespace quorvelant {
namespace {

void Warn(const MuxState& state, const MessageKind& kind, int number, const LateArrivals& late,
          std::string_view sent) {
  if (late.Count > 0) {
    const auto seconds = static_cast<double>(late.FirstPts - VideoStartPts) / 90000;
    const auto milliseconds = static_cast<double>(late.WorstTicks) / 90;
    state.Build.Ui.Tell(
        MessageOf(kind, {}, number, state.Input.Name, Counted(late.Count, sent), seconds, milliseconds));
  }
}

}  // namespace

void LateArrivals::Note(Clock scr, std::int64_t pts) {
  const std::int64_t behind = (scr + SectorTicks).WholeTicks() - pts;
  if (behind > 0) {
    FirstPts = Count == 0 ? pts : FirstPts;
    ++Count;
    WorstTicks = std::max(WorstTicks, behind);
  }
}

std::int64_t SubpictureBuffer::Enter(Clock scr, std::int64_t pts, std::size_t bytes) {
  while (!units_.empty() && units_.front().Pts <= scr.WholeTicks()) {
    fill_ -= units_.front().Bytes;
    units_.pop_front();
  }
  units_.push_back({pts, static_cast<std::int64_t>(bytes)});
  fill_ += units_.back().Bytes;
  return fill_;
}

void WarnOfLateArrivals(const MuxState& state) {
  for (const AudioState& stream : state.Audio) {
    Warn(state, message::AudioLate, stream.Input->StreamNumber, stream.Late, "pack");
  }
  for (const SubpictureState& stream : state.Subpictures) {
    Warn(state, message::SubtitlesLate, stream.Input->StreamNumber, stream.Late, "subtitle");
  }
}

void WarnOfUnsentUnits(const MuxState& state) {
  for (const SubpictureState& stream : state.Subpictures) {
    if (stream.Next < stream.Units.size()) {
      state.Build.Ui.Tell(MessageOf(message::SubtitlesPastEnd, {}, stream.Input->StreamNumber,
                                    state.Input.Name, Counted(stream.Units.size() - stream.Next, "subtitle"),
                                    stream.Units[stream.Next].Entry + 1));
    }
  }
}

}  // namespace quorvelant
