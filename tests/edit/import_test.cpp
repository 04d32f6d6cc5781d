// Every refusal and question of importing, as the user reads it.
#include <fmt/format.h>

#include "base/text.h"
#include "edit/chapter_analysis.h"
#include "edit/chapter_list.h"
#include "edit/import_audio.h"
#include "edit/import_video.h"
#include "edit/new_track.h"
#include "picture/bmp.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

std::string Text(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string Bitmap(int width, int height) {
  return Text(WriteBmp(Picture(width, height)));
}

std::string Stream(const SequenceFields& sequence) {
  return Text(BuildStream({.Sequence = sequence}));
}

std::string Ac3(std::uint8_t rateAndSize, std::uint8_t modes = 0x40, std::uint8_t channels = 0x40) {
  return Text({0x0B, 0x77, 0, 0, rateAndSize, modes, channels, 0});
}

std::string Dts(unsigned rateCode) {  // 48 kHz, stereo
  return Text({0x7F, 0xFE, 0x80, 0x01, 0xFC, 0x3C, 0x7D, 0xB0,
               static_cast<std::uint8_t>(0xB4 | (rateCode >> 3)), static_cast<std::uint8_t>(rateCode << 5), 0,
               0});
}

std::string Wave(int rate, int channels, int bits) {
  return TempFolder::Read(SampleWav({.Rate = rate, .Bits = bits, .Channels = channels, .Seconds = 0.1}));
}

class Imports : public testing::Test {
 protected:
  Track& NewTrack(std::string_view type) {
    NewSegment(Disc.Tracks, type, fmt::format("T{}", Disc.Tracks.Count()));
    return Last();
  }
  Track& Last() { return Disc.Tracks[Disc.Tracks.Count() - 1]; }
  bool Video(std::string_view name, std::string_view content, std::size_t play = 0) {
    return ImportVideo(Disc, Disc.Tracks.Count() - 1, play, Folder.Write(name, content), Options, Store, Ui);
  }
  bool Audio(std::string_view name, std::string_view content, std::size_t play = 0) {
    return ImportAudio(Disc, Disc.Tracks.Count() - 1, 0, play, Folder.Write(name, content), Rules::Players,
                       Ui);
  }
  // What was told or asked since, as "title: text", without the folder of the files.
  std::string Told() {
    std::string told;
    for (const auto* list : {&Ui.Messages, &Ui.Questions}) {
      for (const Message& message : *list) {
        told += message.Title + ": " + message.Text + "\n";
      }
    }
    Ui.Messages.clear();
    Ui.Questions.clear();
    for (const std::string folder = Folder / ""; Contains(told, folder);) {
      told.erase(told.find(folder), folder.size());
    }
    return told;
  }
  std::vector<std::int32_t> SceneFrames() {
    std::vector<std::int32_t> frames;
    for (const Scene& scene : Last().Scenes) {
      frames.push_back(scene.Frame);
    }
    return frames;
  }

  TempFolder Folder;
  RecordingUi Ui;
  Project Disc;
  IndexStore Store;
  VideoImportOptions Options;
};

TEST_F(Imports, VideoRefusals) {
  const std::string imageSizes =
      "Image size error: Image sizes must be 720*576 or 360*288 or 720*480 or 360*240\n";
  const std::string noStill =
      "Still Import Error: Video Stream is NOT a still - please reselect a video file with only 1 frame or a "
      "BMP Image\n";
  const std::string unfit = "Import Error: The video file has incompatible ";
  const std::string unusable = "' can't be imported: ";
  struct Case {
    std::string Type, Name, Content, Told;
  };
  const Case cases[] = {
      {"Motion", "a.m2v", Stream({}), ""},
      {"Motion", "b.m2v", Stream({.Width = 480}), unfit + "MPEG2 attributes -> PAL; 480x576\n"},
      {"Motion", "c.m2v", Stream({.FrameRateCode = 4}), unfit + "MPEG2 attributes -> NTSC; 720x576\n"},
      {"Motion", "d.m1v", Stream({.Width = 320, .Height = 240, .Mpeg2 = false}),
       unfit + "MPEG1 attributes -> PAL; 320x240\n"},
      {"Motion", "e.m2v", Stream({.FrameRateCode = 6}), unfit + "MPEG2 attributes -> ; frame rate code 6\n"},
      {"Motion", "f.m1v", Stream({.Width = 352, .Height = 288, .Mpeg2 = false}),
       "MPEG1 Import Error: MPEG1 video is not supported in the Ondra version\n"},
      {"Still", "g.m2v", Stream({}), noStill},
      {"SlideShow", "h.m2v", Stream({}), noStill},
      {"Still", "i.m2v", StreamBuilder().Sequence().Group().Picture().Text(), ""},
      {"Still", "j.bmp", Bitmap(720, 480), ""},
      {"SlideShow", "k.bmp", Bitmap(360, 288), ""},
      {"Still", "l.bmp", Bitmap(640, 480), imageSizes},
      {"Motion", "m.bmp", Bitmap(720, 576),
       "Import Error: 'm.bmp" + unusable + "a bitmap belongs on a still or slideshow track\n"},
      {"Motion", "n.bmp", Bitmap(64, 64),
       "Import Error: 'n.bmp" + unusable + "a bitmap belongs on a still or slideshow track\n"},
      {"Motion", "o.m2v", "", "Import Error: 'o.m2v" + unusable + "it holds no MPEG video\n"},
      {"Motion", "p.mpg", Text({0, 0, 1, 0xBA, 0x21, 0, 0, 0, 0}),
       "Import Error: 'p.mpg" + unusable +
           "it is a program stream; take the elementary video stream out of it first\n"},
      {"Motion", "folder/file", "x", "Import Error: 'folder" + unusable + "it is a folder, not a file\n"},
      {"Motion", "q.m2v", Stream({.Height = 480, .FrameRateCode = 1}),
       "Import Warning: Video source is 23.976fps and is not pulldowned\n"},
  };
  for (const Case& given : cases) {
    NewTrack(given.Type);
    const std::string file = Folder.Write(given.Name, given.Content);
    const bool taken = given.Told.empty() || given.Told.starts_with("Import Warning");
    EXPECT_EQ(
        ImportVideo(Disc, Disc.Tracks.Count() - 1, 0, file.substr(0, file.find("/file")), Options, Store, Ui),
        taken)
        << given.Name;
    EXPECT_EQ(Last().VideoPlays[0].File.empty(), !taken) << given.Name;
    EXPECT_EQ(Told(), given.Told);
  }
}

TEST_F(Imports, AVideoFillsItsTrackAndTheNextMustBeLikeIt) {
  NewTrack("Motion");
  Options.UseTrackNames = true;
  ASSERT_TRUE(Video("My film.m2v", Stream({.Width = 704, .DisplayWidth = 540})));
  EXPECT_EQ(Last().Standard, "PAL");
  EXPECT_EQ(Last().Aspect, "4:3");
  EXPECT_EQ(Last().Resolution, "704x576");
  EXPECT_EQ(Last().Coding, "MPEG2");
  EXPECT_TRUE(Last().Pan);
  EXPECT_EQ(Last().DisplayMode, "Only PanScan");
  EXPECT_EQ(Last().TrackName, "My film");
  EXPECT_EQ(Last().Scenes[0].Name, "My film_Scene1");
  ASSERT_NE(AddVideoPlay(Last()), nullptr);
  EXPECT_FALSE(Video("b.m2v", Stream({}), 1));
  EXPECT_EQ(Told(), "Video File Error: This Video File has different Attributes to Source File\n");
  EXPECT_TRUE(Video("c.m2v", Stream({.Width = 704}), 1));
}

TEST_F(Imports, ChaptersAtTheInterval) {
  NewTrack("Motion");
  Options.AutoCreateChapters = true;
  Options.PalChapters = 30;
  ASSERT_TRUE(Video("v.m2v", Text(BuildStream({.Gops = 10}))));  // 120 frames, a group each 12
  EXPECT_THAT(SceneFrames(), ElementsAre(0, 24, 60, 84));
  EXPECT_EQ(Last().VideoFrames, 120);
}

TEST_F(Imports, AudioRefusalsAndQuestions) {
  const std::string closing = "Continuing will make a non-standard DVD. Do you want to continue?\n";
  const std::string pcm =
      "PCM Data Rate Error: PCM Data Rate is non-dvd standard. Continuing will result in non-standard DVD "
      "and "
      "will probably fail. Do you want to continue?\n";
  const std::string rate = "Import Error: Unsupported file format - Sample Rate MUST be 48kHz\n";
  struct Case {
    std::string Name, Content, Told;
    bool Question = false;
  };
  const Case cases[] = {
      {"a.ac3", Ac3(0x14), ""},
      {"b.wav", Wave(96000, 2, 24), ""},
      {"c.dts", Dts(24), ""},
      {"d.ac3", Ac3(0x54), rate},
      {"e.wav", Wave(44100, 2, 16), rate},
      {"f.ac3", Ac3(0x25),
       "Audio Bitrate Error: Maximum Audio Bitrate for DVD is 448Kpbs. This source exceeds that (640). " +
           closing,
       true},
      {"g.dts", Dts(25),
       "Audio Bitrate Error: Incorrect bitrate of DTS audio. This source is (1920). " + closing, true},
      {"h.dts", Dts(0),
       "Audio Bitrate Error: Incorrect bitrate of DTS audio. This source is (32). " + closing, true},
      {"i.wav", Wave(96000, 3, 24), pcm, true},
      {"j.ac3", Ac3(0x14, 0x80),
       "Import Error: 'j.ac3' can't be imported: it is Enhanced AC3, which players don't read\n"},
      {"k.wav", "RIFF", "Import Error: 'k.wav' can't be imported: it is no WAV file\n"},
      {"l.mp2", Ac3(0x14),
       "Import Error: 'l.mp2' can't be imported: its name is not that of an AC3 or WAV file\n"},
  };
  for (const Case& given : cases) {
    for (const bool answer : {false, true}) {
      NewTrack("Motion");
      AddAudioStream(Last());
      if (given.Question) {
        Ui.Answers = {answer};
      }
      EXPECT_EQ(Audio(given.Name, given.Content), given.Told.empty() || (given.Question && answer))
          << given.Name;
      EXPECT_EQ(Told(), given.Told);
    }
  }
}

TEST_F(Imports, AudioPlaysMustBeLikeTheFirst) {
  NewTrack("Motion");
  AudioStream& stream = *AddAudioStream(Last());
  ASSERT_TRUE(Audio("a.ac3", Ac3(0x14)));
  EXPECT_EQ(stream.Format, "AC3");
  EXPECT_EQ(stream.Traits.BitRate, 192);
  EXPECT_TRUE(Last().HasAudio);
  ASSERT_NE(AddAudioPlay(stream), nullptr);
  for (const std::string& other : {Ac3(0x1C), Ac3(0x14, 0x40, 0xE1)}) {
    EXPECT_FALSE(Audio("b.ac3", other, 1));
    EXPECT_EQ(Told(), "Audio Play Error: This Audio Play has different parameters to the Audio Play #1\n");
  }
  EXPECT_FALSE(Audio("c.wav", Wave(48000, 2, 16), 1));
  Ui.Messages.clear();
  EXPECT_TRUE(Audio("d.ac3", Ac3(0x15), 1));
}

TEST_F(Imports, SubtitlesNeedAVideoFirst) {
  NewTrack("Motion");
  const auto none = [] { return std::optional<std::string>(); };
  EXPECT_FALSE(ImportSubtitles(Disc, 0, none, false, Rules::Players, Ui));
  EXPECT_EQ(Told(),
            "Sub Import Error: Please select a video/still file first, so that the correct subtitle display "
            "modes can be set\n");
  ASSERT_TRUE(Video("v.m2v", Stream({})));
  Ui.Answers = {true};
  EXPECT_TRUE(ImportSubtitles(Disc, 0, none, false, Rules::Players, Ui));
  EXPECT_EQ(Told(),
            ": Would you like to import an sst subtitle file (if NO then a blank stream will be created for "
            "individual sub import in the track Viewer\n");
  EXPECT_EQ(Last().SubStreams.size(), 1U);
}

// A disc of one title whose cells show the scenes of track 0 in order.
void ShowScenes(Project& project) {
  VTS_P entry;
  Title_P title;
  PGC_P pgc;
  PG_P program;
  for (std::size_t i = 0; i < project.Tracks[0].Scenes.size(); ++i) {
    Cell_P cell;
    cell.Key = fmt::format("cell {}", i);
    cell.SegmentUsed = 0;
    cell.pScene = static_cast<std::int32_t>(i);
    program.Cell.Add(cell);
  }
  pgc.PG.Add(program);
  title.PGC.Add(pgc);
  entry.Title.Add(title);
  project.Disc.Add(entry);
}

TEST_F(Imports, ChapterAnalysis) {
  NewTrack("Motion");
  EXPECT_FALSE(AnalyseChapters(Disc, 0, Store, Ui));
  EXPECT_EQ(Told(), "Analysis Error: You must specify a Video/Still file before analysis can be completed\n");
  ASSERT_TRUE(Video("a.m2v", Text(BuildStream({.Gops = 3}))));
  AddVideoPlay(Last());
  ASSERT_TRUE(Video("b.m2v", Text(BuildStream({.Gops = 2, .GopLength = 10})), 1));
  const std::int32_t times[] = {0, 13, 23, 24, 56, 35, 50, 400};
  Last().Scenes.clear();
  for (const std::int32_t frame : times) {
    Last().Scenes.push_back({fmt::format("S{}", frame), frame, {}});
  }
  ShowScenes(Disc);
  EXPECT_TRUE(AnalyseChapters(Disc, 0, Store, Ui));
  EXPECT_EQ(
      Told(),
      "Scene Error: One or more Scene times were greater than the Video length, and have been removed\n");
  EXPECT_EQ(Last().VideoFrames, 56);
  EXPECT_THAT(SceneFrames(), ElementsAre(0, 12, 12, 24, 24, 46));
  std::vector<std::int32_t> shown;
  for (const Cell_P& cell : Disc.Disc.Item(1)->Title.Item(1)->PGC.Item(1)->PG.Item(1)->Cell) {
    shown.push_back(cell.SegmentUsed < 0 ? -1 : cell.pScene);
  }
  EXPECT_EQ(shown, (std::vector<std::int32_t>{0, 1, 2, 3, -1, 4, 5, -1}));
}

TEST_F(Imports, ChaptersStartAnywhereInAStreamOfSingleIPictures) {
  NewTrack("Motion");
  ASSERT_TRUE(Video("i.m2v", Text(BuildStream({.Gops = 30, .GopLength = 1}))));
  Last().Scenes.push_back({"S", 17, {}});
  EXPECT_TRUE(AnalyseChapters(Disc, 0, Store, Ui));
  EXPECT_EQ(Last().Scenes[1].Frame, 17);
  EXPECT_EQ(Last().VideoFrames, 30);
}

TEST_F(Imports, ChapterLists) {
  NewTrack("Motion");
  ASSERT_TRUE(Video("v.m2v", Text(BuildStream({.Gops = 20}))));
  ASSERT_TRUE(AnalyseChapters(Disc, 0, Store, Ui));
  const std::string list =
      Folder.Write("list.txt",
                   "My chapters\r\nCHAPTER=00:00:00:00\r\n  chapter= 00:00:02:00\r\n"
                   "chapter=00:00:02;01\r\nx Chapter=00:00:05:00\n\nchapter=\nchapter=01:00:00:00");
  EXPECT_TRUE(ImportChapterList(Disc, 0, list, Store, Ui));
  EXPECT_THAT(SceneFrames(), ElementsAre(0, 48, 120));
  ASSERT_EQ(Ui.Messages.size(), 3U);
  EXPECT_EQ(Ui.Messages[0].Place, list + ":4");
  EXPECT_EQ(Told(),
            "New Scene Error: This Corrected Timestamp already exists, please select another\n"
            "New Scene Error: Please set a valid Timestamp\n"
            "New Scene Error: Timestamp exceeds Video Length\n");

  EXPECT_FALSE(ImportChapterList(Disc, 0, Folder / "none.txt", Store, Ui));
  EXPECT_FALSE(ImportChapterList(Disc, 0, Folder.Write("empty.txt", std::string("\0\xFF\n", 3)), Store, Ui));
  EXPECT_EQ(Told(),
            "Chapter List Error: The chapter list 'none.txt' cannot be read or is larger than 1 MB\n"
            "Chapter List Error: The chapter list 'empty.txt' holds no line with \"chapter=\"\n");
}

TEST_F(Imports, TimesThatNoTrackHolds) {
  NewTrack("Motion");  // of unknown length
  const std::string list = Folder.Write("l.txt", "chapter=-1:0:0:0\nchapter=2147483647:0:0:0\n");
  EXPECT_FALSE(ImportChapterList(Disc, 0, list, Store, Ui));
  EXPECT_EQ(
      Told(),
      "New Scene Error: Please set a valid Timestamp\nNew Scene Error: Timestamp exceeds Video Length\n");
}

TEST_F(Imports, ALongChapterListEndsAtTheMostScenes) {
  NewTrack("Motion");
  ASSERT_TRUE(Video("i.m2v", Text(BuildStream({.Gops = 200, .GopLength = 1}))));
  ASSERT_TRUE(AnalyseChapters(Disc, 0, Store, Ui));
  std::string list;
  for (int i = 1; i < 150; ++i) {
    list += fmt::format("chapter=00:00:{:02}:{:02}\n", i / 25, i % 25);
  }
  EXPECT_TRUE(ImportChapterList(Disc, 0, Folder.Write("l.txt", list), Store, Ui));
  EXPECT_EQ(Last().Scenes.size(), 99U);
  EXPECT_EQ(Told(), "New Scene Error: Max Number of Scenes reached (99)\n");
}

}  // namespace
}  // namespace quorvelant
