#include "ui/viewer.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "edit/project_file.h"
#include "edit/removal.h"
#include "platform/platform_pictures.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/scripted_answers.h"
#include "support/temp_folder.h"
#include "ui/recent_cache.h"

namespace quorvelant {
namespace {

constexpr std::size_t Film = 1;

// A viewer over a copy of the example project, whose films have no index yet.
class Viewers : public testing::Test {
 protected:
  Viewers() {
    namespace fs = std::filesystem;
    fs::copy(SourceFile("examples/media"), folder_ / "media");
    fs::copy(SourceFile("examples/demo.qvp"), folder_ / "demo.qvp");
    RecordingUi ui;
    ui.Unattended = true;
    EXPECT_TRUE(OpenProjectFile(document_.Session(), folder_ / "demo.qvp", false, ui));
  }

  [[nodiscard]] bool IsReady() {
    return QTest::qWaitFor([this] { return viewer_.IsPictureReady(); });
  }
  void Show(std::size_t track) {
    selection_.Choose("Track." + std::to_string(track));
    EXPECT_TRUE(IsReady()) << viewer_.PictureWords().toStdString();
  }

  TempFolder folder_;
  ScriptedAnswers answers_;
  Voice voice_{answers_};
  Document document_{{}, {}, voice_};
  Selection selection_{document_};
  Jobs jobs_{voice_};
  std::unique_ptr<PictureService> pictures_ = MakePlatformPictures();
  Viewer viewer_{document_, selection_, jobs_, *pictures_};
};

TEST_F(Viewers, IndexAFilmOnceAndShowItsPictures) {
  EXPECT_EQ(viewer_.Shown(), nullptr);
  EXPECT_EQ(viewer_.PictureWords(), "No track is shown");
  Show(Film);
  EXPECT_EQ(jobs_.All().size(), 1U);  // which indexed it
  EXPECT_EQ(viewer_.PictureNow().size(), QSize(720, 576));
  EXPECT_EQ(viewer_.FrameCount(), 350);
  ASSERT_GT(viewer_.Pictures().size(), 3U);
  const std::int64_t second = viewer_.Pictures()[1].Frame;

  const QImage first = viewer_.PictureNow();
  viewer_.ToFrame(second + 3);
  EXPECT_EQ(viewer_.PictureWords(), "picture 3 frames before");
  EXPECT_TRUE(IsReady());
  viewer_.ToFrame(second + 1);
  EXPECT_EQ(viewer_.PictureWords(), "picture 1 frame before");
  viewer_.Move(ViewerMove::PrevGop);
  EXPECT_TRUE(viewer_.IsPictureReady());  // it was kept
  EXPECT_EQ(viewer_.PictureNow(), first);
  // Many requests: the last one wins, and none is shown out of turn.
  QSignalSpy shown(&viewer_, &Viewer::PictureReady);
  for (std::int64_t frame = 60; frame < 340; frame += 12) {
    viewer_.ToFrame(frame);
  }
  EXPECT_TRUE(IsReady());
  EXPECT_LE(shown.count(), 2);
  viewer_.ToFrame(100000);
  EXPECT_EQ(viewer_.State().Frame, 349);
  viewer_.ToFrame(-5);
  EXPECT_EQ(viewer_.State().Frame, 0);
}

TEST_F(Viewers, FollowWhatIsChosenAndChanged) {
  Show(Film);
  selection_.Choose("Track.1.Scene2");
  EXPECT_EQ(viewer_.State().Frame, document_.Work().Tracks[Film].Scenes[1].Frame);
  selection_.Choose("VTS1.TITLE1.PGC1.PG3.CELL1");
  EXPECT_EQ(viewer_.State().Frame, document_.Work().Tracks[Film].Scenes[2].Frame);
  EXPECT_TRUE(selection_.GoTo("Track.1.Sub2.SubPlay2"));
  EXPECT_EQ(viewer_.State().Stream, 1U);
  EXPECT_EQ(viewer_.State().Entry, 1U);
  EXPECT_TRUE(QTest::qWaitFor([this] { return viewer_.UnitNow().has_value(); }));
  viewer_.Move(ViewerMove::FirstSub);
  EXPECT_EQ(viewer_.State().Entry, 0U);
  selection_.Choose("Track.0");
  EXPECT_TRUE(IsReady());
  EXPECT_TRUE(viewer_.ButtonSet());
  viewer_.ChooseButton(2);
  EXPECT_EQ(viewer_.Button(), 2U);
  selection_.Choose("Track.1");
  EXPECT_FALSE(viewer_.Button());
  // Another project: nothing is shown any more.
  document_.Session().StartAnew();
  EXPECT_EQ(viewer_.Shown(), nullptr);
  EXPECT_TRUE(viewer_.PictureNow().isNull());
}

// Sources that a user may have: each says why nothing shows, and none hangs or crashes.
TEST_F(Viewers, SayWhyThereIsNoPicture) {
  struct Case {
    std::size_t Track;
    std::string File;
    std::function<void(const std::string& path)> Harm;
    std::string Words;
  };
  const auto write = [](std::string content) {
    return [content](const std::string& path) { std::ofstream(path, std::ios::binary) << content; };
  };
  const std::vector<Case> cases{
      {Film, "media/first.m2v", [](const std::string& path) { std::filesystem::remove(path); }, "first.m2v"},
      {Film, "media/first.m2v", write(std::string(5000, 'x')), "no picture"},
      {Film, "media/first.m2v", write(""), "no picture"},
      {4, "media/slide1.png", write("no picture"), "slide1.png"},
      {4, "media/slide1.png",
       [](const std::string& path) {
         std::filesystem::remove(path);
         std::filesystem::create_directory(path);
       },
       "folder"}};
  for (const Case& each : cases) {
    SCOPED_TRACE(each.File + each.Words);
    selection_.Choose({});
    const std::string path = folder_ / each.File;
    std::filesystem::remove_all(path);
    std::filesystem::remove(path + ".qvi");
    each.Harm(path);
    selection_.Choose("Track.2");
    selection_.Choose("Track." + std::to_string(each.Track));
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return viewer_.PictureWords().toStdString().find(each.Words) != std::string::npos;
    })) << viewer_.PictureWords().toStdString();
    EXPECT_TRUE(viewer_.PictureNow().isNull());
  }
}

TEST(RecentCache, DropsTheLeastRecentlyUsed) {
  RecentCache<int, int> cache(100);
  cache.Keep(1, 10, 40);
  cache.Keep(2, 20, 40);
  EXPECT_NE(cache.Find(1), nullptr);
  cache.Keep(3, 30, 40);
  EXPECT_EQ(cache.Find(2), nullptr);
  EXPECT_EQ(*cache.Find(1), 10);
  cache.Keep(4, 40, 4000);  // one that is larger than all stays alone
  EXPECT_EQ(*cache.Find(4), 40);
  EXPECT_EQ(cache.Bytes(), 4000U);
}

}  // namespace
}  // namespace quorvelant
