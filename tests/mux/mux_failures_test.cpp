// Everything that can end a track, or nearly: each is one clear message, and nothing looks complete.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mux_run.h"
#include "subtitled_track.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// A track of what was built, in `folder`.
MuxInput TrackOf(const TempFolder& folder, const Bytes& stream, bool ntsc = false) {
  return MotionTrack({Saved(folder, stream)}, ntsc);
}

// The one message that the run leaves.
Message MuxAndTell(MuxRun& run, const MuxInput& input, MuxOutcome outcome) {
  EXPECT_EQ(run.Mux(input), outcome);
  EXPECT_THAT(run.Ui.Messages, SizeIs(1));
  return run.Ui.Messages.empty() ? Message() : run.Ui.Messages[0];
}

TEST(MuxFailures, BadSourcesAreOneErrorThatNamesFileAndPlace) {
  const TempFolder folder;
  const GopPlan plan{.Gops = 2};
  const Bytes good = BuildStream(plan);
  GopPlan narrow = plan;
  narrow.Sequence.Width = 352;
  Bytes twoSizes = good;
  const Bytes other = BuildStream(narrow);
  twoSizes.insert(twoSizes.end(), other.begin(), other.end());
  StreamBuilder headless;
  headless.Group().Picture();
  StreamBuilder predicted;
  predicted.Sequence().Group().Picture({.Type = 'P'});
  Bytes huge = StreamBuilder().Sequence().Group().Picture({.TotalBytes = 6 << 20}).Data();
  struct Case {
    const char* Name;
    Bytes Stream;
    const char* Text;
    const char* Place;  // the end of it
  };
  const Case cases[] = {
      {"sizes", twoSizes, "changes from 720x576 to 352x576", nullptr},
      {"headless", headless.Data(), "has no sequence header ahead of its first picture", "@8"},
      {"predicted", predicted.Data(), "is no I picture", "@30"},
      {"empty", {}, "holds no coded picture", "empty"},
      {"noise", Bytes(5000, 0x55), "holds no coded picture", "noise"},
      {"huge", huge, "holds a picture of more than", "@0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    MuxRun run;
    const Message told = MuxAndTell(run, MotionTrack({Saved(folder, c.Stream, c.Name)}), MuxOutcome::Failed);
    EXPECT_EQ(told.Level, Severity::Error);
    EXPECT_THAT(told.Text, HasSubstr(c.Text));
    EXPECT_THAT(told.Text, HasSubstr(c.Name));
    EXPECT_THAT(told.Place, EndsWith(c.Place != nullptr ? c.Place : fmt::format("@{}", good.size())));
    EXPECT_THAT(run.Records.Vobs, IsEmpty());
  }
  MuxRun missing;
  missing.Ui.Unattended = true;
  MuxAndTell(missing, MotionTrack({folder / "nowhere.m2v"}), MuxOutcome::Failed);
  MuxRun unnamed;
  EXPECT_EQ(MuxAndTell(unnamed, MotionTrack({""}), MuxOutcome::Failed).Text, "oops");
}

TEST(MuxFailures, AGopAboveTheLimitAborts) {
  const TempFolder folder;
  const auto gop = [](int reference) {
    StreamBuilder stream;
    return stream.Sequence().Group().Picture().Picture({.Type = 'P', .TemporalReference = reference}).Data();
  };
  for (const auto& [ntsc, most] : {std::pair{false, 15}, {true, 18}}) {
    MuxRun longest;
    EXPECT_EQ(longest.Mux(TrackOf(folder, gop(most), ntsc)), MuxOutcome::Done);
    MuxRun run;
    const Message told = MuxAndTell(run, TrackOf(folder, gop(most + 1), ntsc), MuxOutcome::Failed);
    EXPECT_EQ(told.Title, "Gop Error");
    EXPECT_EQ(told.Text, "GOP length has exceeded 36 fields (18 frames) - Aborting");
    EXPECT_THAT(run.LogText(), HasSubstr("GOP ERROR AT LBA2"));
  }
}

// One GOP of 13 Mbit/s in a light stream is late; all of them can't be carried.
TEST(MuxFailures, UnderflowsAreAskedOnceAndCountedThroughTheBuild) {
  const TempFolder folder;
  GopPlan light{.Gops = 3, .EndCode = false};
  GopPlan heavy = light;
  heavy.Gops = 1;
  heavy.BytesI = heavy.BytesP = heavy.BytesB = 68000;
  Bytes stream = BuildStream(light);
  for (const GopPlan& plan : {heavy, light, heavy, light}) {
    const Bytes part = BuildStream(plan);
    stream.insert(stream.end(), part.begin(), part.end());
  }
  const MuxInput track = TrackOf(folder, stream);
  MuxRun run;
  run.Ui.Answers = {true};
  ASSERT_EQ(run.Mux({track, track}), MuxOutcome::Done);
  ASSERT_THAT(run.Ui.Questions, SizeIs(1));
  EXPECT_EQ(run.Ui.Questions[0].Title, "Buffer Underflow Error");
  EXPECT_THAT(run.Ui.Questions[0].Text,
              HasSubstr("A Buffer Underflow has been noted (probably due to excessive bitrate) at sector "));
  EXPECT_GT(run.Build.UnderflowCount, 4);
  EXPECT_EQ(run.Ui.StatusWords.back(), fmt::format("Total Buffer Underflows: {}", run.Build.UnderflowCount));
  EXPECT_THAT(run.LogText(), HasSubstr("Buffer Underflow by "));
  EXPECT_EQ(run.Stream(0xE0).size(), 2 * stream.size());

  MuxRun refused;
  refused.Ui.Answers = {false};
  MuxAndTell(refused, track, MuxOutcome::Failed);
}

TEST(MuxFailures, ABitRateAboveTheMuxRateAborts) {
  const TempFolder folder;
  GopPlan plan{.Gops = 20};
  plan.BytesI = plan.BytesP = plan.BytesB = 60000;
  MuxRun run;
  run.Ui.Unattended = true;
  const Message told = MuxAndTell(run, TrackOf(folder, BuildStream(plan)), MuxOutcome::Failed);
  EXPECT_EQ(told.Title, "Excessive Bitrate Error");
  EXPECT_EQ(told.Text,
            "Unrecoverable Excessive Bitrate Error - Aborting\n"
            "Try reducing the quantity of audio streams or Video bitrate");
  EXPECT_THAT(run.LogText(), HasSubstr("Excessive bitrate error at sector "));
}

TEST(MuxFailures, APictureLargerThanTheBufferIsASeriousFault) {
  const TempFolder folder;
  StreamBuilder stream;
  stream.Sequence().Group().Picture({.TotalBytes = 300000});
  const MuxInput track = TrackOf(folder, stream.Data());
  MuxRun stopped;
  stopped.Ui.Answers = {false};
  EXPECT_EQ(stopped.Mux(track), MuxOutcome::Stopped);
  EXPECT_TRUE(stopped.Build.StopRequested);
  EXPECT_EQ(stopped.Build.BufferFaultCount, 1);
  EXPECT_EQ(stopped.Ui.Questions.at(0).Title, "Serious Buffer Fault");
  EXPECT_THAT(stopped.LogText(), HasSubstr("SERIOUS ERROR - BUFFER FULL - NO MORE PICTURES"));
  MuxRun cleared;
  cleared.Ui.Answers = {true, true};
  EXPECT_EQ(cleared.Mux(track), MuxOutcome::Done);
  EXPECT_EQ(cleared.Stream(VideoPack), stream.Data());
}

// A film with two kinds of sound, subtitles and buttons, slides with sound, and a still.
std::vector<MuxInput> EveryKind(const TempFolder& folder, const SubtitleStream& subtitles,
                                const HighlightPlay& buttons) {
  MuxInput film = TrackOf(folder, BuildStream({.Gops = 3, .BytesI = 9000, .BytesP = 4000, .BytesB = 1500}));
  film.Marks = MarksAt({12});
  film.Audio = {Ac3Stream(SampleAc3({.Seconds = 1.5}), 1), PcmStream(SampleWav({.Seconds = 1.5}), 16, 2)};
  film.Subpictures = {{0, &subtitles, {}}};
  film.Highlights = {{&buttons, {}, VideoStartPts, VideoStartPts + 90000}};
  const std::string picture = SampleVideo({.Frames = 1, .KbitPerSecond = 500});
  MuxInput slides = MotionTrack({picture, picture});
  slides.Kind = TrackKind::SlideShow;
  slides.Audio = {film.Audio[0]};
  MuxInput still = MotionTrack({picture});
  still.Kind = TrackKind::Still;
  still.Infinite = true;
  return {film, slides, still};
}

TEST(MuxFailures, StopIsObeyedAtEverySector) {
  const TempFolder folder;
  const SubtitleStream subtitles = StreamOf(folder, "a", {{64, 32, 600, 300, 5, 20}}, false);
  const HighlightPlay buttons;
  const std::vector<MuxInput> tracks = EveryKind(folder, subtitles, buttons);
  MuxRun whole;
  int polls = 0;
  whole.Ui.StopWhen = [&] { return ++polls < 0; };
  ASSERT_EQ(whole.Mux(tracks), MuxOutcome::Done);
  const auto sectors = static_cast<int>(whole.Records.TotalSectors);
  ASSERT_GE(polls, sectors) << "asked at every sector, those of navigation too";
  ASSERT_GT(sectors, 150);
  for (int last = 0; last < polls; ++last) {
    MuxRun run;
    int asked = 0;
    run.Ui.StopWhen = [&] { return asked++ == last; };
    ASSERT_EQ(run.Mux(tracks), MuxOutcome::Stopped) << last;
    ASSERT_EQ(asked, last + 1) << "nothing more is done";
    ASSERT_TRUE(run.Build.StopRequested);
    ASSERT_THAT(run.Ui.Messages, IsEmpty());
    ASSERT_LT(run.Records.Vobs.size(), tracks.size());
    for (int slot = 0; slot <= 9; ++slot) {
      ASSERT_FALSE(run.Files.IsOpen(slot)) << slot;
    }
  }
}

TEST(MuxFailures, SourcesThatEndUnevenlyAreMuxedWithAWarning) {
  const std::string video = SampleVideo({.Frames = 75});
  const std::string whole = TempFolder::Read(video);
  struct Case {
    std::size_t VideoBytes;
    double Seconds;
    const char* Text;
  };
  for (const Case& c : {Case{whole.size(), 1.5, "Audio stream 0 of track \"Film\" ends 1.5 seconds before"},
                        Case{whole.size(), 5, "Audio stream 0 of track \"Film\" is 2.0 seconds longer"},
                        Case{whole.size() - 3000, 3, "ends within a picture"}}) {
    MuxRun run;
    MuxInput input = MotionTrack({run.Folder.Write("film.m2v", whole.substr(0, c.VideoBytes))});
    input.Audio = {Ac3Stream(SampleAc3({.Seconds = c.Seconds}))};
    const Message told = MuxAndTell(run, input, MuxOutcome::Done);
    EXPECT_EQ(told.Level, Severity::Warning);
    EXPECT_THAT(told.Text, HasSubstr(c.Text));
    EXPECT_THAT(told.Place, HasSubstr("@"));
  }
}

}  // namespace
}  // namespace quorvelant
