#include "check/source_judge.h"

#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

TEST(SourceJudge, ReadsEachFileOnce) {
  const TempFolder folder;
  RecordingUi ui;
  SourceJudge judge(folder.Path().string(), Rules::Players, ui);
  folder.Write("a.m2v", StreamBuilder().Sequence({.Width = 480}).Group().Picture().Text());
  folder.Write("a.ac3", "\x0B\x77\x01\x01\x14\x40\x40\x01");
  for (const char* place : {"first", "second"}) {
    const auto video = judge.Video({"a.m2v", place});
    const auto audio = judge.Audio({"a.ac3", place}, "AC3");
    ASSERT_TRUE(video.Seen && audio.Seen) << place;
    EXPECT_TRUE(audio.Findings.empty());
    ASSERT_EQ(video.Findings.size(), 1U);
    EXPECT_EQ(video.Findings[0].Place, place);
    EXPECT_TRUE(video.Findings[0].Text.starts_with("'a.m2v': PAL has no frame size 480x576. This makes one"));
    std::filesystem::remove(folder.Path() / "a.m2v");
    std::filesystem::remove(folder.Path() / "a.ac3");
  }
}

}  // namespace
}  // namespace quorvelant
