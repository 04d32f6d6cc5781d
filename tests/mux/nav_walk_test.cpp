// Every figure of the navigation packs against what a walk through the finished sectors finds. Nothing of
// the multiplexer's own records is asked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

constexpr std::int64_t StartPts = 25257;
constexpr std::uint32_t None = 0x3FFFFFFF;
constexpr std::uint32_t Video = 0x80000000;

struct WalkedVobu {
  std::uint32_t Sector = 0, End = 0;
  std::int64_t Scr = 0;                        // of its navigation pack, 27 MHz
  std::int64_t Halves = 0;                     // half frames shown ahead of it
  std::int64_t Shown = 0;                      // half frames of its own pictures
  std::vector<std::uint32_t> References = {};  // sectors in which its I and P frames end
  bool EndCode = false;
};

struct Walked {
  Bytes Sectors;
  std::vector<WalkedVobu> Vobus = {};
  std::vector<std::pair<std::uint32_t, std::int64_t>> Audio =
      {};  // sector and PTS of packs with a frame start
  std::int64_t FramePeriod = 3600;

  std::uint64_t Field(std::size_t vobu, std::size_t offset, unsigned width) const {
    return GetBytes(Sectors, Vobus[vobu].Sector * SectorBytes + offset, width);
  }
  std::int64_t Pts(std::size_t vobu) const { return StartPts + Vobus[vobu].Halves * FramePeriod / 2; }
  std::int64_t EndPts(std::size_t vobu) const {
    return StartPts + (Vobus[vobu].Halves + Vobus[vobu].Shown) * FramePeriod / 2;
  }
};

// Follows the pictures through the video packs: which frames a VOBU holds and where they end.
void WalkPictures(Walked& walked, const std::vector<ReadPack>& packs) {
  Bytes stream;
  std::vector<std::pair<std::size_t, std::uint32_t>> places;  // stream offset where a pack's bytes begin
  for (std::uint32_t sector = 0; sector < packs.size(); ++sector) {
    if (packs[sector].StreamId == 0xE0) {
      places.emplace_back(stream.size(), sector);
      stream.insert(stream.end(), packs[sector].Payload.begin(), packs[sector].Payload.end());
    }
  }
  const auto sectorOf = [&](std::size_t at) {
    return std::prev(std::ranges::upper_bound(places, at, {}, [](const auto& p) { return p.first; }))->second;
  };
  const auto vobuOf = [&](std::uint32_t sector) {
    const auto after = std::ranges::upper_bound(walked.Vobus, sector, {}, &WalkedVobu::Sector);
    return std::prev(after);
  };
  auto vobu = walked.Vobus.end();
  bool reference = false;
  for (std::size_t at = 0; at + 3 < stream.size(); ++at) {
    if (stream[at] != 0 || stream[at + 1] != 0 || stream[at + 2] != 1) {
      continue;
    }
    const std::uint8_t code = stream[at + 3];
    if (reference && (code == 0 || code == 0xB3 || code == 0xB7)) {
      std::size_t last = at - 1;
      while (stream[last] == 0) {
        --last;
      }
      vobu->References.push_back(sectorOf(last));
      reference = false;
    }
    if (code == 0) {
      vobu = vobuOf(sectorOf(at));
      vobu->Shown += 2;
      reference = (stream[at + 5] >> 3 & 7) != 3;
    } else if (code == 0xB5 && stream[at + 4] >> 4 == 8) {
      vobu->Shown += stream[at + 7] >> 1 & 1;
    } else if (code == 0xB7) {
      vobu->EndCode = true;
    }
  }
  std::int64_t halves = 0;
  for (WalkedVobu& each : walked.Vobus) {
    each.Halves = halves;
    halves += each.Shown;
  }
}

Walked Walk(const MuxRun& run, bool ntsc) {
  Walked walked{.Sectors = run.Sectors(), .FramePeriod = ntsc ? 3003 : 3600};
  const std::vector<ReadPack> packs = run.Packs();
  for (std::uint32_t sector = 0; sector < packs.size(); ++sector) {
    if (packs[sector].StreamId == 0xBB) {
      walked.Vobus.push_back({.Sector = sector, .Scr = packs[sector].Scr});
    }
    if (packs[sector].Substream == 0x83 && packs[sector].Pts) {
      walked.Audio.emplace_back(sector, *packs[sector].Pts);
    }
    walked.Vobus.back().End = sector;
  }
  WalkPictures(walked, packs);
  return walked;
}

void CheckGeneral(const Walked& w, std::size_t i) {
  const WalkedVobu& v = w.Vobus[i];
  const bool last = i + 1 == w.Vobus.size();
  EXPECT_EQ(w.Field(i, 45, 4), v.Sector);
  EXPECT_EQ(w.Field(i, 1035, 4), v.Sector);
  EXPECT_EQ(w.Field(i, 1031, 4), static_cast<std::uint64_t>(v.Scr / 300));
  EXPECT_EQ(w.Field(i, 1039, 4), v.End - v.Sector);
  EXPECT_EQ(w.Field(i, 57, 4), static_cast<std::uint64_t>(w.Pts(i)));
  EXPECT_EQ(w.Field(i, 61, 4), static_cast<std::uint64_t>(w.EndPts(i)));
  EXPECT_EQ(w.Field(i, 65, 4), v.EndCode ? static_cast<std::uint64_t>(w.EndPts(i)) : 0U);
  EXPECT_EQ(v.EndCode, last);
  EXPECT_EQ(w.Field(i, 1075, 4), static_cast<std::uint64_t>(StartPts));
  EXPECT_EQ(w.Field(i, 1079, 4), static_cast<std::uint64_t>(w.EndPts(w.Vobus.size() - 1)));
  for (std::size_t n = 0; n < 3; ++n) {
    const std::uint32_t end = n < v.References.size() ? v.References[n] - v.Sector : 0;
    EXPECT_EQ(w.Field(i, 1043 + 4 * n, 4), end) << "reference " << n;
  }
  const auto sound = std::ranges::find_if(w.Audio, [&](const auto& a) { return a.second >= w.Pts(i); });
  if (sound == w.Audio.end()) {
    EXPECT_EQ(w.Field(i, 1433 + 2 * 3, 2), 0x3FFFU);
  } else {
    const std::uint64_t field = w.Field(i, 1433 + 2 * 3, 2);
    const bool behind = sound->first < v.Sector;
    EXPECT_EQ(field, behind ? 0x8000U | (v.Sector - sound->first) : sound->first - v.Sector);
  }
}

