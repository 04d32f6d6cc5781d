// What the probe says against what an independent reader says of the same files.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <utility>

#include "analysis/container_sniff.h"
#include "analysis/disc_fit.h"
#include "analysis/picture_index.h"
#include "analysis/video_probe.h"
#include "support/disc_judges.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"
#include "support/trial.h"

namespace quorvelant {
namespace {

// What the reader says of a file.
struct Seen {
  std::map<std::string, std::string> Stream;
  std::map<std::int64_t, std::int64_t> Groups;  // pictures from key picture to key picture
  std::int64_t Fields = 0;                      // as displayed
};

Seen Ffprobe(const std::string& file) {
  const std::string command = fmt::format(
      "ffprobe -v quiet -count_packets -of default=nw=1 -show_entries "
      "packet=flags:frame=repeat_pict:stream=width,height,display_aspect_ratio,r_frame_rate,nb_read_packets,"
      "sample_rate,channels,duration '{}'",
      file);
  Seen seen;
  std::int64_t length = 0;
  for (const std::string& line : LinesOf(command)) {
    const std::string key = line.substr(0, line.find('='));
    const std::string value = line.substr(key.size() + 1, line.find('\n') - key.size() - 1);
    if (key == "flags") {
      if (value.starts_with('K') && length > 0) {
        ++seen.Groups[std::exchange(length, 0)];
      }
      ++length;
    } else if (key == "repeat_pict") {
      seen.Fields += 2 + std::stoi(value);
    } else {
      seen.Stream[key] = value;
    }
  }
  ++seen.Groups[length];
  return seen;
}

class Probes : public testing::Test {
 protected:
  VideoProbe Probe(const std::string& file) {
    const auto probe = ProbeVideo(file, Ui);
    EXPECT_TRUE(probe) << file;
    return probe.value_or(VideoProbe{});
  }
  VideoProbe Probe(const Bytes& stream) { return Probe(Folder.Write("s.m2v", stream)); }
  PictureIndex Index(const std::string& file) {
    IndexStore store;
    const std::string copy = Folder / "copy";
    std::filesystem::copy_file(file, copy, std::filesystem::copy_options::overwrite_existing);
    return BuildPictureIndex({{copy}}, "", store, Ui, true).Files.at(0).Index;
  }
  TempFolder Folder;
  RecordingUi Ui;
};

TEST_F(Probes, AgreeWithAnIndependentReader) {
  std::vector<VideoSample> samples{
      {.Aspect = "16:9", .Frames = 26, .Interlaced = true},
      {.Standard = "NTSC", .Width = 704, .Frames = 26, .Interlaced = true},
      {.Standard = "NTSC", .Aspect = "16:9", .Frames = 40, .Pulldown = true},
      {.Standard = "NTSC", .Frames = 40, .GopLength = 9, .Closed = true, .Pulldown = true},
      {.Standard = "NTSC", .Width = 352, .Height = 240, .Frames = 26, .Mpeg1 = true},
      {.Width = 352, .Height = 288, .Frames = 26},
      {.Frames = 1},
  };
  // A GOP length every two; in steps of five each standard comes closed and open, with 0 to 2 B pictures.
  for (int i = 2; i <= 37; i += IsTrial() ? 1 : 5) {
    const int length = i / 2;
    samples.push_back({.Standard = i % 2 == 0 ? "NTSC" : "PAL",
                       .Width = 352,
                       .Frames = 40,
                       .GopLength = length,
                       .BFrames = length % 3,
                       .Closed = i % 4 < 2});
  }
  for (const VideoSample& sample : samples) {
    const std::string file = SampleVideo(sample);
    SCOPED_TRACE(file);
    const VideoProbe probe = Probe(file);
    Seen seen = Ffprobe(file);
    auto& expected = seen.Stream;
    EXPECT_EQ(probe.Info.Standard, sample.Standard);
    EXPECT_EQ(probe.Info.Coding, sample.Mpeg1 ? "MPEG1" : "MPEG2");
    EXPECT_EQ(std::to_string(probe.Info.Width), expected["width"]);
    EXPECT_EQ(std::to_string(probe.Info.Height), expected["height"]);
    EXPECT_EQ(std::to_string(probe.Frames()), expected["nb_read_packets"]);
    // Repeated fields make the reader count fields.
    const bool ntsc = sample.Standard == "NTSC";
    const std::string ntscRate = sample.Pulldown ? "60000/1001" : "30000/1001";
    EXPECT_EQ(ntsc ? ntscRate : "25/1", expected["r_frame_rate"]);
    EXPECT_EQ(probe.GroupLengths, seen.Groups);
    EXPECT_EQ(probe.DisplayedFields, seen.Fields);
    EXPECT_NEAR(probe.Seconds(), static_cast<double>(seen.Fields) / 2 / (ntsc ? 30000.0 / 1001 : 25), 1e-9);
    EXPECT_EQ(Index(file).TotalFrames, seen.Fields / 2);
    if (!sample.Mpeg1) {  // aspect codes of MPEG1 are pixel shapes
      EXPECT_EQ(probe.Info.Aspect, expected["display_aspect_ratio"]);
      EXPECT_EQ(JudgeVideo(probe).Fits(), seen.Groups.rbegin()->first <= 15 || ntsc);
    }
    EXPECT_EQ(probe.RepeatFlags > 0, sample.Pulldown);
    if (sample.Closed || sample.GopLength == 1) {
      EXPECT_EQ(probe.ClosedGroups, probe.Groups);
    } else if (sample.BFrames > 0 && sample.Frames > sample.GopLength) {
      EXPECT_LT(probe.ClosedGroups, probe.Groups);
      EXPECT_GT(probe.GroupsLedByB, 0);
    }
  }
}

void ExpectSoundAsFfprobeReadsIt(const std::string& file) {
  SCOPED_TRACE(file);
  RecordingUi ui;
  const auto audio = QuickScanAudio(file, "", Rules::Players, ui);
  ASSERT_TRUE(audio);
  auto expected = Ffprobe(file).Stream;
  EXPECT_EQ(audio->Problem, "");
  EXPECT_EQ(std::to_string(audio->SampleRateHz), expected["sample_rate"]);
  EXPECT_EQ(std::to_string(audio->ChannelCount()), expected["channels"]);
  EXPECT_NEAR(audio->Seconds(), std::stod(expected["duration"]), 1e-5);
}

TEST_F(Probes, SoundAgreesWithAnIndependentReader) {
  for (int channels = 1; channels <= 6; ++channels) {
    const int rate = channels % 2 == 0 ? 48000 : 96000;
    const int bits = channels < 4 ? 16 : 24;
    ExpectSoundAsFfprobeReadsIt(
        SampleAc3({.Channels = channels, .Kbps = 64 * channels + 64, .Seconds = 1.6}));
    ExpectSoundAsFfprobeReadsIt(
        SampleWav({.Rate = rate, .Bits = bits, .Channels = channels, .Seconds = 0.5}));
  }
}

TEST_F(Probes, BitRatesOverTheWholeAndOverOneSecond) {
  StreamBuilder stream;
  for (int second = 0; second < 4; ++second) {
    for (int i = 0; i < 25; ++i) {
      if (i % 5 == 0) {
        stream.Sequence({.BitRate = 6000000}).Group({.Closed = second < 2});
      }
      stream.Picture({.Type = i % 5 == 0 ? 'I' : 'P', .TotalBytes = second == 2 ? 50000U : 10000U});
    }
  }
  const VideoProbe probe = Probe(stream.Data());
  EXPECT_NEAR(probe.MeanBitRate, 4e6, 2e4);
  EXPECT_NEAR(probe.PeakBitRate, 10e6, 2e4);
  EXPECT_EQ(probe.DeclaredBitRate, 6000000);
  EXPECT_EQ(probe.Groups, 20);
  EXPECT_EQ(probe.ClosedGroups, 10);
  EXPECT_EQ(probe.GroupLengths, (std::map<std::int64_t, std::int64_t>{{5, 20}}));
  EXPECT_EQ(probe.IPictures, 20);
  EXPECT_NEAR(probe.PeakBacklogBits, 25 * 400e3 - 24 * 9.8e6 / 25, 1e5);
  EXPECT_TRUE(JudgeVideo(probe).Fits());  // what one second brings too much waits in the decoder's buffer
}

// Pictures of one size, then one that only an empty buffer takes.
TEST_F(Probes, TheDecodersBufferBoundsTheBitRate) {
  for (const auto& [last, fits] : {std::pair{220000U, true}, {235000U, false}}) {
    StreamBuilder stream;
    for (unsigned i = 0; i < 50; ++i) {
      stream.Sequence().Group().Picture({.TotalBytes = i < 49 ? 48000U : last});
    }
    const VideoProbe probe = Probe(stream.Data());
    EXPECT_GT(probe.PeakBitRate, 9.8e6);
    EXPECT_EQ(JudgeVideo(probe).Fits(), fits) << probe.PeakBacklogBits;
  }
}

TEST_F(Probes, FieldPicturesAreHalfFrames) {
  const VideoProbe probe = Probe(BuildStream({.Gops = 2, .GopLength = 6, .FieldPictures = true}));
  EXPECT_EQ(probe.PictureHeaders, 24);
  EXPECT_EQ(probe.Frames(), 12);
  EXPECT_EQ(probe.DisplayedFields, 24);
  EXPECT_EQ(probe.GroupLengths.begin()->first, 6);
}

TEST_F(Probes, ReasonsAgainstADisc) {
  const std::pair<Bytes, std::string> cases[] = {
      {BuildStream({}), ""},
      {BuildStream({.Sequence = {.Width = 640}}), "PAL has no frame size 640x576"},
      {BuildStream({.Sequence = {.Width = 352, .Height = 240}}), "PAL has no frame size 352x240"},
      {BuildStream({.Sequence = {.Mpeg2 = false}}), "it is MPEG1 video, which is not supported"},
      {BuildStream({.Sequence = {.AspectCode = 1}}),
       "its aspect is 1:1 by the pixel, and a disc's video is 4:3 or 16:9"},
      {BuildStream({.Sequence = {.Height = 480, .FrameRateCode = 1}}),
       "it runs at 23.976 frames a second and has no pulldown flags"},
      {BuildStream({.Sequence = {.FrameRateCode = 6}}),
       "it runs at 50 frames a second, and a disc's video at 25 (PAL) or 29.97 (NTSC)"},
      {BuildStream({.GopLength = 16}), "a group of pictures lasts 32 fields; players expect 30 at most"},
      {Bytes(5000), "it holds no MPEG video"},
      {StreamBuilder().Group().Picture().Raw(BuildStream({})).Data(),
       "it does not start with a sequence header: cut it at one"},
      {StreamBuilder().Group().Picture({.TotalBytes = 300000}).Data(),
       "it does not start with a sequence header: cut it at one"},
  };
  for (const auto& [stream, reason] : cases) {
    EXPECT_EQ(fmt::format("{}", fmt::join(JudgeVideo(Probe(stream)).Reasons, "; ")), reason);
  }
  const Bytes noGroups = StreamBuilder().Sequence().Picture().Picture({.Type = 'P'}).Data();
  EXPECT_EQ(JudgeVideo(Probe(noGroups)).Notes.size(), 1U);
  const AudioChannels three = PcmChannels(3);
  const std::pair<AudioAttributes, std::string> sounds[] = {
      {{.Format = "PCM", .BitRate = 96 * 3 * 24, .SampleRate = 96, .Channels = three, .Quantisation = 24},
       "a disc carries no PCM of 96 kHz, 24 bits and 3 channels"},
      {{.Format = "PCM", .BitRate = 96 * 3 * 24, .SampleRate = 44, .Channels = three, .Quantisation = 24},
       "its sample rate is not 48 kHz"},
      {{.Format = "AC3", .BitRate = 640, .SampleRate = 48}, "it has 640 kbit/s; a disc carries 448 at most"},
  };
  for (const auto& [sound, reason] : sounds) {
    EXPECT_EQ(JudgeAudio(sound).Reasons, std::vector{reason});
  }
}

TEST_F(Probes, KindsByTheFirstBytes) {
  const auto kind = [](const Bytes& bytes) { return SniffSource(bytes); };
  EXPECT_EQ(kind(BuildStream({})), SourceKind::Video);
  EXPECT_EQ(kind({}), SourceKind::Empty);
  EXPECT_EQ(kind(Bytes(5000)), SourceKind::Unknown);
  EXPECT_EQ(kind({0, 0, 1, 0xBA, 0x21}), SourceKind::ProgramStream);
  EXPECT_EQ(kind({0x0B, 0x77, 0}), SourceKind::Ac3);
  Bytes transport(600);
  transport[0] = transport[188] = transport[376] = 0x47;
  EXPECT_EQ(kind(transport), SourceKind::TransportStream);
  // Nothing of a disc is taken for what no disc carries: pictures cut anywhere, and sound.
  const Bytes film = BuildStream({.Gops = 2, .BytesI = 9000, .BytesP = 4000, .BytesB = 2000});
  for (std::size_t from = 0; from < film.size(); from += 501) {
    const SourceKind cut = kind({film.begin() + static_cast<std::ptrdiff_t>(from), film.end()});
    EXPECT_TRUE(cut == SourceKind::Video || cut == SourceKind::Unknown) << from;
  }
}

TEST_F(Probes, DtsWithAnExtension) {
  const auto extended = SharedFile("samples/dts-hd-6ch.dts");
  if (!extended) {
    GTEST_SKIP() << StreamsMissing;
  }
  const auto dts = QuickScanAudio(*extended, "", Rules::Players, Ui);
  EXPECT_TRUE(dts->HasExtension);
  EXPECT_EQ(dts->SampleRate, 48);
  EXPECT_EQ(dts->BitRate, 1536);
  EXPECT_EQ(dts->ChannelCount(), 6);
}

}  // namespace
}  // namespace quorvelant
