// Operations on a project: every refusal and question with its words, limits, and what a done one does.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "base/timecode.h"
#include "boxes.h"
#include "edit/change.h"
#include "edit/drop.h"
#include "edit/live_elements.h"
#include "edit/messages.h"
#include "edit/preflight.h"
#include "edit/removal.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "edit/structure.h"
#include "edit/tree.h"
#include "film_track.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/messages.h"
#include "model/walk.h"
#include "script/script_writer.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"
#include "vm/messages.h"

namespace quorvelant {
namespace {

using namespace message;
using testing::HasSubstr;

constexpr std::string_view Chain = "VTS1.TITLE1.PGC1";
constexpr std::string_view RootMenu = "VTS1.LANGUAGE1.PGC1";

Track WithSubtitles(Track track, std::string_view language) {
  track.HasSubs = true;
  track.SubStreams.emplace_back().Language = language;
  return track;
}

Track FilmWithSound(const std::string& name, std::string_view format, std::string_view language = "English") {
  Track track = Film(name);
  AudioStream& stream = track.AudioStreams.emplace_back();
  stream.Format = format;
  stream.Language = language;
  stream.AudioPlays.emplace_back().File = "sound";
  track.HasAudio = true;
  return track;
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
  Outcome TakeOut(std::string_view key, Consent consent = Consent::Given) {
    return ParseSourceKey(key) ? RemoveSource(Session, key, consent)
                               : quorvelant::Remove(Session, key, consent);
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
  const std::size_t film = Add(Film("Film", 2));
  const std::size_t wide = Add(Film("Wide", 1, "16:9"));
  const std::size_t ntsc = Add(Film("Ntsc", 1, "4:3", "NTSC"));
  const std::size_t german = Add(WithSubtitles(FilmWithSound("German", "AC3", "German"), "German"));
  const std::size_t titled = Add(WithSubtitles(Film("Titled"), "English"));
  const std::size_t english = Add(FilmWithSound("English", "AC3"));
  const std::size_t dts = Add(FilmWithSound("Dts", "DTS"));
  const std::size_t pcm = Add(FilmWithSound("Pcm", "PCM"));
  Track unfilled = Film("Empty");
  unfilled.VideoPlays[0].File.clear();
  const std::size_t empty = Add(std::move(unfilled));
  ASSERT_EQ(DropOn(Chain, film).Key, "VTS1.TITLE1.PGC1.PG1.CELL1");
  ASSERT_EQ(DropOn(Chain, german).Key, "VTS1.TITLE1.PGC1.PG3.CELL1");
  ASSERT_TRUE(NewTitle(Session, "VTS1", "Second").IsDone());
  ASSERT_TRUE(NewTitleSet(Session).IsDone());
  AddPost("VTS2.TITLE1.PGC1", "JumpSS vts_1, vts_ttn_1 : RootMenu");
  const auto number = [](std::int32_t id) { return [id](AudioStream& stream) { stream.StreamNumber = id; }; };

  struct Row {
    std::function<Outcome()> Do;
    const MessageKind& Kind;
    std::string_view Says = "";
  };
  const Row rows[] = {
      {[&] { return DropOn("FirstPGC", film); }, NoSuchElement, "PGC or program that takes cells"},
      {[&] { return DropOn("VTS1.TITLE1", film); }, NoSuchElement, "VTS1.TITLE1"},
      {[&] { return DropOn(Chain, 99); }, NoSuchElement, "track or scene"},
      {[&] { return DropOn(Chain, empty); }, DropHasNoFile, "Empty"},
      {[&] { return DropOn(RootMenu, ntsc); }, VideoUnlike},
      {[&] { return DropOn(Chain, wide); }, VideoUnlike},
      {[&] { return DropOn(Chain, titled); }, SubStreamsUnlike, "=German; New"},
      {[&] { return DropOn(Chain, english); }, AudioStreamsUnlike, "=German; New"},
      {[&] { return DropOn("VTS1.TITLE2.PGC1", pcm); }, AudioKindUnlike, "Stream ID 0 is AC3"},
      {[&] { return DropOn(RootMenu, dts); }, DtsInMenu},
      {[&] { return NewLanguage(Session, "VTS1", "English"); }, LanguageTaken},
      {[&] { return NewLanguage(Session, "VTS1", "Klingon"); }, LanguageUnknown, "Klingon"},
      {[&] { return NewTitle(Session, "VMG1", "Title"); }, ManagerHasNoTitles},
      {[&] { return NewTitle(Session, "VTS1", "SECOND"); }, NameInUse, "SECOND"},
      {[&] { return TakeOut("FirstPGC"); }, NotRemovable},
      {[&] { return TakeOut("VMG1"); }, NotRemovable},
      {[&] { return TakeOut("VTS1.TITLE1", Consent::None); }, AskRemovalOfTarget, "this TITLE."},
      {[&] { return TakeOut("VTS1.TITLE1.PGC1.PG1", Consent::None); }, AskRemoval, "PGC1_PG1?"},
      {[&] { return TakeOut("VTS1.LANGUAGE1", Consent::None); }, AskRemovalOfTarget, "this LANGUAGE."},
      {[&] { return TakeOut("VTS1", Consent::None); }, AskRemovalOfTarget, "this VTS."},
      {[&] { return Rename(Session, "VTS1.TITLE1", "none"); }, NameReserved},
      {[&] { return NewTrack(Session, "Motion", "film"); }, TrackNameTaken, "film"},
      {[&] { return AddPlay(Session, "Track.77.VideoStreams"); }, NoSuchElement, "Track.77"},
      {[&] { return AddPlay(Session, VideoListKey(empty)); }, PlayBeforeIsEmpty},
      {[&] { return AddSubtitles(Session, TrackKey(empty)); }, SubtitlesNeedVideo},
      {[&] { return SetAudio(Session, AudioStreamKey(german, 1), number(3)); }, StreamIDsLocked},
      {[&] { return SetAudio(Session, AudioStreamKey(pcm, 1), number(8)); }, StreamNumberUnfit, "0 to 7"},
      {[&] { return SetDisplayMode(Session, TrackKey(film), "Only LetterBox"); }, DisplayModeUnfit,
       "Not Specified"},
      {[&] { return NewScene(Session, TrackKey(film), ""); }, SceneTimeMissing},
      {[&] { return NewScene(Session, TrackKey(film), "00:00:04:00"); }, SceneTimeTaken},
      {[&] { return RemoveSource(Session, SceneKey(film, 1), Consent::Given); }, FirstSceneStays},
      {[&] { return RemoveSource(Session, TrackKey(film), Consent::None); }, AskSourceRemoval,
       "Film? 2 cells"},
      {[&] { return RemoveSource(Session, VideoPlayKey(film, 1), Consent::Given); }, LastFileStays},
      {[&] { return SetTitle(Session, "VTS9.TITLE1", [](Title_P&) { return Outcome::Done(); }); },
       NoSuchElement, "VTS9.TITLE1"},
  };
  const std::string before = WriteScript(Session.Work());
  for (const auto& [act, kind, says] : rows) {
    const Outcome outcome = act();
    EXPECT_FALSE(outcome.IsDone()) << kind.Code;
    EXPECT_EQ(outcome.Words.Code, kind.Code) << outcome.Words.Text;
    EXPECT_THAT(outcome.Words.Text, HasSubstr(says));
    ExpectBox(outcome.Words);
    EXPECT_EQ(WriteScript(Session.Work()), before) << kind.Code;
  }
  EXPECT_TRUE(TakeOut("VTS2").IsDone());
  const Outcome last = TakeOut("VTS1");
  EXPECT_TRUE(last.Words.Is(LastSetStays));
  ExpectBox(last.Words);
  for (const NewLevel level : {NewLevel::Pgc, NewLevel::Program, NewLevel::Title}) {
    ExpectBox(NameQuestion(level));
  }
}

// Removed ones do not count, but keep their numbers.
TEST_F(Operations, CountLiveElementsAgainstTheirLimits) {
  using Make = std::function<Outcome(const std::string&)>;
  const auto expectFull = [](const Outcome& outcome, const MessageKind& kind) {
    EXPECT_TRUE(outcome.Words.Is(kind)) << kind.Code << outcome.Words.Text;
    ExpectBox(outcome.Words);
  };
  const auto fill = [&](const Make& make, int most, const MessageKind& kind) {
    std::vector<std::string> keys;
    for (int i = 1; i <= most; ++i) {
      const Outcome made = make(fmt::format("Name{}", i));
      ASSERT_TRUE(made.IsDone()) << i << ": " << made.Words.Text;
      keys.push_back(made.Key);
    }
    expectFull(make("One more"), kind);
    const std::string& between = keys[keys.size() / 2];
    ASSERT_TRUE(TakeOut(between).IsDone());
    const Outcome again = make("Again");
    EXPECT_TRUE(again.IsDone()) << kind.Code;
    EXPECT_NE(again.Key, between);
    expectFull(make("One more"), kind);
  };
  ASSERT_TRUE(NewPgc(Session, "VTS1.TITLE1", "Spare").IsDone());  // of another domain
  const std::string film = TrackKey(Add(Film("Film", 51)));
  fill([&](auto& name) { return NewProgram(Session, Chain, "Program " + name); }, 99, MostProgramsReached);
  expectFull(DropOn(Chain, 0, 0), MostProgramsReached);
  fill([&](auto& name) { return NewTitle(Session, "VTS1", name); }, 98, MostTitlesReached);
  expectFull(NewTitleSet(Session), MostTitlesReached);
  fill([&](auto& name) { return NewPgc(Session, "VMG1.LANGUAGE1", "Page " + name); }, 998, MostPgcsReached);
  fill([&](auto& name) { return NewPgc(Session, "VTS1.TITLE1", "Part " + name); }, 899, MostPgcsReached);
  fill([&](auto&) { return DropOn("VTS1.TITLE1.PGC1.PG1", 0, 7); }, 255, TooManyCellsForOne);
  expectFull(DropOn("VTS1.TITLE1.PGC1.PG1", 0), TooManyCellsForAll);
  std::int64_t seconds = 1000;
  const auto newScene = [&](auto&) { return NewScene(Session, film, FramesToTimecode(++seconds * 25, 25)); };
  fill(newScene, 48, TooManyScenes);
  fill([&](auto&) { return AddAudio(Session, film); }, 8, MostAudioStreams);
  fill([&](auto&) { return AddSubtitles(Session, film); }, 32, MostSubStreams);
  Session.StartAnew();
  fill([&](auto&) { return NewTitleSet(Session); }, 98, MostSetsReached);
}

// Of a film that is shorter than its scenes say; another size is taken, another shape is not.
TEST_F(Operations, CellsGoWithScenesPastANewEnd) {
  const TempFolder folder;
  const std::size_t film = Add(Film("Film", 3));
  const auto import = [&](const SequenceFields& sequence) {
    const std::string file =
        folder.Write("film.m2v", TextOf(BuildStream({.Sequence = sequence, .Gops = 10})));
    return ImportFile(Session, VideoPlayKey(film, 1), file, Ui, Consent::None);
  };
  ASSERT_TRUE(DropOn(Chain, film).IsDone());
  EXPECT_TRUE(import({.AspectCode = 3}).Words.Is(ImportVideoUnlike));
  ASSERT_TRUE(import({.Width = 704}).IsDone());
  const std::string before = WriteScript(Session.Work());
  const Outcome asked = Analyse(Session, TrackKey(film), Ui, Consent::None);
  EXPECT_TRUE(asked.Words.Is(AskSourceRemoval)) << asked.Words.Text;
  EXPECT_THAT(asked.Words.Text, HasSubstr("? 1 cells"));
  EXPECT_EQ(WriteScript(Session.Work()), before);
  ASSERT_TRUE(Analyse(Session, TrackKey(film), Ui, Consent::Given).IsDone());
  EXPECT_EQ(LiveCells(At(Chain)).size(), 2U);
  Session.Undo();
  EXPECT_EQ(WriteScript(Session.Work()), before);
}

TEST_F(Operations, ADropPlacesCellsAndWhatFollows) {
  Track film = Film("Film", 2, "16:9");
  film.HasSubs = true;
  film.SubStreams.resize(2);
  film.SubStreams[0].DisplayMode = "Wide";
  film.SubStreams[1].DisplayMode = "letter";
  film.SubStreams[1].StreamNumber = 1;
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
  ASSERT_TRUE(TakeOut("VTS1.TITLE2.PGC2").IsDone());
  EXPECT_EQ(At("VTS1.TITLE2.PGC1").PostCommands[0].FullCommand, "NOP");
  EXPECT_EQ(At("VTS1.TITLE2.PGC1").PostCommands[0].CommandHex, "0000000000000000");
  EXPECT_EQ(At("VTS1.TITLE2.PGC1").NextPGC, "none");
  EXPECT_EQ(At(Chain).PostCommands[0].FullCommand, "JumpVTS_TT title10");
  ASSERT_TRUE(Rename(Session, "VTS1.TITLE2", "The Film").IsDone());
  EXPECT_EQ(At(Chain).PostCommands[0].FullCommand, "JumpVTS_TT The Film");
}

TEST_F(Operations, ATrackGoesWithItsCellsAndTheirPrograms) {
  const std::size_t film = Add(Film("Film", 2));
  const std::size_t other = Add(Film("Other"));
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
    const bool may = MayAuthor(Session, Session.Work().DestinationFolder, Ui);
    EXPECT_TRUE(Ui.Answers.empty());
    std::string heard;
    for (const auto* list : {&Ui.Questions, &Ui.Messages}) {
      for (const Message& message : *list) {
        ExpectBox(message);
        heard += message.Text + "|";
      }
    }
    return heard + (may ? "yes" : "no");
  };
  const auto text = [](const MessageKind& kind, const auto&... values) {
    return MessageOf(kind, "", values...).Text + "|";
  };
  AddPost(Chain, "LinkPGCN nowhere");
  EXPECT_EQ(run({false}), text(AskCommandErrors) + "no");
  EXPECT_EQ(run({}), text(TitleHasNoCells, "VTS1_Title1") + "no");
  Edit(RootMenu, [](PGC_P& chain) { chain.MenuType = "Audio"; });
  EXPECT_EQ(run({}), text(NoRootMenu, 1, "English") + "no");
  Edit("VMG1.LANGUAGE1.PGC1", [](PGC_P& chain) { chain.MenuType = "None"; });
  EXPECT_EQ(run({}), text(NoTitleMenu, "English") + "no");
  Edit("VMG1.LANGUAGE1.PGC1", [](PGC_P& chain) { chain.MenuType = "Title Menu"; });
  Edit(RootMenu, [](PGC_P& chain) { chain.MenuType = "ROOT"; });
  const std::size_t clip = Add(FilmWithSound("Clip", "AC3"));
  ASSERT_TRUE(DropOn(RootMenu, clip).IsDone());
  static_cast<void>(SetAudio(Session, AudioStreamKey(clip, 1), [](auto& stream) { stream.Format = "DTS"; }));
  EXPECT_EQ(run({}), text(DtsInMenus) + "no");
  Session.Undo();
  ASSERT_TRUE(DropOn(Chain, Add(FilmWithSound("Film", "DTS"))).IsDone());
  const std::string dts = text(AskOnlyDts, 1) + text(AskDtsLeftOut);
  EXPECT_EQ(run({true, false}), dts + "no");
  const std::string nowhere = dts + text(DestinationMissing) + "no";
  EXPECT_EQ(run({true, true}), nowhere);
  static_cast<void>(SetDestination(Session, "\\\\server\\share"));
  EXPECT_EQ(run({true, true}), nowhere);
  static_cast<void>(SetDestination(Session, "out"));
  EXPECT_EQ(run({true, true}), dts + "yes");
}

}  // namespace
}  // namespace quorvelant
