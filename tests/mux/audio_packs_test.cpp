// Sound: the clocks of its packs, their headers, and what a decoder hears of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "mux/audio_stream.h"
#include "mux/messages.h"
#include "mux/next_sector.h"
#include "mux_run.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

constexpr int TicksOf27MHz = 300;  // in a tick of the clock

// Every sample another value, in the bits that count; the file has no header.
std::string SoundFile(const TempFolder& folder, int bits, int values) {
  std::string text;
  std::uint32_t random = 1;
  for (int i = 0; i < values; ++i) {
    random = random * 1664525 + 1013904223;
    const std::uint32_t value = bits == 20 ? random >> 8 & 0xFFFFF0 : random >> 8;
    for (int shift = 0; shift < (bits == 16 ? 16 : 24); shift += 8) {
      text.push_back(static_cast<char>(value >> shift));
    }
  }
  return folder.Write("sound.raw", text);
}

TEST(AudioPacks, FirstPacksGoAtTheirTimesAndDelayMovesTheSound) {
  const std::string ac3 = SampleAc3({.Seconds = 2});
  // 134 sectors are 19602.29 ticks, 153 are 22381.71; stream 0 of two goes one sector after that.
  constexpr double Sector = 2048.0 * TicksOf27MHz / 14;
  // With -60 ms it goes two sectors earlier, to be there in time beside another.
  for (const auto& [delayMs, secondEarly, firstPts, firstSector] :
       {std::tuple{0, 0, 25257, 135}, {300, 0, 52257, 135}, {-60, 5400 * TicksOf27MHz, 19857, 133}}) {
    std::vector streams{Ac3Stream(ac3, 0), Ac3Stream(ac3, 5)};
    streams[0].DelayMs = delayMs;
    MuxRun run;
    ASSERT_EQ(run.Mux(FilmWith(streams)), MuxOutcome::Done);
    const std::vector<ReadPack> packs = run.PacksOf(0x80);
    const auto first = static_cast<double>(packs[0].Scr);
    // Packs wait for whatever is under way: two sectors at the most with these streams.
    EXPECT_NEAR(first, firstSector * Sector, 1.1 * Sector);
    EXPECT_NEAR(static_cast<double>(packs[1].Scr), std::max(154 * Sector - secondEarly, first), 3 * Sector);
    EXPECT_THAT((std::vector{packs[0].Pts, packs[1].Pts}), ElementsAre(firstPts, firstPts + 3 * 2880));
    EXPECT_THAT((std::vector{packs[0].BufferKib, packs[1].BufferKib}), ElementsAre(58, 0));
    EXPECT_THAT((std::vector{packs[0].Payload.size(), packs[1].Payload.size()}), ElementsAre(2013, 2016));
    EXPECT_THAT((std::vector{packs[0].Frames, packs[0].Pointer, packs[1].Frames, packs[1].Pointer}),
                ElementsAre(3, 1, 3, 3 * 768 - 2013 + 1));
    const ReadPack other = run.PacksOf(0x85).front();
    EXPECT_GT(other.Scr, packs[0].Scr);
    EXPECT_EQ(other.Pts, 25257);
  }
}

TEST(AudioPacks, NextPackIsDueWhenAFrameLeavesThatMakesRoom) {
  const TempFolder folder;
  const MuxAudioStream input = Ac3Stream(folder.Write("s.ac3", "x"));
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
  EXPECT_EQ(stream.NextScr, Clock{193 * 2048}) << "the first step of the grid from 28137 on";
  EXPECT_EQ(stream.Fill, 4029 - 2 * 1792 + 2016);
  EXPECT_EQ(AudioBufferBytes(2560, 2880, 1), 5120) << "AC3 at 640 kbit/s";
}

TEST(AudioPacks, TiesGoInTheirOrderAndSoundBeyondTheLimitIsPassedOver) {
  const std::vector<AudioClaim> two{{Clock{100}, 500}, {Clock{100}, 499}};
  EXPECT_EQ(NextSectorKind(Clock{100}, Clock{100}, two, {}), NextSector{SectorKind::Nav});
  EXPECT_EQ(NextSectorKind(Clock{0}, Clock{100}, two, {}), NextSector{SectorKind::Video});
  EXPECT_EQ(NextSectorKind({}, Clock{101}, two, {}), (NextSector{SectorKind::Audio, 0}));
  EXPECT_EQ(NextSectorKind({}, Clock{101}, two, 500), (NextSector{SectorKind::Audio, 1}));
}

