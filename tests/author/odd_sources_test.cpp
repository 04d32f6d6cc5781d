// Discs of sources that need care: the widest PCM, sound that is delayed or damaged, slides of one frame,
// video coded by fields, and slides of coded stills. Nothing is found wrong with them, and all sound is
// there.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <tuple>

#include "disc_maker.h"
#include "edit/chapter_analysis.h"
#include "mux/messages.h"
#include "support/disc_judges.h"
#include "support/stream_builder.h"
#include "support/vob_walk.h"

namespace quorvelant {
namespace {

using testing::IsEmpty;

class OddSources : public testing::Test {
 protected:
  void Film(const std::string& sounds) { Make("Item=Video Play\nVideoFile=film.m2v\n", {0, 30}, sounds); }

  // A disc of one track with scenes at these frames, analysed and made.
  void Make(const std::string& pictures, const std::vector<int>& scenes, const std::string& sounds) {
    DiscMaker::Words words{{"PICTURES", pictures}, {"SOUNDS", sounds}, {"SCENES", ""}, {"PROGRAMS", ""}};
    for (std::size_t i = 0; i < scenes.size(); ++i) {
      words["SCENES"] += fmt::format("Item=Scene\nName=s{}\nSceneTime=@{}\n", i, scenes[i]);
      words["PROGRAMS"] +=
          fmt::format("Item=Program\nItem=Cell\nUsingScene=s{}\nSeamless Flag=Seamless\n", i);
    }
    maker.Load("odd.qvp", words);
    IndexStore store(true);
    EXPECT_TRUE(AnalyseChapters(maker.Disc, 0, store, maker.Ui));
    const AuthorResult result = maker.Author();
    ASSERT_EQ(result.Outcome, AuthorOutcome::Done);
    EXPECT_EQ(result.Titles.at(0).Chapters, scenes.size());
    if (HasChecker()) {
      EXPECT_THAT(CheckerErrors(maker.Folder), IsEmpty());
    }
  }

  std::string Sound(int number, const std::string& name, int delayMs = 0) const {
    return fmt::format("Item=Audio Play List\nStreamNumber={}\nDelay={}\nItem=Audio Play\nAudioFile={}\n",
                       number, delayMs, name);
  }

  // By its number, what a stream of private stream 1 holds, and its first stamp.
  std::map<int, std::pair<std::string, std::int64_t>> Streams() const {
    std::map<int, std::pair<std::string, std::int64_t>> streams;
    const Bytes sectors = SectorsOf(TitleVobs(maker.Folder, 1));
    for (std::size_t at = 0; at < sectors.size(); at += SectorBytes) {
      const ReadPack pack = ReadPackOf(ByteView(sectors).subspan(at, SectorBytes));
      if (pack.Substream >= 0) {
        auto& [content, stamp] = streams.try_emplace(pack.Substream, "", pack.Pts.value_or(-1)).first->second;
        content.append(pack.Payload.begin(), pack.Payload.end());
      }
    }
    return streams;
  }

