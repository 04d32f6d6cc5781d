// Projects edited at random: what a session holds is what its script says, and commands keep their aims.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "author/author.h"
#include "disc_maker.h"
#include "edit/button_sets.h"
#include "edit/drop.h"
#include "edit/file_scanner.h"
#include "edit/live_elements.h"
#include "edit/new_titles.h"
#include "edit/project_file.h"
#include "edit/removal.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "edit/structure.h"
#include "model/default_structure.h"
#include "model/walk.h"
#include "script/script_reader.h"
#include "script/script_writer.h"
#include "support/folders.h"
#include "vm/command_aims.h"

namespace quorvelant {
namespace {

// Discs are made whatever they hold, so that every state can be compared.
Rules LenientRules() {
  Rules rules = Rules::Players;
  rules.RefusesDeadDiscs = false;
  rules.RefusesUnfitSources = false;
  return rules;
}

struct Keys {
  std::vector<std::string> Entries, Units, Chains, Programs, Cells;
  std::vector<std::string> Targets;  // commands with a name that leads somewhere
};

Keys KeysOf(const Project& project) {
  Keys keys;
  for (const VTS_P* entry : Live(project.Disc)) {
    keys.Entries.push_back(entry->Key);
    for (const Lang_P* language : Live(entry->Lang)) {
      keys.Units.push_back(language->Key);
    }
    for (const Title_P* title : Live(entry->Title)) {
      keys.Units.push_back(title->Key);
      keys.Targets.push_back("JumpTT " + title->TitleName);
      keys.Targets.push_back("JumpVTS_TT " + title->TitleName);
    }
  }
  for (const auto& at : LivePgcs(project)) {
    keys.Chains.push_back(at.Key());
    keys.Targets.push_back("LinkPGCN " + at.Chain->PGCName);
    keys.Targets.push_back(fmt::format("LinkPGCN {}", at.Number));
    for (const PG_P* program : Live(at.Chain->PG)) {
      keys.Programs.push_back(program->Key);
      keys.Targets.push_back("LinkPGN " + program->PGName);
      for (const Cell_P* cell : Live(program->Cell)) {
        keys.Cells.push_back(cell->Key);
        keys.Targets.push_back("if ( GPRM1 > 2 ) LinkCN " + cell->CellName);
      }
    }
  }
  return keys;
}

class Editor {
 public:
  Editor(EditSession& session, unsigned seed) : session_(session), random_(seed) {}

  bool WentInHistory = false;

  // One operation; what it came to.
  Outcome Step() {
    const Project& work = session_.Work();
    const Keys keys = KeysOf(work);
    WentInHistory = false;
    switch (Below(17)) {
      case 0:
        return NewPgc(session_, One(keys.Units), ProposedName(session_, One(keys.Units)));
      case 1: {
        const std::string chain = One(keys.Chains);
        return NewProgram(session_, chain, ProposedName(session_, chain));
      }
      case 2:
        return NewTitle(session_, One(keys.Entries), fmt::format("Title {}", random_() % 40));
      case 3:
        return NewLanguage(session_, One(keys.Entries), Below(2) == 0 ? "de" : "French");
      case 4:
        return Below(4) == 0 ? NewTitleSet(session_) : Outcome::Refused({});
      case 5:
      case 6:
      case 7:
        return Drop(session_, {.Track = Below(work.Tracks.Count()), .Scene = SceneOrAll()},
                    Below(4) == 0 ? One(keys.Programs) : One(keys.Chains));
      case 8:
        return quorvelant::Remove(session_, Any(keys), Consent::Given);
      case 9:
        return Rename(session_, Any(keys), fmt::format("Name{} x", random_() % 60));
      case 10:
      case 11:
        return SetPgc(session_, Below(5) == 0 ? std::string(FirstPgcKey) : One(keys.Chains),
                      [&](PGC_P& chain) {
                        if (chain.PostCommands.size() > 5) {
                          return Outcome::Refused({});
                        }
                        AddCommand(chain.PostCommands, "Post", One(keys.Targets));
                        return Outcome::Done();
                      });
      case 12:
        return SetPgc(session_, One(keys.Chains), [&](PGC_P& chain) {
          chain.NextPGC = LivePgc(work, One(keys.Chains))->PGCName;
          chain.StillTime = static_cast<std::int32_t>(Below(4));
          return Outcome::Done();
        });
      case 13:
        return NewScene(session_, TrackKey(Below(work.Tracks.Count())),
                        fmt::format("00:00:0{}:10", Below(3)));
      case 14:
        return Below(3) != 0
                   ? RenameTrack(session_, TrackKey(Below(work.Tracks.Count())),
                                 fmt::format("Track {}", random_() % 9))
                   : RemoveSource(session_, SceneKey(Below(work.Tracks.Count()), 2), Consent::Given);
      case 15:
        return PutSomeButtons(Below(work.Tracks.Count()));
      default:
        WentInHistory = true;
        Below(2) == 0 ? session_.Undo() : session_.Redo();
        return Outcome::Done();
    }
  }

