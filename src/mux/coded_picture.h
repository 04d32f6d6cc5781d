// One coded picture as the clocks see it.
#pragma once

#include <cstdint>

namespace quorvelant {

enum class PictureType : std::uint8_t { I = 1, P = 2, B = 3 };  // picture_coding_type

// Times of pictures are counted in half frames: a field picture lasts one, repeat_first_field adds one.
struct CodedPicture {
  PictureType Type = PictureType::I;
  int Temporal = 0;      // temporal_reference
  int LengthHalves = 2;  // 1 for a field picture
  int RepeatHalves = 0;  // 1 with repeat_first_field

  int ShownHalves() const { return LengthHalves + RepeatHalves; }
  bool Field() const { return LengthHalves == 1; }
};

}  // namespace quorvelant
