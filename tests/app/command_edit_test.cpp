// Operations as lines: how a line is read, when a run ends, and what fields take.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "app/edit_run.h"
#include "base/text.h"
#include "edit/change.h"
#include "edit/drop.h"
#include "script/script_writer.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

class EditLines : public testing::Test {
 protected:
  EditLines() {
    Change change(Session, "Film");
    Track& film = change.Touch({Part::OfTrack(0)}).Tracks.Add({});
    film.TrackName = "Film";
    film.Standard = "PAL";
    film.Aspect = "16:9";
    film.VideoPlays.emplace_back().File = "film.m2v";
    film.Scenes.push_back({.Name = "Film_Scene1", .Frame = 0, .Uops = {}});
    film.Filled = film.HasAudio = film.HasSubs = true;
    film.AudioStreams.emplace_back().AudioPlays.emplace_back().File = "film.ac3";
    film.SubStreams.emplace_back().DisplayMode = "Wide";
    static_cast<void>(change.Commit());
    static_cast<void>(Drop(Session, {.Track = 0, .Scene = {}}, "VTS1.TITLE1.PGC1"));
  }

  // The answers, one a line; `IsGood` tells how the run ended.
  std::string Run(const std::string& lines, bool keepGoing = false) {
    std::istringstream in(lines);
    std::ostringstream out;
    IsGood = RunEditLines(in, Desk, keepGoing, out);
    return out.str();
  }

  EditSession Session{Rules::Players};
  RecordingUi Ui;
  EditDesk Desk{.Session = Session, .Ui = Ui, .DryRun = true};
  bool IsGood = false;
};

constexpr std::string_view Set = R"({"op":"new-title-set"})";
constexpr std::string_view Asking = R"({"op":"remove","key":"VTS1.TITLE1.PGC1.PG1"})";
constexpr std::string_view Agreed = R"({"agree":true,"key":"VTS1.TITLE1.PGC1.PG1","op":"remove"})";

TEST_F(EditLines, EndAtARefusalUnlessToldToGoOn) {
  const std::string noLine = fmt::format("\xEF\xBB\xBF{0}\r\n\r\n  \n[1]\r\n{0}", Set);
  const std::string tooLong = fmt::format("{}\n\n{}{}\n{}", Set, std::string(1U << 20U, ' '), Set, Set);
  const std::string refused = fmt::format("{}\n{{\"op\":\"undo\",\"x\":1}}\n{}\n", Asking, Set);
  struct Row {
    std::string Lines;
    bool KeepGoing, IsGood;
    std::size_t Answers;
    std::string_view Has;
  };
  const Row rows[] = {
      {"", false, true, 0, ""},
      {fmt::format("{0}\n{0}", Set), false, true, 2, R"({"done":"VTS3"})"},
      {noLine, false, false, 2, R"("code":"edit-line-without-op","place":"line 4")"},
      {noLine, true, false, 3, R"({"done":"VTS5"})"},
      {tooLong, false, false, 2, R"("code":"edit-line-too-long","place":"line 3")"},
      {tooLong, true, false, 3, R"({"done":"VTS9"})"},
      {"{\"op\":\n", false, false, 1, "column 7: "},
      {R"({"op":"fly"})", false, false, 1, R"(\"fly\" is no operation; these are: new-title-set, )"},
      {R"({"op":"drop","track":0})", false, false, 1, R"(\"drop\" lacks the field \"target\")"},
      // A question is a refusal where the next line is not its consent.
      {fmt::format("{}\n{}", Asking, Set), false, false, 1, R"({"asks":{"title":"Confirm Removal")"},
      {std::string(Asking), true, false, 1, R"({"asks":)"},
      {refused, true, false, 3, R"("code":"edit-takes-no-field","place":"line 2")"},
      {fmt::format("{}\n\n{}\n", Asking, Agreed), false, true, 2, R"({"done":"VTS1.TITLE1.PGC1.PG1"})"},
      {R"({"op":"undo"})", false, true, 1, R"({"done":"","step":")"},
      {std::string(Agreed), false, true, 1, R"({"done":"VTS1.TITLE1.PGC1.PG1"})"},
      {R"({"op":"save"})", false, true, 1, R"({"done":"there.qvp"})"},
      {R"({"op":"author"})", false, false, 1, R"("code":"destination-missing")"},
  };
  Desk.SaveTo = "there.qvp";
  for (const Row& row : rows) {
    const std::string answers = Run(row.Lines, row.KeepGoing);
    EXPECT_EQ(IsGood, row.IsGood) << row.Lines.substr(0, 200);
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(answers, '\n')), row.Answers) << answers;
    EXPECT_THAT(answers, HasSubstr(row.Has));
  }
}

