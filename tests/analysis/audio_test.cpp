#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <tuple>

#include "analysis/ac3_header.h"
#include "analysis/audio_headers.h"
#include "analysis/quick_scan.h"
#include "analysis/wave_file.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// A/52 table 5.18: two codes a rate. At 48 kHz, the only rate of a disc, a frame lasts 32 ms.
TEST(Ac3Header, EveryRateAndSampleRate) {
  const std::int32_t rates[] = {32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                                192, 224, 256, 320, 384, 448, 512, 576, 640};
  const std::int32_t hertz[] = {48000, 44100, 32000, 0};
  for (unsigned byte = 0; byte < 256; ++byte) {
    const Ac3Header header = ReadAc3Header(Bytes{0x0B, 0x77, 0, 0, static_cast<std::uint8_t>(byte), 0x45});
    const unsigned row = byte % 64 / 2;
    const std::int32_t kbps = row < std::size(rates) ? rates[row] : 0;
    EXPECT_EQ(header.Kbps, kbps) << byte;
    EXPECT_EQ(header.FrameBytes(), 32 * kbps / 8) << byte;
    EXPECT_EQ(header.SampleRateHz, hertz[byte / 64]) << byte;
    EXPECT_EQ(header.SampleRate(), byte < 64 ? 48 : 0) << byte;
    EXPECT_TRUE(header.Sync && header.StreamVersion == 8 && header.ServiceMode == 5);
  }
  const ByteView noBytes;
  EXPECT_FALSE(ReadAc3Header(noBytes).LooksLikeSync);
  EXPECT_FALSE(ReadAc3Header(Bytes{0x77, 0x0B}).LooksLikeSync);
  for (const Bytes& half : {Bytes{0x0B, 0x00}, Bytes{0x00, 0x77}}) {
    EXPECT_TRUE(ReadAc3Header(half).LooksLikeSync && !ReadAc3Header(half).Sync);
  }
}

// Left, right, centre, left and right surround, single rear, low frequency, total.
TEST(Ac3Header, ChannelsByMode) {
  const struct {
    std::uint8_t ModeByte;
    AudioChannels Channels;
  } cases[] = {
      {0x00, {1, 1, 0, 0, 0, 0, 0, 2}}, {0x10, {1, 1, 0, 0, 0, 0, 1, 3}},  // 000: the bit after acmod
      {0x20, {0, 0, 1, 0, 0, 0, 0, 1}}, {0x30, {0, 0, 1, 0, 0, 0, 1, 2}},  // 001
      {0x58, {1, 1, 0, 0, 0, 0, 0, 2}}, {0x44, {1, 1, 0, 0, 0, 0, 1, 3}},  // 010: two bits between
      {0x60, {1, 1, 1, 0, 0, 0, 0, 3}}, {0x84, {1, 1, 0, 0, 0, 1, 1, 4}},  // 011, 100
      {0xA1, {1, 1, 1, 0, 0, 1, 1, 5}}, {0xC4, {1, 1, 0, 1, 1, 0, 1, 5}},  // 101: four bits, 110
      {0xE1, {1, 1, 1, 1, 1, 0, 1, 6}}, {0xFE, {1, 1, 1, 1, 1, 0, 0, 5}},  // 111
  };
  for (const auto& given : cases) {
    EXPECT_EQ(ReadAc3Channels(Bytes{0x0B, 0x77, 0, 0, 0, 0x40, given.ModeByte}), given.Channels)
        << int{given.ModeByte};
  }
}

TEST(DtsHeader, Fields) {
  // Frame of 2013 bytes, AMODE 9, SFREQ 13, RATE 24 (1536), LFF 2.
  Bytes head{0x7F, 0xFE, 0x80, 0x01, 0xFC, 0x3C, 0x7D, 0xC2, 0x77, 0x00, 0x04};
  EXPECT_TRUE(dts::LooksLikeSync(head));
  EXPECT_EQ(dts::FrameBytes(head), 2013);
  EXPECT_EQ(dts::SampleRate(head), 48);
  EXPECT_EQ(dts::Kbps(head), 1536);
  EXPECT_EQ(dts::Channels(head), (AudioChannels{1, 1, 1, 1, 1, 0, 1, 6}));
  const std::uint8_t counts[] = {1, 2, 2, 2, 2, 3, 3, 4, 4, 5};
  for (unsigned mode = 0; mode < std::size(counts); ++mode) {
    head[7] = static_cast<std::uint8_t>(0xC0 | (mode >> 2));
    head[8] = static_cast<std::uint8_t>((mode << 6) | 0x37);
    head[10] = mode % 2 == 0 ? 0 : 6;  // 00 and 11: no low frequency channel
    EXPECT_EQ(dts::Channels(head)[ChannelTotal], counts[mode]) << mode;
  }
  head[8] = 0x0F;
  EXPECT_EQ(dts::SampleRate(head), 0);
}

