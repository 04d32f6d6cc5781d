#include "mux/next_sector.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvelant {
namespace {

TEST(NextSector, EarliestClockDecidesAndTiesGoInOrder) {
  struct Case {
    std::optional<Clock> Nav, Video;
    std::vector<AudioClaim> Audio;
    std::optional<std::int64_t> Limit;
    NextSector Expected;
  };
  const Case cases[] = {
      {{}, {}, {}, {}, {SectorKind::None}},
      {Clock{100}, Clock{100}, {{{100}, 0}}, {}, {SectorKind::Nav}},
      {{}, Clock{100}, {{{100}, 0}}, {}, {SectorKind::Video}},
      {{}, Clock{101}, {{{100}, 0}, {{100}, 0}}, {}, {SectorKind::Audio, 0}},
      {Clock{90}, Clock{101}, {{{95}, 0}, {{80}, 0}}, {}, {SectorKind::Audio, 1}},
      // A clock of 0 is not in use.
      {Clock{0}, {}, {{{0}, 0}, {{7}, 0}}, {}, {SectorKind::Audio, 1}},
      // Sound at or beyond the limit is passed over, and the search goes on.
      {{}, Clock{100}, {{{10}, 500}, {{20}, 499}}, 500, {SectorKind::Audio, 1}},
      {{}, Clock{100}, {{{10}, 500}, {{20}, 501}}, 500, {SectorKind::Video}},
      {{}, {}, {{{10}, 500}}, 500, {SectorKind::None}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(NextSectorKind(c.Nav, c.Video, c.Audio, c.Limit), c.Expected) << &c - cases;
  }
}

}  // namespace
}  // namespace quorvelant
