// The colours of a sublayer picture, and what a subpicture makes of them: a mark's inside is background, a
// page's rest is pattern, and soft edges stand between in two steps.
#pragma once

#include "base/rules.h"
#include "model/tracks.h"

namespace quorvelant {

// Colours that stand for the four pixel kinds of a subpicture.
struct MarkColors {
  Color Pattern = 0xFFFFFF;     // outside of marks
  Color Emphasis1 = 0xFFFFFF;   // a third covered
  Color Emphasis2 = 0xFFFFFF;   // two thirds
  Color Background = 0x000000;  // the mark
};

inline constexpr MarkColors HardMarks{};
inline constexpr MarkColors SoftMarks{.Emphasis1 = 0xAAAAAA, .Emphasis2 = 0x555555};

[[nodiscard]] inline const MarkColors& MarksOf(const Rules& rules) {
  return rules.SmoothMarks ? SoftMarks : HardMarks;
}

// The same in contrasts of a button that shows: background, emphasis 2, emphasis 1; the pattern never shows.
inline constexpr int FullMarkContrast = 15;
inline constexpr int TwoThirdsMarkContrast = 10;
inline constexpr int ThirdMarkContrast = 5;

}  // namespace quorvelant