  DiscMaker maker{{.Width = 352, .Height = 288, .Frames = 75, .Closed = true, .KbitPerSecond = 1000}};
};

TEST_F(OddSources, TheWidestPcmIsHeardSampleForSample) {
  maker.Link("film.m2v", SampleVideo(maker.Video));
  for (const auto& [kiloHertz, bits, channels] :
       {std::tuple{48, 16, 8}, {48, 24, 5}, {48, 20, 6}, {96, 16, 4}, {96, 24, 2}}) {
    SCOPED_TRACE(testing::Message() << kiloHertz << "/" << bits << "/" << channels);
    const int kept = bits == 16 ? 16 : 24;  // in the file
    std::string wave = TempFolder::Read(
        SampleWav({.Rate = kiloHertz * 1000, .Bits = kept, .Channels = channels, .Seconds = 4}));
    const std::size_t data = wave.find("data") + 8;
    if (bits == 20) {
      wave[34] = 20;  // bits per sample
      for (std::size_t at = data; at + 2 < wave.size(); at += 3) {
        wave[at] = static_cast<char>(wave[at] & 0xF0);
      }
    }
    const std::string name = fmt::format("{}{}{}.wav", kiloHertz, bits, channels);
    maker.Temp.Write(name, wave);
    std::filesystem::remove_all(maker.Folder);
    Film(Sound(0, name));
    const std::string raw = maker.Temp / "heard.raw";
    EXPECT_THAT(LinesOf(fmt::format("ffmpeg -v error -y -i '{}' -map 0:a -f s{}le '{}'",
                                    TitleVobs(maker.Folder, 1).at(0), kept, raw)),
                IsEmpty());
    const std::string heard = TempFolder::Read(raw);
    EXPECT_GE(heard.size(), static_cast<std::size_t>(3 * kiloHertz * 1000 * channels * kept / 8));
    EXPECT_TRUE(heard == wave.substr(data, heard.size()));
  }
  EXPECT_THAT(maker.Ui.Messages, IsEmpty());
}

// Eight of sound and 32 of subtitles take some 9.5 of the 10.08 Mbit/s together with the picture.
TEST_F(OddSources, EveryStreamIsThereWithItsDelayAndItsSound) {
  maker.Link("film.m2v", SampleVideo({.Frames = 75, .Closed = true, .KbitPerSecond = 5000}));
  maker.Link("film.ac3", SampleAc3({.Channels = 6, .Kbps = 448, .Seconds = 3.5}));
  maker.Paint("words.bmp", 200, 30, 0x000000);
  const std::string source = TempFolder::Read(maker.Temp / "film.ac3");
  std::string subtitles;
  for (int i = 0; i < 32; ++i) {
    subtitles += fmt::format(
        "Item=SubPicture\nStreamNumber={}\nItem=SubPicture Play\nFile=words.bmp\nOrigin=80,400\nStart=@{}\n"
        "Duration=@20\nConversion(Bg)=255,255,255\nConversion(P)=0,0,0\n",
        i, 5 + i);
  }
  std::vector<int> delays{-60, -59, -1, 0, 1, 60, 299, 300};
  for (const int turn : {0, 3, 4}) {
    std::ranges::rotate(delays, delays.begin() + turn);
    std::string sounds;
    for (int i = 0; i < 8; ++i) {
      sounds += Sound(i, "film.ac3", delays[static_cast<std::size_t>(i)]);
    }
    std::filesystem::remove_all(maker.Folder);
    Film(sounds + subtitles);
    const auto streams = Streams();
    EXPECT_EQ(streams.size(), 40U);
    for (int i = 0; i < 8; ++i) {
      const auto& [sound, stamp] = streams.at(0x80 + i);
      const int delay = delays[static_cast<std::size_t>(i)];
      EXPECT_EQ(stamp, 25257 + 90 * delay);
      EXPECT_GE(sound.size(), static_cast<std::size_t>((3000 - delay) * 56));
      EXPECT_TRUE(sound == source.substr(0, sound.size())) << delay;
    }
  }
  EXPECT_THAT(maker.Ui.Messages, IsEmpty());
}

TEST_F(OddSources, DamagedSoundKeepsItsTime) {
  maker.Link("film.m2v", SampleVideo(maker.Video));
  std::string sound = TempFolder::Read(SampleAc3({.Seconds = 3.5}));
  const std::string whole = sound;
  sound[768 * 20] = 0;
  sound.erase(768 * 40 + 100, 300);
  sound.insert(768 * 60 - 300, 500, 'x');
  maker.Temp.Write("film.ac3", sound);
  Film(Sound(0, "film.ac3"));
  ASSERT_EQ(maker.Ui.Messages.size(), 1U);
  EXPECT_TRUE(maker.Ui.Messages[0].Is(message::AudioDamaged));
  const std::string heard = Streams().at(0x80).first;
  for (std::size_t frame = 0; frame < heard.size() / 768; ++frame) {
    const std::size_t from = frame == 20 || frame == 40 ? frame - 1 : frame;  // heard again for a lost one
    EXPECT_EQ(heard.compare(frame * 768, 768, whole, from * 768, 768), 0) << frame;
  }
}

TEST_F(OddSources, SlidesAndFieldsMakeDiscsWithTheirChapters) {
  maker.Link("film.ac3", SampleAc3({.Seconds = 3.5}));
  maker.Paint("slide.bmp", 720, 576, 0x804020);
  maker.Link("still.m2v", SampleVideo({.Frames = 1}));
  maker.Temp.Write("fields.m2v", TextOf(BuildStream({.Gops = 8, .FieldPictures = true})));
  const auto slide = [](std::string_view file, int frames) {
    return fmt::format("Item=SlideShow Play\nVideoFile={}\nSlideDuration=@{}\n", file, frames);
  };
  const std::string stills = slide("still.m2v", 50) + slide("still.m2v", 1) + slide("still.m2v", 30);
  const std::string bitmaps = slide("slide.bmp", 1) + slide("slide.bmp", 60) + slide("slide.bmp", 1);
  for (const auto& [pictures, scenes] :
       {std::pair{bitmaps, std::vector{0, 1, 61}},
        {stills, std::vector{0, 50, 51}},
        {std::string("Item=Video Play\nVideoFile=fields.m2v\n"), std::vector{0, 36, 72}}}) {
    SCOPED_TRACE(pictures);
    std::filesystem::remove_all(maker.Folder);
    Make(pictures, scenes, Sound(0, "film.ac3"));
    ASSERT_EQ(maker.Disc.Tracks[0].Scenes.size(), 3U);
    EXPECT_EQ(maker.Disc.Tracks[0].Scenes[2].Frame, scenes[2]);
  }
}

}  // namespace
}  // namespace quorvelant
