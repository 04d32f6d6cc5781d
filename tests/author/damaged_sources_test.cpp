// Discs of sources damaged at random: one made without a warning has nothing that its judge finds wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "disc_maker.h"
#include "support/disc_judges.h"
#include "support/trial.h"

namespace quorvelant {
namespace {

using Random32 = std::mt19937;

std::size_t Below(Random32& random, std::size_t limit) {
  return limit == 0 ? 0 : random() % limit;
}

// One to eight injuries: bits turned, bytes overwritten, lost, doubled, put in or moved.
std::string Damaged(std::string text, Random32& random) {
  constexpr std::size_t Lengths[] = {1, 2, 3, 7, 50, 184, 512, 2048, 5000, 20000};
  for (std::size_t left = std::size_t{1} << Below(random, 4); left > 0 && text.size() > 64; --left) {
    const std::size_t at = Below(random, text.size());
    const std::size_t length = std::min(Lengths[Below(random, std::size(Lengths))], text.size() - at);
    const auto noise = [&] { return static_cast<char>(random()); };
    const std::string piece = text.substr(at, length);
    switch (Below(random, 6)) {
      case 0:
        text[at] = static_cast<char>(text[at] ^ 1 << Below(random, 8));
        break;
      case 1:
        std::generate_n(text.begin() + static_cast<std::ptrdiff_t>(at), length, noise);
        break;
      case 2:
        text.insert(at, Below(random, 2) == 0 ? piece : std::string(length, noise()));
        break;
      case 3:
        text.resize(std::max(at, text.size() / 2));
        break;
      default:
        text.erase(at, length);
        text.insert(Below(random, text.size()), Below(random, 2) == 0 ? piece : "");
    }
  }
  return text;
}

TEST(DamagedSources, MakeNoWrongDiscWithoutAWord) {
  if (!HasChecker()) {
    GTEST_SKIP() << CheckerMissing;
  }
  const VideoSample videos[] = {
      {.Width = 352, .Height = 288, .Frames = 60, .Closed = true, .KbitPerSecond = 1500},
      {.Frames = 60, .Interlaced = true},
      {.Standard = "NTSC", .Frames = 60, .Pulldown = true}};
  int discs = 0;
  int silent = 0;
  for (int seed = 0; seed < TrialCount(24, 2000); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random32 random(static_cast<unsigned>(seed));
    DiscMaker maker(videos[Below(random, std::size(videos))]);
    const std::string sound = Below(random, 2) == 0 ? "ac3" : "wav";
    maker.LoadSmall(2, sound);
    for (const std::string& name : {std::string("film.m2v"), "film." + sound}) {
      const std::string whole = TempFolder::Read(maker.Temp / name);
      std::filesystem::remove(maker.Temp / name);
      maker.Temp.Write(name, Below(random, 2) == 0 ? Damaged(whole, random) : whole);
    }
    maker.Ui.Unattended = true;
    const bool done = maker.Author().Outcome == AuthorOutcome::Done;
    EXPECT_TRUE(done || !maker.Ui.Messages.empty());
    discs += done ? 1 : 0;
    if (done && maker.Ui.Messages.empty() && maker.Ui.Questions.empty()) {
      ++silent;
      EXPECT_THAT(CheckerErrors(maker.Folder), testing::IsEmpty());
    }
  }
  EXPECT_GT(silent, 0);
  EXPECT_GT(discs, silent);
}

}  // namespace
}  // namespace quorvelant
