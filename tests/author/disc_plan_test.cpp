// What stands in the way of a disc, and how much room it takes, before its first sector is written.
#include "author/disc_plan.h"

#include <fmt/format.h>

#include "author/stream_rates.h"
#include "disc_maker.h"
#include "picture/bmp.h"
#include "support/stream_builder.h"

namespace quorvelant {
namespace {

struct PlanTest : testing::Test {
  // The root menu shows the film as well: whatever is wrong with it concerns two domains.
  PlanTest() { maker.LoadSmall(10); }

  std::string Found(const Rules& rules = Rules::Players) {
    BmpLoader bitmaps;
    std::string found;
    for (const Message& finding : PlanDisc(maker.Disc, rules, maker.Ui, &bitmaps).Findings) {
      found += fmt::format("{} {} {}\n", finding.Level == Severity::Error ? "E" : "W", finding.Code,
                           finding.Place);
    }
    return found;
  }

  Track& Film() { return maker.Disc.Tracks[0]; }

  DiscMaker maker{{.Frames = 250}};
};

TEST_F(PlanTest, WhatIsWrongIsFoundOnce) {
  EXPECT_EQ(Found(), "");
  Film().AudioStreams.push_back(Film().AudioStreams[0]);
  EXPECT_EQ(Found(), "E stream-number-repeated Track.0.Audio2\n");
  Film().AudioStreams[1].Format.clear();
  EXPECT_EQ(Found(), "E audio-kind-unknown Track.0.Audio2\n");
  Film().AudioStreams[1] = {};
  Film().AudioStreams[1].StreamNumber = 8;
  Film().AudioStreams[1].Format = "AC3";
  EXPECT_EQ(Found(), "") << "the check of the project warns of it";
  Film().AudioStreams[0].AudioPlays[0].File = maker.Temp.Write("no.ac3", "no sound");
  Film().VideoPlays[0].File = maker.Temp / "gone.m2v";
  Film().HighlightPlays.emplace_back().Buttons.emplace_back().Up = "nowhere";
  EXPECT_EQ(Found(),
            "E source-missing Track.0.Video1\nE audio-head Track.0.Audio1.AudioPlay1\n"
            "W button-link-missing Track.0.High1 entry 1\nW button-area Track.0.High1 entry 1\n"
            "W buttons-without-subtitle Track.0.High1 entry 1\n");
  Film().HighlightPlays.clear();
  Film().AudioStreams.clear();
  Film().VideoPlays[0].Removed = true;
  EXPECT_EQ(Found(), "E track-without-video Track.0\n");
}

TEST_F(PlanTest, PicturesAreOpened) {
  Film().HasSubs = true;
  SubPicturePlay& play = Film().SubStreams.emplace_back().SubPlays.emplace_back();
  play.File = "gone.bmp";
  play.End = "00:00:01:00";
  EXPECT_EQ(Found(), "E source-missing Track.0.Sub1 entry 1\n");
  Film().SubStreams.clear();
  Film().AudioStreams.clear();
  Film().TrackType = "SlideShow";
  Film().VideoPlays[0].File = maker.Temp.Write("slide.bmp", "BM, and no more");
  EXPECT_THAT(Found(), testing::StartsWith("E "));
  EXPECT_EQ(maker.Author().Outcome, AuthorOutcome::Failed);
  EXPECT_FALSE(std::filesystem::exists(maker.Folder));
}

TEST_F(PlanTest, SourcesThatNoDiscCarriesAreRefusedByTheRulesOfPlayers) {
  Film().VideoPlays[0].File = maker.Temp.Write("small.m2v", BuildStream({.Sequence = {.Width = 480}}));
  Film().AudioStreams[0].AudioPlays[0].File = SampleAc3({.Rate = 44100});
  EXPECT_EQ(Found(), "E video-frame-size Track.0.Video1\nE audio-sample-rate Track.0.Audio1.AudioPlay1\n");
  Rules without = Rules::Players;
  without.RefusesUnfitSources = false;
  EXPECT_EQ(Found(without),
            "W video-frame-size Track.0.Video1\nE audio-sample-rate Track.0.Audio1.AudioPlay1\n");
}

// Streams of 448 kbit/s take 0.455 Mbit/s of packs each, and PCM of eight channels 6.25.
TEST_F(PlanTest, StreamsBeyondTheRateAreRefusedBeforeTheyAreMultiplexed) {
  const struct {
    std::size_t Ac3, Pcm;
    int VideoKbps;  // all the time; 0: it varies
    double Seconds;
    const char* Players;
  } cases[] = {
      {8, 0, 6000, 7200, ""},
      {8, 0, 6400, 30, ""},  // what is too much waits in the buffer
      {8, 0, 6600, 60, "film-beyond-rate"},
      {8, 0, 0, 7200, ""},
      {0, 1, 3600, 7200, ""},
      {0, 1, 4200, 60, "film-beyond-rate"},
      {8, 1, 0, 60, "streams-beyond-rate"},
      {0, 2, 100, 60, "streams-beyond-rate"},
  };
  for (const auto& test : cases) {
    MuxInput input;
    for (std::size_t i = 0; i < test.Ac3 + test.Pcm; ++i) {
      MuxAudioStream& stream = input.Audio.emplace_back();
      stream.Pcm = i >= test.Ac3;
      stream.Traits.BitRate = 448;
      stream.Traits.SampleRate = 48;
      stream.Traits.Quantisation = 16;
      stream.Traits.ChannelCount = 8;
      stream.DataBytes = {static_cast<std::uint64_t>(test.Seconds * (stream.Pcm ? 768e3 : 56e3))};
    }
    const VideoDemand video{test.VideoKbps, static_cast<std::uint64_t>(test.VideoKbps * 125 * test.Seconds)};
    for (const Rules& rules : {Rules::Players, Rules::Classic}) {
      const Findings found = JudgeRates(input, video, "Track.0", rules);
      EXPECT_EQ(found.empty() ? "" : found[0].Code, test.Players) << test.VideoKbps;
      EXPECT_EQ(HasErrors(found), rules.RefusesDeadDiscs && !found.empty());
    }
  }
}

TEST_F(PlanTest, TheNeededBytesComeCloseToTheDisc) {
  const auto ratio = [this] {
    const auto needed = static_cast<double>(PlanDisc(maker.Disc, Rules::Players, maker.Ui).NeededBytes());
    return needed / static_cast<double>(maker.Author(Rules::Players, true).Bytes);
  };
  using testing::AllOf, testing::Ge, testing::Le;
  EXPECT_THAT(ratio(), AllOf(Ge(1), Le(1.01)));
  Film().VideoPlays[0].File = SampleVideo({.Frames = 250, .KbitPerSecond = 300});
  EXPECT_THAT(ratio(), AllOf(Ge(1), Le(1.04))) << "packs that are not full weigh more";
  Film().AudioStreams.clear();
  EXPECT_THAT(ratio(), AllOf(Ge(0.95), Le(1))) << "the length is not known";
}

}  // namespace
}  // namespace quorvelant
