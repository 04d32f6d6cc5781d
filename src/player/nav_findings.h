// What is wrong with the ways through a disc.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "player/nav_walk.h"

namespace quorvelant {

struct NavFinding {
  enum class Kind : std::uint8_t {
    TargetMissing,
    TargetForbidden,
    CommandLoop,
    ButtonIdle,
    PageTrap,
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
  int Number = 0;   // of the title, part, stream or set
  std::string Way;  // in words; empty for what has none
};

// A chain and whether a way leads into it.
struct NavMapChain {
  std::string Name;
  NavPoint At;
  std::string Words;
  std::uint16_t Language = 0;  // of menus
  bool IsReached = false;
  bool HasPages = false;
};
struct NavMapArrow {
  std::size_t From = 0;
  std::size_t To = 0;
  auto operator<=>(const NavMapArrow&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};
struct NavMap {
  std::vector<NavMapChain> Chains;
  std::vector<NavMapArrow> Arrows;  // what some command leads to
};

struct NavSurvey {
  std::vector<NavFinding> Findings;
  NavMap Map;
  std::size_t States = 0;
  bool IsWhole = true;
};

// Walks the disc in each language of its menus.
[[nodiscard]] NavSurvey SurveyOf(const NavDisc& disc, const NavBounds& bounds = {});

}  // namespace quorvelant
