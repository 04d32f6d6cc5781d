// Every refusal and question of importing, with its exact title and text.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "check/check_sources.h"
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

std::string Text(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string Bitmap(int width, int height) {
  return Text(WriteBmp(Picture(width, height)));
}

std::string Frame(std::uint8_t rateAndSize, std::uint8_t modes = 0x40, std::uint8_t channels = 0x40) {
  return Text({0x0B, 0x77, 0, 0, rateAndSize, modes, channels, 0});
}

std::string Dts(unsigned rateCode) {  // 48 kHz, stereo
  return Text({0x7F, 0xFE, 0x80, 0x01, 0xFC, 0x3C, 0x7D, 0xB0,
               static_cast<std::uint8_t>(0xB4 | (rateCode >> 3)), static_cast<std::uint8_t>(rateCode << 5), 0,
               0});
}

std::string Wave(unsigned rate, unsigned channels, unsigned bits) {
  ByteWriter wave;
  const auto little = [&](unsigned value, unsigned width) {
    for (unsigned i = 0; i < width; ++i) {
      wave.U8((value >> (8 * i)) & 0xFF);
    }
  };
  wave.Text("RIFF\x40\x01\x01\x01WAVEfmt ");
  little(16, 4);
  little(1, 2);
  little(channels, 2);
  little(rate, 4);
  little(rate * channels * bits / 8, 4);
  little(channels * bits / 8, 2);
  little(bits, 2);
  wave.Text("data");
  little(600, 4);
  wave.Zeros(600);
  return Text(wave.Take());
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
  void ExpectTold(const std::string& title, const std::string& text) {
    ASSERT_EQ(Ui.Messages.size(), 1U);
    EXPECT_EQ(Ui.Messages[0].Title, title);
    EXPECT_EQ(Ui.Messages[0].Text, text);
    Ui.Messages.clear();
  }
  void ExpectAsked(const std::string& title, const std::string& text) {
    ASSERT_EQ(Ui.Questions.size(), 1U);
    EXPECT_EQ(Ui.Questions[0].Title, title);
    EXPECT_EQ(Ui.Questions[0].Text, text);
    Ui.Questions.clear();
  }

  TempFolder Folder;
  RecordingUi Ui;
  Project Disc;
  IndexStore Store;
  VideoImportOptions Options;
};

TEST_F(Imports, VideoRefusals) {
  const std::string still = StreamBuilder().Sequence().Group().Picture().Text();
  const auto stream = [](const SequenceFields& sequence) {
    GopPlan plan;
    plan.Sequence = sequence;
    return Text(BuildStream(plan));
  };
  struct Case {
    std::string Type, Name, Content, Title, Text;
  };
  const std::string path = Folder / "";
  const std::string imageSizes = "Image sizes must be 720*576 or 360*288 or 720*480 or 360*240";
  const std::string noStill =
      "Video Stream is NOT a still - please reselect a video file with only 1 frame or a BMP Image";
  const Case cases[] = {
      {"Motion", "a.m2v", stream({}), "", ""},
      {"Motion", "b.m2v", stream({.Width = 480}), "Import Error",
       "The video file has incompatible MPEG2 attributes -> PAL; 480x576"},
      {"Motion", "c.m2v", stream({.Width = 720, .Height = 576, .FrameRateCode = 4}), "Import Error",
       "The video file has incompatible MPEG2 attributes -> NTSC; 720x576"},
      {"Motion", "d.m1v", stream({.Width = 320, .Height = 240, .Mpeg2 = false}), "Import Error",
       "The video file has incompatible MPEG1 attributes -> PAL; 320x240"},
      {"Motion", "e.m2v", stream({.FrameRateCode = 6}), "Import Error",
       "The video file has incompatible MPEG2 attributes -> ; frame rate code 6"},
      {"Motion", "f.m1v", stream({.Width = 352, .Height = 288, .Mpeg2 = false}), "MPEG1 Import Error",
       "MPEG1 video is not supported in the Ondra version"},
      {"Still", "g.m2v", stream({}), "Still Import Error", noStill},
      {"SlideShow", "h.m2v", stream({}), "Still Import Error", noStill},
      {"Still", "i.m2v", still, "", ""},
      {"Still", "j.bmp", Bitmap(720, 480), "", ""},
      {"SlideShow", "k.bmp", Bitmap(360, 288), "", ""},
      {"Still", "l.bmp", Bitmap(640, 480), "Image size error", imageSizes},
      {"Motion", "m.bmp", Bitmap(720, 576), "Import Error",
       "'" + path + "m.bmp' can't be imported: a bitmap belongs on a still or slideshow track"},
      {"Motion", "n.m2v", "", "Import Error",
       "'" + path + "n.m2v' can't be imported: it holds no MPEG video"},
      {"Motion", "o.mpg", Text({0, 0, 1, 0xBA, 0x21, 0, 0, 0, 0}), "Import Error",
       "'" + path +
           "o.mpg' can't be imported: it is a program stream; take the elementary video stream out of it "
           "first"},
  };
  for (const Case& given : cases) {
    NewTrack(given.Type);
    EXPECT_EQ(Video(given.Name, given.Content), given.Title.empty()) << given.Name;
    EXPECT_EQ(Last().VideoPlays[0].File.empty(), !given.Title.empty()) << given.Name;
    if (!given.Title.empty()) {
      ExpectTold(given.Title, given.Text);
    }
  }
  EXPECT_TRUE(Ui.Messages.empty());
  NewTrack("Motion");
  EXPECT_FALSE(ImportVideo(Disc, Disc.Tracks.Count() - 1, 0, Folder.Path().string(), Options, Store, Ui));
  ExpectTold("Import Error",
             "'" + Folder.Path().string() + "' can't be imported: it is a folder, not a file");
}

TEST_F(Imports, AVideoFillsItsTrackAndTheNextMustBeLikeIt) {
  NewTrack("Motion");
  Options.UseTrackNames = true;
  ASSERT_TRUE(Video("My film.m2v", Text(BuildStream({.Sequence = {.Width = 704, .DisplayWidth = 540}}))));
  EXPECT_EQ(Last().Standard, "PAL");
  EXPECT_EQ(Last().Aspect, "4:3");
  EXPECT_EQ(Last().Resolution, "704x576");
  EXPECT_EQ(Last().Coding, "MPEG2");
  EXPECT_TRUE(Last().Pan);
  EXPECT_EQ(Last().DisplayMode, "Only PanScan");
  EXPECT_EQ(Last().TrackName, "My film");
  EXPECT_EQ(Last().Scenes[0].Name, "My film_Scene1");
  ASSERT_NE(AddVideoPlay(Last()), nullptr);
  EXPECT_FALSE(Video("b.m2v", Text(BuildStream({})), 1));
  ExpectTold("Video File Error", "This Video File has different Attributes to Source File");
  EXPECT_TRUE(Video("c.m2v", Text(BuildStream({.Sequence = {.Width = 704}})), 1));

  NewTrack("Motion");
  EXPECT_TRUE(Video("film.m2v", Text(BuildStream({.Sequence = {.Height = 480, .FrameRateCode = 1}}))));
  ExpectTold("Import Warning", "Video source is 23.976fps and is not pulldowned");
}

TEST_F(Imports, ChaptersAtTheInterval) {
  NewTrack("Motion");
  Options.AutoCreateChapters = true;
  Options.PalChapters = 30;
  ASSERT_TRUE(Video("v.m2v", Text(BuildStream({.Gops = 10}))));  // 120 frames, a group each 12
  std::vector<std::int32_t> frames;
  for (const Scene& scene : Last().Scenes) {
    frames.push_back(scene.Frame);
  }
  EXPECT_EQ(frames, (std::vector<std::int32_t>{0, 24, 60, 84}));
  EXPECT_EQ(Last().VideoFrames, 120);
}

TEST_F(Imports, AudioRefusalsAndQuestions) {
  const std::string closing = "Continuing will make a non-standard DVD. Do you want to continue?";
  const std::string pcm =
      "PCM Data Rate is non-dvd standard. Continuing will result in non-standard DVD and will probably fail. "
      "Do you "
      "want to continue?";
  const std::string rate = "Unsupported file format - Sample Rate MUST be 48kHz";
  const std::string path = Folder / "";
  struct Case {
    std::string Name, Content, Title, Text;
    bool Question;
  };
  const Case cases[] = {
      {"a.ac3", Frame(0x14), "", "", false},
      {"b.wav", Wave(96000, 2, 24), "", "", false},
      {"c.dts", Dts(24), "", "", false},
      {"d.ac3", Frame(0x54), "Import Error", rate, false},
      {"e.wav", Wave(44100, 2, 16), "Import Error", rate, false},
      {"f.ac3", Frame(0x25), "Audio Bitrate Error",
       "Maximum Audio Bitrate for DVD is 448Kpbs. This source exceeds that (640). " + closing, true},
      {"g.dts", Dts(25), "Audio Bitrate Error",
       "Incorrect bitrate of DTS audio. This source is (1920). " + closing, true},
      {"h.dts", Dts(0), "Audio Bitrate Error",
       "Incorrect bitrate of DTS audio. This source is (32). " + closing, true},
      {"i.wav", Wave(96000, 3, 24), "PCM Data Rate Error", pcm, true},
      {"j.ac3", Frame(0x14, 0x80), "Import Error",
       "'" + path + "j.ac3' can't be imported: it is Enhanced AC3, which players don't read", false},
      {"k.wav", "RIFF", "Import Error", "'" + path + "k.wav' can't be imported: it is no WAV file", false},
      {"l.mp2", Frame(0x14), "Import Error",
       "'" + path + "l.mp2' can't be imported: its name is not that of an AC3 or WAV file", false},
  };
  for (const Case& given : cases) {
    for (const bool answer : {false, true}) {
      NewTrack("Motion");
      AddAudioStream(Last());
      if (given.Question) {
        Ui.Answers = {answer};
      }
      EXPECT_EQ(Audio(given.Name, given.Content), given.Title.empty() || (given.Question && answer))
          << given.Name;
      if (given.Question) {
        ExpectAsked(given.Title, given.Text);
      } else if (!given.Title.empty()) {
        ExpectTold(given.Title, given.Text);
      }
    }
  }
  EXPECT_TRUE(Ui.Messages.empty());
}

TEST_F(Imports, AudioPlaysMustBeLikeTheFirst) {
  NewTrack("Motion");
  AudioStream& stream = *AddAudioStream(Last());
  ASSERT_TRUE(Audio("a.ac3", Frame(0x14)));
  EXPECT_EQ(stream.Format, "AC3");
  EXPECT_EQ(stream.Traits.BitRate, 192);
  EXPECT_TRUE(Last().HasAudio);
  ASSERT_NE(AddAudioPlay(stream), nullptr);
  for (const std::string& other : {Frame(0x1C), Frame(0x14, 0x40, 0xE1)}) {
    EXPECT_FALSE(Audio("b.ac3", other, 1));
    ExpectTold("Audio Play Error", "This Audio Play has different parameters to the Audio Play #1");
  }
  EXPECT_FALSE(Audio("c.wav", Wave(48000, 2, 16), 1));
  Ui.Messages.clear();
  EXPECT_TRUE(Audio("d.ac3", Frame(0x15), 1));
}

TEST_F(Imports, SubtitlesNeedAVideoFirst) {
  NewTrack("Motion");
  const auto none = [] { return std::optional<std::string>(); };
  EXPECT_FALSE(ImportSubtitles(Disc, 0, none, false, Rules::Players, Ui));
  ExpectTold("Sub Import Error",
             "Please select a video/still file first, so that the correct subtitle display modes can be set");
  ASSERT_TRUE(Video("v.m2v", Text(BuildStream({}))));
  Ui.Answers = {true};
  EXPECT_TRUE(ImportSubtitles(Disc, 0, none, false, Rules::Players, Ui));
  ExpectAsked("",
              "Would you like to import an sst subtitle file (if NO then a blank stream will be created for "
              "individual "
              "sub import in the track Viewer");
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
  ExpectTold("Analysis Error", "You must specify a Video/Still file before analysis can be completed");
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
  ExpectTold("Scene Error",
             "One or more Scene times were greater than the Video length, and have been removed");
  EXPECT_EQ(Last().VideoFrames, 56);
  std::vector<std::int32_t> frames;
  for (const Scene& scene : Last().Scenes) {
    frames.push_back(scene.Frame);
  }
  EXPECT_EQ(frames, (std::vector<std::int32_t>{0, 12, 12, 24, 24, 46}));
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
  std::vector<std::int32_t> frames;
  for (const Scene& scene : Last().Scenes) {
    frames.push_back(scene.Frame);
  }
  EXPECT_EQ(frames, (std::vector<std::int32_t>{0, 48, 120}));
  ASSERT_EQ(Ui.Messages.size(), 3U);
  EXPECT_EQ(Ui.Messages[0].Text, "This Corrected Timestamp already exists, please select another");
  EXPECT_EQ(Ui.Messages[0].Place, list + ":4");
  EXPECT_EQ(Ui.Messages[1].Text, "Please set a valid Timestamp");
  EXPECT_EQ(Ui.Messages[2].Text, "Timestamp exceeds Video Length");
  Ui.Messages.clear();

  EXPECT_FALSE(ImportChapterList(Disc, 0, Folder / "none.txt", Store, Ui));
  ExpectTold("Chapter List Error",
             "The chapter list '" + (Folder / "none.txt") + "' cannot be read or is larger than 1 MB");
  const std::string empty = Folder.Write("empty.txt", std::string("\0\xFF\n", 3));
  EXPECT_FALSE(ImportChapterList(Disc, 0, empty, Store, Ui));
  ExpectTold("Chapter List Error", "The chapter list '" + empty + "' holds no line with \"chapter=\"");
}

TEST_F(Imports, TimesThatNoTrackHolds) {
  NewTrack("Motion");  // of unknown length
  const std::string list = Folder.Write("l.txt", "chapter=-1:0:0:0\nchapter=2147483647:0:0:0\n");
  EXPECT_FALSE(ImportChapterList(Disc, 0, list, Store, Ui));
  ASSERT_EQ(Ui.Messages.size(), 2U);
  EXPECT_EQ(Ui.Messages[0].Text, "Please set a valid Timestamp");
  EXPECT_EQ(Ui.Messages[1].Text, "Timestamp exceeds Video Length");
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
  ExpectTold("New Scene Error", "Max Number of Scenes reached (99)");
}

TEST_F(Imports, CheckOfSources) {
  Disc.ScriptFile = Folder / "p.qvp";
  NewTrack("Motion");
  Last().Standard = "NTSC";
  Last().VideoPlays = {
      {"good.m2v", false, "", false}, {"wide.m2v", false, "", false}, {"gone.m2v", false, "", false}};
  Last().AudioStreams.resize(3);
  Last().AudioStreams[0].AudioPlays = {{"sub\\a.ac3", false}, {"sub/b.ac3", false}};
  Last().AudioStreams[1].AudioPlays = {{"c.wav", false}};
  Last().AudioStreams[2].AudioPlays = {{"d.dts", false}};
  Folder.Write("good.m2v", Text(BuildStream({})));
  Folder.Write("wide.m2v", Text(BuildStream({.Sequence = {.AspectCode = 3}})));
  Folder.Write("sub/a.ac3", Frame(0x14));
  Folder.Write("sub/b.ac3", Frame(0x1C));
  Folder.Write("c.wav", Wave(44100, 2, 16));
  Folder.Write("d.dts", Dts(24));
  NewTrack("Still");
  Last().VideoPlays[0].File = Folder.Write("s.bmp", Bitmap(100, 100));
  Last().SubStreams.resize(1);
  Last().SubStreams[0].SubPlays.resize(1);
  Last().SubStreams[0].SubPlays[0].File = "gone.bmp";
  std::string report;
  BmpLoader pictures;
  for (const Message& found : CheckSources(Disc, Rules::Players, pictures, Ui)) {
    report += fmt::format("{} | {} | {}\n", found.Place, found.Title, found.Text);
  }
  EXPECT_EQ(report,
            "Track.0.Video1 (T0) | Mismatched Source | 'good.m2v': PAL where the track is NTSC\n"
            "Track.0.Video2 (T0) | Mismatched Source | 'wide.m2v': PAL where the track is NTSC\n"
            "Track.0.Video2 (T0) | Mismatched Source | 'wide.m2v': MPEG2 PAL 720x576 16:9 where the first "
            "play is MPEG2 "
            "PAL 720x576 4:3\n"
            "Track.0.Video3 (T0) | Missing Source | 'gone.m2v': there is no such file\n"
            "Track.0.Audio1.AudioPlay2 (T0) | Mismatched Source | 'sub/b.ac3': AC3 48 kHz, 384 kbit/s, 2 "
            "channels where "
            "the first play is AC3 48 kHz, 192 kbit/s, 2 channels\n"
            "Track.0.Audio2.AudioPlay1 (T0) | Refused Source | 'c.wav': its sample rate is not 48 kHz\n"
            "Track.0.Audio3.AudioPlay1 (T0) | Refused Source | 'd.dts': DTS audio has been found - this will "
            "not be muxed - limitation of Ondra version\n"
            "Track.1.Video1 (T1) | Refused Source | '" +
                (Folder / "s.bmp") +
                "': a bitmap of 100x100: sizes are 720x576, 360x288, 720x480 and 360x240\n"
                "Track.1.Sub1 (T1) entry 1 | Subtitle Check | " +
                (Folder / "gone.bmp") + ": the file does not exist\n");
  EXPECT_TRUE(Ui.Messages.empty());
}

}  // namespace
}  // namespace quorvelant
