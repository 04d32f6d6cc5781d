// Sound: the clocks of its packs, their headers, and what a decoder hears of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "mux/audio_stream.h"
#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

constexpr int TicksOf27MHz = 300;  // in a tick of the clock

// Every sample another value, in the bits that count; the file has no header.
std::string SoundFile(const TempFolder& folder, int bits, std::size_t values) {
  const std::size_t width = bits == 16 ? 2 : 3;
  std::string text;
  std::uint32_t random = 1;
  for (std::size_t i = 0; i < values; ++i) {
    random = random * 1664525 + 1013904223;
    const std::uint32_t value = bits == 20 ? random >> 8 & 0xFFFFF0 : random >> 8;
    for (std::size_t b = 0; b < width; ++b) {
      text.push_back(static_cast<char>(value >> (8 * b)));
    }
  }
  return folder.Write("sound.raw", text);
}

TEST(AudioPacks, FirstPacksGoAtTheirTimesAndDelayMovesTheSound) {
  const std::string ac3 = SampleAc3({.Seconds = 2});
  // 134 sectors are 19602.29 ticks, 153 are 22381.71; stream 0 of two goes one sector behind that.
  constexpr std::int64_t Sector = 2048 * TicksOf27MHz / 14;
  for (const auto& [delayMs, secondEarly, firstPts] :
       {std::tuple{0, 0, 25257}, {300, 0, 52257}, {-60, 5400 * TicksOf27MHz, 19857}}) {
    MuxInput input = MotionTrack({SampleVideo({.Frames = 25})});
    input.Audio = {Ac3Stream(ac3, 0), Ac3Stream(ac3, 5)};
    input.Audio[0].DelayMs = delayMs;
    MuxRun run;
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    const auto packs = run.PacksOf(0x80);
    // Packs wait for whatever is under way: two sectors at the most with these streams.
    EXPECT_NEAR(static_cast<double>(packs[0].Scr), 135.0 * Sector, 1.1 * Sector);
    EXPECT_NEAR(static_cast<double>(packs[1].Scr),
                static_cast<double>(std::max(154 * Sector - secondEarly, packs[0].Scr)), 3.0 * Sector);
    EXPECT_EQ(packs[0].Pts, firstPts);
    EXPECT_EQ(packs[1].Pts, firstPts + 3 * 2880);
    EXPECT_EQ(packs[0].BufferKib, 58);
    EXPECT_EQ(packs[1].BufferKib, 0);
    EXPECT_EQ(packs[0].Payload.size(), 2013U);
    EXPECT_EQ(packs[1].Payload.size(), 2016U);
    EXPECT_THAT((std::vector{packs[0].Frames, packs[0].Pointer, packs[1].Frames, packs[1].Pointer}),
                ElementsAre(3, 1, 3, 3 * 768 - 2013 + 1));
    const ReadPack other = run.PacksOf(0x85).front();
    EXPECT_GT(other.Scr, packs[0].Scr);
    EXPECT_EQ(other.Pts, 25257);
  }
}

TEST(AudioPacks, NextPackIsDueWhenAFrameLeavesThatMakesRoom) {
  const TempFolder folder;
  const MuxAudioStream input = Ac3Stream(folder.Write("s.ac3", std::string(100000, 'x')));
  RecordingUi ui;
  Random files(ui);
  files.DimFiles(9);
  AudioState stream{&input, AudioSource(files, 2, input, 1), {}};
  stream.FrameBytes = 1792;
  stream.FrameTicks = 2880;
  stream.BufferBytes = AudioBufferBytes(1792, 2880, 2);
  stream.SecondScr = Clock{153 * 2048};
  stream.DecodeTime = Clock::FromTicks(22377);
  stream.NextScr = Clock{134 * 2048};
  AdvanceAudioClock(stream, Clock{134 * 2048}, 2013);
  EXPECT_EQ(stream.NextScr, Clock{153 * 2048});
  // 4029 bytes; two frames leave, at 25257 and 28137, before 2016 more have room in 4096.
  AdvanceAudioClock(stream, Clock{153 * 2048}, 2016);
  EXPECT_EQ(stream.Due, Clock::FromTicks(28137));
  EXPECT_EQ(stream.NextScr, Clock{193 * 2048}) << "the first step of the grid from 28137 on";
  EXPECT_EQ(stream.Fill, 4029 - 2 * 1792 + 2016);
  AdvanceAudioClock(stream, stream.NextScr, 2016);
  EXPECT_EQ(stream.Due, Clock::FromTicks(31017));
  AlignAudioClock(stream, Clock::FromTicks(31000));
  EXPECT_EQ(stream.NextScr, Clock::FromTicks(31000) + SectorTicks) << "a new grid";
  AlignAudioClock(stream, Clock::FromTicks(31017));
  EXPECT_EQ(stream.NextScr, Clock::FromTicks(31017));
  EXPECT_EQ(AudioBufferBytes(320, 150, 2), 4096) << "PCM of 16 bits and two channels";
  EXPECT_EQ(AudioBufferBytes(2560, 2880, 1), 5120) << "AC3 at 640 kbit/s";
}

