#include "ifo/disc_plan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/bmp.h"
#include "disc_maker.h"

namespace quorvelant {
namespace {

// A unit too large is found by the plan, before anything of the disc exists; a stream that stays
// off the disc does not matter.
TEST(DiscPlan, SubtitlesAreCheckedBeforeTheFirstSector) {
  DiscMaker maker({.Frames = 25});
  VTS_P& set = maker.AddSet();
  const int index = maker.AddTrack("Film", SampleVideo(maker.Video), {}, {0});
  maker.AddTitle(set, index);
  Picture stripes(720, 576);
  for (std::size_t i = 0; i < stripes.Pixels.size(); ++i) {
    stripes.Pixels[i] = i / 3 % 2 == 0 ? 0xFF : 0;
  }
  const Bytes file = WriteBmp(stripes);
  Track& track = maker.Disc.Tracks[static_cast<std::size_t>(index)];
  track.HasSubs = true;
  track.SubStreams.resize(6);
  for (std::size_t i = 0; i < track.SubStreams.size(); ++i) {
    SubPicturePlay& play = track.SubStreams[i].SubPlays.emplace_back();
    play.ConversionP = 0xFFFFFF;
    play.End = "00:00:00:10";
    play.File = maker.Temp / "small.bmp";
    track.SubStreams[i].StreamNumber = static_cast<std::int32_t>(i);
  }
  const Bytes small = WriteBmp(Picture(8, 8));
  maker.Temp.Write("small.bmp", {reinterpret_cast<const char*>(small.data()), small.size()});
  track.SubStreams[5].SubPlays[0].File = maker.Temp / "none.bmp";
  track.SubStreams[1].SubPlays[0].File =
      maker.Temp.Write("large.bmp", {reinterpret_cast<const char*>(file.data()), file.size()});

  BmpLoader pictures;
  const DiscPlan plan = PlanDisc(maker.Disc, Rules::Players, maker.Ui, &pictures);
  EXPECT_TRUE(plan.HasErrors());
  std::vector<std::string> errors;
  for (const Message& message : plan.Findings) {
    if (message.Level == Severity::Error) {
      errors.push_back(message.Place + ": " + message.Text);
    }
  }
  EXPECT_THAT(errors,
              testing::ElementsAre(testing::AllOf(testing::HasSubstr("Sub2 (Film) entry 1: "),
                                                  testing::HasSubstr("large.bmp: the bitmap makes a"))));
}

}  // namespace
}  // namespace quorvelant