TEST(AudioPacks, PcmIsHeardBitForBit) {
  struct Case {
    int Bits, Channels, KiloHertz = 48;
  };
  for (const Case& c :
       {Case{16, 1}, Case{16, 2}, Case{16, 6}, Case{20, 1}, Case{20, 2}, Case{24, 1}, Case{24, 2},
        Case{24, 2, 96}, Case{20, 3}, Case{24, 5}, Case{16, 8}, Case{20, 6}, Case{16, 4, 96}}) {
    SCOPED_TRACE(testing::Message() << c.Bits << " bits, " << c.Channels << " channels");
    MuxRun run;
    const std::string sound = SoundFile(run.Folder, c.Bits, (c.KiloHertz * 1000 + 7) * c.Channels);
    ASSERT_EQ(run.Mux(FilmWith({PcmStream(sound, c.Bits, c.Channels, c.KiloHertz, 3)}, 50)),
              MuxOutcome::Done);
    const Bytes source = FileBytes(sound);
    Bytes heard = run.Decoded("a:0", c.Bits == 16 ? "s16le" : "s24le");
    ASSERT_GE(heard.size(), source.size());
    ASSERT_LE(heard.size(), source.size() + 4 * 3 * 8) << "made up to a whole group";
    heard.resize(source.size());
    EXPECT_EQ(heard, source);

    int number = 0;
    for (const ReadPack& pack : run.PacksOf(0xA3)) {
      if (pack.Frames > 0) {
        EXPECT_EQ(pack.AudioBits[0], number % 20);
        EXPECT_EQ(pack.Pts, 25257 + 150 * number);
        EXPECT_GT(*pack.Pts, pack.Scr / TicksOf27MHz + 146) << "in time";
        number += pack.Frames;
      }
    }
    EXPECT_GT(number, 599);
  }
}

TEST(AudioPacks, PcmHeaderCountsTheFrameBegunAtThePacksEnd) {
  MuxRun run;
  MuxAudioStream sound = PcmStream(SoundFile(run.Folder, 16, 96000), 16, 2);
  sound.Emphasis = true;
  ASSERT_EQ(run.Mux(FilmWith({sound})), MuxOutcome::Done);
  const std::vector<ReadPack> packs = run.PacksOf(0xA0);
  // 2010 bytes take 251 pairs of 8 bytes; a frame has 320: six whole ones and 22 samples of the seventh.
  EXPECT_EQ(packs[0].Payload.size(), 2008U);
  EXPECT_THAT((std::vector{packs[0].Frames, packs[0].Pointer, packs[1].Pointer}),
              ElementsAre(7, 4, (80 - 22) * 4 + 4));
  EXPECT_THAT(packs[0].AudioBits, ElementsAre(0x80, 0x01, 0x80));
  EXPECT_THAT(packs[1].AudioBits, ElementsAre(0x87, 0x01, 0x80));
}

TEST(AudioPacks, ClassicRulesSwapBytePairsWhateverTheBits) {
  MuxRun run(Rules::Classic);
  const std::string sound = SoundFile(run.Folder, 24, 48000);
  ASSERT_EQ(run.Mux(FilmWith({PcmStream(sound, 24, 2)})), MuxOutcome::Done);
  Bytes swapped = FileBytes(sound);
  for (std::size_t i = 0; i + 1 < swapped.size(); i += 2) {
    std::swap(swapped[i], swapped[i + 1]);
  }
  EXPECT_EQ(run.Stream(0xA0), swapped);
}

TEST(AudioPacks, SoundRunsOnAcrossFilesAndEndsWithThePicture) {
  MuxRun run;
  MuxAudioStream sound = Ac3Stream(SampleAc3({.Seconds = 1}));
  sound.Paths.push_back(SampleAc3({.Seconds = 3}));
  sound.DataOffsets.push_back(0);
  sound.DataBytes.push_back(FileBytes(sound.Paths[1]).size());
  ASSERT_EQ(run.Mux(FilmWith({sound}, 50)), MuxOutcome::Done);
  Bytes expected = StreamBuilder().Raw(FileBytes(sound.Paths[0])).Raw(FileBytes(sound.Paths[1])).Data();
  // 50 frames are 180000 ticks: 62.5 frames of sound, the one that has begun to its end.
  expected.resize(63U * 768U);
  EXPECT_EQ(run.Stream(0x80), expected);
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
  StreamBuilder stream = noise;
  for (int i = 0; i < 30; ++i) {
    stream.Raw(frame(0x14, 0x40, 768));
    if (i % 7 == 3) {
      stream.Raw(noise.Data()).Raw(frame(0x1E, 0x40, 100));  // the last: of another size
    }
  }
  MuxRun run(Rules::Classic);
  ASSERT_EQ(run.Mux(FilmWith({Ac3Stream(Saved(run.Folder, stream.Data()))})), MuxOutcome::Done);
  EXPECT_TRUE(run.Ui.Messages.at(0).Is(message::AudioBroken));
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

}  // namespace
}  // namespace quorvelant
