#include "subpicture/subtitle_times.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include "subpicture/messages.h"

namespace quorvelant {
namespace {

using namespace message;
using Entries = std::vector<SubPicturePlay>;

SubPicturePlay Entry(const char* start, const char* end, const char* duration = "", const char* file = "") {
  SubPicturePlay entry;
  entry.Start = start;
  entry.End = end;
  entry.Duration = duration;
  entry.File = file;
  return entry;
}

TEST(SubtitleTimes, AnEntryCoversItsStartAndNotItsEnd) {
  const Entries list{Entry("00:00:00:00", "00:00:02:00"),      // 0 to 50
                     Entry("00:00:04:00", "", "00:00:00:10"),  // 100 to 110
                     Entry("00:00:08:00", ""),                 // 200 up to the next
                     Entry("00:00:10:00", "00:00:20:00"),      // 250 to 500
                     Entry("00:00:12:00", "00:00:13:00"),      // within it
                     Entry("00:00:30:00", "")};                // to the end
  const std::pair<std::int64_t, int> cases[] = {{0, 0},    {49, 0},   {50, -1}, {100, 1},  {109, 1},
                                                {110, -1}, {200, 2},  {249, 2}, {250, 3},  {300, 4},
                                                {325, 3},  {500, -1}, {750, 5}, {90000, 5}};
  for (const auto& [frame, entry] : cases) {
    const auto found = EntryAt(list, frame, 25);
    EXPECT_EQ(found ? static_cast<int>(*found) : -1, entry) << frame;
  }
}

TEST(SubtitleTimes, ANewEntryLastsTwoSecondsOrUpToTheNext) {
  struct Row {
    int Rate;
    const char *Next, *End, *Duration;  // next empty: none
  };
  constexpr Row Rows[] = {
      {25, "", "00:00:03:00", "00:00:02:00"},
      {25, "00:00:03:02", "00:00:03:00", "00:00:02:00"},  // gap 51
      {25, "00:00:03:01", "00:00:03:00", "00:00:02:00"},  // gap 50
      {25, "00:00:03:00", "00:00:02:24", "00:00:01:24"},
      {30, "00:00:02:00", "00:00:01:29", "00:00:00:29"},
      {25, "00:00:01:02", "00:00:01:01", "00:00:00:01"},
  };
  for (const Row& test : Rows) {
    Entries list{Entry("00:00:00:00", "00:00:00:05", "", "first")};
    if (*test.Next != 0) {
      list.insert(list.begin(), Entry(test.Next, "01:00:00:00", "", "next"));  // out of order, as loaded
    }
    EXPECT_EQ(InsertByStart(list, Entry("00:00:01:00", "", "", "new"), test.Rate), 1U);
    EXPECT_EQ(list[0].File + " " + list[1].File, "first new");
    EXPECT_EQ(list[1].End + list[1].Duration, std::string(test.End) + test.Duration) << test.Next;
  }
}

TEST(SubtitleTimes, WhereNoEntryCanBegin) {
  const Entries list{Entry("00:00:01:00", "00:00:02:00"), Entry("00:00:03:00", "00:00:03:00")};
  const std::pair<std::int64_t, const MessageKind*> cases[] = {
      {0, nullptr},          {23, nullptr},         {24, &SubtitleWithoutRoom},
      {25, &SubtitleExists}, {49, &SubtitleExists}, {50, nullptr},
      {75, &SubtitleExists}, {99, nullptr},         {100, &SubtitlePastEnd}};
  for (const auto& [frame, kind] : cases) {
    const auto refusal = RefuseStart(list, frame, {25, 100});
    EXPECT_EQ(refusal ? refusal->Code : "", kind != nullptr ? kind->Code : "") << frame;
  }
}

TEST(SubtitleTimes, ChangedTimesKeepAFrameToBothNeighbours) {
  // 25 to 50, 100 to 150, 200 on.
  const Entries list{Entry("00:00:01:00", "00:00:02:00"), Entry("00:00:04:00", "00:00:06:00"),
                     Entry("00:00:08:00", "")};
  const std::tuple<std::size_t, SubtitleTimes, const MessageKind*> cases[] = {
      {1, {100, 99}, nullptr},
      {1, {100, 100}, &SubtitleMeetsNext},
      {1, {100, 0}, &SubtitleTimesUnfit},
      {1, {51, 10}, nullptr},
      {1, {50, 10}, &SubtitleMeetsEarlier},
      {1, {25, 10}, &SubtitleMeetsEarlier},
      {1, {0, 24}, nullptr},               // before the first
      {1, {0, 25}, &SubtitleMeetsNext},    // which is its next one then
      {1, {201, 10}, nullptr},             // the last has no end, and ends here
      {1, {200, 10}, &SubtitleMeetsNext},  // of equal starts the first stays first
      {2, {100, 10}, &SubtitleMeetsEarlier},
      {1, {1000, 1}, &SubtitlePastEnd},
      {2, {200, 5000}, nullptr},  // the start has not moved
      {0, {25, 25}, nullptr},
  };
  for (const auto& [entry, times, kind] : cases) {
    const auto refusal = RefuseTimes(list, entry, times, {25, 1000});
    EXPECT_EQ(refusal ? refusal->Code : "", kind != nullptr ? kind->Code : "")
        << times.Start << " " << times.Frames;
  }
  EXPECT_EQ(RefuseTimes(list, 1, {100, 100}, {25, 0})->Text,
            MessageOf(SubtitleMeetsNext, "", "00:00:08:00", "00:00:08:00").Text);
  // Times that an entry has are not tested.
  const Entries together{Entry("00:00:01:00", "00:00:05:00"), Entry("00:00:01:00", "00:00:05:00")};
  EXPECT_FALSE(RefuseTimes(together, 0, {25, 100}, {25, 10}));
}

TEST(SubtitleTimes, AMovedEntryIsSortedAmongTheOthers) {
  Entries list{Entry("00:00:01:00", "", "", "a"), Entry("00:00:01:00", "", "", "b"),
               Entry("00:00:04:00", "00:00:05:00", "", "c")};
  list[2].StopTime = "00:00:00:20";
  EXPECT_EQ(PutTimes(list, 2, {0, 25}, 25), 0U);
  EXPECT_EQ(list[0].File + list[1].File + list[2].File, "cab");
  EXPECT_EQ(list[0].StopTime, "00:00:00:20");  // as long as before
  EXPECT_EQ(PutTimes(list, 0, {250, 10}, 25), 2U);
  EXPECT_EQ(list[2].Start + list[2].End + list[2].Duration, "00:00:10:0000:00:10:1000:00:00:10");
  EXPECT_EQ(list[2].StopTime, "");
}

}  // namespace
}  // namespace quorvelant
