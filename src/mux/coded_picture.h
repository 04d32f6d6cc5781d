// One coded picture as the clocks see it.
#pragma once

#include <cstdint>

namespace quorvelant {

enum class PictureType : std::uint8_t { I = 1, P = 2, B = 3 };  // picture_coding_type

// Times of pictures are counted in fields of half a frame: a field picture lasts one, repeat_first_field adds
// one.
struct CodedPicture {
  PictureType Type = PictureType::I;
  int TemporalReference = 0;
  int LengthFields = 2;  // 1 for a field picture
  int RepeatFields = 0;  // 1 with repeat_first_field

  int ShownFields() const { return LengthFields + RepeatFields; }
  bool IsField() const { return LengthFields == 1; }
};

}  // namespace quorvelant
