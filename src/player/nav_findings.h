// What is wrong with the ways through a disc.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "player/nav_map.h"
#include "player/nav_walk.h"

namespace quorvelant {

struct NavFinding {
  enum class Kind : std::uint8_t {
    TargetMissing,
    TargetForbidden,
    CommandLoop,
    ButtonIdle,
    PageTrap,
    ButtonsEnd,  // on a page that stands for ever
    ButtonsHidden,
    DiscStops,
    TitleUnreachable,
    PartUnreachable,
    PageUnreachable,
    AudioUnreachable,
    SubpictureUnreachable,
    AudioMissing,
    SubpictureMissing,
    RootKeyDead,
    TitleKeyDead,
  };
  Kind What = Kind::DiscStops;
  std::string Name;  // of the chain, cell, button or title
  std::uint16_t Language = 0;
  NavPoint At;
  std::optional<NavCommandAt> Command;
  NavCommand Bytes{};  // of the command
  NavLead::Kind Lead = NavLead::Kind::None;
  int Number = 0;   // of the title, part, stream (from 0) or set
  int Title = 0;    // that lacks the stream
  std::string Way;  // in words; empty for what has none
};

struct NavSurvey {
  std::vector<NavFinding> Findings;
  NavMap Map;
  std::size_t States = 0;
  bool IsWhole = true;
};

// Walks the disc in each language of its menus; the bounds are those of all together.
[[nodiscard]] NavSurvey SurveyOf(const NavDisc& disc, const NavBounds& bounds = {});

}  // namespace quorvelant
