#include "menu/thumbnails.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/platform_pictures.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// Two seconds of black and then a grey film: 25 pictures a second, each one intra.
bool MakeFilm(const std::string& file, const std::string& black) {
  const std::string command = "ffmpeg -v error -f lavfi -i color=c=black:s=352x288:r=25:d=" + black +
                              " -f lavfi -i color=c=gray:s=352x288:r=25:d=4 -filter_complex concat -c:v "
                              "mpeg2video -g 12 -b:v 2M -y '" +
                              file + "' 2> /dev/null";
  return std::system(command.c_str()) == 0;
}

Project FilmAt(const std::string& file, std::int32_t frame) {
  Project project;
  Track track;
  track.Standard = "PAL";
  track.Coding = "MPEG2";
  track.VideoPlays = {{.File = file, .SlideDuration = {}}};
  track.Scenes = {{.Name = "One", .Frame = frame, .Uops = {}}};
  project.Tracks.Add(track);
  return project;
}

TEST(Thumbnails, SkipBlackForTwoSecondsWherePlayersAreServed) {
  const TempFolder folder;
  if (!MakeFilm(folder / "short.m2v", "1") || !MakeFilm(folder / "long.m2v", "4")) {
    GTEST_SKIP() << "ffmpeg is not at hand";
  }
  struct Case {
    const char* File;
    std::int32_t Frame;
    const Rules& Followed;
    bool IsGrey;
  };
  for (const Case& c : {Case{"short.m2v", 0, Rules::Players, true},
                        {"short.m2v", 0, Rules::Classic, false},
                        {"short.m2v", 90, Rules::Classic, true},
                        {"long.m2v", 0, Rules::Players, false},
                        {"long.m2v", 70, Rules::Players, true}}) {
    const Project project = FilmAt(folder / c.File, c.Frame);
    const IndexStore store;
    RecordingUi ui;
    const auto pictures = MakePlatformPictures();
    const Picture seen = ThumbnailsOf(project, store, *pictures, ui, c.Followed)(0, 0);
    ASSERT_EQ(seen.Width, 352);
    EXPECT_EQ((seen.At(100, 100) & 255U) > 100, c.IsGrey) << c.File << " at " << c.Frame;
  }
}

TEST(Thumbnails, OfStillsAreThePictureAndOfMissingFilesNone) {
  const TempFolder folder;
  const auto pictures = MakePlatformPictures();
  Picture slide(720, 576);
  slide.Set(3, 4, 0x123456);
  pictures->Save(slide, folder / "slide.bmp");
  Project project = FilmAt(folder / "slide.bmp", 0);
  project.Tracks[0].TrackType = "Still";
  const IndexStore store;
  RecordingUi ui;
  const ThumbnailSource source = ThumbnailsOf(project, store, *pictures, ui, Rules::Players);
  EXPECT_EQ(source(0, 0), slide);
  EXPECT_EQ(source(0, 1).Width, 0);  // no such scene
  RecordingUi refusing;
  refusing.Answers = {false};
  const Project gone = FilmAt(folder / "none.m2v", 0);
  EXPECT_EQ(ThumbnailsOf(gone, store, *pictures, refusing, Rules::Players)(0, 0).Width, 0);
  EXPECT_FALSE(refusing.Questions.empty());
}

}  // namespace
}  // namespace quorvelant
