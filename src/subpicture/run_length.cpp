#include "subpicture/run_length.h"

#include <algorithm>

namespace quorvelant {

void RunWriter::Run(unsigned length, PixelCode pixel) {
  for (; length > 0; length -= std::min(length, LongestRun)) {
    Append(CodeOfRun(std::min(length, LongestRun), pixel));
  }
}

void RunWriter::EndRow(PixelCode pixel) {
  Append(CodeOfRun(0, pixel));
  halfByte_ = false;  // the low half of the last byte stays 0
}

void RunWriter::Append(RunCode code) {
  for (unsigned group = code.Groups; group-- > 0;) {
    const auto bits = static_cast<std::uint8_t>((unsigned{code.Bits} >> (4 * group)) & 15U);
    if (halfByte_) {
      field_->back() |= bits;
    } else {
      field_->push_back(static_cast<std::uint8_t>(bits << 4U));
    }
    halfByte_ = !halfByte_;
  }
}

}  // namespace quorvelant
