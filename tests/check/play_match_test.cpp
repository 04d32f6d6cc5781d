// Lists of sources, and what is found on them: by the check of a project and by the plan of its disc.
#include "check/play_match.h"

#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <tuple>

#include "analysis/remedies.h"
#include "author/disc_plan.h"
#include "check/check_sources.h"
#include "check/messages.h"
#include "check/source_judge.h"
#include "edit/file_scanner.h"
#include "picture/bmp.h"
#include "script/load_findings.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using std::string_view_literals::operator""sv;

std::string Film(const GopPlan& plan) {
  return TextOf(BuildStream(plan));
}

// Groups of ten pictures after one sequence header.
std::string OneSequence(int groups) {
  StreamBuilder stream;
  stream.Sequence();
  for (int i = 0; i < groups * 10; ++i) {
    if (i % 10 == 0) {
      stream.Group();
    }
    stream.Picture({.Type = i % 10 == 0 ? 'I' : 'P', .TemporalReference = i % 10});
  }
  return stream.Text();
}

// The same with a vbv_delay, which streams of variable rate have not.
std::string OfConstantRate(std::string film) {
  for (std::size_t at = film.find("\0\0\1\0"sv); at != std::string::npos;
       at = film.find("\0\0\1\0"sv, at + 1)) {
    film.at(at + 6) = 0x10;
  }
  return film;
}

std::string Ac3(int rateCode, int mode, int frequency = 0) {
  return Ac3Head(static_cast<std::uint8_t>(frequency << 6 | rateCode), static_cast<std::uint8_t>(mode << 5));
}

std::string Wave(int channels, int rate = 48000, int bits = 16, double seconds = 0.1) {
  return TempFolder::Read(SampleWav({.Rate = rate, .Bits = bits, .Channels = channels, .Seconds = seconds}));
}
constexpr const char* SecondStream = "Item=Audio Play List|StreamNumber=1|Item=Audio Play|AudioFile=a1.wav|";

std::string Transport(std::size_t packet) {
  std::string packets(packet * 3, '\0');
  for (std::size_t i = 0; i < 3; ++i) {
    packets[i * packet + packet - 188] = 'G';
  }
  return packets;
}

std::string Word(std::string_view bytes, std::size_t length = 64) {
  std::string text(bytes);
  text.resize(std::max(text.size(), length));
  return text;
}

// Found are severity under `Rules::Players` and under `Rules::Classic`, code, and number of the play.
struct Row {
  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

  std::string Name;
  std::vector<std::string> Video;  // contents
  std::vector<std::string> Sound;
  std::string Found;
  std::string Says;  // part of each text
  std::string Kind = "AC3";
  std::string Standard = "PAL";
  std::string More = {};  // lines of the script after the sound; "|" ends one
};

Row OfVideo(std::string name, std::vector<std::string> video, std::string found, std::string says = {}) {
  return {std::move(name), std::move(video), {}, std::move(found), std::move(says)};
}
Row OfSound(std::string name, std::string kind, std::vector<std::string> sound, std::string found,
            std::string says = {}) {
  return {std::move(name), {Film({})}, std::move(sound), std::move(found), std::move(says), std::move(kind)};
}
Row NoVideo(std::string name, const std::string& content, std::string says = {}) {
  return OfVideo(std::move(name), {content}, "EW source-foreign v1|-E video-missing v1", std::move(says));
}
Row NoSound(std::string name, const std::string& content) {
  return OfSound(std::move(name), "AC3", {content}, "EW source-foreign a1|-E audio-head a1");
}