TEST(Pcm, RatesThatADiscCarries) {
  const std::tuple<int, int, int> cases[] = {{48, 16, 8}, {48, 20, 6}, {48, 24, 5},
                                             {96, 16, 4}, {96, 20, 3}, {96, 24, 2}};
  for (const auto& [kHz, bits, most] : cases) {
    for (int channels = 0; channels < 10; ++channels) {
      EXPECT_EQ(CheckPcmRate(kHz, channels, bits, kHz * channels * bits), channels >= 1 && channels <= most);
    }
    EXPECT_FALSE(CheckPcmRate(kHz, 1, bits, kHz * bits + 1));
  }
  EXPECT_FALSE(CheckPcmRate(44, 2, 16, 44 * 32));
  EXPECT_FALSE(CheckPcmRate(48, 2, 8, 48 * 16));
}

TEST(Durations, CountByTheRateGivenOrTheStandard) {
  EXPECT_EQ(FormatDuration(600 * 3725 + 599, 600, {}), "01:02:05:599");
  EXPECT_EQ(FormatDuration(61, 0, "NTSC"), "00:00:02:01");
  EXPECT_EQ(FormatDuration(61, 0, "anything", true), "00:00:02:11");
  EXPECT_EQ(FormatDuration(61, 0, {}, true), "00:00:02:01");
  EXPECT_EQ(FormatDuration(61, 0, {}), "00:00:02:11");
}

// The low bytes of `value`, the lowest first.
std::string Little(std::uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) {
    text += static_cast<char>(value >> (8 * i));
  }
  return text;
}

std::string Chunk(const std::string& id, const std::string& content, std::optional<std::uint32_t> size = {}) {
  return id + Little(size.value_or(content.size()), 4) + content + std::string(content.size() % 2, '\0');
}

// 48 kHz, two channels of 24 bits.
std::string Format(unsigned tag) {
  return Chunk("fmt ", Little(tag, 2) + Little(2, 2) + Little(48000, 4) + Little(0, 6) + Little(24, 2));
}

std::string Extensible(unsigned subFormat) {
  const std::string head = Format(0xFFFE).substr(8);
  return Chunk("fmt ", head + Little(0x180016, 4) + Little(3, 4) + Little(subFormat, 2) + Little(~0U, 8) +
                           Little(7, 6));
}

std::string LongSizes(std::uint64_t dataBytes) {
  return Chunk("ds64", Little(0x0101010101010101, 8) + Little(dataBytes, 8) + std::string(12, '\0'));
}

std::string Wave(const std::string& chunks, const std::string& id = "RIFF") {
  return id + "\x10\x20\x30\x40WAVE" + chunks;
}

class AudioFiles : public testing::Test {
 protected:
  AudioAttributes Scan(const std::string& file) {
    const auto audio = QuickScanAudio(file, "", Rules::Players, Ui);
    EXPECT_TRUE(audio) << file;
    return audio.value_or(AudioAttributes{});
  }
  WaveFile ReadWave(const std::string& content, const Rules& rules = Rules::Players) {
    return ReadWaveFile(Folder.Write("x.wav", content), rules, Ui);
  }
  TempFolder Folder;
  RecordingUi Ui;
};

TEST_F(AudioFiles, WavHeadsOfEveryKind) {
  const std::string format = Format(1);
  const std::string sound(60, 's');
  const std::string data = Chunk("data", sound);
  const std::string list = Chunk("LIST", "abcd");
  struct Case {
    std::string Content;
    WaveFault Fault;
    std::uint64_t Offset = 0;
    std::uint64_t Bytes = 0;
  };
  const Case cases[] = {
      {Wave(format + data), WaveFault::None, 44, 60},
      {Wave(Chunk("LIST", "abc") + format + Chunk("fact", "1234") + data), WaveFault::None, 68, 60},
      {Wave(Extensible(1) + data + Chunk("LIST", "x")), WaveFault::None, 68, 60},
      {Wave(LongSizes(40) + format + Chunk("data", sound, ~0U), "RF64"), WaveFault::None, 80, 40},
      {Wave(format + Chunk("data", sound, ~0U)), WaveFault::None, 44, 60},   // written to a pipe
      {Wave(format + Chunk("data", sound, 5000)), WaveFault::None, 44, 60},  // cut
      {Wave(Extensible(3) + data), WaveFault::NotPcm},
      {Wave(Format(3) + data), WaveFault::NotPcm},
      {Wave(format + Chunk("LIST", sound)), WaveFault::NoData},
      {Wave(data), WaveFault::NotWave},
      {Wave(std::string(100000, '\0')), WaveFault::NotWave},  // empty chunks without end
      {Wave(format, "RIFX"), WaveFault::NotWave},
      {"", WaveFault::NotWave},
      {"RIF", WaveFault::NotWave},
      {Wave(""), WaveFault::NotWave},
  };
  for (const Case& given : cases) {
    SCOPED_TRACE(&given - cases);
    const WaveFile wave = ReadWave(given.Content);
    EXPECT_EQ(wave.Fault, given.Fault);
    EXPECT_EQ(wave.DataOffset, given.Offset);
    EXPECT_EQ(wave.DataBytes, given.Bytes);
    if (given.Fault == WaveFault::None) {
      EXPECT_EQ(wave.Format.SamplesPerSecond, 48000U);
      EXPECT_EQ(wave.Format.BitsPerSample, 24);
    }
  }
  // Numbers that no sound has are told as they are, as far as they go.
  const std::string huge = Chunk("fmt ", Little(1, 2) + std::string(14, '\xFF'));
  EXPECT_EQ(Scan(Folder.Write("h.wav", Wave(huge + data))).BitRate, std::numeric_limits<std::int32_t>::max());
  // Without the walk the bytes from 44 on are sound, whatever they are.
  const WaveFile plain = ReadWave(Wave(format + list + data), Rules::Classic);
  EXPECT_EQ(plain.DataOffset, 44U);
  EXPECT_EQ(plain.DataBytes, 72U);
  EXPECT_EQ(ReadWaveFormat(Folder / "x.wav", Ui).Channels, 2);
  EXPECT_EQ(ReadWaveFormat(Folder.Write("z.wav", Wave(list + format)), Ui), WaveFormat{});
}

