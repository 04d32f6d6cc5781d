// Discs that other programs made play everywhere: the verifier finds no error in them.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "check/navigation_check.h"
#include "support/disc_judges.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "verify/nav_of_disc.h"
#include "verify/verify_disc.h"

namespace quorvelant {
namespace {

struct ForeignDisc {
  friend void PrintTo(const ForeignDisc& disc, std::ostream* out) { *out << disc.Name; }

  const char* Name;
  bool IsNtsc;
  const char* Mux;  // {0} video, {1} sound, {2} program stream
  const char* Menu;
  const char* Titles;
};

constexpr const char* ByMplex = "mplex -v 0 -f 8 -o {2} {0} {1}";
constexpr const char* ByFfmpeg =
    "ffmpeg -nostdin -v error -fflags +genpts -f lavfi -i testsrc2=s=720x576:r=25:d=3 -i {1} -c:a copy "
    "-aspect 4:3 -target pal-dvd -t 3 {2} # {0}";
constexpr const char* ByFfmpegLpcm =
    "ffmpeg -nostdin -v error -fflags +genpts -f lavfi -i testsrc2=s=720x576:r=25:d=3 -i {1} -c:a pcm_s16be "
    "-aspect 4:3 -target pal-dvd -t 3 {2} # {0}";
// Buttons, or subtitles of two streams, that show from a second.
constexpr const char* WithButtons =
    "ffmpeg -nostdin -v error -f lavfi -i "
    "color=c=black@0:s=720x576,format=rgba,drawbox=100:100:200:60:red:fill "
    "-frames:v 1 {2}.png && mplex -v 0 -f 8 -o {2}.plain {0} {1} && printf '<subpictures><stream><spu "
    "start=\"0:00:01\" end=\"0:00:02.5\" highlight=\"%s\" force=\"yes\"><button name=\"a\" x0=\"100\" "
    "y0=\"100\" "
    "x1=\"300\" y1=\"160\"/></spu></stream></subpictures>' {2}.png > {2}.xml && VIDEO_FORMAT=PAL spumux "
    "{2}.xml "
    "< {2}.plain > {2} 2>/dev/null";
constexpr const char* WithSubtitles =
    "ffmpeg -nostdin -v error -f lavfi -i "
    "color=c=black@0:s=720x576,format=rgba,drawbox=100:400:200:60:red:fill "
    "-frames:v 1 {2}.png && mplex -v 0 -f 8 -o {2}.plain {0} {1} && printf '<subpictures><stream><spu "
    "start=\"0:00:01\" end=\"0:00:02\" image=\"%s\"/></stream></subpictures>' {2}.png > {2}.xml && "
    "VIDEO_FORMAT=PAL spumux -s 0 {2}.xml < {2}.plain 2>/dev/null | VIDEO_FORMAT=PAL spumux -s 1 {2}.xml > "
    "{2} "
    "2>/dev/null";
constexpr const char* ByFfmpegNtsc =
    "ffmpeg -nostdin -v error -f lavfi -i testsrc2=s=720x480:r=30000/1001:d=3 -i {1} -c:a copy -aspect 4:3 "
    "-target "
    "ntsc-dvd -t 3 {2} # {0}";

const ForeignDisc Discs[] = {
    {"MplexPlain", false, ByMplex, "", "<pgc><vob file=\"{0}\" chapters=\"0,0:01\"/></pgc>"},
    {"MplexNtscMenu", true, ByMplex,
     "<pgc entry=\"root\"><pre>if (g1 gt 3) g1 = 0; g1 = g1 + 1;</pre><vob file=\"{0}\" pause=\"2\"/>"
     "<post>jump title 2 chapter 1;</post></pgc>",
     "<pgc><vob file=\"{0}\"/><vob file=\"{0}\" pause=\"1\"/><post>call menu;</post></pgc>"
     "<pgc><pre>g2 = random(4); if (g2 eq 1) jump title 1;</pre><vob file=\"{0}\"/><post>if (g2 gt 2) "
     "call vmgm menu; call menu entry root;</post></pgc>"},
    {"MplexSilentTitle", false, "mplex -v 0 -f 8 -o {2} {0} {1} && mplex -v 0 -f 8 -o {2}.silent {0}", "",
     "<pgc><vob file=\"{0}.silent\"/><post>jump title 2;</post></pgc><pgc><vob file=\"{0}\"/></pgc>"},
    {"MplexTwoCodings", false,
     "ffmpeg -nostdin -v error -i {1} {2}.mp2 && mplex -v 0 -f 8 -o {2} {0} {2}.mp2 {1}", "",
     "<pgc><vob file=\"{0}\"/></pgc>"},
    {"FfmpegPlain", false, ByFfmpeg, "", "<pgc><vob file=\"{0}\" chapters=\"0,0:01,0:02\"/></pgc>"},
    {"FfmpegCells", false, ByFfmpeg,
     "<pgc entry=\"root\"><vob file=\"{0}\"/><post>jump title 1;</post></pgc>",
     "<pgc><vob file=\"{0}\"><cell start=\"0\" end=\"1\" program=\"1\"/><cell start=\"1\" end=\"-1\" "
     "chapter=\"1\">g3 = 7;</cell></vob><post>jump title 1 chapter 2;</post></pgc>"},
    {"FfmpegLpcm", false, ByFfmpegLpcm, "", "<pgc><vob file=\"{0}\"/></pgc>"},
    {"ButtonsFromASecond", false, WithButtons,
     "<pgc entry=\"root\"><vob file=\"{0}\"/><button name=\"a\">jump title 1;</button><post>jump cell "
     "1;</post>"
     "</pgc>",
     "<pgc><vob file=\"{0}.plain\"/><post>call menu;</post></pgc>"},
    {"SubtitlesThenNone", false, WithSubtitles, "",
     "<subpicture lang=\"en\"/><subpicture lang=\"de\"/><pgc><vob file=\"{0}\"/><vob "
     "file=\"{0}.plain\"/></pgc>"},
    {"FfmpegNtsc", true, ByFfmpegNtsc, "",
     "<pgc><vob file=\"{0}\"/><post>exit;</post></pgc><pgc><vob file=\"{0}\"/><vob file=\"{0}\"/></pgc>"},
};

class ForeignDiscs : public testing::TestWithParam<ForeignDisc> {
 protected:
  // What the programs said.
  std::string Make() {
    const ForeignDisc& disc = GetParam();
    const char* standard = disc.IsNtsc ? "NTSC" : "PAL";
    const std::string stream = Temp / "film.mpg";
    const std::string video = SampleVideo({.Standard = standard, .Frames = 75, .Closed = true});
    const std::string mux = fmt::format(fmt::runtime(disc.Mux), video, SampleAc3({.Seconds = 3}), stream);
    const auto filled = [&stream](const char* text) { return fmt::format(fmt::runtime(text), stream); };
    const std::string order = Temp.Write(
        "disc.xml",
        fmt::format("<dvdauthor dest=\"{}\"><vmgm><menus><pgc entry=\"title\"><pre>jump "
                    "title 1;</pre></pgc></menus></vmgm><titleset><menus>{}</menus><titles>{}</titles>"
                    "</titleset></dvdauthor>",
                    Temp / "disc", filled(disc.Menu), filled(disc.Titles)));
    std::string said;
    for (const std::string& line :
         LinesOf("(" + mux + "\n) && VIDEO_FORMAT=" + standard + " dvdauthor -x " + order)) {
      said += line;
    }
    return said;
  }

