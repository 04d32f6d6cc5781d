// The run-length code of subpictures (DVD-Video, subpicture pixel data).
#pragma once

#include <array>
#include <cstdint>

#include "base/bytes.h"

namespace quorvelant {

// What a pixel can be.
enum class PixelCode : std::uint8_t { Background = 0, Pattern = 1, Emphasis1 = 2, Emphasis2 = 3 };

// One code: a run's length and its pixel, in whole groups of 4 bits.
struct RunCode {
  std::uint16_t Bits;   // the code, its last bit lowest
  std::uint8_t Groups;  // how many groups of 4 bits it has
};

// A run of 1 to 255 pixels; length 0 is the run to the end of the line, 14 zero bits and the pixel.
constexpr RunCode CodeOfRun(unsigned length, PixelCode pixel) {
  const auto bits = static_cast<std::uint16_t>(length << 2U | static_cast<unsigned>(pixel));
  if (length == 0 || length > 63) {
    return {bits, 4};  // 6 zero bits and 8 of length, or 14 zero bits
  }
  if (length > 15) {
    return {bits, 3};  // 4 zero bits and 6
  }
  return {bits, static_cast<std::uint8_t>(length > 3 ? 2 : 1)};  // 2 zero bits and 4; 2 bits
}

inline constexpr unsigned LongestRun = 255;

// Appends the codes of rows to a field's bytes, row by row.
class RunWriter {
 public:
  explicit RunWriter(Bytes& field) : field_(&field) {}

  // `length` pixels of one kind that do not end the row; longer runs are split at 255.
  void Run(unsigned length, PixelCode pixel);
  // The last run of a row, whatever its length, and the fill up to a whole byte.
  void EndRow(PixelCode pixel);

 private:
  void Append(RunCode code);

  Bytes* field_;
  bool halfByte_ = false;  // the last byte has its low 4 bits free
};

}  // namespace quorvelant
