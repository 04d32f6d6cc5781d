// The sample media themselves: what other tests build on is judged once here by an independent reader.
#include "support/media.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

std::string Ffprobe(const std::string& entries, const std::string& file) {
  const TempFolder folder;
  const std::string out = folder / "out";
  const std::string command = fmt::format(
      "ffprobe -v error -count_packets -select_streams 0 -show_entries {} -of csv=p=0 '{}' >'{}' 2>&1",
      entries, file, out);
  EXPECT_EQ(std::system(command.c_str()), 0) << command;  // NOLINT(concurrency-mt-unsafe)
  std::string text = TempFolder::Read(out);
  text.erase(text.find_last_not_of("\r\n,") + 1);
  return text;
}

TEST(SampleMedia, AreWhatTheirNamesSay) {
  const std::string video = "stream=width,height,r_frame_rate,nb_read_packets";
  EXPECT_EQ(Ffprobe(video, SampleVideo({.Frames = 30, .GopLength = 6})), "720,576,25/1,30");
  EXPECT_EQ(Ffprobe(video, SampleVideo({.Standard = "NTSC", .Width = 352, .Frames = 20, .Interlaced = true})),
            "352,480,30000/1001,20");
  EXPECT_EQ(
      Ffprobe("stream=codec_name,sample_rate,channels,bit_rate", SampleAc3({.Channels = 6, .Kbps = 448})),
      "ac3,48000,6,448000");
  EXPECT_EQ(Ffprobe("stream=codec_name,sample_rate,channels", SampleWav({.Rate = 96000, .Bits = 24})),
            "pcm_s24le,96000,2");
  const FlashAndBeep pair = SampleFlashAndBeep("NTSC", 3);
  EXPECT_EQ(Ffprobe(video, pair.Video), "720,480,30000/1001,90");
  EXPECT_EQ(Ffprobe("stream=codec_name", pair.Ac3), "ac3");
}

TEST(SampleMedia, BuiltHeadersAreRead) {
  const TempFolder folder;
  GopPlan plan;
  plan.Sequence = {.Height = 480, .AspectCode = 3, .FrameRateCode = 4};
  plan.Gops = 3;
  plan.GopLength = 7;
  plan.Closed = false;
  const Bytes stream = BuildStream(plan);
  const std::string file =
      folder.Write("built.m2v", {reinterpret_cast<const char*>(stream.data()), stream.size()});
  EXPECT_EQ(Ffprobe("stream=width,height,display_aspect_ratio,r_frame_rate,nb_read_packets", file),
            "720,480,16:9,30000/1001,21");
}

}  // namespace
}  // namespace quorvelant
