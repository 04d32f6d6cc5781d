// Tracks that no player would play as they are meant: refused for players, told and made by the classic
// rules.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mux/messages.h"
#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

TEST(RefusedTracks, EndTheBuildForPlayersAlone) {
  struct Case {
    const MessageKind& Kind;
    std::vector<GopPlan> Parts;
    std::vector<std::int64_t> Marks;
    const char* Text;
    const char* Place = "";
  };
  const SequenceFields pal;
  SequenceFields wide;
  wide.AspectCode = 3;
  const SequenceFields ntscRate{.FrameRateCode = 4};
  std::vector<std::int64_t> many;
  for (std::int64_t i = 1; i <= 256; ++i) {
    many.push_back(12 * i);
  }
  const GopPlan two{pal, 2};
  const Case cases[] = {
      {message::SequenceChanges,
       {two, {wide, 2}},
       {},
       "from 4:3 with 25 pictures a second to 16:9",
       "film.m2v@"},
      {message::SequenceChanges, {two, {ntscRate, 2}}, {}, "to 4:3 with 29.97 pictures", "film.m2v@"},
      {message::MarkOpensNoCell,
       {{pal, 5}},
       {13, 18},
       "\"Scene3\" of track \"Film\" opens no cell: its mark at frame 18 leads to picture 24, where scene "
       "\"Scene2\" begins already. Players can't jump to it. The nearest frame that works is 36"},
      {message::MarkOpensNoCell,
       {{pal, 5}},
       {49},
       "frame 49 falls on picture 49, after the last sequence header. Players can't jump to it. The nearest "
       "frame that works is"},
      {message::MarkOpensNoCell,
       {two},
       {12, 30},
       "frame 30 lies after the end of the track, which has 24 frames. Players can't jump to it. Remove the "
       "mark"},
      {message::MarkBeyondCells, {{pal, 260}}, many, "\"Scene256\""},
  };
  for (const Case& c : cases) {
    for (const Rules& rules : {Rules::Players, Rules::Classic}) {
      SCOPED_TRACE(c.Text);
      StreamBuilder stream;
      for (GopPlan part : c.Parts) {
        part.EndCode = false;
        stream.Raw(BuildStream(part));
      }
      MuxRun run(rules);
      MuxInput input = MotionTrack({Saved(run.Folder, stream.Data())});
      input.Marks = MarksAt(c.Marks);
      EXPECT_EQ(run.Mux(input), rules.RefusesDeadDiscs ? MuxOutcome::Failed : MuxOutcome::Done);
      ASSERT_FALSE(run.Ui.Messages.empty());
      const Message& told = run.Ui.Messages.front();
      EXPECT_EQ(told.Code, c.Kind.Code);
      EXPECT_EQ(told.Level, rules.RefusesDeadDiscs ? Severity::Error : Severity::Warning);
      EXPECT_THAT(told.Text, testing::HasSubstr(c.Text));
      EXPECT_THAT(told.Place, testing::HasSubstr(c.Place));
    }
  }
}

TEST(RefusedTracks, AFilmThatCannotBeSearched) {
  using namespace std::string_view_literals;
  std::string film = TextOf(BuildStream({.Gops = 25}));
  const auto sequence = "\0\0\1\xB3"sv;
  for (std::size_t at = film.rfind(sequence); at > 0; at = film.rfind(sequence, at - 1)) {
    film.erase(at, film.find("\0\0\1\xB8"sv, at) - at);
  }
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    EXPECT_EQ(run.Mux(MotionTrack({run.Folder.Write("film.m2v", film)})),
              rules.RefusesDeadDiscs ? MuxOutcome::Failed : MuxOutcome::Done);
    ASSERT_GE(run.Ui.Messages.size(), 2U);
    EXPECT_TRUE(run.Ui.Messages[0].Is(message::SequencesApart));
    EXPECT_TRUE(run.Ui.Messages[1].Is(message::SequencesFarApart));
    EXPECT_EQ(run.Ui.Messages[1].Level, rules.RefusesDeadDiscs ? Severity::Error : Severity::Warning);
  }
}

TEST(RefusedTracks, SoundThatWouldStartAfterThePicture) {
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    MuxInput input = FilmWith({Ac3Stream(SampleAc3({.Seconds = 0.5})), Ac3Stream(SampleAc3({}), 1)}, 50);
    input.Audio[0].DelayMs = 60'000;
    input.Audio[1].DelayMs = 1500;
    EXPECT_EQ(run.Mux(input), rules.RefusesDeadDiscs ? MuxOutcome::Failed : MuxOutcome::Done);
    ASSERT_FALSE(run.Ui.Messages.empty());
    EXPECT_TRUE(run.Ui.Messages[0].Is(message::AudioNeverStarts));
    EXPECT_THAT(run.Ui.Messages[0].Text, testing::HasSubstr("Audio stream 0"));
    EXPECT_TRUE(rules.RefusesDeadDiscs || run.Ui.Messages.at(1).Is(message::AudioStartsLate));
  }
}

// One pack between two of video is too little for PCM of 6.1 Mbit/s.
TEST(RefusedTracks, SoundThatComesTooLateIsTold) {
  for (const Rules& rules : {Rules::Players, Rules::Classic}) {
    MuxRun run(rules);
    const std::string sound = run.Folder.Write("eight", std::string(2 * 768'000, '\0'));
    EXPECT_EQ(run.Mux(FilmWith({PcmStream(sound, 16, 8)}, 50)), MuxOutcome::Done);
    ASSERT_EQ(run.Ui.Messages.size(), rules.OverdueAudioGoesFirst ? 0U : 1U);
    EXPECT_TRUE(run.Ui.Messages.empty() || run.Ui.Messages[0].Is(message::AudioLate));
  }
}

TEST(RefusedTracks, ASceneThatNoCellPlaysDoesNoHarm) {
  MuxRun run;
  MuxInput input = MotionTrack({Saved(run.Folder, BuildStream({.Gops = 3}))});
  input.Marks = MarksAt({0});
  input.Marks[1].Plays = false;
  EXPECT_EQ(run.Mux(input), MuxOutcome::Done);
  EXPECT_EQ(run.Ui.Messages.at(0).Level, Severity::Warning);
}

}  // namespace
}  // namespace quorvelant