std::vector<Row> Rows() {
  const std::string pal = Film({});
  const std::string ntsc = Film({.Sequence = {.Height = 480, .FrameRateCode = 4}});
  const std::string programStream =
      StreamBuilder().Raw(Bytes{0, 0, 1, 0xBA, 0x44}).Sequence().Picture().Picture().Text();
  const std::string noGroups =
      StreamBuilder().Sequence().Picture().Picture({.Type = 'P'}).Sequence().Picture().Text();
  const std::string otherVideo = "EW source-unlike-first v2";
  const std::string otherSound = "EW source-unlike-first a2";
  return {
      {"Alike", {pal, pal}, {Ac3(20, 2), Ac3(20, 2)}, "", ""},
      OfSound("OddFrameSizeCodeOfTheSameRate", "AC3", {Ac3(20, 2), Ac3(21, 2)}, ""),
      OfVideo("Sizes", {pal, Film({.Sequence = {.Width = 704}})}, otherVideo, "704x576"),
      OfVideo("Aspects", {pal, Film({.Sequence = {.AspectCode = 3}})}, otherVideo,
              "'v2.m2v': MPEG2 PAL 720x576 16:9 where 'v1.m2v'"),
      OfVideo("Standards", {pal, ntsc}, "EW source-unlike-track v2|" + otherVideo),
      OfVideo("Codings", {pal, Film({.Sequence = {.Mpeg2 = false}})}, "EW video-mpeg1 v2|" + otherVideo),
      {"StandardOfTheTrack", {pal}, {}, "EW source-unlike-track v1", "Resolution=PAL", "", "NTSC"},
      {"NoStandard", {pal}, {}, "EW track-standard-unknown ", "Resolution=PALL", "", "PALL"},
      {"StandardByTheFile", {pal}, {}, "", "", "", ""},
      OfSound("BitRates", "AC3", {Ac3(20, 2), Ac3(30, 2), Ac3(20, 2)}, otherSound,
              "where 'a1.ac3', the first of its list, is AC3 48 kHz, 192 kbit/s, 2 channels"),
      OfSound("Channels", "AC3", {Ac3(20, 2), Ac3(20, 1)}, otherSound, "-b:a 192k -ar 48000 -ac 2"),
      OfSound("StereoThenMono", "PCM", {Wave(2), Wave(1)}, otherSound, "pcm_s16le -ar 48000 -ac 2"),
      OfSound("PcmRates", "PCM", {Wave(2), Wave(2, 96000)}, otherSound),
      OfSound("PcmBits", "PCM", {Wave(2, 48000, 24), Wave(2)}, otherSound, "pcm_s24le"),
      OfSound("WaveAmongAc3", "AC3", {Ac3(20, 2), Wave(2)}, "EE audio-other-kind a2", "it holds PCM"),
      OfSound("Rate44", "PCM", {Wave(2, 44100)}, "EE audio-sample-rate a1", "-c:a ac3 -b:a 192k -ar 48000"),
      OfSound("Rate44Ac3", "AC3", {Ac3(20, 2, 1)}, "EE audio-sample-rate a1"),

      {"Delays", {pal}, {Ac3(20, 2)}, "", "", "AC3", "PAL", "Delay=-250|"},
      {"DelayBeforeTheDisc",
       {pal},
       {Ac3(20, 2)},
       "EE audio-delay-unfit ",
       "-5000 ms; a disc keeps -2",
       "AC3",
       "PAL",
       "Delay=-5000|"},
      {"DelayOfADay",
       {pal},
       {Ac3(20, 2)},
       "EE audio-delay-unfit ",
       "to 86400000 ms",
       "AC3",
       "PAL",
       "Delay=86400001|"},
      {"StreamsBeyondRate",
       {pal},
       {Wave(8)},
       "EW streams-beyond-rate ",
       "The 2 audio streams of track \"F\" take 12.5",
       "PCM",
       "PAL",
       SecondStream},
      {"FilmBeyondRate",
       {OfConstantRate(pal)},
       {Wave(8, 48000, 16, 0.5)},
       "EW film-beyond-rate ",
       "its sound 6.25",
       "PCM"},
      {"HeldTooLong",
       {},
       {},
       "EW track-too-long ",
       "13 hours and 16 minutes",
       "",
       "PAL",
       "Item=SlideShow Play|VideoFile=slide.bmp|SlideDuration=13:16:00:00|"},
      {"NoPicture", {}, {}, "EE track-without-video ", "", "", "PAL"},

      OfVideo("ProgramStream", {programStream}, "EW source-foreign v1",
              "-map 0:v:0 -c:v copy FOLDER/v1-dvd.m2v"),
      NoVideo("TransportStream", Transport(188),
              "ffmpeg -i FOLDER/v1.m2v -map 0:v:0 -c:v mpeg2video -s 720x576 -r 25"),
      NoVideo("TransportStreamOfADisc", Transport(192)),
      NoVideo("Mp4", Word("\0\0\0\x18\146typisom"sv)),
      NoVideo("Matroska", Word("\x1A\x45\xDF\xA3"sv)),
      NoVideo("Avi", Word("RIFF....AVI LIST")),
      NoVideo("AdvancedVideo", Word("\0\0\0\1\x09\xF0\0\0\0\1\x67\x64"sv)),
      NoSound("MatroskaSound", Word("\x1A\x45\xDF\xA3"sv)),
      NoSound("Flac", Word("fLaC")),
      NoSound("Ogg", Word("OggS")),
      NoSound("Mp3", Word("\xFF\xFB\x90\x64"sv)),
      NoSound("TaggedMp3", Word("ID3")),
      NoSound("Mp2", Word("\xFF\xFD\xA4\0"sv)),
      {"Garbage",
       {std::string(500, 'x')},
       {std::string(500, 'x')},
       "EE video-missing v1|EE audio-head a1",
       ""},

      OfVideo("CutBeforeASequence", {StreamBuilder().Group().Picture().Picture().Text() + pal},
              "EE video-sequence-not-first v1", "-c:v copy FOLDER/v1-dvd.m2v"),
      OfVideo("OneSequence", {OneSequence(7)}, "EW video-one-sequence v1", "dump_extra=freq=keyframe"),
      OfVideo("OneSequenceOfManyFrames", {OneSequence(8)}, "EW video-one-sequence v1", "first 60 frames"),
      OfVideo("OneSequenceOfAShortFilm", {OneSequence(5)}, ""),
      OfVideo("NoGroups", {noGroups}, "WW video-no-groups v1"),
      OfVideo("SinglePicture", {StreamBuilder().Sequence().Group().Picture().Text()},
              "EW video-single-picture v1"),
  };
}