TEST(AudioPacks, PcmIsHeardBitForBit) {
  struct Case {
    int Bits, Channels, KiloHertz;
    const char* Decoded;  // sample format of the decoder
  };
  const std::string video = SampleVideo({.Frames = 50});
  for (const Case& c : {Case{16, 1, 48, "s16le"}, Case{16, 2, 48, "s16le"}, Case{16, 6, 48, "s16le"},
                        Case{20, 1, 48, "s24le"}, Case{20, 2, 48, "s24le"}, Case{24, 1, 48, "s24le"},
                        Case{24, 2, 48, "s24le"}, Case{24, 2, 96, "s24le"}, Case{20, 3, 48, "s24le"},
                        Case{24, 5, 48, "s24le"}}) {
    SCOPED_TRACE(testing::Message() << c.Bits << " bits, " << c.Channels << " channels");
    MuxRun run;
    const auto samples = static_cast<std::size_t>(c.KiloHertz) * 1000 + 7;
    const std::string sound = SoundFile(run.Folder, c.Bits, samples * static_cast<std::size_t>(c.Channels));
    MuxInput input = MotionTrack({video});
    input.Audio = {PcmStream(sound, c.Bits, c.Channels, c.KiloHertz, 3)};
    ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
    const Bytes source = FileBytes(sound);
    Bytes heard = run.Decoded("a:0", c.Decoded);
    ASSERT_GE(heard.size(), source.size());
    ASSERT_LE(heard.size(), source.size() + 4 * 3 * 8) << "made up to a whole group";
    heard.resize(source.size());
    EXPECT_EQ(heard, source);

    int number = 0;
    std::int64_t pts = 25257;
    for (const ReadPack& pack : run.PacksOf(0xA3)) {
      if (pack.Frames == 0) {
        continue;
      }
      EXPECT_EQ(pack.AudioBits[0], number);
      EXPECT_EQ(pack.Pts, pts);
      number = (number + pack.Frames) % 20;
      pts += 150 * pack.Frames;
    }
    EXPECT_GT(pts, 25257 + 89900);
  }
}

TEST(AudioPacks, PcmHeaderCountsTheFrameBegunAtThePacksEnd) {
  MuxRun run;
  MuxInput input = MotionTrack({SampleVideo({.Frames = 25})});
  input.Audio = {PcmStream(SoundFile(run.Folder, 16, 96000), 16, 2)};
  input.Audio[0].Emphasis = true;
  ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
  const auto packs = run.PacksOf(0xA0);
  // 2010 bytes take 251 pairs of 8 bytes; a frame has 320: six whole ones and 22 samples of the seventh.
  EXPECT_EQ(packs[0].Payload.size(), 2008U);
  EXPECT_EQ(packs[0].Frames, 7);
  EXPECT_EQ(packs[0].Pointer, 4);
  EXPECT_THAT(packs[0].AudioBits, ElementsAre(0x80, 0x01, 0x80));
  EXPECT_EQ(packs[1].Pointer, (80 - 22) * 4 + 4);
  EXPECT_THAT(packs[1].AudioBits, ElementsAre(0x87, 0x01, 0x80));
}

TEST(AudioPacks, ClassicRulesSwapBytePairsWhateverTheBits) {
  MuxRun run(Rules::Classic);
  MuxInput input = MotionTrack({SampleVideo({.Frames = 25})});
  input.Audio = {PcmStream(SoundFile(run.Folder, 24, 48000), 24, 2)};
  ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
  Bytes swapped = FileBytes(input.Audio[0].Paths[0]);
  for (std::size_t i = 0; i + 1 < swapped.size(); i += 2) {
    std::swap(swapped[i], swapped[i + 1]);
  }
  EXPECT_EQ(run.Stream(0xA0), swapped);
}

