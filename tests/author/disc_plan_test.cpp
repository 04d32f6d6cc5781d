// What stands in the way of a disc, and how much room it takes, before its first sector is written.
#include "author/disc_plan.h"

#include <fmt/format.h>

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
