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
#include "script/load_findings.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

std::string Film(const GopPlan& plan) {
  const Bytes bytes = BuildStream(plan);
  return {bytes.begin(), bytes.end()};
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

std::string Ac3(int rateCode, int mode, int frequency = 0) {
  return {'\x0B',
          '\x77',
          0,
          0,
          static_cast<char>(frequency << 6 | rateCode),
          '\x40',
          static_cast<char>(mode << 5),
          0};
}

std::string Wave(int channels, int rate = 48000, int bits = 16) {
  std::string head = "RIFF....WAVEfmt ";
  const auto put = [&head](std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
      head += static_cast<char>(value >> (8 * i));
    }
  };
  const int align = channels * bits / 8;
  put(16, 4);
  put(1, 2);
  put(static_cast<std::uint32_t>(channels), 2);
  put(static_cast<std::uint32_t>(rate), 4);
  put(static_cast<std::uint32_t>(rate * align), 4);
  put(static_cast<std::uint32_t>(align), 2);
  put(static_cast<std::uint32_t>(bits), 2);
  head += "data";
  put(960, 4);
  return head + std::string(960, '\0');
}

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

using std::string_view_literals::operator""sv;

// Found are severity under `Rules::Players` and under `Rules::Classic`, code, and number of the play.
struct Row {
  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

  std::string Name;
  std::vector<std::string> Video;  // contents
  std::vector<std::string> Sound;
  std::string Found;
  std::string Kind = "AC3";
  std::string Standard = "PAL";
  std::string Says = {};  // part of each text
};

