// What is wrong with an order, before anything is made of it.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "menu/disc_order.h"
#include "picture/picture_service.h"

namespace quorvelant {

inline constexpr std::size_t MostWizardTracks = 99;

// What a wizard takes of a film, and what it makes of what is not told.
struct WizardHabits {
  std::size_t MostAudio = 8;
  std::size_t MostSubtitles = 32;
  bool NumbersFilms = false;        // a film without a name is "Track_1" and so on, not its file's stem
  std::string_view SecondLanguage;  // of the second sound
  bool AddsPalettes = false;        // two for each file of subtitles
};
[[nodiscard]] WizardHabits HabitsOf(const Rules& rules);

// All errors that show before the first film is taken: counts, files and their kinds, mixed standards,
// chapters, fonts and backgrounds. Names and chapters that follow from files are filled into the order.
[[nodiscard]] Findings JudgeOrder(DiscOrder& order, const Rules& rules, PictureService& pictures,
                                  UserInterface& ui);

}  // namespace quorvelant
