// Lines for a shell that messages name.
#include "analysis/remedies.h"

#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <tuple>

#include "check/messages.h"
#include "check/source_judge.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using std::string_view_literals::operator""sv;

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