 private:
  // A set of the track with a button less or more.
  Outcome PutSomeButtons(std::size_t index) {
    const Track& track = session_.Work().Tracks[index];
    if (track.HighlightPlays.empty()) {
      return Outcome::Refused({});
    }
    EditedSet set = OpenSet(track, Below(track.HighlightPlays.size()), {});
    if (Below(2) == 0) {
      set.Buttons[Below(set.Buttons.size())].Removed = true;
    } else {
      AddButton(set.Buttons, {.X1 = 10, .X2 = 50, .Y1 = 10, .Y2 = 50}, {});
    }
    return PutButtons(session_, index, set);
  }
  std::size_t Below(std::size_t most) { return random_() % most; }
  std::string One(const std::vector<std::string>& of) {
    return of.empty() ? std::string() : of[Below(of.size())];
  }
  std::string Any(const Keys& keys) {
    const std::vector<std::string>* all[] = {&keys.Cells, &keys.Programs, &keys.Chains, &keys.Units,
                                             &keys.Entries};
    return One(*all[std::min(Below(5), Below(6))]);
  }
  std::optional<std::size_t> SceneOrAll() { return Below(2) == 0 ? std::nullopt : std::optional(Below(3)); }

  EditSession& session_;
  std::mt19937 random_;
};

// Where two scripts begin to differ; the whole of them would be too much to print.
std::string Difference(const std::string& a, const std::string& b) {
  const auto at = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
  return a == b ? "" : a.substr(at, 200) + "\ninstead of\n" + b.substr(at, 200);
}

// What every live command leads to, by the places of commands.
std::map<std::string, std::vector<std::string>> AimsOf(const Project& project) {
  const CommandAims aims(project, LenientRules());
  std::map<std::string, std::vector<std::string>> all;
  const auto add = [&](const PGC_P& chain) {
    for (std::size_t i = 0; i < chain.PostCommands.size(); ++i) {
      auto& keys = all[fmt::format("{} {}", chain.Key, i)];
      for (const CommandReferenceAim& aim : aims.Of(chain.PostCommands[i].FullCommand, chain.Key)) {
        if (aim.Text.Kind != ReferenceKind::Menu) {  // whose PGC is that of the player's language
          keys.push_back(aim.Key);
        }
      }
    }
  };
  add(project.FirstPlay);
  for (const auto& at : LivePgcs(project)) {
    add(*at.Chain);
  }
  return all;
}

class RandomEdits : public testing::TestWithParam<unsigned> {
 protected:
  AuthorResult AuthorInto(const Project& project, const std::string& folder) {
    RecordingUi quiet;
    BmpLoader bitmaps;
    return Author(project, {.Folder = folder, .Rules = LenientRules(), .Pictures = &bitmaps, .Force = true},
                  quiet);
  }

  static std::map<std::string, std::string> FilesIn(const std::string& folder) {
    std::map<std::string, std::string> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
      files[entry.path().filename().string()] = TempFolder::Read(entry.path().string());
    }
    return files;
  }

