// States and ways through a disc, in words.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "player/nav_machine.h"

namespace quorvelant {

// "title 2, chapter 3", "title menu, button 1", "root menu of set 1", "stopped (Exit)".
[[nodiscard]] std::string PlaceWords(const NavDisc& disc, const NavState& state);

// A key as `PressesOf` reads it: "OK", "3", "audio 2".
[[nodiscard]] std::string PressWords(const NavEvent& event);

// One key, with where it was pressed and where it led.
struct NavStride {
  NavState From;
  NavEvent Event;
  NavState To;
};
// "insert, Down, OK, end of title 2": strides that only wait on are joined. With the menu language of the
// player, where one is given: "insert (de), OK".
[[nodiscard]] std::string WayWords(std::span<const NavStride> way, std::uint16_t language = 0);
// "de", of its two letters; in hexadecimal where they are none.
[[nodiscard]] std::string LanguageLetters(std::uint16_t language);

// What is pressed, in the words of `WayWords`; `Until` says how long to wait.
struct NavPress {
  enum class Span : std::uint8_t { Once, Chapter, Title };
  NavEvent Event;
  Span Until = Span::Once;
  std::string Word;
};
// Keys with commas between: "OK, Down, 3, end, Menu, Title, Return, Resume, Next, Previous, Top, wait, skip,
// audio 2". Letters of any case. `wrong` is set to the first word that is no key, and nothing is returned
// then.
[[nodiscard]] std::optional<std::vector<NavPress>> PressesOf(std::string_view words, std::string& wrong);
// Presses a key as often as it says, at most a thousand times.
[[nodiscard]] NavOutcome CarryOut(const NavDisc& disc, const NavState& state, const NavPress& press,
                                  const NavRandom& random);

}  // namespace quorvelant
