#include "support/nav_figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <set>
#include <span>

namespace quorvelant {
namespace {

std::uint64_t VobId(const WalkedVobu& vobu) {
  return vobu.Field(1055, 2);
}
std::uint64_t CellId(const WalkedVobu& vobu) {
  return vobu.Field(1058, 1);
}
std::uint64_t CellKey(const WalkedVobu& vobu) {
  return VobId(vobu) << 8 | CellId(vobu);
}
std::int64_t StartPtm(const WalkedVobu& vobu) {
  return static_cast<std::int64_t>(vobu.Field(57, 4));
}
std::int64_t EndPtm(const WalkedVobu& vobu) {
  return static_cast<std::int64_t>(vobu.Field(61, 4));
}

// A VOBU and those of its cell.
struct InCell {
  std::span<const WalkedVobu> Cell;
  const WalkedVobu& Vobu;

  const WalkedVobu* At(std::ptrdiff_t step) const {
    const std::ptrdiff_t index = &Vobu - Cell.data() + step;
    return index >= 0 && index < std::ssize(Cell) ? &Cell[static_cast<std::size_t>(index)] : nullptr;
  }
  // As the tables give it: the distance, with a bit for video.
  std::uint32_t Address(const WalkedVobu& there) const {
    return Distance(there) | (there.HasVideo ? 0x80000000 : 0);
  }
  std::uint32_t Distance(const WalkedVobu& there) const {
    return std::max(there.Sector, Vobu.Sector) - std::min(there.Sector, Vobu.Sector);
  }
};

// A field of whole ticks against a time in half ticks; the half is cut or rounded.
void ExpectTime(std::uint64_t field, std::int64_t halfTicks, const char* name) {
  EXPECT_LE(std::abs(2 * static_cast<std::int64_t>(field) - halfTicks), 1)
      << name << " " << field << ", the pictures say " << static_cast<double>(halfTicks) / 2;
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

void CheckTimes(const InCell& place, const WalkedVobu& lastOfVob, const NavTiming& timing) {
  const WalkedVobu& vobu = place.Vobu;
  const std::int64_t start = vobu.StartHalfTicks(timing.FrameTicks);
  const std::int64_t vobEnd = lastOfVob.EndHalfTicks(timing.FrameTicks);
  ExpectTime(vobu.Field(57, 4), start, "VOBU_S_PTM");
  ExpectTime(vobu.Field(61, 4), vobu.EndHalfTicks(timing.FrameTicks), "VOBU_E_PTM");
  ExpectTime(vobu.Field(65, 4), vobu.EndCode ? vobEnd : 0, "VOBU_SE_E_PTM");
  EXPECT_EQ(vobu.Field(1075, 4), 25257U) << "VOB_V_S_PTM";
  ExpectTime(vobu.Field(1079, 4), vobEnd, "VOB_V_E_PTM");
  const std::int64_t elapsed = start - place.Cell.front().StartHalfTicks(timing.FrameTicks);
  for (const std::size_t offset : {69U, 1059U}) {
    const auto twoDigits = [bits = vobu.Field(offset, 4)](unsigned shift, unsigned tens) {
      return static_cast<std::int64_t>((bits >> (shift + 4) & tens) * 10 + (bits >> shift & 0xF));
    };
    const std::int64_t seconds = 60 * twoDigits(16, 0xF) + twoDigits(8, 0xF);  // the samples are short
    EXPECT_EQ(seconds * timing.FramesPerSecond + twoDigits(0, 3), (elapsed + 1) / (2 * timing.FrameTicks))
        << "C_ELTM at " << offset;
  }
}

// One row of the jump tables, by the plain definition.
std::uint64_t Jump(const InCell& place, int halfSeconds, std::uint32_t previous, int sign,
                   const NavTiming& timing) {
  const std::int64_t halfSecond = timing.FramesPerSecond * timing.FrameTicks / 2;
  const std::int64_t target = StartPtm(place.Vobu) + sign * halfSeconds * halfSecond;
  bool between = false;
  for (std::ptrdiff_t step = 0;; ++step) {
    const WalkedVobu* there = place.At(sign * step);
    const std::uint64_t flag = between && halfSeconds >= 20 ? 0x40000000 : 0;
    if (there == nullptr) {
      return 0x3FFFFFFF | flag;
    }
    if (StartPtm(*there) <= target && target <= EndPtm(*there)) {
      return place.Address(*there) | flag;
    }
    between = between || (there->HasVideo && place.Distance(*there) > previous);
  }
}

void CheckJumps(const InCell& place, const NavTiming& timing) {
  constexpr std::array<int, 19> Steps{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 20, 60, 120, 240};
  for (const int sign : {1, -1}) {
    std::uint64_t want = 0;
    bool failed = false;
    for (std::size_t row = 0; row < Steps.size(); ++row) {
      const std::size_t offset = sign > 0 ? 1341 - 4 * row : 1353 + 4 * row;
      want = failed ? 0x3FFFFFFF : Jump(place, Steps[row], want & 0x3FFFFFFF, sign, timing);
      EXPECT_EQ(place.Vobu.Field(offset, 4), want) << "jump of " << sign * Steps[row] << " half seconds";
      failed = failed || (want & 0x3FFFFFFF) == 0x3FFFFFFF;
    }
    const WalkedVobu* next = place.At(sign);
    EXPECT_EQ(place.Vobu.Field(sign > 0 ? 1345 : 1349, 4),
              next == nullptr ? 0x3FFFFFFF : place.Address(*next))
        << "neighbour " << sign;
    std::ptrdiff_t step = sign;
    while (place.At(step) != nullptr && !place.At(step)->HasVideo) {
      step += sign;
    }
    const WalkedVobu* video = place.At(step);
    EXPECT_EQ(place.Vobu.Field(sign > 0 ? 1265 : 1429, 4),
              video == nullptr ? 0xBFFFFFFF : place.Address(*video))
        << "neighbour with video " << sign;
  }
}

// `packs` and `streams` are those of the VOB. A_SYNCA: the first pack on the way whose first frame sounds
// from the VOBU's start on. SP_SYNCA: the latest pack before it whose unit had started by then.
void CheckSync(const WalkedVobu& vobu, const std::vector<WalkedPack>& packs, const std::set<int>& streams,
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
  for (const WalkedVobu& vobu : vobus) {
    if (testing::Test::HasFailure()) {
      return;  // one VOBU's faults say enough
    }
    SCOPED_TRACE("VOBU at sector " + std::to_string(vobu.Sector));
    // The ids rise, so those of a cell and of a VOB stand together.
    const InCell place{std::ranges::equal_range(vobus, CellKey(vobu), {}, &CellKey), vobu};
    const auto vob = std::ranges::equal_range(vobus, VobId(vobu), {}, &VobId);
    std::vector<WalkedPack> packs;
    std::set<int> streams;
    for (const WalkedVobu& other : vob) {
      packs.insert(packs.end(), other.Packs.begin(), other.Packs.end());
    }
    for (const WalkedPack& pack : packs) {
      streams.insert(pack.Stream);
    }
    CheckPlaces(vobu);
    CheckTimes(place, vob.back(), timing);
    CheckJumps(place, timing);
    CheckSync(vobu, packs, streams, timing);
  }
}

}  // namespace quorvelant
