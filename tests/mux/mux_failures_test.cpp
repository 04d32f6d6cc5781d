// Everything that can end a track, or nearly: each is one clear message, and nothing looks complete.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::string Saved(const TempFolder& folder, const Bytes& stream, const char* name = "film.m2v") {
  return folder.Write(name, std::string(stream.begin(), stream.end()));
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
    EXPECT_EQ(run.Mux(MotionTrack({Saved(folder, c.Stream, c.Name)})), MuxOutcome::Failed);
    ASSERT_THAT(run.Ui.Messages, SizeIs(1));
    EXPECT_EQ(run.Ui.Messages[0].Level, Severity::Error);
    EXPECT_THAT(run.Ui.Messages[0].Text, HasSubstr(c.Text));
    EXPECT_THAT(run.Ui.Messages[0].Text, HasSubstr(c.Name));
    EXPECT_THAT(run.Ui.Messages[0].Place,
                EndsWith(c.Place != nullptr ? c.Place : fmt::format("@{}", good.size())));
    EXPECT_THAT(run.Records.Vobs, IsEmpty());
  }
  MuxRun missing;
  missing.Ui.Unattended = true;
  EXPECT_EQ(missing.Mux(MotionTrack({folder / "nowhere.m2v"})), MuxOutcome::Failed);
  EXPECT_THAT(missing.Ui.Messages, SizeIs(1));
  MuxRun unnamed;
  EXPECT_EQ(unnamed.Mux(MotionTrack({""})), MuxOutcome::Failed);
  EXPECT_EQ(unnamed.Ui.Messages.at(0).Text, "oops");
}

TEST(MuxFailures, AGopAboveTheLimitAborts) {
  const TempFolder folder;
  MuxRun run;
  StreamBuilder stream;
  stream.Sequence().Group().Picture().Picture({.Type = 'P', .TemporalReference = 16});
  EXPECT_EQ(run.Mux(MotionTrack({Saved(folder, stream.Data())})), MuxOutcome::Failed);
  ASSERT_THAT(run.Ui.Messages, SizeIs(1));
  EXPECT_EQ(run.Ui.Messages[0].Title, "Gop Error");
  EXPECT_EQ(run.Ui.Messages[0].Text, "GOP length has exceeded 36 fields (18 frames) - Aborting");
  EXPECT_THAT(run.LogText(), HasSubstr("GOP ERROR AT LBA"));
  stream = {};
  stream.Sequence().Group().Picture().Picture({.Type = 'P', .TemporalReference = 18});
  MuxRun ntsc;
  EXPECT_EQ(ntsc.Mux(MotionTrack({Saved(folder, stream.Data())}, true)), MuxOutcome::Done);
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
  const MuxInput track = MotionTrack({Saved(folder, stream)});
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
  EXPECT_EQ(refused.Mux(track), MuxOutcome::Failed);
  EXPECT_THAT(refused.Ui.Messages, SizeIs(1));
}

TEST(MuxFailures, ABitRateAboveTheMuxRateAborts) {
  const TempFolder folder;
  GopPlan plan{.Gops = 20};
  plan.BytesI = plan.BytesP = plan.BytesB = 60000;
  MuxRun run;
  run.Ui.Unattended = true;
  EXPECT_EQ(run.Mux(MotionTrack({Saved(folder, BuildStream(plan))})), MuxOutcome::Failed);
  ASSERT_THAT(run.Ui.Messages, SizeIs(1));
  EXPECT_EQ(run.Ui.Messages[0].Title, "Excessive Bitrate Error");
  EXPECT_EQ(run.Ui.Messages[0].Text,
            "Unrecoverable Excessive Bitrate Error - Aborting\n"
            "Try reducing the quantity of audio streams or Video bitrate");
  EXPECT_THAT(run.LogText(), HasSubstr("Excessive bitrate error at sector "));
}

TEST(MuxFailures, APictureLargerThanTheBufferIsASeriousFault) {
  const TempFolder folder;
  StreamBuilder stream;
  stream.Sequence().Group().Picture({.TotalBytes = 300000});
  const MuxInput track = MotionTrack({Saved(folder, stream.Data())});
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
  EXPECT_EQ(cleared.Stream(0xE0), stream.Data());
}

TEST(MuxFailures, StopIsObeyedAtEverySector) {
  const TempFolder folder;
  MuxInput input = MotionTrack({Saved(folder, BuildStream({.Gops = 2}))});
  input.Audio = {Ac3Stream(SampleAc3({.Seconds = 1.5}))};
  MuxRun whole;
  int polls = 0;
  whole.Ui.StopWhen = [&] { return ++polls < 0; };
  ASSERT_EQ(whole.Mux(input), MuxOutcome::Done);
  ASSERT_GE(polls, static_cast<int>(whole.Records.TotalSectors)) << "asked at every sector, navigation too";
  for (int last = 0; last < polls; ++last) {
    MuxRun run;
    int asked = 0;
    run.Ui.StopWhen = [&] { return asked++ == last; };
    ASSERT_EQ(run.Mux(input), MuxOutcome::Stopped) << last;
    ASSERT_EQ(asked, last + 1) << "nothing more is done";
    ASSERT_TRUE(run.Build.StopRequested);
    ASSERT_THAT(run.Ui.Messages, IsEmpty());
    ASSERT_THAT(run.Records.Vobs, IsEmpty());
  }
}

TEST(MuxFailures, AFullDiskIsOneErrorThatNamesTheFile) {
  const TempFolder folder;
  const MuxInput input = MotionTrack({Saved(folder, BuildStream({.Gops = 20}))});
  rlimit former{};
  getrlimit(RLIMIT_FSIZE, &former);
  const rlimit small{1 << 20, former.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  MuxRun run;
  const MuxOutcome outcome = run.Mux(input);
  setrlimit(RLIMIT_FSIZE, &former);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(outcome, MuxOutcome::Failed);
  ASSERT_THAT(run.Ui.Messages, SizeIs(1));
  EXPECT_THAT(run.Ui.Messages[0].Text, HasSubstr("VTS_01_1.VOB"));
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
    EXPECT_EQ(run.Mux(input), MuxOutcome::Done);
    ASSERT_THAT(run.Ui.Messages, SizeIs(1)) << c.Text;
    EXPECT_EQ(run.Ui.Messages[0].Level, Severity::Warning);
    EXPECT_THAT(run.Ui.Messages[0].Text, HasSubstr(c.Text));
    EXPECT_THAT(run.Ui.Messages[0].Place, HasSubstr("@"));
  }
}

}  // namespace
}  // namespace quorvelant
