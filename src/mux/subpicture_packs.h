// The packs that carry a subpicture unit: packets of private stream 1 behind the pack header.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/bytes.h"

namespace quorvelant {

// What a pack opens: it decides the fields of the packet's header.
enum class SubpicturePackForm : std::uint8_t {
  FirstOfVob,   // the stream's first unit in the VOB: PTS and decoder buffer size
  FirstOfUnit,  // a later unit: PTS
  Following,    // neither
};

// Bytes of a unit that a full pack of this form takes.
constexpr std::size_t SubpictureCapacity(SubpicturePackForm form) {
  switch (form) {
    case SubpicturePackForm::FirstOfVob:
      return 2016;
    case SubpicturePackForm::FirstOfUnit:
      return 2019;
    case SubpicturePackForm::Following:
      break;
  }
  return 2024;
}

// Fills a zeroed sector from byte 14 on, behind its pack header, with the next bytes of the unit and
// whatever fills it up. `rest` is what is left of the unit, `stream` 0 to 31, `pts` in 90 kHz ticks (used
// by the forms that carry one). Returns how many bytes of `rest` went in.
std::size_t PutSubpicturePacket(ByteSpan sector, ByteView rest, SubpicturePackForm form, int stream,
                                std::int64_t pts);

}  // namespace quorvelant