TEST_F(EditLines, SetFieldsThatTheScriptHolds) {
  Run(R"({"op":"new-pgc","parent":"VTS1.TITLE1","name":"Second"})");
  struct Row {
    std::string_view Key, Fields, Script;  // what the script holds then
  };
  const Row rows[] = {
      {"VTS1.TITLE1.PGC1", R"({"next":" second","previous":"VTS1.TITLE1.PGC2"})", "NextPGC=Second"},
      {"VTS1.TITLE1.PGC1", R"({"goUp":"Second","still":7})", "StillTime=7"},
      {"VTS1.TITLE1.PGC1", R"({"playback":"Random","repeat":4})", "Playback Mode=Random Playback"},
      {"VTS1.TITLE1.PGC1", R"({"audioMap":[3],"normalMap":[1,31]})", "Audio Stream 0 Decodes=3"},
      {"VTS1.TITLE1.PGC1", R"({"wideMap":[4],"letterboxMap":[5],"panMap":[6]})",
       "SubPicture Track for PanScan Decodes #0=6"},
      {"VTS1.LANGUAGE1.PGC1", R"({"menuType":"angle","palette":"Default"})", "MenuType=Angle"},
      {"FirstPGC", R"({"userOperations":["stop"]})", "Stop"},
      {"VTS1.TITLE1", R"({"audioPolicy":"custom","subtitlePolicy":"Custom"})", "Audio Custom Policy=Custom"},
      {"VTS1.TITLE1", R"({"audioStreams":[true],"subtitleStreams":[false,true],"noTimePlay":true})",
       "SubPicture Stream 1=Yes"},
      {"VTS1.TITLE1.PGC1.PG1.CELL1", R"({"restricted":true,"still":255})", "Restrict Cell Access=Prohibited"},
      {"VTS1", R"({"filmMode":true,"titleLetterboxed":true,"menuLetterboxed":true})", "Film Mode"},
      {"Track.0", R"({"displayMode":"Only LetterBox","extendSubtitle":true})", "DisplayMode=Only LetterBox"},
      {"Track.0.Audio1", R"({"language":"ger","delay":-40,"mute":true})", "AudioLanguage=German"},
      {"Track.0.Sub1", R"({"language":"fr","dropFrame":true})", "SubLanguage=French"},
      {"Track.0.Scene1", R"({"userOperations":["PauseOn"]})", "PauseOn"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Run(fmt::format(R"({{"op":"set","key":"{}","fields":{}}})", row.Key, row.Fields)),
              fmt::format("{{\"done\":\"{}\"}}\n", row.Key));
    EXPECT_THAT(WriteScript(Session.Work()), HasSubstr(row.Script)) << row.Fields;
  }
}

