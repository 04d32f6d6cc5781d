#include "support/nav_figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <set>

namespace quorvelant {
namespace {

// The VOBUs of one cell, found by the ids in their packs, and one of them.
struct InCell {
  std::vector<const WalkedVobu*> Cell;
  std::size_t Own = 0;

  const WalkedVobu& Vobu() const { return *Cell[Own]; }
  const WalkedVobu* At(std::ptrdiff_t step) const {
    const auto index = static_cast<std::ptrdiff_t>(Own) + step;
    return index >= 0 && index < static_cast<std::ptrdiff_t>(Cell.size())
               ? Cell[static_cast<std::size_t>(index)]
               : nullptr;
  }
};

std::uint64_t CellKey(const WalkedVobu& vobu) {
  return vobu.Field(1055, 2) << 8 | vobu.Field(1058, 1);
}

std::uint32_t Distance(const WalkedVobu& a, const WalkedVobu& b) {
  return a.Sector < b.Sector ? b.Sector - a.Sector : a.Sector - b.Sector;
}

// A field of whole ticks against a time in half ticks; the half is cut or rounded.
void ExpectTime(std::uint64_t field, std::int64_t halfTicks, const char* name) {
  EXPECT_LE(std::abs(2 * static_cast<std::int64_t>(field) - halfTicks), 1)
      << name << " " << field << ", the pictures say " << static_cast<double>(halfTicks) / 2;
}

std::int64_t StartPtm(const WalkedVobu& vobu) {
  return static_cast<std::int64_t>(vobu.Field(57, 4));
}
std::int64_t EndPtm(const WalkedVobu& vobu) {
  return static_cast<std::int64_t>(vobu.Field(61, 4));
}

void CheckPlaces(const WalkedVobu& vobu) {
  EXPECT_EQ(vobu.Field(45, 4), vobu.Sector) << "PCI NV_PCK_LBN";
  EXPECT_EQ(vobu.Field(1035, 4), vobu.Sector) << "DSI NV_PCK_LBN";
  EXPECT_EQ(vobu.Field(1031, 4), static_cast<std::uint64_t>(vobu.ScrBase)) << "NV_PCK_SCR";
  EXPECT_EQ(vobu.Field(1039, 4), vobu.Last - vobu.Sector) << "VOBU_EA";
  for (std::size_t i = 0; i < 3; ++i) {
    const std::uint64_t want = i < vobu.ReferenceEnds.size() ? vobu.ReferenceEnds[i] - vobu.Sector : 0;
    EXPECT_EQ(vobu.Field(1043 + 4 * i, 4), want) << "reference " << i + 1;
  }
}

void CheckTimes(const WalkedVobu& vobu, const WalkedVobu& lastOfVob, const InCell& place,
                const NavTiming& timing) {
  const std::int64_t vobEnd = lastOfVob.EndHalfTicks(timing.FrameTicks);
  ExpectTime(vobu.Field(57, 4), vobu.StartHalfTicks(timing.FrameTicks), "VOBU_S_PTM");
  ExpectTime(vobu.Field(61, 4), vobu.EndHalfTicks(timing.FrameTicks), "VOBU_E_PTM");
  ExpectTime(vobu.Field(65, 4), vobu.EndCode ? vobEnd : 0, "VOBU_SE_E_PTM");
  EXPECT_EQ(vobu.Field(1075, 4), 25257U) << "VOB_V_S_PTM";
  ExpectTime(vobu.Field(1079, 4), vobEnd, "VOB_V_E_PTM");
  const std::int64_t elapsed =
      vobu.StartHalfTicks(timing.FrameTicks) - place.Cell.front()->StartHalfTicks(timing.FrameTicks);
  for (const std::size_t offset : {69U, 1059U}) {
    const std::uint64_t time = vobu.Field(offset, 4);
    const std::uint64_t minutes = (time >> 20 & 0xF) * 10 + (time >> 16 & 0xF);  // the samples are short
    const std::uint64_t seconds = 60 * minutes + (time >> 12 & 0xF) * 10 + (time >> 8 & 0xF);
    const std::uint64_t rest = (time >> 4 & 0x3) * 10 + (time & 0xF);
    EXPECT_EQ(static_cast<std::int64_t>(seconds) * timing.FramesPerSecond + static_cast<std::int64_t>(rest),
              (elapsed + 1) / (2 * timing.FrameTicks))
        << "C_ELTM at " << offset;
  }
}

// One row of the jump tables, by the plain definition.
std::uint64_t Jump(const InCell& place, int halfSeconds, int previous, int sign, const NavTiming& timing) {
  const std::int64_t halfSecond = timing.FramesPerSecond * timing.FrameTicks / 2;
  const std::int64_t target = StartPtm(place.Vobu()) + sign * halfSeconds * halfSecond;
  bool between = false;
  for (std::ptrdiff_t step = 0;; ++step) {
    const WalkedVobu* there = place.At(sign * step);
    const bool hit = there != nullptr && StartPtm(*there) <= target && target <= EndPtm(*there);
    const std::uint64_t flag = between && halfSeconds >= 20 ? 0x40000000 : 0;
    if (hit) {
      return Distance(*there, place.Vobu()) | flag | (there->HasVideo ? 0x80000000 : 0);
    }
    if (there == nullptr) {
      return 0x3FFFFFFF | flag;
    }
    between =
        between || (there->HasVideo && Distance(*there, place.Vobu()) > static_cast<std::uint32_t>(previous));
  }
}

void CheckJumps(const InCell& place, const NavTiming& timing) {
  constexpr std::array<int, 19> Steps{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 20, 60, 120, 240};
  for (const int sign : {1, -1}) {
    std::uint64_t previous = 0;
    bool failed = false;
    for (std::size_t row = 0; row < Steps.size(); ++row) {
      const std::size_t offset = sign > 0 ? 1341 - 4 * row : 1353 + 4 * row;
      const std::uint64_t want =
          failed ? 0x3FFFFFFF
                 : Jump(place, Steps[row], static_cast<int>(previous & 0x3FFFFFFF), sign, timing);
      EXPECT_EQ(place.Vobu().Field(offset, 4), want) << "jump of " << sign * Steps[row] << " half seconds";
      failed = failed || (want & 0x3FFFFFFF) == 0x3FFFFFFF;
      previous = want;
    }
    const WalkedVobu* next = place.At(sign);
    const std::uint64_t address =
        next == nullptr ? 0x3FFFFFFF : Distance(*next, place.Vobu()) | (next->HasVideo ? 0x80000000 : 0);
    EXPECT_EQ(place.Vobu().Field(sign > 0 ? 1345 : 1349, 4), address) << "neighbour " << sign;
    std::ptrdiff_t step = sign;
    while (place.At(step) != nullptr && !place.At(step)->HasVideo) {
      step += sign;
    }
    const std::uint64_t video =
        place.At(step) == nullptr ? 0xBFFFFFFF : Distance(*place.At(step), place.Vobu()) | 0x80000000;
    EXPECT_EQ(place.Vobu().Field(sign > 0 ? 1265 : 1429, 4), video) << "neighbour with video " << sign;
  }
}

// The VOB and the cell count on, or begin anew with the clock.
void CheckIds(const WalkedVobu& vobu, const WalkedVobu* previous) {
  const bool newVob = vobu.ScrBase == 0;
  const std::uint64_t vob = previous == nullptr ? 0 : previous->Field(1055, 2);
  const std::uint64_t cell = previous == nullptr || newVob ? 1 : previous->Field(1058, 1);
  EXPECT_EQ(vobu.Field(1055, 2), vob + (newVob ? 1 : 0)) << "VOBU_VOB_IDN";
  EXPECT_GE(vobu.Field(1058, 1), cell) << "VOBU_C_IDN";
  EXPECT_LE(vobu.Field(1058, 1), newVob ? 1 : cell + 1) << "VOBU_C_IDN";
}

// `packs` and `streams` are those of the VOB. A_SYNCA: the first pack on the way whose first frame sounds
// from the VOBU's start on. SP_SYNCA: the latest pack behind whose unit had started by then.
void CheckSync(const WalkedVobu& vobu, const std::set<int>& streams, const std::vector<WalkedPack>& packs,
               const NavTiming& timing) {
  const std::uint32_t end = timing.SyncLeavesVobu ? std::numeric_limits<std::uint32_t>::max() : vobu.Last;
  for (int number = 0; number < 8; ++number) {
    const int stream = streams.contains(0xA0 + number) ? 0xA0 + number : 0x80 + number;
    const auto pack = std::ranges::find_if(packs, [&](const WalkedPack& each) {
      return each.Sector > vobu.Sector && each.Stream == stream && each.Pts >= StartPtm(vobu);
    });
    const bool there = pack != packs.end() && pack->Sector <= end && pack->Sector - vobu.Sector < 0x3FFF;
    const std::uint64_t want = !streams.contains(stream) ? 0 : there ? pack->Sector - vobu.Sector : 0x3FFF;
    EXPECT_EQ(vobu.Field(1433 + 2 * static_cast<std::size_t>(number), 2), want) << "A_SYNCA" << number;
  }
  for (int number = 0; number < 32; ++number) {
    const std::uint64_t value = vobu.Field(1449 + 4 * static_cast<std::size_t>(number), 4);
    std::uint64_t shown = streams.contains(0x20 + number) ? 0x7FFFFFFF : 0;
    for (const WalkedPack& pack : packs) {
      if (value != 0x7FFFFFFF && pack.Sector < vobu.Sector && pack.Stream == 0x20 + number && pack.Pts >= 0 &&
          pack.Pts <= StartPtm(vobu)) {
        shown = 0x80000000 | (vobu.Sector - pack.Sector);
      }
    }
    EXPECT_EQ(value, shown) << "SP_SYNCA" << number;
  }
}

}  // namespace

void CheckNavFigures(const std::vector<WalkedVobu>& vobus, const NavTiming& timing) {
  for (std::size_t i = 0; i < vobus.size(); ++i) {
    SCOPED_TRACE("VOBU at sector " + std::to_string(vobus[i].Sector));
    InCell place;
    const WalkedVobu* lastOfVob = nullptr;
    std::set<int> streams;
    std::vector<WalkedPack> packs;
    for (const WalkedVobu& other : vobus) {
      if (CellKey(other) == CellKey(vobus[i])) {
        place.Own = &other == &vobus[i] ? place.Cell.size() : place.Own;
        place.Cell.push_back(&other);
      }
      if (other.Field(1055, 2) == vobus[i].Field(1055, 2)) {
        lastOfVob = &other;
        packs.insert(packs.end(), other.Packs.begin(), other.Packs.end());
      }
    }
    for (const WalkedPack& pack : packs) {
      streams.insert(pack.Stream);
    }
    CheckIds(vobus[i], i > 0 ? &vobus[i - 1] : nullptr);
    CheckPlaces(vobus[i]);
    CheckTimes(vobus[i], *lastOfVob, place, timing);
    CheckJumps(place, timing);
    CheckSync(vobus[i], streams, packs, timing);
    if (testing::Test::HasFailure()) {
      return;  // one VOBU's faults say enough
    }
  }
}

}  // namespace quorvelant
