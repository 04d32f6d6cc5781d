#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "command_run.h"
#include "edit/new_track.h"
#include "model/project.h"
#include "script/script_writer.h"
#include "support/media.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

std::string Text(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

TEST(ProbeCommand, SaysInWordsWhatAFileIs) {
  const TempFolder folder;
  const std::string film = folder.Write("film.m2v", Text(BuildStream({.Closed = false})));
  const CommandRun video({"probe", film});
  EXPECT_EQ(video.Status, ExitDone);
  EXPECT_EQ(video.Out,
            film +
                ": MPEG2 video, PAL, 720x576, 4:3, 25.000 frames a second\n"
                "  length      00:00:01:23 (48 frames, 1.920 seconds)\n"
                "  pictures    48: 4 I, 13 P, 31 B; no repeat-field flags\n"
                "  groups      4: 4 of 12 pictures; 1 closed, 3 start with B pictures\n"
                "  bit rate    2.255 Mbit/s mean, 2.521 peak over one second, 9.800 by its header\n"
                "  index       none\n"
                "  disc        yes\n");
  const CommandRun audio({"probe", SampleAc3({.Channels = 6, .Kbps = 640, .Seconds = 3.2})});
  EXPECT_THAT(audio.Out, HasSubstr(": AC3, 48 kHz, 6 channels, 640 kbit/s\n  duration    00:00:03."));
  EXPECT_THAT(audio.Out, HasSubstr("  disc        no: it has 640 kbit/s; a disc carries 448 at most\n"));
}

TEST(ProbeCommand, JsonOfEveryKind) {
  const TempFolder folder;
  const std::string wave = SampleWav({.Bits = 24, .Seconds = 1});
  const std::string bitmap =
      folder.Write("b.bmp", std::string("BM") + std::string(12, '\0') + "\x28" + std::string(3, '\0') +
                                std::string("\xD0\x02\0\0\x40\x02\0\0", 8));
  const std::string system = folder.Write("s.mpg", Text({0, 0, 1, 0xBA, 0x21, 0, 0}));
  const std::string named = folder.Write("n.bin", Text({0x0B, 0x77, 0, 0, 0x14, 0x40, 0x40}));
  const std::string film =
      SampleVideo({.Standard = "NTSC", .Aspect = "16:9", .Frames = 40, .Pulldown = true});
  const CommandRun outcome({"probe", "--json", film, wave, bitmap, system, named});
  EXPECT_EQ(outcome.Status, ExitFailed);  // one of them is nothing that a disc is made of
  const auto json = nlohmann::json::parse(outcome.Out);
  ASSERT_EQ(json.size(), 5U);
  EXPECT_EQ(json[0]["video"]["displayedFrames"], 50);
  EXPECT_EQ(json[0]["video"]["frames"], 40);
  EXPECT_EQ(json[0]["video"]["aspect"], "16:9");
  EXPECT_EQ(json[0]["disc"]["fits"], true);
  EXPECT_EQ(json[1]["audio"]["bits"], 24);
  EXPECT_EQ(json[1]["audio"]["seconds"], 1.0);
  EXPECT_EQ(json[2]["bitmap"]["height"], 576);
  EXPECT_EQ(json[3]["disc"]["reasons"][0],
            "it is an MPEG program stream: take the elementary stream out of it first");
  EXPECT_EQ(json[4]["disc"]["notes"][0],
            "its name does not end in \".ac3\": sources are taken by their names");
}

TEST(ProbeCommand, WhatCannotBeRead) {
  const TempFolder folder;
  const CommandRun none({"probe", folder / "none", folder.Path().string()});
  EXPECT_EQ(none.Status, ExitFailed);
  ASSERT_EQ(none.Messages.size(), 2U);
  EXPECT_EQ(none.Messages[0].Text, "there is no such file");
  const CommandRun empty({"probe", folder.Write("e.m2v", ""), folder.Write("x.m2v", "abc")});
  EXPECT_THAT(empty.Out, HasSubstr("e.m2v: unknown\n  disc        no: it is empty\n"));
  const std::string png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\2\xD0\0\0\1\xE0\b\2", 26);
  const std::string jpeg("\xFF\xD8\xFF\xE0\0\x10JFIF\0\1\1\0\0\1\0\1\0\0\xFF\xC2\0\x11\b\2\x40\1\x60\3", 31);
  EXPECT_THAT(CommandRun({"probe", folder.Write("a.png", png)}).Out, HasSubstr("bitmap, 720x480\n"));
  EXPECT_THAT(CommandRun({"probe", folder.Write("a.jpg", jpeg)}).Out, HasSubstr("bitmap, 352x576\n"));
  EXPECT_EQ(CommandRun({"probe", folder.Write("b.jpg", jpeg.substr(0, 28))}).Status, ExitFailed);
  EXPECT_THAT(empty.Out, HasSubstr("no: it is neither MPEG video, AC3, DTS, WAV nor a bitmap\n"));
}

TEST(IndexCommand, BuildsReusesAndRebuilds) {
  const TempFolder folder;
  const std::string film = folder.Write("film.m2v", Text(BuildStream({})));
  EXPECT_EQ(CommandRun({"index", film}).Out, film + ".qvi: built, 48 frames, 4 entries\n");
  EXPECT_FALSE(std::filesystem::exists(film + ".gpi"));
  EXPECT_EQ(CommandRun({"index", "--pictures", film}).Out, film + ".qvi: built, 48 frames, 4 entries\n");
  EXPECT_THAT(TempFolder::Read(film + ".gpi"), testing::StartsWith("IPBBPBB"));
  std::filesystem::last_write_time(film + ".qvi",
                                   std::filesystem::last_write_time(film) - std::chrono::seconds(9));
  const CommandRun reused({"index", film});
  EXPECT_EQ(reused.Out, film + ".qvi: there already, 48 frames, 4 entries\n");
  ASSERT_EQ(reused.Messages.size(), 1U);
  EXPECT_EQ(reused.Messages[0].Text, "the index is older than the file; --force rebuilds it");
  EXPECT_THAT(CommandRun({"probe", film}).Out,
              HasSubstr("older than the file; rebuild it with \"index --force\""));
  EXPECT_EQ(CommandRun({"index", "--force", film}).Out, film + ".qvi: built, 48 frames, 4 entries\n");
  const CommandRun bad({"index", folder.Write("x.m2v", "abc")});
  EXPECT_EQ(bad.Status, ExitFailed);
  EXPECT_EQ(bad.Messages[0].Text, "it holds no MPEG video to index");
}

TEST(CheckCommand, SourcesAreOpenedWhenAsked) {
  const TempFolder folder;
  folder.Write("media/wide.ac3", Text({0x0B, 0x77, 0, 0, 0x54, 0x40, 0x40, 0}));
  Project project;
  Track& track = *NewSegment(project.Tracks, "Motion", "Film");
  track.VideoPlays[0].File = "media\\gone.m2v";
  track.HasAudio = true;
  AddAudioStream(track)->AudioPlays[0].File = "media\\wide.ac3";
  const std::string file = folder.Write("p.qvp", WriteScript(project));
  const auto report = [&](bool sources) {
    std::string text;
    for (const Message& message : CommandRun(sources ? std::vector<std::string>{"check", "--sources", file}
                                                     : std::vector<std::string>{"check", file})
                                      .Messages) {
      text += fmt::format("{}|{}|{}\n", message.Place, message.Title, message.Text);
    }
    return text;
  };
  EXPECT_THAT(report(true),
              HasSubstr("Track.0.Video1 (Film)|Missing Source|'media\\gone.m2v': there is no such file\n"));
  EXPECT_THAT(report(true), HasSubstr("Track.0.Audio1.AudioPlay1 (Film)|Refused Source|'media\\wide.ac3': "
                                      "its sample rate is not 48 kHz\n"));
  EXPECT_THAT(report(false), testing::Not(HasSubstr("Refused Source")));
}

}  // namespace
}  // namespace quorvelant