  static void ExpectNoErrors(const std::string& disc) {
    SCOPED_TRACE(disc);
    RecordingUi ui;
    const VerifyResult read = VerifyDisc(disc, ui);
    EXPECT_FALSE(read.IsOurs);
    for (const DiscFinding& finding : read.Findings.All()) {
      EXPECT_NE(finding.Kind->Level, Severity::Error)
          << finding.Kind->Code << " " << MessageOfFinding(finding, "").Place << ": "
          << MessageOfFinding(finding, "").Text;
    }
    for (const Message& way : DiscNavigation(SurveyOf(NavOfDisc(read)), false)) {
      EXPECT_NE(way.Level, Severity::Error) << way.Place << ": " << way.Text;
    }
  }

  TempFolder Temp;
};

TEST_P(ForeignDiscs, HaveNoErrors) {
  if (LinesOf("command -v dvdauthor").empty()) {
    GTEST_SKIP() << "dvdauthor is not at hand";
  }
  const std::string said = Make();
  ASSERT_TRUE(std::filesystem::exists(Temp / "disc/VIDEO_TS/VTS_01_1.VOB")) << said;
  ExpectNoErrors(Temp / "disc/VIDEO_TS");
  if (!LinesOf("command -v genisoimage").empty()) {
    LinesOf("genisoimage -quiet -dvd-video -V DISC -o " + Temp / "disc.iso" + " " + Temp / "disc");
    ExpectNoErrors(Temp / "disc.iso");
  }
}

INSTANTIATE_TEST_SUITE_P(Made, ForeignDiscs, testing::ValuesIn(Discs),
                         [](const auto& disc) { return std::string(disc.param.Name); });

}  // namespace
}  // namespace quorvelant
