// The clock of the multiplexer, in exact integers.
#pragma once

#include <compare>
#include <cstdint>

namespace quorvelant {

// A time in fourteenths of a 90 kHz tick. One sector at 10.08 Mbit/s takes 2048/14 ticks, so every clock
// of the multiplexer is a multiple, and equal clocks are equal to the last bit.
struct Clock {
  std::int64_t Units = 0;

  static constexpr std::int64_t UnitsPerTick = 14;
  static constexpr Clock FromTicks(std::int64_t ticks) { return {ticks * UnitsPerTick}; }
  // Whole ticks, cut (towards minus infinity).
  constexpr std::int64_t WholeTicks() const {
    const std::int64_t ticks = Units / UnitsPerTick;
    return Units % UnitsPerTick < 0 ? ticks - 1 : ticks;
  }
  constexpr std::int64_t Fraction() const { return Units - WholeTicks() * UnitsPerTick; }

  constexpr auto operator<=>(const Clock&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
  constexpr Clock operator+(Clock other) const { return {Units + other.Units}; }
  constexpr Clock operator-(Clock other) const { return {Units - other.Units}; }
  constexpr Clock& operator+=(Clock other) {
    Units += other.Units;
    return *this;
  }
  constexpr Clock& operator-=(Clock other) {
    Units -= other.Units;
    return *this;
  }
};

inline constexpr Clock SectorTicks{2048};             // one sector at the mux rate
inline constexpr Clock QuarterSectorTicks{512};       // 2048/56 ticks, the step of a wait for the buffer
inline constexpr std::int64_t VideoStartPts = 25257;  // ticks: the first picture of a VOB

}  // namespace quorvelant
