// The registers of a player.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quorvelant {

// System registers that navigation reads or writes, by number.
enum class Sprm : std::uint8_t {
  MenuLanguage = 0,
  Audio = 1,       // 0 to 7, 15 none
  Subpicture = 2,  // 0 to 31, 62 none; bit 6 shows it
  Angle = 3,
  Title = 4,  // on the disc
  TitleOfSet = 5,
  TitleChain = 6,
  Part = 7,
  Button = 8,  // number times 1024
  Timer = 9,   // seconds
  TimerChain = 10,
  AudioMix = 11,
  Country = 12,
  ParentalLevel = 13,
  VideoPreference = 14,
  AudioCapability = 15,
  AudioLanguage = 16,
  AudioExtension = 17,
  SubpictureLanguage = 18,
  SubpictureExtension = 19,
  Region = 20,
};

inline constexpr std::uint16_t ButtonStep = 1024;

struct NavRegisters {
  std::array<std::uint16_t, 16> General{};
  std::array<bool, 16> Counts{};  // general registers in counter mode: one up each second
  std::array<std::uint16_t, 24> System{};

  [[nodiscard]] std::uint16_t Of(Sprm number) const { return System.at(static_cast<std::size_t>(number)); }
  void Put(Sprm number, std::uint16_t value) { System.at(static_cast<std::size_t>(number)) = value; }
  [[nodiscard]] int Button() const { return Of(Sprm::Button) / ButtonStep; }
  void PutButton(int number) { Put(Sprm::Button, static_cast<std::uint16_t>(number * ButtonStep)); }
  // A register as a command's byte names it: system registers from 128 on; numbers that no player has are 0.
  [[nodiscard]] std::uint16_t ByCode(std::uint8_t code) const;
  bool operator==(const NavRegisters&) const = default;
};

}  // namespace quorvelant
