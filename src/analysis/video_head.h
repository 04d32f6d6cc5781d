// How an MPEG video elementary stream begins, further than its attributes need.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/user_interface.h"

namespace quorvelant {

struct VideoHead {
  bool StartsWithSequence = false;  // no group or picture comes before the first sequence header
  bool HasGroups = false;           // a group header came
  bool SequenceRepeats = false;     // a second sequence header came after a picture
  std::int64_t Fields = 0;          // as coded, up to the second sequence header or the end of what was read

  // A sequence header opens a VOBU, so that a stream without a second one for this long is one VOBU as far as
  // its head tells. Groups of a disc last 36 fields at most.
  static constexpr std::int64_t LongFields = 120;
  bool IsOneSequence() const { return !SequenceRepeats && Fields >= LongFields; }
};

// Reads up to the second sequence header, or `VideoHead::LongFields`. Nothing if the file cannot be
// read, which is told.
std::optional<VideoHead> ScanVideoHead(const std::string& file, UserInterface& ui);

}  // namespace quorvelant
