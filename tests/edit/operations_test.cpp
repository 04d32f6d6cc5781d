// Operations on a project: every refusal and question with its words, limits, and what a done one does.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "edit/change.h"
#include "edit/drop.h"
#include "edit/live_elements.h"
#include "edit/preflight.h"
#include "edit/removal.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "edit/structure.h"
#include "edit/tree.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "script/script_writer.h"
#include "support/recording_ui.h"

namespace quorvelant {
namespace {

constexpr std::string_view Chain = "VTS1.TITLE1.PGC1";
constexpr std::string_view RootMenu = "VTS1.LANGUAGE1.PGC1";

Track Film(const std::string& name, std::string_view standard, std::string_view aspect, std::size_t scenes) {
  Track track;
  track.TrackName = name;
  track.Standard = standard;
  track.Aspect = aspect;
  track.Filled = true;
  track.VideoPlays.emplace_back().File = name + ".m2v";
  for (std::size_t i = 1; i <= scenes; ++i) {
    Scene& scene = track.Scenes.emplace_back();
    scene.Name = fmt::format("{}_Scene{}", name, i);
    scene.Frame = static_cast<std::int32_t>(i * 100);
  }
  return track;
}

void AddSound(Track& track, std::string_view format, std::string_view language, std::int32_t number = 0) {
  AudioStream& stream = track.AudioStreams.emplace_back();
  stream.Format = format;
  stream.Language = language;
  stream.StreamNumber = number;
  stream.AudioPlays.emplace_back().File = "sound";
  track.HasAudio = true;
}

class Operations : public testing::Test {
 protected:
  std::size_t Add(Track track) {
    Change change(Session, "Add");
    const std::size_t index = change.Work().Tracks.Count();
    change.Touch({Part::OfTrack(index)}).Tracks.Add(std::move(track));
    static_cast<void>(change.Commit());
    return index;
  }
  Outcome DropOn(std::string_view target, std::size_t track, std::optional<std::size_t> scene = {}) {
    return Drop(Session, {.Track = track, .Scene = scene}, target);
  }
  [[nodiscard]] const PGC_P& At(std::string_view key) const { return *LivePgc(Session.Work(), key); }
  void Edit(std::string_view key, const std::function<void(PGC_P&)>& edit) {
    static_cast<void>(SetPgc(Session, key, [&](PGC_P& chain) {
      edit(chain);
      return Outcome::Done();
    }));
  }
  void AddPost(std::string_view key, const std::string& text) {
    Edit(key, [&](PGC_P& chain) { AddCommand(chain.PostCommands, "Post", text); });
  }