TEST_F(EditLines, RefuseFieldsByNameAndChangeNothing) {
  struct Row {
    std::string_view Key, Fields, Text;
  };
  const Row rows[] = {
      {"VTS1.TITLE1.PGC1", R"({"still":9,"menuType":"Root"})", "menuType"},
      {"VTS1.LANGUAGE1.PGC1", R"({"previous":"none"})", "these it takes"},
      {"VTS1.LANGUAGE1.PGC1", R"({"audioMap":[0,1]})", "a list of at most 1"},
      {"VMG1.LANGUAGE1.PGC1", R"({"menuType":"Root"})", R"(one of \"None\", \"TitleMenu\")"},
      {"FirstPGC", R"({"still":1})", R"(has no field \"still\")"},
      {"VTS1.TITLE1.PGC1", R"({"still":256})", R"(\"still\" is 256; a number from 0 to 255 is expected)"},
      {"VTS1.TITLE1.PGC1", R"({"still":18446744073709551615})", "a number from 0 to 255"},
      {"VTS1.TITLE1.PGC1", R"({"next":"VTS1_English_PGC1"})", "among the titles here"},
      {"VTS1.TITLE1.PGC1", R"({"palette":"Nowhere"})", R"(a palette of the project (\"Default\"))"},
      {"VTS1.TITLE1.PGC1", R"({"userOperations":["Fly"]})", "a list of user operations"},
      {"VTS1.TITLE1.PGC1", R"([])", "an object with fields"},
      {"VTS1.TITLE1.PGC1", R"({})", "an object with fields"},
      {"VTS1.TITLE1.PGC1.PG1.CELL1", R"({"command":1})", "a number from 0 to 0"},
      {"VTS1.TITLE1", R"({"audioStreams":[1]})", "true or false"},
      {"VTS1.TITLE1.PGC1.PG1", R"({"still":1})", "has no fields to set"},
      {"VTS9.TITLE1", R"({"still":1})", "no PGC"},
      {"Track.0", R"({"extendSlide":true,"displayMode":"Round"})", "is no display mode here"},
      {"Track.0", R"({"extendSlide":true,"size":1})", "displayMode, extendSlide, extendSubtitle"},
      {"Track.7", R"({"extendSlide":true})", "has no track"},
      {"Track.0.Audio1", R"({"delay":1,"number":8})", "a number from 0 to 7"},
      {"Track.0.Video1", R"({"duration":"00:00:01:00"})", "has no slide or still"},
      {"Track.0.Scene1", R"({"name":"x"})", R"(has no field \"name\")"},
  };
  const std::string before = WriteScript(Session.Work());
  for (const Row& row : rows) {
    const std::string answer =
        Run(fmt::format(R"({{"op":"set","key":"{}","fields":{}}})", row.Key, row.Fields));
    EXPECT_THAT(answer, testing::AllOf(HasSubstr("refused"), HasSubstr(row.Text))) << row.Fields;
    EXPECT_EQ(WriteScript(Session.Work()), before) << row.Fields;
  }
}

TEST_F(EditLines, PutOverlaysThatTheScriptHolds) {
  struct Row {
    std::string_view Line, Script;  // nothing: refused
  };
  const Row rows[] = {
      {R"({"op":"new-subtitle","stream":"Track.0.Sub1","time":"00:00:00:00","file":"en1.png","area":[1,2,3,4],
           "conversion":["#ff8001","#000000","#000000","#000000"],"colors":[1,2,3,4],"contrast":[5,6,7,8]})",
       "Conversion(E2)=255,128,1"},
      {R"({"op":"put-buttons","key":"Track.0","stream":"Track.0.Sub1","buttons":[
           {"name":"A","area":[2,4,8,6],"right":"B"},{"name":"B","area":[12,4,18,6],"scheme":2}]})",
       "Highlight Area #3=12, 4, 18, 6"},
      {R"({"op":"put-buttons","key":"Track.0.High1","forcedSelect":"B","forcedAction":"A"})",
       "Forced Action=1"},
      {R"({"op":"put-buttons","key":"Track.0.High1","forcedSelect":"C"})", ""},
      {R"({"op":"put-buttons","key":"Track.0.High1","buttons":[{"name":"B"},{"name":"A"}],"forcedAction":null})",
       "Forced Action=0"},
      {R"({"op":"put-buttons","key":"Track.0.High1","buttons":[{"name":"A"},{"name":"B"}]})",
       "Forced Select=2"},
      {R"({"op":"put-buttons","key":"Track.0.High1","buttons":[{"name":"A"}]})", ""},  // A links to B
      {R"({"op":"put-buttons","key":"Track.0.High1","buttons":[{"name":"B","up":"B"},{"name":"C"}]})", ""},
      {R"({"op":"put-buttons","key":"Track.0.High1","buttons":[{"name":"B"},{"name":" B"}]})", ""},
      {R"({"op":"put-buttons","key":"Track.0.High1","buttons":[{"name":"B","left":"B","up":null}]})",
       "Color Scheme=2"},
  };
  for (const Row& row : rows) {
    std::string line(row.Line);
    std::erase(line, '\n');
    line = Replace(line, "en1.png", SourceFile("examples/media/en1.png"));
    EXPECT_THAT(Run(line), HasSubstr(row.Script.empty() ? "-unfit" : "done")) << line;
    EXPECT_THAT(WriteScript(Session.Work()), HasSubstr(row.Script)) << line;
  }
}

TEST(EditWords, StandInTheirPage) {
  const std::string page = TempFolder::Read(SourceFile("docs/edit.md"));
  for (const auto words :
       {StructureWords(), SegmentWords(), OverlayWords(), CommandWords(), ProjectWords()}) {
    for (const EditWord& word : words) {
      EXPECT_THAT(page, HasSubstr(fmt::format(R"({{"op":"{}")", word.Word)));
    }
  }
}

}  // namespace
}  // namespace quorvelant
