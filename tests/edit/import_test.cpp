// Every refusal and question of importing, as the user reads it.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <utility>

#include "boxes.h"
#include "edit/chapter_analysis.h"
#include "edit/chapter_list.h"
#include "edit/import_audio.h"
#include "edit/import_subtitles.h"
#include "edit/import_video.h"
#include "edit/messages.h"
#include "edit/new_track.h"
#include "edit/palettes.h"
#include "picture/bmp.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

bool IsOneLine(const std::string& text) {
  return text.ends_with('\n') && text.find('\n') + 1 == text.size();
}

std::string Bitmap(int width, int height) {
  return TextOf(WriteBmp(Picture(width, height)));
}

std::string Stream(const SequenceFields& sequence) {
  return TextOf(BuildStream({.Sequence = sequence}));
}

std::string Dts(unsigned rateCode) {  // 48 kHz, stereo
  return TextOf(Bytes{0x7F, 0xFE, 0x80, 0x01, 0xFC, 0x3C, 0x7D, 0xB0,
                      static_cast<std::uint8_t>(0xB4 | (rateCode >> 3)),
                      static_cast<std::uint8_t>(rateCode << 5), 0, 0});
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
  // What was told or asked since, as "title: text".
  std::string Told() {
    std::string told;
    for (auto* list : {&Ui.Messages, &Ui.Questions}) {
      for (const Message& message : std::exchange(*list, {})) {
        ExpectBox(message);
        told += message.Title + ": " + message.Text + "\n";
      }
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
  const std::string unfit = "Import Error: The video file has incompatible ";
  const std::string bitmap = "can't be imported: a bitmap belongs on a still or slideshow track";
  struct Case {
    std::string Type, Name, Content, Told;
    bool Taken = Told.empty();
  };
  const Case cases[] = {
      {"Motion", "a.m2v", Stream({}), ""},
      {"Motion", "b.m2v", Stream({.Width = 480}), unfit + "MPEG2 attributes -> PAL; 480x576\n"},
      {"Motion", "c.m2v", Stream({.FrameRateCode = 4}), unfit + "MPEG2 attributes -> NTSC; 720x576\n"},
      {"Motion", "d.m1v", Stream({.Width = 320, .Height = 240, .Mpeg2 = false}),
       unfit + "MPEG1 attributes -> PAL; 320x240\n"},
      {"Motion", "e.m2v", Stream({.FrameRateCode = 6}), unfit + "MPEG2 attributes -> ; 50 frames a second\n"},
      {"Motion", "f.m1v", Stream({.Width = 352, .Height = 288, .Mpeg2 = false}), "MPEG1 Import Error: "},
      {"Still", "g.m2v", Stream({}), "Still Import Error: "},
      {"SlideShow", "h.m2v", Stream({}), "Still Import Error: "},
      {"Still", "i.m2v", StreamBuilder().Sequence().Group().Picture().Text(), ""},
      {"Still", "j.bmp", Bitmap(720, 480), ""},
      {"SlideShow", "k.bmp", Bitmap(360, 288), ""},
      {"Still", "l.bmp", Bitmap(640, 480), "Image size error: "},
      {"Motion", "m.bmp", Bitmap(720, 576), bitmap},
      {"Motion", "n.bmp", Bitmap(64, 64), bitmap},
      {"Motion", "o.m2v", "", "o.m2v' can't be imported: it holds no MPEG video"},
      {"Motion", "p.mpg", TextOf(Bytes{0, 0, 1, 0xBA, 0x21, 0, 0, 0, 0}), "it is a program stream; take the"},
      {"Motion", "folder/file", "x", "it is a folder, not a file"},
      {"Motion", "q.m2v", Stream({.Height = 480, .FrameRateCode = 1}), "Import Warning: ", true},
  };
  for (const Case& given : cases) {
    NewTrack(given.Type);
    std::string file = Folder.Write(given.Name, given.Content);
    file = file.substr(0, file.find("/file"));
    EXPECT_EQ(ImportVideo(Disc, Disc.Tracks.Count() - 1, 0, file, Options, Store, Ui), given.Taken) << file;
    EXPECT_EQ(Last().VideoPlays[0].File.empty(), !given.Taken) << file;
    const std::string told = Told();
    EXPECT_THAT(told, HasSubstr(given.Told));
    EXPECT_EQ(IsOneLine(told), !given.Told.empty()) << told;
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
  EXPECT_THAT(Told(), HasSubstr("Video File Error: "));
  EXPECT_TRUE(Video("c.m2v", Stream({.Width = 704}), 1));
}

TEST_F(Imports, ChaptersAtTheInterval) {
  NewTrack("Motion");
  Options.AutoCreateChapters = true;
  Options.PalChapters = 30;
  ASSERT_TRUE(Video("v.m2v", TextOf(BuildStream({.Gops = 10}))));  // 120 frames, a group each 12
  EXPECT_THAT(SceneFrames(), ElementsAre(0, 24, 60, 84));
  EXPECT_EQ(Last().VideoFrames, 120);
}

TEST_F(Imports, AudioRefusalsAndQuestions) {
  const std::string rate = "Import Error: Unsupported file format - Sample Rate MUST be 48kHz: ";
  const std::string dts = "Incorrect bitrate of DTS audio. This source is ";
  struct Case {
    std::string Name, Content, Told;
    bool Question = false;
  };
  const Case cases[] = {
      {"a.ac3", Ac3Head(0x14), ""},
      {"b.wav", Wave(96000, 2, 24), ""},
      {"c.dts", Dts(24), ""},
      {"d.ac3", Ac3Head(0x54), rate},
      {"e.wav", Wave(44100, 2, 16), rate},
      {"f.ac3", Ac3Head(0x25), "Maximum Audio Bitrate for DVD is 448Kpbs. This source exceeds that (640)",
       true},
      {"g.dts", Dts(25), dts + "(1920)", true},
      {"h.dts", Dts(0), dts + "(32)", true},
      {"i.wav", Wave(96000, 3, 24), "PCM Data Rate Error: PCM Data Rate is non-dvd standard.", true},
      {"j.ac3", Ac3Head(0x14, 0x40, 0x80), "it is Enhanced AC3, which players don't read\n"},
      {"k.wav", "RIFF", "k.wav' can't be imported: it is no WAV file\n"},
      {"l.mp2", Ac3Head(0x14), "its name is not that of an AC3 or WAV file\n"},
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
      const std::string told = Told();
      EXPECT_THAT(told, HasSubstr(given.Told));
      EXPECT_EQ(IsOneLine(told), !given.Told.empty()) << told;
    }
  }
}

TEST_F(Imports, AudioPlaysMustBeLikeTheFirst) {
  NewTrack("Motion");
  AudioStream& stream = *AddAudioStream(Last());
  ASSERT_TRUE(Audio("a.ac3", Ac3Head(0x14)));
  EXPECT_EQ(stream.Format, "AC3");
  EXPECT_EQ(stream.Traits.BitRate, 192);
  EXPECT_TRUE(Last().HasAudio);
  ASSERT_NE(AddAudioPlay(stream), nullptr);
  for (const std::string& other : {Ac3Head(0x1C), Ac3Head(0x14, 0xE1)}) {
    EXPECT_FALSE(Audio("b.ac3", other, 1));
    EXPECT_THAT(Told(), HasSubstr("Audio Play Error: "));
  }
  EXPECT_FALSE(Audio("c.wav", Wave(48000, 2, 16), 1));
  EXPECT_TRUE(Audio("d.ac3", Ac3Head(0x15), 1));
}

TEST_F(Imports, ChapterAnalysis) {
  NewTrack("Motion");
  EXPECT_FALSE(AnalyseChapters(Disc, 0, Store, Ui));
  EXPECT_THAT(Told(), HasSubstr("Analysis Error: "));
  ASSERT_TRUE(Video("a.m2v", TextOf(BuildStream({.Gops = 3}))));
  AddVideoPlay(Last());
  ASSERT_TRUE(Video("b.m2v", TextOf(BuildStream({.Gops = 2, .GopLength = 10})), 1));
  const std::int32_t times[] = {0, 13, 23, 24, 56, 35, 50, 400};
  Last().Scenes.clear();
  Collection<Cell_P>& cells = Disc.Disc.Add({}).Title.Add({}).PGC.Add({}).PG.Add({}).Cell;
  for (const std::int32_t frame : times) {
    Cell_P& cell = cells.Add({});
    cell.SegmentUsed = 0;
    cell.pScene = static_cast<std::int32_t>(Last().Scenes.size());
    Last().Scenes.push_back({fmt::format("S{}", frame), frame, {}});
  }
  EXPECT_TRUE(AnalyseChapters(Disc, 0, Store, Ui));
  const std::string told = Told();
  EXPECT_TRUE(told.starts_with("Scene Error: ") && IsOneLine(told)) << told;
  EXPECT_EQ(Last().VideoFrames, 56);
  EXPECT_THAT(SceneFrames(), ElementsAre(0, 12, 12, 24, 24, 46));
  std::vector<std::int32_t> shown;
  for (const Cell_P& cell : cells) {
    shown.push_back(cell.SegmentUsed < 0 ? -1 : cell.pScene);
  }
  EXPECT_EQ(shown, (std::vector<std::int32_t>{0, 1, 2, 3, -1, 4, 5, -1}));
}

// Their times count, whatever the files hold.
TEST_F(Imports, ChaptersOfSlidesStartWithASlide) {
  NewTrack("SlideShow");
  Track& track = Last();
  track.VideoPlays.resize(2);
  for (VideoPlay& slide : track.VideoPlays) {
    slide.File = Folder.Write("s.m2v", TextOf(BuildStream({.Gops = 1, .GopLength = 1})));
    slide.SlideDuration = "00:00:02:00";
  }
  track.Scenes = {{"A", 0, {}}, {"B", 50, {}}, {"C", 60, {}}, {"D", 100, {}}};
  EXPECT_TRUE(AnalyseChapters(Disc, 0, Store, Ui));
  EXPECT_EQ(track.VideoFrames, 100);
  EXPECT_THAT(SceneFrames(), ElementsAre(0, 50, 50));
}

TEST_F(Imports, ChaptersStartAnywhereInAStreamOfSingleIPictures) {
  NewTrack("Motion");
  ASSERT_TRUE(Video("i.m2v", TextOf(BuildStream({.Gops = 30, .GopLength = 1}))));
  Last().Scenes.push_back({"S", 17, {}});
  EXPECT_TRUE(AnalyseChapters(Disc, 0, Store, Ui));
  EXPECT_EQ(Last().Scenes[1].Frame, 17);
  EXPECT_EQ(Last().VideoFrames, 30);
}

TEST_F(Imports, ChapterLists) {
  NewTrack("Motion");
  ASSERT_TRUE(Video("v.m2v", TextOf(BuildStream({.Gops = 20}))));
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
  EXPECT_EQ(Told(), fmt::format("{0}: The chapter list '{1}/none.txt' cannot be read or is larger than 1 MB\n"
                                "{0}: The chapter list '{1}/empty.txt' holds no line with \"chapter=\"\n",
                                "Chapter List Error", Folder.Path().string()));
}

TEST_F(Imports, ALongChapterListEndsAtTheMostScenes) {
  NewTrack("Motion");  // of unknown length
  std::string list = "chapter=-1:0:0:0\nchapter=2147483647:0:0:0\n";
  for (int i = 1; i < 150; ++i) {
    list += fmt::format("chapter=00:00:{:02}:{:02}\n", i / 25, i % 25);
  }
  EXPECT_TRUE(ImportChapterList(Disc, 0, Folder.Write("l.txt", list), Store, Ui));
  EXPECT_EQ(Last().Scenes.size(), 99U);
  EXPECT_EQ(Told(),
            "New Scene Error: Please set a valid Timestamp\n"
            "New Scene Error: Timestamp exceeds Video Length\n"
            "New Scene Error: Max Number of Scenes reached (99)\n");
}

class SubtitleImports : public Imports {
 protected:
  SubtitleImports() {
    NewTrack("Motion").Standard = "PAL";
    Last().SubStreams.resize(1);
    Disc.ScriptFile = Folder / "film.qvp";
  }
  bool Import(const std::string& name, const std::string& text) {
    return ImportSubtitleScript(Disc, 0, 0, Folder.Write(name, text), false, Rules::Players, Ui);
  }
  const std::vector<SubPicturePlay>& Plays() { return Last().SubStreams[0].SubPlays; }
};

TEST_F(SubtitleImports, AddToTheListAndCountRelativeFoldersFromTheScript) {
  const std::string entry = "SP_NUMBER\n1\t00:00:01:00\t00:00:02:00\ta.bmp\n";
  const struct {
    const char* Name;
    const char* Directory;
    const char* File;
  } cases[] = {{"a.sst", "Directory\tbitmaps\n", "bitmaps\\a.bmp"},
               {"subs/b.sst", "Directory\tbitmaps\n", "subs\\bitmaps\\a.bmp"},
               {"subs/c.sst", "", "subs\\a.bmp"},
               {"subs/d.sst", "Directory\tD:\\bitmaps\n", "D:\\bitmaps\\a.bmp"}};
  for (const auto& test : cases) {
    EXPECT_TRUE(Import(test.Name, test.Directory + entry));
    EXPECT_EQ(Plays().back().File, test.File);
  }
  EXPECT_EQ(Plays().size(), 4U);
  EXPECT_TRUE(Last().HasSubs && Ui.Messages.empty());
}

TEST_F(SubtitleImports, TellWhatIsWrongWithTheFile) {
  const struct {
    const char* Name;
    std::string Text;
    MessageKind Told;
    const char* Place;
  } cases[] = {
      {"empty.sst", std::string("\0\xFF\t\t(", 5), message::SubtitlesEmpty, "empty.sst"},
      {"half.sst", "SP_NUMBER\nnonsense\n1\t1\t2\ta.bmp\n", message::SubtitleLinePassedOver, "half.sst:2"},
      {"large.sst", std::string((16 << 20) + 1, '\n'), message::SubtitlesTooLarge, "large.sst"}};
  for (const auto& test : cases) {
    EXPECT_EQ(Import(test.Name, test.Text), test.Name == std::string("half.sst"));
    ASSERT_FALSE(Ui.Messages.empty());
    EXPECT_TRUE(Ui.Messages.back().Is(test.Told)) << Ui.Messages.back().Text;
    EXPECT_EQ(Ui.Messages.back().Place, Folder / test.Place);
  }
}

TEST_F(SubtitleImports, OfferThePaletteOnce) {
  std::string text = "Palette Entries\n";
  for (int i = 0; i < 20; ++i) {
    text += "RGB" + std::to_string(i) + " (" + std::to_string(i) + ", 0 ,255)\n";
  }
  text += "SP_NUMBER\n1\t1\t2\ta.bmp\n";
  Disc.Palettes.Add({.Key = "Taken"});
  Ui.Answers = {true};
  Ui.Texts = {"Taken", "Mine"};
  Import("a.sst", text);
  EXPECT_EQ(Ui.Questions.size(), 3U);
  ASSERT_EQ(Ui.Messages.size(), 1U);
  EXPECT_TRUE(Ui.Messages[0].Is(message::PaletteNameTaken));
  ASSERT_EQ(Disc.Palettes.Count(), 2U);
  const Palette_P& mine = *Disc.Palettes.Item("Mine");
  EXPECT_EQ(mine.PaletteColors[0], 0xFF0000U);
  EXPECT_EQ(mine.PaletteColors[15], 0xFF000FU);

  Ui.Answers = {false, true};
  Ui.Texts = {std::nullopt};
  Import("a.sst", text);
  Import("a.sst", text);
  EXPECT_EQ(Disc.Palettes.Count(), 2U);
}

TEST_F(SubtitleImports, TakeThePaletteUnderAFreeNameWhereNobodyAnswers) {
  Disc.Palettes.Add({.Key = "Palette_3"});
  Disc.Palettes.Add({.Key = "Palette_4"});
  Ui.Unattended = true;
  // Chains that show the track take it, but not one that has a palette.
  Title_P& title = Disc.Disc.Add({}).Title.Add({});
  for (const char* palette : {"Default", "Palette_3"}) {
    PGC_P& chain = title.PGC.Add({});
    chain.PaletteName = palette;
    chain.PG.Add({}).Cell.Add({}).SegmentUsed = 0;
  }
  Import("a.sst", "Palette entries\n");
  EXPECT_EQ(title.PGC.Item(1)->PaletteName, "Palette_5");
  EXPECT_EQ(title.PGC.Item(2)->PaletteName, "Palette_3");
  ASSERT_GE(Ui.Messages.size(), 2U);
  EXPECT_TRUE(Ui.Messages[Ui.Messages.size() - 1].Is(message::PaletteKeptByChains) ||
              Ui.Messages[Ui.Messages.size() - 2].Is(message::PaletteKeptByChains));
  EXPECT_NE(Disc.Palettes.Item("Palette_5"), nullptr);
  EXPECT_TRUE(UpdatePalette(Disc, "Palette_5", PaletteFrom(std::array<Color, 2>{1, 2})));
  EXPECT_EQ(Disc.Palettes.Item("Palette_5")->PaletteColors[1], 2U);
  EXPECT_FALSE(UpdatePalette(Disc, "palette_5", {}));
}

}  // namespace
}  // namespace quorvelant
