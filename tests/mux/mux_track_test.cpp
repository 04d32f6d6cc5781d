#include "mux/mux_track.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Bytes FileBytes(const std::string& path) {
  const std::string text = TempFolder::Read(path);
  return {text.begin(), text.end()};
}

// Without the vbv_delay that is changed on the way.
Bytes WithoutDelays(Bytes stream) {
  for (std::size_t i = 0; i + 7 < stream.size(); ++i) {
    if (stream[i] == 0 && stream[i + 1] == 0 && stream[i + 2] == 1 && stream[i + 3] == 0) {
      stream[i + 5] |= 0x07;
      stream[i + 6] = 0xFF;
      stream[i + 7] |= 0xF8;
    }
  }
  return stream;
}

TEST(MuxTrack, EveryByteArrivesAndDecodesWithoutComplaint) {
  struct Case {
    const char* Name;
    VideoSample Video;
    int AudioStreams;
  };
  const Case cases[] = {
      {"PAL, open groups", {.Frames = 100}, 1},
      {"PAL, closed, interlaced", {.Aspect = "16:9", .Frames = 100, .Closed = true, .Interlaced = true}, 2},
      {"PAL, I pictures alone", {.Frames = 60, .GopLength = 1}, 0},
      {"NTSC, groups of 18", {.Standard = "NTSC", .Frames = 100, .GopLength = 18}, 2},
      {"NTSC, pulldown", {.Standard = "NTSC", .Frames = 96, .Pulldown = true}, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    const std::string video = SampleVideo(c.Video);
    MuxInput input = MotionTrack({video}, c.Video.Standard == "NTSC");
    const std::string ac3 = SampleAc3({.Seconds = 5});
    for (int i = 0; i < c.AudioStreams; ++i) {
      input.Audio.push_back(Ac3Stream(ac3, i));
    }
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    EXPECT_EQ(run.Build.UnderflowCount, 0);
    EXPECT_THAT(run.Ui.Messages, IsEmpty());
    EXPECT_EQ(WithoutDelays(run.Stream(0xE0)), WithoutDelays(FileBytes(video)));
    EXPECT_EQ(run.DecodeComplaints(), "");
    const Bytes sound = FileBytes(ac3);
    for (int i = 0; i < c.AudioStreams; ++i) {
      const Bytes sent = run.Stream(0x80 + i);
      EXPECT_EQ(sent.size() % 768, 0U) << "whole frames";
      EXPECT_TRUE(std::equal(sent.begin(), sent.end(), sound.begin()));
    }
  }
}

}  // namespace
}  // namespace quorvelant