  EditSession Session{Rules::Players};
  RecordingUi Ui;
};

TEST_F(Operations, RefuseInTheirOrderAndChangeNothing) {
  const std::size_t film = Add(Film("Film", "PAL", "4:3", 2));
  const std::size_t wide = Add(Film("Wide", "PAL", "16:9", 1));
  const std::size_t ntsc = Add(Film("Ntsc", "NTSC", "4:3", 1));
  Track german = Film("German", "PAL", "4:3", 1);
  AddSound(german, "AC3", "German");
  Track english = Film("English", "PAL", "4:3", 1);
  AddSound(english, "AC3", "English");
  Track dts = Film("Dts", "PAL", "4:3", 1);
  AddSound(dts, "DTS", "English");
  Track pcm = Film("Pcm", "PAL", "4:3", 1);
  AddSound(pcm, "PCM", "English");
  const std::size_t empty = Add([] {
    Track track = Film("Empty", "PAL", "4:3", 1);
    track.VideoPlays[0].File.clear();
    return track;
  }());
  const std::size_t ofGerman = Add(std::move(german));
  const std::size_t ofEnglish = Add(std::move(english));
  const std::size_t ofDts = Add(std::move(dts));
  const std::size_t ofPcm = Add(std::move(pcm));
  ASSERT_EQ(DropOn(Chain, film).Key, "VTS1.TITLE1.PGC1.PG1.CELL1");
  ASSERT_EQ(DropOn(Chain, ofGerman).Key, "VTS1.TITLE1.PGC1.PG3.CELL1");
  ASSERT_TRUE(NewTitle(Session, "VTS1", "Second").IsDone());
  ASSERT_TRUE(NewTitleSet(Session).IsDone());
  AddPost("VTS2.TITLE1.PGC1", "JumpSS vts_1, vts_ttn_1 : RootMenu");

  struct Row {
    std::function<Outcome()> Do;
    std::string_view Title, Text;
  };
  const Row rows[] = {
      {[&] { return DropOn("FirstPGC", film); }, "Alteration Error", "PGC or program that takes cells"},
      {[&] { return DropOn("VTS1.TITLE1", film); }, "Alteration Error", "PGC or program that takes cells"},
      {[&] { return DropOn(Chain, 99); }, "Alteration Error", "track or scene"},
      {[&] { return DropOn(Chain, empty); }, "New Cell Error", "no video or still"},
      {[&] { return DropOn(RootMenu, ntsc); }, "Attribute Match Error",
       "Video Attributes (Standard or Aspect Ratio) do not match existing Cells"},
      {[&] { return DropOn(Chain, wide); }, "Attribute Match Error",
       "Video Attributes (Standard or Aspect Ratio) do not match existing Cells"},
      {[&] { return DropOn(Chain, ofEnglish); }, "Audio ID Error",
       "New track audio information does not match the source PGC [[Source Language=German; New track "
       "Langauge=English]] for Stream ID 0"},
      {[&] { return DropOn("VTS1.TITLE2.PGC1", ofPcm); }, "Audio ID Error", "Stream ID 0 is AC3"},
      {[&] { return DropOn(RootMenu, ofDts); }, "Menu Audio Error",
       "DTS audio detected in this track. DTS in Menu domains violates the DVD spec"},
      {[&] { return NewLanguage(Session, "VTS1", "English"); }, "New Language Error",
       "This Language already exists in this VTS"},
      {[&] { return NewLanguage(Session, "VTS1", "Klingon"); }, "New Language Error",
       "no language of the list"},
      {[&] { return NewTitle(Session, "VMG1", "Title"); }, "New Title Error", "not in the Video Manager"},
      {[&] { return NewTitle(Session, "VTS1", "SECOND"); }, "", "in use"},
      {[&] { return quorvelant::Remove(Session, "FirstPGC", Consent::Given); }, "Alteration Error",
       "FirstPGC and Video Manager cannot be removed"},
      {[&] { return quorvelant::Remove(Session, "VMG1", Consent::Given); }, "Alteration Error",
       "FirstPGC and Video Manager cannot be removed"},
      {[&] { return quorvelant::Remove(Session, "VTS1.TITLE1", Consent::None); }, "VM Reference Error",
       "At least one VM Command references this TITLE. If you remove it referenced VM commands will be reset "
       "to NOP"},
      {[&] { return quorvelant::Remove(Session, "VTS1.TITLE1.PGC1.PG1", Consent::None); }, "Confirm Removal",
       "Remove VTS1_Title1_PGC1_PG1?"},
      {[&] { return quorvelant::Remove(Session, "VTS1.LANGUAGE1", Consent::None); }, "VM Reference Error",
       "references this LANGUAGE."},
      {[&] { return quorvelant::Remove(Session, "VTS1", Consent::None); }, "VM Reference Error",
       "references this VTS."},
      {[&] { return Rename(Session, "VTS1.TITLE1", "none"); }, "", "none"},
      {[&] { return NewTrack(Session, "Motion", "film"); }, "New Track Error", "film"},
      {[&] { return AddPlay(Session, "Track.77.VideoStreams"); }, "Alteration Error",
       "Track.77.VideoStreams"},
      {[&] { return AddPlay(Session, TrackKey(empty) + ".VideoStreams"); }, "New Play Error", "no file yet"},
      {[&] { return AddSubtitles(Session, TrackKey(empty)); }, "Sub Import Error",
       "Please select a video/still file first, so that the correct subtitle display modes can be set"},
      {[&] {
         return SetAudio(Session, TrackKey(ofGerman) + ".Audio1",
                         [](AudioStream& stream) { stream.StreamNumber = 3; });
       },
       "", "This track is part of a PGC, so existing Audio / Subpicture IDs have been locked"},
      {[&] {
         return SetAudio(Session, TrackKey(ofPcm) + ".Audio1",
                         [](AudioStream& stream) { stream.StreamNumber = 8; });
       },
       "Stream ID Error", "from 0 to 7"},
      {[&] { return SetDisplayMode(Session, TrackKey(film), "Only LetterBox"); }, "Display Mode Error",
       "Not Specified"},
      {[&] { return NewScene(Session, TrackKey(film), ""); }, "New Scene Error",
       "Please set a valid Timestamp"},
      {[&] { return NewScene(Session, TrackKey(film), "00:00:04:00"); }, "New Scene Error",
       "This Timestamp already exists, please select another"},
      {[&] { return RemoveSource(Session, TrackKey(film) + ".Scene1", Consent::Given); }, "Scene Error",
       "stays"},
      {[&] { return RemoveSource(Session, TrackKey(film), Consent::None); }, "Confirm Removal",
       "Remove Film? 2 cells show it"},
      {[&] { return RemoveSource(Session, TrackKey(film) + ".Video1", Consent::Given); }, "Alteration Error",
       "only file"},
      {[&] { return SetTitle(Session, "VTS9.TITLE1", [](Title_P&) { return Outcome::Done(); }); },
       "Alteration Error", "VTS9.TITLE1"},
  };
  const std::string before = WriteScript(Session.Work());
  for (const Row& row : rows) {
    const Outcome outcome = row.Do();
    EXPECT_FALSE(outcome.IsDone()) << row.Text;
    EXPECT_THAT(outcome.Words.Text, testing::HasSubstr(std::string(row.Text)));
    if (!row.Title.empty()) {
      EXPECT_EQ(outcome.Words.Title, row.Title) << row.Text;
    }
    EXPECT_EQ(WriteScript(Session.Work()), before) << row.Text;
  }
  EXPECT_TRUE(quorvelant::Remove(Session, "VTS2", Consent::Given).IsDone());
  EXPECT_EQ(quorvelant::Remove(Session, "VTS1", Consent::Given).Words.Text,
            "At least 1 VTS must be present - unable to remove this VTS");
}

// Removed ones do not count, but keep their numbers.
TEST_F(Operations, CountLiveElementsAgainstTheirLimits) {
  const auto fill = [this](const std::function<Outcome(std::size_t)>& make, std::size_t most,
                           std::string_view text) {
    Outcome last;
    for (std::size_t i = 1; i <= most; ++i) {
      last = make(i);
      ASSERT_TRUE(last.IsDone()) << text << " " << i << ": " << last.Words.Text;
    }
    EXPECT_THAT(make(most + 1).Words.Text, testing::HasSubstr(std::string(text)));
    ASSERT_TRUE(quorvelant::Remove(Session, last.Key, Consent::Given).IsDone());
    const Outcome again = make(most + 2);
    EXPECT_TRUE(again.IsDone()) << text;
    EXPECT_NE(again.Key, last.Key);
    EXPECT_THAT(make(most + 3).Words.Text, testing::HasSubstr(std::string(text)));
  };
  fill([&](std::size_t i) { return NewProgram(Session, Chain, fmt::format("Pgm{}", i)); }, 99,
       "Max Number of Programs Reached (99) for this PGC");
  fill([&](std::size_t i) { return NewTitle(Session, "VTS1", fmt::format("Film{}", i)); }, 98,
       "Max Number of Titles Reached (99) for this DVD");
  const Outcome more = NewPgc(Session, "VTS1.TITLE1", "Spare");
  ASSERT_TRUE(more.IsDone());
  fill([&](std::size_t i) { return NewPgc(Session, "VMG1.LANGUAGE1", fmt::format("Page{}", i)); }, 998,
       "Max Number of PGC's reached (999)");
  const std::size_t film = Add(Film("Film", "PAL", "4:3", 51));
  for (int i = 0; i < 5; ++i) {
    ASSERT_TRUE(DropOn("VTS1.TITLE1.PGC1.PG1", film).IsDone());
  }
  EXPECT_EQ(DropOn("VTS1.TITLE1.PGC1.PG1", film).Words.Text,
            "The max number of Cells (255) will be exceeded for this PGC if all scenes are added");
  EXPECT_EQ(DropOn("VTS1.TITLE1.PGC1.PG1", film, 3).Words.Text,
            "The max number of Cells (255) will be exceeded for this PGC if this scene is added");
}

TEST_F(Operations, ADropPlacesCellsAndWhatFollows) {
  Track film = Film("Film", "PAL", "16:9", 2);
  film.HasSubs = true;
  for (const std::string_view mode : {"Wide", "letter"}) {
    SubtitleStream& stream = film.SubStreams.emplace_back();
    stream.StreamNumber = static_cast<std::int32_t>(film.SubStreams.size() - 1);
    stream.DisplayMode = mode;
  }
  const std::size_t index = Add(std::move(film));
  ASSERT_TRUE(DropOn(Chain, index).IsDone());
  const PGC_P& chain = At(Chain);
  const Cell_P& second = *chain.PG.Item(2)->Cell.Item(1);
  EXPECT_EQ(chain.PG.Item(2)->PGName, "VTS1_Title1_PGC1_PG2");
  EXPECT_EQ(second.CellName, "VTS1_Title1_PGC1_PG2_CELL1");
  EXPECT_EQ(second.SceneUsed, "Film_Scene2");
  EXPECT_FALSE(chain.PG.Item(1)->Cell.Item(1)->Seamless);
  EXPECT_TRUE(second.Seamless && second.EnableSeamlessFlag);
  EXPECT_EQ(chain.WideAssignments[1], 0) << "the stream of its language that is wide";
  EXPECT_EQ(chain.LetterAssignments[0], 1);
  EXPECT_EQ(chain.PanAssignments[1], 1);
  ASSERT_EQ(DropOn("VTS1.TITLE1.PGC1.PG2", index, 0).Key, "VTS1.TITLE1.PGC1.PG2.CELL2");
  EXPECT_FALSE(chain.PG.Item(2)->Cell.Item(2)->Seamless);
  EXPECT_EQ(StructureTree(Session.Work()).Children[2].Children[1].Children[0].Children[1].Children[1].Text,
            "Cell2 -> Film; Scene_1");
}

TEST_F(Operations, NewElementsComeWithWhatPlayersNeed) {
  const Outcome set = NewTitleSet(Session);
  EXPECT_EQ(set.Key, "VTS2");
  EXPECT_EQ(At("VTS2.LANGUAGE1.PGC1").PreCommands.at(0).FullCommand, "JumpVTS_TT VTS2_Title1");
  EXPECT_EQ(NewLanguage(Session, "VTS2", "de").Key, "VTS2.LANGUAGE2");
  EXPECT_EQ(At("VTS2.LANGUAGE2.PGC1").MenuType, "Root");
  EXPECT_EQ(At("VTS2.LANGUAGE2.PGC1").PGCName, "VTS2_German_PGC1");
  EXPECT_EQ(ProposedName(Session, "VTS2.LANGUAGE2"), "VTS2_German_PGC2");
  ASSERT_TRUE(NewPgc(Session, "VTS2.LANGUAGE2", "More").IsDone());
  EXPECT_EQ(At("VTS2.LANGUAGE2.PGC2").MenuType, "None");
  ASSERT_TRUE(NewTitle(Session, "VTS2", "Extra").IsDone());
  EXPECT_EQ(At("VTS2.TITLE2.PGC1").PGCName, "Extra_PGC1");
  EXPECT_TRUE(Session.Commands().Errors.empty());
}

TEST_F(Operations, ConsentToARemovalTakesCommandsAndLinksAlong) {
  ASSERT_TRUE(NewTitle(Session, "VTS1", "Title 10").IsDone());
  ASSERT_TRUE(NewPgc(Session, "VTS1.TITLE2", "Last").IsDone());
  AddPost(Chain, "JumpVTS_TT title10");
  AddPost("VTS1.TITLE2.PGC1", "LinkPGCN Last");
  Edit("VTS1.TITLE2.PGC1", [](PGC_P& chain) { chain.NextPGC = "Last"; });
  const RemovalEffect effect = EffectOfRemoval(Session, "VTS1.TITLE2.PGC2");
  EXPECT_THAT(effect.Commands, testing::ElementsAre("VTS1.TITLE2.PGC1 Post1"));
  EXPECT_THAT(effect.Links, testing::ElementsAre("VTS1.TITLE2.PGC1"));
  ASSERT_TRUE(quorvelant::Remove(Session, "VTS1.TITLE2.PGC2", Consent::Given).IsDone());
  EXPECT_EQ(At("VTS1.TITLE2.PGC1").PostCommands[0].FullCommand, "NOP");
  EXPECT_EQ(At("VTS1.TITLE2.PGC1").PostCommands[0].CommandHex, "0000000000000000");
  EXPECT_EQ(At("VTS1.TITLE2.PGC1").NextPGC, "none");
  EXPECT_EQ(At(Chain).PostCommands[0].FullCommand, "JumpVTS_TT title10");
  ASSERT_TRUE(Rename(Session, "VTS1.TITLE2", "The Film").IsDone());
  EXPECT_EQ(At(Chain).PostCommands[0].FullCommand, "JumpVTS_TT The Film");
}

TEST_F(Operations, ATrackGoesWithItsCellsAndTheirPrograms) {
  const std::size_t film = Add(Film("Film", "PAL", "4:3", 2));
  const std::size_t other = Add(Film("Other", "PAL", "4:3", 1));
  ASSERT_TRUE(DropOn(Chain, film).IsDone());
  ASSERT_TRUE(DropOn("VTS1.TITLE1.PGC1.PG2", other).IsDone());
  AddPost(Chain, "LinkPGN VTS1_Title1_PGC1_PG1");
  ASSERT_TRUE(RemoveSource(Session, TrackKey(film), Consent::Given).IsDone());
  EXPECT_EQ(LiveProgram(Session.Work(), "VTS1.TITLE1.PGC1.PG1"), nullptr);
  EXPECT_EQ(LiveCell(Session.Work(), "VTS1.TITLE1.PGC1.PG2.CELL1"), nullptr);
  EXPECT_NE(LiveCell(Session.Work(), "VTS1.TITLE1.PGC1.PG2.CELL2"), nullptr);
  EXPECT_EQ(At(Chain).PostCommands[0].FullCommand, "NOP");
  EXPECT_EQ(NewTrack(Session, "Motion", "Film").Key, "Track.2");
  EXPECT_NE(Session.Work().Tracks[2].Scenes[0].Name, "Film_Scene1") << "undo brings that one back";
}

TEST_F(Operations, ThePreflightAsksAndTellsInItsOrder) {
  const auto run = [this](std::deque<bool> answers) {
    Ui.Messages.clear();
    Ui.Questions.clear();
    Ui.Answers = std::move(answers);
    const bool may = MayAuthor(Session, Ui);
    EXPECT_TRUE(Ui.Answers.empty());
    std::string heard;
    for (const auto* list : {&Ui.Questions, &Ui.Messages}) {
      for (const Message& message : *list) {
        heard += message.Title + ": " + message.Text + "|";
      }
    }
    return heard + (may ? "yes" : "no");
  };
  AddPost(Chain, "LinkPGCN nowhere");
  EXPECT_EQ(run({false}),
            "Contine Authoring: Command errors were present in the script file. Continue with authoring "
            "anyway?\n(This message will not appear again)|no");
  EXPECT_EQ(
      run({}),
      "Pre-Check failure: The Title (VTS1_Title1) does not have any cells. This violates the DVD spec|no");
  Edit(RootMenu, [](PGC_P& chain) { chain.MenuType = "Audio"; });
  EXPECT_EQ(run({}), "Pre-Check failure: No Root Menu PGC has been specified in VTS 1, Language English|no");
  Edit("VMG1.LANGUAGE1.PGC1", [](PGC_P& chain) { chain.MenuType = "None"; });
  EXPECT_EQ(run({}),
            "Pre-Check failure: No Title Menu PGC has been specified in Video Manager, Language English|no");
  Edit("VMG1.LANGUAGE1.PGC1", [](PGC_P& chain) { chain.MenuType = "Title Menu"; });
  Edit(RootMenu, [](PGC_P& chain) { chain.MenuType = "ROOT"; });
  Track film = Film("Film", "PAL", "4:3", 1);
  AddSound(film, "DTS", "English");
  ASSERT_TRUE(DropOn(Chain, Add(std::move(film))).IsDone());
  EXPECT_EQ(
      run({true, false}),
      "Pre-Check failure: Audio streams are present in the title domain of VTS 1, of which none are AC3 "
      "or PCM\nThis violates the DVD spec - would you like to continue anyway?|Ondra Limitation Error: "
      "DTS audio has been found - this will not be muxed - limitation of Ondra version\nDo you wish to "
      "continue?|no");
  EXPECT_EQ(run({true, true}).substr(0, 4), "Pre-") << "no destination yet";
  static_cast<void>(SetDestination(Session, "\\\\server\\share"));
  EXPECT_THAT(run({true, true}),
              testing::EndsWith("Destination Error: Please select a destination folder for your DVD|no"));
  static_cast<void>(SetDestination(Session, "out"));
  EXPECT_THAT(run({true, true}), testing::EndsWith("yes"));
}

}  // namespace
}  // namespace quorvelant