// The project of a row, loaded from its script.
class PlayMatchTest : public testing::TestWithParam<Row> {
 protected:
  PlayMatchTest() {
    const Row& row = GetParam();
    std::string script =
        "Item=VTS\nItem=Title\nItem=PGC\nItem=Program\nItem=Cell\nUsingScene=s\nItem=Track\nName=F\n";
    script += row.Standard.empty() ? "" : "Resolution=" + row.Standard + "\n";
    for (std::size_t i = 0; i < row.Video.size(); ++i) {
      script += fmt::format("Item=Video Play\nVideoFile=v{}.m2v\n", i + 1);
      Folder.Write(fmt::format("v{}.m2v", i + 1), row.Video[i]);
    }
    script += row.Sound.empty() ? "" : "Item=Audio Play List\n";
    for (std::size_t i = 0; i < row.Sound.size(); ++i) {
      const std::string name = fmt::format("a{}.{}", i + 1, row.Kind == "PCM" ? "wav" : "ac3");
      script += fmt::format("Item=Audio Play\nAudioFile={}\n", name);
      Folder.Write(name, row.Sound[i]);
    }
    script += row.More + "Item=Scene|Name=s|";
    std::ranges::replace(script, '|', '\n');
    Folder.Write("slide.bmp", TextOf(WriteBmp(Picture(720, 576))));
    std::istringstream stream(script);
    const FileScanner scanner(Rules::Players, Ui);
    LoadScript(stream, script.size(), Folder / "p.qvp", Disc, {.Rules = Rules::Players, .Scanner = &scanner},
               Ui);
  }

  // Code and play of each finding, with a letter for its severity.
  static std::map<std::string, char> Levels(const Findings& findings) {
    std::map<std::string, char> levels;
    for (const Message& finding : findings) {
      const std::string& place = finding.Place;
      const std::size_t video = place.find("Video");
      const std::size_t sound = place.find("AudioPlay");
      std::string play = video != std::string::npos ? "v" + place.substr(video + 5, 1) : "";
      play = sound != std::string::npos ? "a" + place.substr(sound + 9, 1) : play;
      levels[fmt::format("{} {}", finding.Code, play)] = finding.Level == Severity::Error ? 'E' : 'W';
    }
    return levels;
  }

  TempFolder Folder;
  RecordingUi Ui;
  Project Disc;
};

