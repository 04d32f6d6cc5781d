#include "mux/highlights.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quorvelant {
namespace {

using testing::ElementsAre;

std::int64_t Second(double seconds) {
  return VideoStartPts + static_cast<std::int64_t>(seconds * 90000);
}

// Ten VOBUs of half a second in two cells of five.
std::vector<VobuRecord> TenVobus() {
  std::vector<VobuRecord> records(10);
  for (std::size_t i = 0; i < records.size(); ++i) {
    const auto at = static_cast<double>(i);
    records[i].CellId = static_cast<std::uint8_t>(1 + i / 5);
    records[i].StartPts = Second(at / 2);
    records[i].EndPts = Second((at + 1) / 2);
    records[i].FramesAtStart = 12.5 * at;
    records[i].CellFramesAtStart = 12.5 * static_cast<double>(i % 5);
  }
  return records;
}

// HLI_SS of each VOBU: 0 without buttons.
std::vector<int> StatusOf(const MuxInput& input, const Rules& rules) {
  const auto records = TenVobus();
  const NavSource source{
      .Records = records, .Input = input, .Rules = rules, .VobEndPts = records.back().EndPts};
  std::vector<int> status;
  for (std::size_t i = 0; i < records.size(); ++i) {
    const auto shown = FindHighlight(source, i);
    status.push_back(!shown ? 0 : shown->Repeated ? 2 : 1);
  }
  return status;
}

TEST(Highlights, AreShownFromTheirStartToTheirEndOrTheNextSet) {
  const HighlightPlay play;
  MuxInput input;
  input.Highlights = {{&play, {}, Second(0.7), Second(1.6)},
                      {&play, {}, Second(3.0), Second(9)},
                      {&play, {}, Second(4.2), Second(9)}};
  // The head of a cell names its buttons anew, since a jump may lead there.
  EXPECT_THAT(StatusOf(input, Rules::Players), ElementsAre(0, 1, 2, 2, 0, 0, 1, 2, 1, 2));
  EXPECT_THAT(StatusOf(input, Rules::Classic), ElementsAre(0, 0, 1, 2, 0, 0, 1, 2, 2, 1));
  input.Highlights = {{&play, {}, Second(0), 0}};  // without a length, to the end
  EXPECT_THAT(StatusOf(input, Rules::Players), ElementsAre(1, 2, 2, 2, 2, 1, 2, 2, 2, 2));
  EXPECT_THAT(StatusOf(input, Rules::Classic), ElementsAre(1, 2, 2, 2, 2, 2, 2, 2, 2, 2));
}

TEST(Highlights, OutlastACellThatWaits) {
  const HighlightPlay play;
  MuxInput input;
  input.Marks.resize(2);
  input.Marks[1].Frame = 62;
  input.Marks[1].HoldsByStillTime = true;
  input.Highlights = {{&play, {}, Second(0), Second(1)}, {&play, {}, Second(2.5), Second(3.5)}};
  EXPECT_THAT(StatusOf(input, Rules::Players), ElementsAre(1, 2, 0, 0, 0, 1, 2, 2, 2, 2));
  EXPECT_THAT(StatusOf(input, Rules::Classic), ElementsAre(1, 2, 0, 0, 0, 1, 2, 0, 0, 0));
  const auto records = TenVobus();
  const NavSource source{.Records = records, .Input = input, .Rules = Rules::Players, .VobEndPts = Second(5)};
  EXPECT_EQ(FindHighlight(source, 0)->EndTicks, static_cast<std::uint32_t>(Second(1)));
  EXPECT_EQ(FindHighlight(source, 5)->EndTicks, EndlessHighlight);
}

TEST(Highlights, TimesCountFromTheStartOfTheVob) {
  HighlightPlay play;
  play.StartTimeToVideo = "00:00:01:12";
  play.Duration = "00:00:02:00";
  play.SelectionEndTime = "00:00:00:00";
  const MuxHighlight set = TimeHighlight(play, PalTiming);
  EXPECT_EQ(set.StartPts, 25257 + 37 * 3600);
  EXPECT_EQ(set.EndPts, 25257 + 87 * 3600);
  EXPECT_EQ(set.SelectionEndPts, 0);
}

// What whole discs in players do not show: numbers out of range, and links to nowhere.
TEST(Highlights, FieldsStayWithinTheirSet) {
  HighlightPlay play;
  play.Offset = 1;
  play.NumericalButtons = 9;
  play.ForcedSelect = 2;
  play.ForcedAction = 7;
  play.Buttons.resize(2);
  play.Buttons[0].Name = "A";
  play.Buttons[1].Name = "B";
  play.Buttons[1].Up = "A";
  play.Buttons[1].Down = "gone";
  play.Buttons[1].AutoAction = true;
  play.Buttons[1].Areas[1] = {1, 2, 3, 4};
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
  EXPECT_THAT(part(187 + 324 + 18, 10), ElementsAre(0x40, 0x10, 0x02, 0x40, 0x30, 0x04, 1, 2, 2, 2));
}

}  // namespace
}  // namespace quorvelant
