// Every setting that an operation goes by, by the table of docs/formats/settings.md.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <regex>
#include <string>

#include "base/text.h"
#include "desk/edit_options.h"
#include "edit/drop.h"
#include "edit/live_elements.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "picture/bmp.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

// What each operation makes of the settings, in words.
class Effects {
 public:
  explicit Effects(const std::string& settings)
      : session_(Rules::Players, EditOptionsOf(ParseSettings(settings)), IndexStore(true)) {}

  std::string Drop() {
    Import("Motion", SampleVideo({.Frames = 75}));
    Must(NewScene(session_, "Track.0", "00:00:01:00"));
    Must(quorvelant::Drop(session_, {.Track = 0, .Scene = {}}, "VTS1.TITLE1.PGC1"));
    return LiveCell(session_.Work(), "VTS1.TITLE1.PGC1.PG2.CELL1")->Seamless ? "seamless" : "apart";
  }
  std::string Chapters() {
    Import("Motion", SampleVideo({.Frames = 75}));
    return fmt::format("{} scenes", session_.Work().Tracks[0].Scenes.size());
  }
  std::string Name() {
    Import("Motion", folder_.Write("film.m2v", TempFolder::Read(SampleVideo({.Frames = 75}))));
    return session_.Work().Tracks[0].TrackName;
  }
  std::string Slides(int height) {
    const std::string slide = folder_.Write("slide.bmp", TextOf(WriteBmp(Picture(720, height))));
    Import("SlideShow", slide);
    Must(AddPlay(session_, "Track.0.VideoStreams"));
    EXPECT_TRUE(ImportFile(session_, "Track.0.Video2", slide, ui_, Consent::None).IsDone());
    const Track& track = session_.Work().Tracks[0];
    return fmt::format("{} {} scenes{}{}", track.VideoPlays[1].SlideDuration, track.Scenes.size(),
                       track.ExtendSlideForAudio ? " sound" : "", track.ExtendFinalSubtitle ? " end" : "");
  }
  std::string Subtitles() {
    Import("Motion", SampleVideo({.Frames = 75}));
    Must(AddSubtitles(session_, "Track.0"));
    const std::string list = folder_.Write("film.sst",
                                           "Directory\tC:\\\nSP_NUMBER\tSTART\tEND\tFILE_NAME\n"
                                           "0001\t00:00:01:00\t00:00:02:00\ta.bmp\n");
    EXPECT_TRUE(ImportSubtitleList(session_, "Track.0.Sub1", list, ui_).IsDone());
    return session_.Work().Tracks[0].SubStreams[0].SubPlays.at(0).Start;
  }
  [[nodiscard]] std::string Destination() const { return session_.Work().DestinationFolder; }

 private:
  static void Must(const Outcome& outcome) { EXPECT_TRUE(outcome.IsDone()) << outcome.Words.Text; }
  void Import(std::string_view type, const std::string& file) {
    EXPECT_TRUE(NewTrack(session_, type, "").IsDone());
    EXPECT_TRUE(ImportFile(session_, "Track.0.Video1", file, ui_, Consent::None).IsDone());
  }

  TempFolder folder_;
  RecordingUi ui_;
  EditSession session_;
};

TEST(SettingsEffects, EachIsSeenInTheOperationThatTheTableNames) {
  struct Row {
    std::string Key, Value;
    std::function<std::string(Effects&)> See;
    std::string Without, With;
    std::string Operation;
  };
  const auto pal = [](Effects& effects) { return effects.Slides(576); };
  const auto ntsc = [](Effects& effects) { return effects.Slides(480); };
  const std::vector<Row> rows{
      {"Subrip", "1", &Effects::Subtitles, "00:00:01:00", "00:00:00:18", "import-subtitles"},
      {"Seamless_Cells", "0", &Effects::Drop, "seamless", "apart", "drop"},
      {"Use_Track_Names", "1", &Effects::Name, "Track_1", "film", "import"},
      {"Auto_Create_Chapters", "1\nPAL_Chapters=25", &Effects::Chapters, "1 scenes", "3 scenes", "import"},
      {"Auto_Slide_Chapters", "0", pal, "00:00:10:00 2 scenes sound", "00:00:10:00 1 scenes sound", "import"},
      {"Extend_Final_Slide", "0", pal, "00:00:10:00 2 scenes sound", "00:00:10:00 2 scenes", "new-track"},
      {"Extend_Final_Subtitle", "1", pal, "00:00:10:00 2 scenes sound", "00:00:10:00 2 scenes sound end",
       "new-track"},
      {"PAL_Slide_Duration", "50", pal, "00:00:10:00 2 scenes sound", "00:00:02:00 2 scenes sound", "slide"},
      {"NTSC_Slide_Duration", "60", ntsc, "00:00:10:00 2 scenes sound", "00:00:02:00 2 scenes sound",
       "slide"},
      {"Destination Folder", "discs", &Effects::Destination, "", "discs", "new"},
  };
  const std::string page = TempFolder::Read(SourceFile("docs/formats/settings.md"));
  for (const Row& row : rows) {
    Effects without("");
    EXPECT_EQ(row.See(without), row.Without) << row.Key;
    Effects with(fmt::format("{}={}\n", row.Key, row.Value));
    EXPECT_EQ(row.See(with), row.With) << row.Key;
    const std::regex line(
        fmt::format(R"(\| [^|]*`{}=`[^|]*\|[^|]*\|[^|]*\|[^|]*`{}`)", row.Key, row.Operation));
    EXPECT_TRUE(std::regex_search(page, line)) << row.Key << ": " << row.Operation;
  }
  EXPECT_FALSE(quorvelant::Contains(page, "nothing yet"));
}

}  // namespace
}  // namespace quorvelant
