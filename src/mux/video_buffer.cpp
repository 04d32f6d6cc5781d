#include "mux/video_buffer.h"

#include <algorithm>

namespace quorvelant {
namespace {

constexpr std::int64_t TicksPerTime = 9;
constexpr std::int64_t BytesPerTime = 1008 / 8;
constexpr std::int64_t UnitsPerTime = TicksPerTime * Clock::UnitsPerTick;
constexpr std::int64_t QuarterPayload = 506;  // bytes of video that a quarter of a sector's time stands for

std::int64_t WholeTime(Clock clock) {
  return clock.Units / UnitsPerTime;
}

// The end of a pack that starts at a whole unit.
std::int64_t EndOf(Clock scr, std::int64_t bytes) {
  return WholeTime(scr) + bytes / BytesPerTime;
}

}  // namespace

void QueuePicture(VideoBuffer& buffer, QueuedPicture picture) {
  const auto earlier = [](std::int64_t dts, const QueuedPicture& other) { return dts < other.Dts; };
  buffer.Queue.insert(std::upper_bound(buffer.Queue.begin(), buffer.Queue.end(), picture.Dts, earlier),
                      picture);
}

bool ReleasePictures(VideoBuffer& buffer, std::int64_t time) {
  while (!buffer.Queue.empty() && buffer.Queue.front().Dts < time * TicksPerTime) {
    buffer.Fill -= buffer.Queue.front().Size;
    buffer.Queue.pop_front();
  }
  return buffer.Queue.size() > 1;
}

VideoBufferWait WaitForVideoBuffer(VideoBuffer& buffer, Clock scr, std::size_t payloadBytes) {
  const auto bytes = static_cast<std::int64_t>(payloadBytes);
  ReleasePictures(buffer, WholeTime(scr));
  if (buffer.Fill + bytes <= VideoBufferBytes) {
    return {scr};
  }
  static_assert(UnitsPerTime == BytesPerTime, "a byte takes one unit of the clock");
  VideoBufferWait wait{scr};
  while (!wait.Stuck && buffer.Fill > VideoBufferBytes - bytes) {
    wait.Scr += QuarterSectorTicks;
    wait.Stuck = !ReleasePictures(buffer, WholeTime(wait.Scr + Clock{bytes}));
  }
  wait.Stuck = wait.Stuck && buffer.Fill > VideoBufferBytes - bytes;
  const std::int64_t quarters =
      std::clamp((bytes + QuarterPayload - 1) / QuarterPayload, std::int64_t{1}, std::int64_t{4});
  wait.Scr += Clock{QuarterSectorTicks.Units * quarters};
  return wait;
}

std::int64_t ChargeVideoBuffer(VideoBuffer& buffer, Clock scr, std::size_t payloadBytes) {
  const auto bytes = static_cast<std::int64_t>(payloadBytes);
  ReleasePictures(buffer, EndOf(scr, bytes));
  const std::int64_t missing = std::max(-buffer.Fill, std::int64_t{0});
  if (missing > 0) {
    buffer.Fill = 0;
    buffer.Deficit += missing;
  }
  const std::int64_t late = std::min(buffer.Deficit, bytes);
  buffer.Deficit -= late;
  buffer.Fill += bytes - late;
  return missing;
}

}  // namespace quorvelant
