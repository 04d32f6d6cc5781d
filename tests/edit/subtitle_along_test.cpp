#include "edit/subtitle_along.h"

#include <gtest/gtest.h>

#include <string>

#include "edit/messages.h"
#include "film_track.h"
#include "subpicture/messages.h"

namespace quorvelant {
namespace {

// A film of 40 s, buttons from 30 s on, and entries at 4 to 6, 8 to 10 and (until the next or the end) 12 s.
struct FilmSession {
  FilmSession() {
    Project project;
    Track& track = project.Tracks.Add(Film("Film"));
    track.VideoFrames = 1000;
    SubtitleStream& stream = track.SubStreams.emplace_back();
    for (const auto& [start, end] :
         {std::pair("00:00:04:00", "00:00:06:00"), {"00:00:08:00", "00:00:10:00"}, {"00:00:12:00", ""}}) {
      SubPicturePlay& entry = stream.SubPlays.emplace_back();
      entry.Start = start;
      entry.End = end;
    }
    HighlightPlay& set = track.HighlightPlays.emplace_back();
    set.StartTimeToVideo = "00:00:30:00";
    set.Duration = "00:00:10:00";
    set.Buttons.resize(1);
    Session.Replace(std::move(project), {});
  }
  [[nodiscard]] std::string Times() const {
    std::string times;
    for (const SubPicturePlay& entry : Session.Work().Tracks[0].SubStreams[0].SubPlays) {
      times += entry.Start + "-" + entry.End + (entry.Forced ? "! " : " ");
    }
    return times;
  }
  EditSession Session{Rules::Players};
};

TEST(SubtitlesAlong, LaterOnesFollowTheEnd) {
  const struct {
    std::size_t Entry;
    SubtitleTimes Times;
    const MessageKind* Refusal;  // nullptr: done
    const char* After = "";
  } cases[] = {
      {0,
       {110, 50},
       nullptr,
       "00:00:04:10-00:00:06:10 00:00:08:10-00:00:10:10 00:00:12:10- "},  // all ten frames later
      {1, {160, 50}, nullptr, "00:00:04:00-00:00:06:00 00:00:06:10-00:00:08:10 00:00:10:10- "},
      {1, {200, 600}, nullptr, "00:00:04:00-00:00:06:00 00:00:08:00-00:00:32:00! 00:00:34:00-! "},
      {2, {310, 20}, nullptr, "00:00:04:00-00:00:06:00 00:00:08:00-00:00:10:00 00:00:12:10-00:00:13:05 "},
      {0, {100, 50}, nullptr, ""},                     // as it is
      {1, {150, 50}, &message::SubtitleMeetsEarlier},  // it would touch the one before
      {1, {90, 10}, &message::SubtitleMeetsEarlier},   // it would overtake it
      {0, {100, 760}, &message::SubtitlePastEnd},      // the last would start past the end
      {0, {100, 0}, &message::SubtitleTimesUnfit},
      {3, {400, 10}, &message::NoSuchElement},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Entry);
    FilmSession film;
    const std::string before = film.Times();
    const Outcome outcome = SetTimesAlong(film.Session, {0, 0, test.Entry}, test.Times);
    EXPECT_EQ(outcome.IsDone(), test.Refusal == nullptr);
    if (test.Refusal != nullptr) {
      EXPECT_EQ(outcome.Words.Code, test.Refusal->Code);
    }
    EXPECT_EQ(film.Times(), test.After[0] == '\0' ? before : test.After);
    film.Session.Undo();
    EXPECT_EQ(film.Times(), before);
  }
}

}  // namespace
}  // namespace quorvelant