  // The disc of the session is that of its script.
  void CompareDiscs(EditSession& session) {
    session.Commands();
    const AuthorResult ofSession = AuthorInto(session.Work(), Maker.Temp / "session");
    const std::string script = Maker.Temp / "saved.qvp";
    std::ofstream(script, std::ios::binary) << WriteScript(session.Work());
    Project loaded;
    RecordingUi quiet;
    const FileScanner scanner(LenientRules(), quiet);
    const LoadResult load =
        LoadScriptFile(script, loaded, {.Rules = LenientRules(), .Scanner = &scanner}, quiet);
    ASSERT_TRUE(load.Loaded);
    EXPECT_EQ(load.Commands.Errors.size(), session.Commands().Errors.size());
    const AuthorResult ofScript = AuthorInto(loaded, Maker.Temp / "script");
    EXPECT_EQ(ofSession.Outcome, AuthorOutcome::Done) << testing::PrintToString(ofSession.Findings.size());
    EXPECT_EQ(ofSession.Outcome, ofScript.Outcome);
    auto files = FilesIn(Maker.Temp / "script");
    for (const auto& [name, bytes] : FilesIn(Maker.Temp / "session")) {
      EXPECT_TRUE(files[name] == bytes) << name;
      files.erase(name);
    }
    EXPECT_TRUE(files.empty());
  }

  // Films in a set; in two sets, with menus; slides, stills and films with subtitles, buttons and commands.
  void Start(EditSession& session) {
    if (GetParam() % 3 == 0) {
      Maker.LoadShown("Both PanScan and LetterBox");
      session.Replace(Maker.Disc, {});
      return;
    }
    const bool inTwoSets = GetParam() % 3 == 2;
    Maker.Link("film.m2v", SampleVideo({.Frames = 75}));
    Maker.Link("film.ac3", SampleAc3({.Seconds = 3}));
    Maker.Link("other.m2v",
               SampleVideo({.Aspect = inTwoSets ? "16:9" : "4:3", .Frames = 60, .GopLength = 6}));
    Project project = session.Work();
    project.ScriptFile = Maker.Temp / "project.qvp";
    session.Replace(std::move(project), {});
    const std::vector<std::string> files{"film.m2v", "film.ac3", "other.m2v"};
    ASSERT_TRUE(AddTitles(session, SortFilms(files).Films, Maker.Ui).IsDone());
    ASSERT_TRUE(Analyse(session, "Track.0", Maker.Ui, Consent::None).IsDone());
    for (const char* menu : {"VMG1.LANGUAGE1.PGC1", "VTS1.LANGUAGE1.PGC1", "VTS2.LANGUAGE1.PGC1"}) {
      ASSERT_TRUE(!inTwoSets || Drop(session, {.Track = 0, .Scene = {}}, menu).IsDone());
    }
  }

  DiscMaker Maker{{.Frames = 150, .Closed = true}};
};

TEST_P(RandomEdits, KeepAimsAndSayWhatTheScriptSays) {
  EditSession session(LenientRules(), {}, IndexStore(true));
  ASSERT_NO_FATAL_FAILURE(Start(session));
  Editor editor(session, GetParam());
  std::size_t done = 0;
  for (int i = 1; i <= 1000; ++i) {
    const auto aims = AimsOf(session.Work());
    const std::string before = WriteScript(session.Work());
    const Outcome outcome = editor.Step();
    const std::string after = WriteScript(session.Work());
    if (!outcome.IsDone()) {
      ASSERT_EQ(Difference(before, after), "") << i << outcome.Words.Text;
      continue;
    }
    ++done;
    if (editor.WentInHistory) {
      continue;
    }
    const auto aimsNow = AimsOf(session.Work());
    for (const auto& [place, keys] : aims) {
      const auto now = aimsNow.find(place);
      if (now != aimsNow.end() && now->second != keys && !now->second.empty() &&
          std::ranges::none_of(keys, &std::string::empty)) {  // a number that led nowhere may come to lead
        ADD_FAILURE() << i << ": " << session.UndoWords() << ": " << place << " led to "
                      << testing::PrintToString(keys) << ", now to " << testing::PrintToString(now->second);
      }
    }
    if (i % 500 == 0) {
      CompareDiscs(session);
    }
  }
  EXPECT_GT(done, 300U);
  const std::string end = WriteScript(session.Work());
  std::size_t steps = 0;
  for (; session.CanUndo(); ++steps) {
    session.Undo();
  }
  while (session.CanRedo()) {
    session.Redo();
  }
  EXPECT_EQ(Difference(WriteScript(session.Work()), end), "") << steps;
}

INSTANTIATE_TEST_SUITE_P(Projects, RandomEdits, testing::Values(1U, 2U, 6U));

}  // namespace
}  // namespace quorvelant