// Cells as their ids run, and the elapsed time within them.
void CheckCell(const Walked& w, std::size_t i, std::size_t first, int framesPerSecond) {
  const std::int64_t frames = (w.Vobus[i].Halves - w.Vobus[first].Halves) / 2;
  const auto bcd = [](std::int64_t value) {
    return static_cast<std::uint64_t>(value / 10 * 16 + value % 10);
  };
  const std::int64_t seconds = frames / framesPerSecond;
  const std::uint64_t rate = framesPerSecond == 30 ? 0xC0 : 0x40;
  const std::uint64_t time =
      bcd(seconds / 60) << 16 | bcd(seconds % 60) << 8 | bcd(frames % framesPerSecond) | rate;
  EXPECT_EQ(w.Field(i, 69, 4), time);
  EXPECT_EQ(w.Field(i, 1059, 4), time);
}

void CheckSearch(const Walked& w, std::size_t i, std::size_t first, std::size_t last, int framesPerSecond) {
  const auto distance = [&](std::size_t to) {
    return Video | (to > i ? w.Vobus[to].Sector - w.Vobus[i].Sector : w.Vobus[i].Sector - w.Vobus[to].Sector);
  };
  EXPECT_EQ(w.Field(i, 1345, 4), i < last ? distance(i + 1) : None);
  EXPECT_EQ(w.Field(i, 1265, 4), i < last ? distance(i + 1) : Video | None);
  EXPECT_EQ(w.Field(i, 1349, 4), i > first ? distance(i - 1) : None);
  EXPECT_EQ(w.Field(i, 1429, 4), i > first ? distance(i - 1) : Video | None);
  const int halfSeconds[] = {240, 120, 60, 20, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1};
  for (std::size_t row = 0; row < std::size(halfSeconds); ++row) {
    const std::int64_t step = halfSeconds[row] * framesPerSecond * w.FramePeriod / 2;
    std::size_t to = i;
    while (to <= last && w.EndPts(to) < w.Pts(i) + step) {
      ++to;
    }
    const std::uint32_t skipped = 0x40000000;  // tells of VOBUs passed over; not compared here
    EXPECT_EQ(w.Field(i, 1269 + 4 * row, 4) & ~skipped, to <= last ? distance(to) : None) << row;
    std::size_t back = i + 1;
    while (back > first && w.Pts(back - 1) > w.Pts(i) - step) {
      --back;
    }
    EXPECT_EQ(w.Field(i, 1425 - 4 * row, 4) & ~skipped, back > first ? distance(back - 1) : None) << row;
  }
}

TEST(NavWalk, EveryFigureIsWhatAWalkFinds) {
  struct Case {
    const char* Name;
    GopPlan Plan;
    bool Ntsc;
    std::vector<std::int64_t> Marks;
  };
  GopPlan ntsc{.Gops = 90, .GopLength = 15, .Pulldown = true, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500};
  ntsc.Sequence.FrameRateCode = 4;
  ntsc.Sequence.Height = 480;
  const Case cases[] = {
      {"PAL", {.Gops = 300, .GopLength = 12, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500}, false, {}},
      {"PAL, cells", {.Gops = 40, .GopLength = 7, .Closed = false}, false, {40, 41, 100, 222}},
      {"NTSC, pulldown", ntsc, true, {333, 1000}},
  };
  const TempFolder folder;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    const Bytes stream = BuildStream(c.Plan);
    MuxInput input =
        MotionTrack({folder.Write("film.m2v", std::string(stream.begin(), stream.end()))}, c.Ntsc);
    for (const std::int64_t mark : c.Marks) {
      input.Marks.push_back(MarkAt(mark, static_cast<int>(input.Marks.size())));
    }
    input.Audio = {Ac3Stream(SampleAc3({.Channels = 1, .Kbps = 96, .Seconds = 30}), 3)};
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    const Walked w = Walk(run, c.Ntsc);
    const auto cellOf = [&](std::size_t i) { return w.Field(i, 1058, 1); };
    std::size_t first = 0;
    for (std::size_t i = 0; i < w.Vobus.size(); ++i) {
      SCOPED_TRACE(testing::Message() << "VOBU " << i);
      first = cellOf(i) == cellOf(first) ? first : i;
      std::size_t last = i;
      while (last + 1 < w.Vobus.size() && cellOf(last + 1) == cellOf(i)) {
        ++last;
      }
      CheckGeneral(w, i);
      CheckCell(w, i, first, c.Ntsc ? 30 : 25);
      CheckSearch(w, i, first, last, c.Ntsc ? 30 : 25);
      if (testing::Test::HasFailure()) {
        return;
      }
    }
    EXPECT_EQ(cellOf(w.Vobus.size() - 1), run.Records.Vobs[0].Cells.size());
  }
}

}  // namespace
}  // namespace quorvelant
