// What tracks ask of a disc as a whole, as the check of a project and the plan of its disc find it.
#include "check/track_demand.h"

#include <fmt/format.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "author/disc_plan.h"
#include "check/check_sources.h"
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

// With a vbv_delay, which streams of variable rate have not.
std::string OfConstantRate(std::string film) {
  for (std::size_t at = film.find("\0\0\1\0"sv); at != std::string::npos;
       at = film.find("\0\0\1\0"sv, at + 1)) {
    film.at(at + 6) = 0x10;
  }
  return film;
}

std::string EightChannels(double seconds) {
  return TempFolder::Read(SampleWav({.Channels = 8, .Seconds = seconds}));
}
constexpr const char* SecondStream = "Item=Audio Play List|StreamNumber=1|Item=Audio Play|AudioFile=a1.wav|";

// Found are severity under `Rules::Players` and under `Rules::Classic`, code, and number of the play.
struct Row {
  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

  std::string Name;
  std::vector<std::string> Video;  // contents
  std::vector<std::string> Sound;
  std::string Found;
  std::string Says;  // part of each text
  std::string Kind = "AC3";
  std::string More = {};  // lines of the script after the sound; "|" ends one
};

std::vector<Row> Rows() {
  const std::string pal = Film({});
  return {
      {"Delays", {pal}, {Ac3Head(20)}, "", "", "AC3", "Delay=-250|"},
      {"DelayBeforeTheDisc",
       {pal},
       {Ac3Head(20)},
       "EE audio-delay-unfit ",
       "-5000 ms; a disc keeps -2",
       "AC3",
       "Delay=-5000|"},
      {"DelayOfADay",
       {pal},
       {Ac3Head(20)},
       "EE audio-delay-unfit ",
       "to 86400000 ms",
       "AC3",
       "Delay=86400001|"},
      {"StreamsBeyondRate",
       {pal},
       {EightChannels(0.1)},
       "EW streams-beyond-rate ",
       "(2 streams) takes 12.5",
       "PCM",
       SecondStream},
      {"FilmBeyondRate",
       {OfConstantRate(pal)},
       {EightChannels(0.5)},
       "EW film-beyond-rate ",
       "its sound 6.25",
       "PCM"},
      {"HeldTooLong",
       {},
       {},
       "EW track-too-long ",
       "13:16 hours",
       "",
       "Item=SlideShow Play|VideoFile=slide.bmp|SlideDuration=13:16:00:00|"},
      {"NoPicture", {}, {}, "EE track-without-video ", ""},
  };
}

// The project of a row, loaded from its script.
class TrackDemandTest : public testing::TestWithParam<Row> {
 protected:
  TrackDemandTest() {
    const Row& row = GetParam();
    std::string script =
        "Item=VTS\nItem=Title\nItem=PGC\nItem=Program\nItem=Cell\nUsingScene=s\nItem=Track\nName="
        "F\nResolution=PAL\n";
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

TEST_P(TrackDemandTest, CheckAndPlanTellTheSame) {
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

INSTANTIATE_TEST_SUITE_P(Tracks, TrackDemandTest, testing::ValuesIn(Rows()),
                         [](const auto& row) { return row.param.Name; });

// Streams of 448 kbit/s take 0.455 Mbit/s of packs each, and PCM of eight channels 6.25.
TEST(TrackDemand, StreamsBeyondTheRateAreRefusedBeforeTheyAreMultiplexed) {
  const struct {
    std::size_t Ac3, Pcm;
    int VideoKbps;  // all the time; 0: it varies
    double Seconds;
    const char* Players;
  } cases[] = {
      {8, 0, 6000, 7200, ""},
      {8, 0, 6400, 30, ""},  // what is too much waits in the buffer
      {8, 0, 6600, 60, "film-beyond-rate"},
      {8, 0, 0, 7200, ""},
      {0, 1, 3600, 7200, ""},
      {0, 1, 4200, 60, "film-beyond-rate"},
      {8, 1, 0, 60, "streams-beyond-rate"},
      {0, 2, 100, 60, "streams-beyond-rate"},
  };
  for (const auto& test : cases) {
    TrackDemand track;
    track.Video = {.HasFiles = true,
                   .Kbps = test.VideoKbps,
                   .Bytes = static_cast<std::uint64_t>(test.VideoKbps * 125 * test.Seconds)};
    for (std::size_t i = 0; i < test.Ac3 + test.Pcm; ++i) {
      SoundDemand& stream = track.Sound.emplace_back();
      stream.Pcm = i >= test.Ac3;
      stream.Traits.BitRate = 448;
      stream.Traits.SampleRate = 48;
      stream.Traits.Quantisation = 16;
      stream.Traits.ChannelCount = 8;
      stream.Bytes = static_cast<std::uint64_t>(test.Seconds * (stream.Pcm ? 768e3 : 56e3));
    }
    for (const Rules& rules : {Rules::Players, Rules::Classic}) {
      const Findings found = JudgeDemand(track, "Track.0", rules);
      EXPECT_EQ(found.empty() ? "" : found[0].Code, test.Players) << test.VideoKbps;
      EXPECT_EQ(HasErrors(found), rules.RefusesDeadDiscs && !found.empty());
    }
  }
}

}  // namespace
}  // namespace quorvelant