TEST(AudioPacks, SoundRunsOnAcrossFilesAndEndsWithThePicture) {
  MuxRun run;
  const std::string first = SampleAc3({.Seconds = 1});
  const std::string second = SampleAc3({.Channels = 1, .Seconds = 3});
  MuxInput input = MotionTrack({SampleVideo({.Frames = 50})});
  input.Audio = {Ac3Stream(first)};
  input.Audio[0].Paths.push_back(second);
  input.Audio[0].DataOffsets.push_back(0);
  input.Audio[0].DataBytes.push_back(TempFolder::Read(second).size());
  ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
  Bytes expected = FileBytes(first);
  const Bytes behind = FileBytes(second);
  expected.insert(expected.end(), behind.begin(), behind.end());
  const Bytes sent = run.Stream(0x80);
  expected.resize(sent.size());
  EXPECT_EQ(sent, expected);
  // 50 frames are 180000 ticks: 62.5 frames of sound, the one that has begun to its end.
  EXPECT_EQ(sent.size(), 63U * 768U);
  EXPECT_THAT(run.Complaints(), testing::IsEmpty());
}

// What looks like a frame and is none, before the first frame and within the sound: every frame is counted,
// and the pointers lead to frames.
TEST(AudioPacks, FramesAreFoundAgainAfterDamage) {
  const auto frame = [](std::uint8_t rate, std::uint8_t version, std::size_t bytes) {
    Bytes made(bytes, 0x55);
    PutBytes(made, 0, 6, std::uint64_t{0x0B770102} << 16 | rate << 8 | version);
    return made;
  };
  StreamBuilder noise;
  noise.Raw(Bytes{0x55, 0x0B})
      .Raw(frame(0x14, 0x48, 100))  // bsid 9
      .Raw(frame(0x26, 0x40, 100))  // a size code beyond the table
      .Raw(frame(0x54, 0x40, 100))  // 44.1 kHz
      .Raw(Bytes{0x0B, 0x78, 1, 2, 0x14, 0x40});
  StreamBuilder stream;
  stream.Raw(noise.Data());
  for (int i = 0; i < 30; ++i) {
    stream.Raw(frame(0x14, 0x40, 768));
    if (i % 7 == 3) {
      stream.Raw(noise.Data()).Raw(frame(0x1E, 0x40, 100));  // the last: of another size
    }
  }
  MuxRun run;
  MuxInput input = MotionTrack({SampleVideo({.Frames = 25})});
  input.Audio = {Ac3Stream(Saved(run.Folder, stream.Data(), "damaged.ac3"))};
  ASSERT_EQ(run.Mux(input), MuxOutcome::Done);
  Bytes expected(stream.Data().begin() + static_cast<std::ptrdiff_t>(noise.Size()), stream.Data().end());
  const Bytes sent = run.Stream(0x80);
  ASSERT_GE(sent.size(), 29 * 768U);
  expected.resize(sent.size());
  EXPECT_EQ(sent, expected);
  int frames = 0;
  for (const ReadPack& pack : run.PacksOf(0x80)) {
    frames += pack.Frames;
    if (pack.Frames > 0) {
      const auto at = static_cast<std::size_t>(pack.Pointer) - 1;
      EXPECT_EQ(pack.Payload.at(at), 0x0B);
      EXPECT_EQ(at + 4 < pack.Payload.size() ? pack.Payload[at + 4] : 0x14, 0x14);
    }
  }
  EXPECT_EQ(frames, 30);
}

TEST(AudioPacks, BadSoundIsRefusedByName) {
  const TempFolder folder;
  const std::string video = SampleVideo({.Frames = 25});
  Bytes changed = FileBytes(SampleAc3({.Seconds = 2}));
  changed[768 * 10 + 4] |= 0x40;
  MuxAudioStream early = Ac3Stream(SampleAc3({.Seconds = 2}));
  MuxAudioStream gone = early;
  early.DelayMs = -2000;
  gone.DataBytes[0] += 1;
  const std::pair<MuxAudioStream, const char*> cases[] = {
      {Ac3Stream(folder.Write("noise.ac3", std::string(5000, 'x'))), "holds no AC3 frame of 48 kHz"},
      {Ac3Stream(Saved(folder, changed, "bad.ac3")), "changes its sample rate"},
      {early, "with a delay of -2000 ms"},
      {gone, "became shorter while it was read"},
      {PcmStream(video, 18, 2), "PCM sound of 18 bits, 48 kHz and 2 channels"},
  };
  for (const auto& [stream, text] : cases) {
    MuxInput input = MotionTrack({video});
    input.Audio = {stream};
    MuxRun run;
    EXPECT_EQ(run.Mux(input), MuxOutcome::Failed);
    ASSERT_EQ(run.Ui.Messages.size(), 1U) << text;
    EXPECT_THAT(run.Ui.Messages[0].Text, testing::HasSubstr(text));
  }
}

}  // namespace
}  // namespace quorvelant
