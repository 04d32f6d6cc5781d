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
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/scripted_answers.h"
#include "support/temp_folder.h"
#include "ui/picture_leads.h"
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
  const std::int64_t second = viewer_.Pictures()[1].ShownAt();

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

// Every 12th picture of these films is intra; in open groups it comes before two that are shown before it.
TEST_F(Viewers, TellTheFrameThatIsShown) {
  const struct {
    const char* Words;
    VideoSample Film;
    std::vector<std::int64_t> Shown, Reached;
    const char* At25;
    const char* At34;
  } cases[] = {
      {"open",
       {},
       {0, 12, 24, 36, 48},
       {0, 10, 22, 34, 46},
       "picture 1 frame before",
       "picture 2 frames after"},
      {"without B pictures",
       {.BFrames = 0},
       {0, 12, 24, 36, 48},
       {0, 12, 24, 36, 48},
       "picture 1 frame before",
       "picture 10 frames before"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Words);
    selection_.Choose("Track.0");
    std::filesystem::copy_file(SampleVideo(each.Film), folder_ / "media/first.m2v",
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::remove(folder_ / "media/first.m2v.qvi");
    Show(Film);
    std::vector<std::int64_t> shown;
    std::vector<std::int64_t> reached;
    for (const ViewerPicture& picture : viewer_.Pictures()) {
      shown.push_back(picture.ShownAt());
      reached.push_back(picture.Frame);
    }
    EXPECT_EQ(shown, each.Shown);
    EXPECT_EQ(reached, each.Reached);
    for (const std::int64_t frame : {12, 24, 36}) {
      viewer_.Move(ViewerMove::NextGop);
      EXPECT_EQ(viewer_.State().Frame, frame);
      EXPECT_EQ(viewer_.PictureWords(), "");
    }
    viewer_.Move(ViewerMove::PrevGop);
    EXPECT_EQ(viewer_.State().Frame, 24);
    viewer_.ToFrame(25);
    EXPECT_EQ(viewer_.PictureWords(), each.At25);
    viewer_.ToFrame(34);
    EXPECT_EQ(viewer_.PictureWords(), each.At34);
  }
}

// Of a long film they are read by and by; what cannot be read, or reaches beyond the group, is none.
TEST(LeadReader, GoesOnWhereItStopped) {
  using namespace std::chrono_literals;
  const std::vector<ViewerPicture> all{{.Frame = 0}, {.Frame = 10, .Play = 1}, {.Frame = 22, .Play = 1}};
  std::vector<ViewerPicture> pictures = all;
  LeadReader reader({"/nowhere/film.m2v", "/"});
  EXPECT_FALSE(reader.ReadFor(0ms, pictures, 40));
  EXPECT_TRUE(reader.ReadFor(10s, pictures, 40));
  EXPECT_EQ(pictures, all);
  const Bytes sequence{0, 0, 1, 0xB3, 0, 0, 1, 0xB5};
  const Bytes group{0, 0, 1, 0xB8, 1, 2, 3, 4};
  const Bytes picture{0, 0, 1, 0, 0x00, 0xCF};  // the third that is shown, or 3 and more below it
  const auto join = [](std::initializer_list<Bytes> parts) {
    Bytes whole;
    for (const Bytes& part : parts) {
      whole.insert(whole.end(), part.begin(), part.end());
    }
    return whole;
  };
  EXPECT_EQ(LeadIn(join({sequence, group, picture})), 3);
  EXPECT_EQ(LeadIn(join({sequence, picture})), 0);  // counts from an earlier one
  EXPECT_EQ(LeadIn(join({sequence, group})), 0);
  EXPECT_EQ(LeadIn({}), 0);
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
  QString told;  // what those hear who ask when they are told
  const auto hear = [&] { told = viewer_.PictureWords(); };
  QObject::connect(&viewer_, &Viewer::PicturesChanged, &viewer_, hear);
  QObject::connect(&viewer_, &Viewer::PictureReady, &viewer_, hear);
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
    EXPECT_EQ(told, viewer_.PictureWords());
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
