#include "ui/media_import.h"

#include <gtest/gtest.h>

#include <QTest>
#include <filesystem>

#include "edit/segments.h"
#include "model/walk.h"
#include "support/scripted_answers.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// A project with what a user brings to it.
class BroughtByUsers : public testing::Test {
 protected:
  BroughtByUsers() {
    QObject::connect(&voice_, &Voice::Told, &voice_,
                     [this](const Message& message) { told_.push_back(message); });
  }

  std::string Film(const std::string& name) { return folder_.Write(name, BuildStream({})); }
  std::string Sound(const std::string& name) {
    std::string frames;
    for (int i = 0; i < 20; ++i) {
      frames.append(Ac3Head(0x14)).append(768 - Ac3Head(0x14).size(), '\0');
    }
    return folder_.Write(name, frames);
  }
  std::string Chapters(const std::string& name) {
    return folder_.Write(name, "chapter=00:00:00:00\nchapter=00:00:01:00\n");
  }
  std::string Subtitles(const std::string& name) {
    return folder_.Write(
        name, "st_format\t2\nSP_NUMBER\tSTART\tEND\tFILE_NAME\n0001\t00:00:00:05\t00:00:01:00\ta.bmp\n");
  }
  std::string NewTrackOf(std::string_view type) {
    const auto key = document_.Do([&](EditSession& session, Consent) { return NewTrack(session, type, ""); });
    return key.value_or("");
  }

  void Bring(const std::vector<std::string>& files, const BringTarget& target = {}) {
    projects_ = import_.Bring(files, target);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !jobs_.AnyRunning(); }, 20000));
    QCoreApplication::processEvents();
  }

  // "film: 1 video, 2 audio (German English), 1 subtitles, 3 scenes, 48 frames"
  std::string Tracks() {
    std::string text;
    for (const Track* track : Live(document_.Work().Tracks)) {
      text.append(text.empty() ? "" : "; ").append(track->TrackName).append(":");
      for (const VideoPlay* play : Live(track->VideoPlays)) {
        text.append(" ").append(std::filesystem::path(play->File).filename().string());
      }
      for (const AudioStream* stream : Live(track->AudioStreams)) {
        text.append(" ").append(stream->Format).append("/").append(stream->Language);
      }
      for (const SubtitleStream* stream : Live(track->SubStreams)) {
        text.append(" sub/").append(stream->Language);
      }
      if (track->Scenes.size() > 1) {
        text.append(fmt::format(" {} scenes", track->Scenes.size()));
      }
      if (track->TrackType != "Still") {
        text.append(fmt::format(" {} frames", track->VideoFrames));
      }
    }
    return text;
  }
  std::string Codes() {
    std::string codes;
    for (const Message& message : told_) {
      codes.append(codes.empty() ? "" : " ").append(message.Code);
    }
    return codes;
  }

  TempFolder folder_;
  ScriptedAnswers answers_;
  Voice voice_{answers_};
  Document document_{{}, folder_ / "cache", voice_};
  Selection chosen_{document_};
  Jobs jobs_{voice_};
  MediaImport import_{document_, jobs_, chosen_};
  std::vector<Message> told_;
  std::vector<std::string> projects_;
};

TEST_F(BroughtByUsers, FilesOfOneNameAreOneTrack) {
  Bring({Film("one.m2v"), Film("two.m2v"), Sound("two.de.ac3"), Sound("one.ac3"), Subtitles("one.fr.sst"),
         Chapters("two.txt")});
  EXPECT_EQ(Tracks(),
            "one: one.m2v AC3/English sub/French 48 frames; two: two.m2v AC3/German 2 scenes 48 frames");
  EXPECT_EQ(chosen_.Key(), "Track.0");
  EXPECT_EQ(Codes(), "bitmaps-missing");
  document_.Undo();  // one gesture, one step
  EXPECT_EQ(Tracks(), "");
}

TEST_F(BroughtByUsers, LaterFilesFindTheirTrack) {
  Bring({Film("one.m2v"), Film("one_more.m2v")});
  Bring({Sound("one_more.es.ac3"), Sound("one.ac3"), Chapters("one.txt"), Sound("other.ac3")});
  EXPECT_EQ(Tracks(),
            "one: one.m2v AC3/English 2 scenes 48 frames; one_more: one_more.m2v AC3/Spanish 48 frames");
  EXPECT_EQ(Codes(), "file-of-no-track");
  Bring({folder_ / "other.ac3"}, {.Key = "Track.1.Scene1", .IsMeant = false});  // as no name says otherwise
  Bring({folder_ / "one.ac3"}, {.Key = "Track.1", .IsMeant = true});
  EXPECT_EQ(Tracks(),
            "one: one.m2v AC3/English 2 scenes 48 frames; "
            "one_more: one_more.m2v AC3/Spanish AC3/English AC3/English 48 frames");
}

TEST_F(BroughtByUsers, TargetsTakeWhatTheyAreFor) {
  const std::string empty = NewTrackOf("Motion");
  Bring({Film("one.m2v"), Sound("some.it.ac3")}, {.Key = empty, .IsMeant = false});
  EXPECT_EQ(Tracks(), "Track_1: one.m2v AC3/Italian 48 frames");
  Bring({Film("two.m2v")}, {.Key = empty, .IsMeant = false});  // another film is another track
  Bring({Sound("x.ac3")}, {.Key = "Track.0.Audio1.AudioPlay1", .IsMeant = false});
  EXPECT_EQ(Tracks(), "Track_1: one.m2v AC3/Italian 48 frames; two: two.m2v 48 frames");
  Bring({Film("three.m2v")}, {.Key = "Track.1.Video1", .IsMeant = true});
  EXPECT_EQ(Tracks(), "Track_1: one.m2v AC3/Italian 48 frames; two: three.m2v 48 frames");
  EXPECT_EQ(Codes(), "");
}

TEST_F(BroughtByUsers, FoldersAreOpened) {
  std::filesystem::create_directories(folder_ / "disc/subs");
  std::filesystem::create_directories(folder_ / "disc/.hidden");
  std::filesystem::create_directories(folder_ / "none");
  Film("disc/a.m2v");
  Film("disc/.hidden/b.m2v");
  Sound("disc/a.ac3");
  Subtitles("disc/subs/a.de.sst");
  folder_.Write("disc/subs/a.bmp", "");       // of the subtitles
  folder_.Write("disc/readme.txt", "words");  // no chapter list
  folder_.Write("disc/letter.pdf", "words");
  Bring({folder_ / "disc", folder_ / "none"});
  EXPECT_EQ(Tracks(), "a: a.m2v AC3/English sub/German 48 frames");
  EXPECT_EQ(Codes(), "folder-files-passed-over folder-without-films");
}

// Each with words that say what is wrong, and the rest is taken.
TEST_F(BroughtByUsers, UnfitFilesStopNoOthers) {
  const std::string missing = folder_ / "gone.m2v";
  Bring({folder_.Write("words.m2v", "no video"), missing, folder_.Write("text.srt", "1\n"),
         folder_.Write("own.qvp", ""), Film("good.m2v"), Sound("good.ac3"),
         folder_.Write("good.de.sst", "words"), folder_.Write("broken.png", "no picture")});
  EXPECT_EQ(Tracks(), "good: good.m2v AC3/English 48 frames");
  EXPECT_EQ(Codes(), "text-is-no-subtitles import-unusable import-unusable import-unusable subtitles-empty");
  EXPECT_EQ(projects_, std::vector<std::string>{folder_ / "own.qvp"});
  EXPECT_EQ(document_.Session().UndoWords(), "Import Files");
}

}  // namespace
}  // namespace quorvelant
