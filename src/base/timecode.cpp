#include "base/timecode.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"

namespace quorvelant {

namespace {

constexpr std::int64_t FramesPerMinute = std::int64_t{30} * 60;

std::int64_t DroppedFrames(std::int64_t frames) {
  const std::int64_t minutes = frames / FramesPerMinute;
  return 2 * (minutes - minutes / 10);
}

}  // namespace

int FramesPerSecond(std::string_view standard) {
  return EqualNoCase(standard, "ntsc") ? 30 : 25;
}

std::string FramesToTimecode(std::int64_t frames, int framesPerSecond) {
  frames = std::max<std::int64_t>(frames, 0);
  const std::int64_t seconds = frames / framesPerSecond;
  return fmt::format("{:02}:{:02}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60,
                     frames % framesPerSecond);
}

std::int64_t TimecodeToFrames(std::string_view timecode, int framesPerSecond) {
  const std::string text = Replace(timecode, ";", ":");
  std::array<std::int64_t, 4> fields{};
  std::size_t count = 0;
  for (const std::string_view piece : Split(text, ":")) {
    if (count == fields.size()) {
      break;
    }
    fields[count++] = LeadingNumber(piece);
  }
  return (fields[0] * 3600 + fields[1] * 60 + fields[2]) * framesPerSecond + fields[3];
}

std::int64_t CorrectDropFrame(std::int64_t frames, DropFrame direction) {
  if (direction == DropFrame::Add) {
    return frames + DroppedFrames(frames);
  }
  const std::int64_t corrected = frames - DroppedFrames(frames);
  return frames - DroppedFrames(corrected);
}

}  // namespace quorvelant