// Files beyond 4 GiB, with nothing in most of their length.
TEST_F(AudioFiles, WavOfMoreThanFourGigabytes) {
  constexpr std::uint64_t Samples = 0x1'2345'6780;
  const std::string head =
      Folder.Write("long.wav", Wave(LongSizes(Samples) + Format(1) + Chunk("data", "", ~0U), "RF64"));
  std::filesystem::resize_file(head, Samples + 500);
  const WaveFile wave = ReadWaveFile(head, Rules::Players, Ui);
  EXPECT_EQ(wave.DataOffset, 80U);
  EXPECT_EQ(wave.DataBytes, Samples);
  EXPECT_EQ(wave.FileBytes, Samples + 500);

  // A chunk of nearly 4 GiB before the samples, whose head stands past them.
  constexpr std::uint32_t Junk = 0xFFFFFFF0;
  const std::string late = Folder.Write("late.wav", Wave(Format(1) + Chunk("JUNK", "", Junk)));
  std::filesystem::resize_file(late, 44 + std::uint64_t{Junk});
  std::ofstream(late, std::ios::binary | std::ios::app) << Chunk("data", std::string(60, 's'));
  EXPECT_EQ(ReadWaveFile(late, Rules::Players, Ui).DataOffset, 52 + std::uint64_t{Junk});
  EXPECT_EQ(ReadWaveFile(late, Rules::Players, Ui).DataBytes, 60U);
  EXPECT_EQ(ReadWaveFile(late, Rules::Classic, Ui).DataBytes, 68 + std::uint64_t{Junk});
}

TEST_F(AudioFiles, WhatIsNotWhatItsNameSays) {
  const Bytes words(64, 'x');
  const Bytes ac3{0x0B, 0x77, 0, 0, 0x14, 0x40};
  const std::string noAc3 = "it is no AC3 stream";
  const std::tuple<std::string, Bytes, std::string> cases[] = {
      {"a.AC3", words, noAc3},
      {"a.ac3", {}, noAc3},
      {"a.ac3", {0x0B, 0x77, 1, 1, 0x26, 0x40, 0}, noAc3},
      {"a.ac3", {0x0B, 0x77, 1, 1, 0x14, 0x80, 0}, "it is Enhanced AC3, which players don't read"},
      {"a.dts", words, "it is no DTS stream"},
      {"a.wav", words, "it is no WAV file"},
  };
  for (const auto& [name, content, problem] : cases) {
    EXPECT_EQ(Scan(Folder.Write(name, content)).Problem, problem);
  }
  EXPECT_FALSE(QuickScanAudio(Folder.Write("a.mp3", words), "", Rules::Players, Ui));
  EXPECT_FALSE(QuickScanAudio(Folder / "none.ac3", "", Rules::Players, Ui));
  EXPECT_FALSE(QuickScanAudio(Folder.Path().string(), "AC3", Rules::Players, Ui));
  EXPECT_FALSE(QuickScanVideo(Folder / "none.m2v", Ui));
  EXPECT_TRUE(Ui.Messages.empty());
  EXPECT_EQ(GetAc3FrameSize(Folder.Write("X.AC3", ac3), Ui), 768);
  EXPECT_EQ(GetAc3FrameSize(Folder.Write("x.dat", ac3), Ui), 0);
  EXPECT_EQ(GetAudioType("dir.wav/film"), "");
}

}  // namespace
}  // namespace quorvelant