TEST_P(PlayMatchTest, CheckAndPlanTellTheSame) {
  const Findings players = PlanDisc(Disc, Rules::Players, Ui).Findings;
  EXPECT_EQ(Levels(players), Levels(LookForSources(Disc, Ui)));
  std::map<std::string, std::string> levels;
  for (const auto& [what, level] : Levels(players)) {
    levels[what] = {level, '-'};
  }
  for (const auto& [what, level] : Levels(PlanDisc(Disc, Rules::Classic, Ui).Findings)) {
    levels.try_emplace(what, "--").first->second[1] = level;
  }
  std::set<std::string> found;
  for (const auto& [what, both] : levels) {
    found.insert(both + " " + what);
  }
  std::set<std::string> expected;
  std::istringstream rest(GetParam().Found);
  for (std::string one; std::getline(rest, one, '|');) {
    expected.insert(one);
  }
  EXPECT_EQ(found, expected);
  std::string texts;
  for (const Message& finding : players) {
    texts += std::regex_replace(finding.Text, std::regex(Folder / ""), "FOLDER/") + "\n";
  }
  EXPECT_NE(texts.find(GetParam().Says), std::string::npos) << texts;
}

INSTANTIATE_TEST_SUITE_P(Lists, PlayMatchTest, testing::ValuesIn(Rows()),
                         [](const auto& row) { return row.param.Name; });

// The lines do what they say, whatever the files are called.
TEST(Remedies, MakeWhatADiscCarries) {
  const TempFolder folder;
  RecordingUi ui;
  const auto runs = [&](const std::string& line) {
    const std::string command =
        fmt::format("cd '{}' && {} -v error </dev/null", folder.Path().string(), line);
    return std::system(command.c_str()) == 0;  // NOLINT(concurrency-mt-unsafe)
  };
  if (!runs("ffmpeg -f lavfi -i testsrc2=s=640x360:r=24:d=2 -f lavfi -i sine=d=2 -c:v mpeg4 \"it's "
            "-a;b.mkv\"")) {
    GTEST_SKIP() << "no ffmpeg is at hand";
  }
  SourceJudge judge(folder.Path().string(), Rules::Players, ui);
  for (const bool ntsc : {false, true}) {
    const std::string folderOfOne = ntsc ? "n" : "p";
    const std::string name = folderOfOne + "/it's -a;b";
    std::filesystem::create_directory(folder / folderOfOne);
    std::filesystem::copy(folder / "it's -a;b.mkv", folder / (name + ".mkv"));
    ASSERT_TRUE(runs(EncodeVideoLine(name + ".mkv", {.Ntsc = ntsc})));
    ASSERT_TRUE(runs(EncodeAudioLine(name + ".mkv")));
    const auto video = judge.Video({name + ".m2v", "", ntsc});
    EXPECT_TRUE(video.Findings.empty()) << video.Findings[0].Text;
    EXPECT_EQ(video.Seen->Info.Standard, ntsc ? "NTSC" : "PAL");
    EXPECT_TRUE(judge.Audio({name + ".ac3", ""}, "AC3").Findings.empty());
  }
  // Headers of a film that a copy repeats, and one that it is cut at.
  const std::string film = TempFolder::Read(SampleVideo({.Frames = 100}));
  const std::string header = film.substr(0, film.find("\0\0\1\xB8"sv));
  std::string one = film;
  for (std::size_t at = one.find(header, 1); at != std::string::npos; at = one.find(header, at)) {
    one.erase(at, header.size());
  }
  folder.Write("one.m2v", one);
  folder.Write("cut.m2v", film.substr(film.find("\0\0\1\0"sv, 4000)));
  for (const auto& [name, kind, line] :
       {std::tuple{"one", message::OneSequence, RepeatSequenceLine("one.m2v")},
        {"cut", message::SequenceNotFirst, CopyVideoLine("cut.m2v")}}) {
    EXPECT_TRUE(Has(judge.Video({std::string(name) + ".m2v", ""}).Findings, kind)) << name;
    ASSERT_TRUE(runs(line));
    EXPECT_TRUE(judge.Video({std::string(name) + "-dvd.m2v", ""}).Findings.empty()) << name;
  }
}

}  // namespace
}  // namespace quorvelant
