#include "mux/highlights.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace quorvelant {
namespace {

using testing::ElementsAre;

std::int64_t Second(double seconds) {
  return VideoStartPts + static_cast<std::int64_t>(seconds * 90000);
}

// HLI_SS of ten VOBUs of half a second in two cells of five: 0 without buttons.
std::vector<int> StatusOf(const MuxInput& input, const Rules& rules) {
  std::vector<VobuRecord> records(10);
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].CellId = static_cast<std::uint8_t>(1 + i / 5);
    records[i].Mark = i / 5;
    records[i].CellFields = 25 * static_cast<std::int64_t>(i % 5);
    records[i].StartPts = Second(static_cast<double>(i) / 2);
    records[i].EndPts = Second(static_cast<double>(i + 1) / 2);
  }
  const NavSource source{.Records = records, .Input = input, .Rules = rules, .VobEndPts = Second(5)};
  std::vector<int> status;
  for (std::size_t i = 0; i < records.size(); ++i) {
    const auto shown = FindHighlight(source, i);
    status.push_back(!shown ? 0 : shown->Repeated ? 2 : 1);
    if (shown && shown->EndTicks == EndlessHighlight) {
      status.back() += 10;
    }
  }
  return status;
}

// The head of a cell names its buttons anew for players, since a jump may lead there.
TEST(Highlights, ShowForTheirTimeAndOutlastACellThatWaits) {
  const struct {
    std::vector<std::array<double, 2>> Sets;  // start and end, the end 0 for none
    bool SecondCellWaits;
    std::vector<int> Players, Classic;  // 10 more where they never expire
  } cases[] = {
      {{{0.7, 1.6}, {3, 9}, {4.2, 9}}, false, {0, 1, 2, 2, 0, 0, 1, 2, 1, 2}, {0, 0, 1, 2, 0, 0, 1, 2, 2, 1}},
      {{{0, 0}}, false, {11, 12, 12, 12, 12, 11, 12, 12, 12, 12}, {1, 2, 2, 2, 2, 2, 2, 2, 2, 2}},
      {{{0, 1}, {2.5, 3.5}}, true, {1, 2, 0, 0, 0, 11, 12, 12, 12, 12}, {1, 2, 0, 0, 0, 1, 2, 0, 0, 0}},
  };
  const HighlightPlay play;
  for (const auto& each : cases) {
    MuxInput input;
    input.Marks.resize(2);
    input.Marks[1].HoldsByStillTime = each.SecondCellWaits;
    for (const auto& [start, end] : each.Sets) {
      input.Highlights.push_back({&play, {}, Second(start), end == 0 ? 0 : Second(end)});
    }
    EXPECT_EQ(StatusOf(input, Rules::Players), each.Players) << &each - cases;
    EXPECT_EQ(StatusOf(input, Rules::Classic), each.Classic) << &each - cases;
  }
}

TEST(Highlights, FieldsStayWithinTheirSet) {
  HighlightPlay play;
  play.StartTimeToVideo = "00:00:01:12";
  play.Duration = "00:00:02:00";
  play.Offset = 1;
  play.NumericalButtons = 9;
  play.ForcedSelect = 2;
  play.ForcedAction = 7;
  play.Buttons.resize(2);
  play.Buttons[0].Name = "A";
  play.Buttons[1].Name = "B";
  play.Buttons[1].Up = "A";
  play.Buttons[1].Down = "gone";
  play.Buttons[1].Right = "A";
  play.Buttons[1].ColorScheme = 2;
  play.Buttons[1].AutoAction = true;
  play.Buttons[1].Areas[1] = {1, 2, 3, 4};
  play.Schemes[1] = {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}};
  const MuxHighlight timed = TimeHighlight(play, PalTiming);
  EXPECT_THAT((std::array{timed.StartPts, timed.EndPts, timed.SelectionEndPts}),
              ElementsAre(25257 + 37 * 3600, 25257 + 87 * 3600, 0));
  const MuxHighlight set{&play, {}, 30000, 90000, 95000};
  Bytes sector(SectorBytes);
  PutHighlight({&set, false, 90000}, {{1, 0}, {2, 1}}, sector);
  const auto part = [&](std::size_t from, std::size_t count) {
    return Bytes(sector.begin() + static_cast<std::ptrdiff_t>(from),
                 sector.begin() + static_cast<std::ptrdiff_t>(from + count));
  };
  EXPECT_THAT(part(141, 22), ElementsAre(0, 1,                                                  // HLI_SS
                                         0, 0, 0x75, 0x30, 0, 1, 0x5F, 0x90, 0, 1, 0x5F, 0x90,  // times
                                         0x21, 0x20, 1, 2, 2, 0, 2, 0));
  EXPECT_THAT(part(171, 8), ElementsAre(0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0));
  EXPECT_THAT(part(187 + 324 + 18, 10), ElementsAre(0x80, 0x10, 0x02, 0x40, 0x30, 0x04, 1, 2, 2, 1));
}

}  // namespace
}  // namespace quorvelant