std::vector<Row> Rows() {
  const std::string pal = Film({});
  const std::string ntsc = Film({.Sequence = {.Height = 480, .FrameRateCode = 4}});
  const std::string programStream =
      StreamBuilder().Raw(Bytes{0, 0, 1, 0xBA, 0x44}).Sequence().Picture().Picture().Text();
  return {
      {"Alike", {pal, pal}, {Ac3(20, 2), Ac3(20, 2)}, ""},
      {"OddFrameSizeCodeOfTheSameRate", {pal}, {Ac3(20, 2), Ac3(21, 2)}, ""},
      {"Sizes",
       {pal, Film({.Sequence = {.Width = 704}})},
       {},
       "EW source-unlike-first v2",
       "",
       "PAL",
       "704x576"},
      {"Aspects",
       {pal, Film({.Sequence = {.AspectCode = 3}})},
       {},
       "EW source-unlike-first v2",
       "",
       "PAL",
       "'v2.m2v': MPEG2 PAL 720x576 16:9 where 'v1.m2v'"},
      {"Standards", {pal, ntsc}, {}, "EW source-unlike-track v2|EW source-unlike-first v2"},
      {"Codings",
       {pal, Film({.Sequence = {.Mpeg2 = false}})},
       {},
       "EW video-mpeg1 v2|EW source-unlike-first v2"},
      {"StandardOfTheTrack", {pal}, {}, "EW source-unlike-track v1", "", "NTSC", "Resolution=PAL"},
      {"NoStandard", {pal}, {}, "EW track-standard-unknown ", "", "PALL", "Resolution=PALL"},
      {"StandardByTheFile", {pal}, {}, "", "", ""},
      {"BitRates",
       {pal},
       {Ac3(20, 2), Ac3(30, 2), Ac3(20, 2)},
       "EW source-unlike-first a2",
       "AC3",
       "PAL",
       "where 'a1.ac3', the first of its list, is AC3 48 kHz, 192 kbit/s, 2 channels"},
      {"Channels",
       {pal},
       {Ac3(20, 2), Ac3(20, 1)},
       "EW source-unlike-first a2",
       "AC3",
       "PAL",
       "-b:a 192k -ar 48000 -ac 2"},
      {"StereoThenMono",
       {pal},
       {Wave(2), Wave(1)},
       "EW source-unlike-first a2",
       "PCM",
       "PAL",
       "pcm_s16le -ar 48000 -ac 2"},
      {"PcmRates", {pal}, {Wave(2), Wave(2, 96000)}, "EW source-unlike-first a2", "PCM"},
      {"PcmBits",
       {pal},
       {Wave(2, 48000, 24), Wave(2)},
       "EW source-unlike-first a2",
       "PCM",
       "PAL",
       "pcm_s24le"},
      {"WaveAmongAc3", {pal}, {Ac3(20, 2), Wave(2)}, "EE audio-other-kind a2", "AC3", "PAL", "it holds PCM"},
      {"Rate44",
       {pal},
       {Wave(2, 44100)},
       "EW audio-sample-rate a1",
       "PCM",
       "PAL",
       "-c:a ac3 -b:a 192k -ar 48000"},
      {"Rate44Ac3", {pal}, {Ac3(20, 2, 1)}, "EW audio-sample-rate a1"},

      {"ProgramStream",
       {programStream},
       {},
       "EW source-foreign v1",
       "",
       "PAL",
       "-map 0:v:0 -c:v copy FOLDER/v1-dvd.m2v"},
      {"TransportStream",
       {Transport(188)},
       {},
       "EW source-foreign v1|-E video-missing v1",
       "",
       "PAL",
       "ffmpeg -i FOLDER/v1.m2v -map 0:v:0 -c:v mpeg2video -s 720x576 -r 25"},
      {"TransportStreamOfADisc", {Transport(192)}, {}, "EW source-foreign v1|-E video-missing v1"},
      {"Mp4",
       {Word("\0\0\0\x18"
             "ftypisom"sv)},
       {},
       "EW source-foreign v1|-E video-missing v1"},
      {"Matroska", {Word("\x1A\x45\xDF\xA3"sv)}, {}, "EW source-foreign v1|-E video-missing v1"},
      {"Avi", {Word("RIFF....AVI LIST")}, {}, "EW source-foreign v1|-E video-missing v1"},
      {"AdvancedVideo",
       {Word("\0\0\0\1\x09\xF0\0\0\0\1\x67\x64"sv)},
       {},
       "EW source-foreign v1|-E video-missing v1"},
      {"MatroskaSound",
       {pal},
       {Word("\x1A\x45\xDF\xA3"sv)},
       "EW source-foreign a1|-E audio-head a1",
       "AC3",
       "PAL"},
      {"Flac", {pal}, {Word("fLaC")}, "EW source-foreign a1|-E audio-head a1"},
      {"Ogg", {pal}, {Word("OggS")}, "EW source-foreign a1|-E audio-head a1"},
      {"Mp3", {pal}, {Word("\xFF\xFB\x90\x64"sv)}, "EW source-foreign a1|-E audio-head a1"},
      {"TaggedMp3", {pal}, {Word("ID3")}, "EW source-foreign a1|-E audio-head a1"},
      {"Mp2", {pal}, {Word("\xFF\xFD\xA4\0"sv)}, "EW source-foreign a1|-E audio-head a1"},
      {"Garbage", {std::string(500, 'x')}, {std::string(500, 'x')}, "EE video-missing v1|EE audio-head a1"},

      {"CutBeforeASequence",
       {StreamBuilder().Group().Picture().Picture().Text() + pal},
       {},
       "EE video-sequence-not-first v1",
       "",
       "PAL",
       "-c:v copy FOLDER/v1-dvd.m2v"},
      {"OneSequence",
       {OneSequence(7)},
       {},
       "EW video-one-sequence v1",
       "",
       "PAL",
       "dump_extra=freq=keyframe"},
      {"OneSequenceOfAShortFilm", {OneSequence(5)}, {}, ""},
      {"NoGroups",
       {StreamBuilder().Sequence().Picture().Picture({.Type = 'P'}).Sequence().Picture().Text()},
       {},
       "WW video-no-groups v1"},
      {"SinglePicture",
       {StreamBuilder().Sequence().Group().Picture().Text()},
       {},
       "EW video-single-picture v1"},
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
    script += "Item=Scene\nName=s\n";
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
