// What is wrong with an order, before anything is made of it.
#pragma once

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "menu/disc_order.h"
#include "picture/picture_service.h"

namespace quorvelant {

inline constexpr std::size_t MostWizardTracks = 99;

// How many streams a film can bring.
struct StreamLimits {
  std::size_t Audio = 0;
  std::size_t Subtitles = 0;
};
[[nodiscard]] StreamLimits WizardStreams(const Rules& rules);

// All errors that show before the first film is taken: counts, files and their kinds, mixed standards,
// chapters, fonts and backgrounds. Names and chapters that follow from files are filled into the order.
[[nodiscard]] Findings JudgeOrder(DiscOrder& order, const Rules& rules, PictureService& pictures,
                                  UserInterface& ui);

}  // namespace quorvelant
