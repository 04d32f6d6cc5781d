#include "edit/session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

#include "edit/change.h"
#include "film_track.h"
#include "model/default_structure.h"
#include "script/script_writer.h"
#include "support/recording_ui.h"

namespace quorvelant {
namespace {

// What a window's model keeps: both trees, changed by what it is told alone.
class Mirror : public EditListener {
 public:
  explicit Mirror(EditSession& session) : session_(session) {
    session_.Listen(*this);
    Replaced();
  }
  ~Mirror() override { session_.Leave(*this); }
  Mirror(const Mirror&) = delete;
  Mirror& operator=(const Mirror&) = delete;

  void Changed(std::span<const TreeChange> tree, std::span<const Part> /*parts*/) override {
    for (const TreeChange& change : tree) {
      if (change.Kind == TreeChange::What::Text) {
        NodeOf(change.Node.Key)->Text = change.Node.Text;
        continue;
      }
      std::vector<TreeNode>& children = NodeOf(change.Parent)->Children;
      const auto at = children.begin() + static_cast<std::ptrdiff_t>(change.Row);
      if (change.Kind == TreeChange::What::Insert) {
        children.insert(at, change.Node);
      } else {
        EXPECT_EQ(at->Key, change.Node.Key);
        children.erase(at);
      }
    }
  }
  void Replaced() override {
    segments_ = SegmentTree(session_.Work());
    structure_ = StructureTree(session_.Work());
  }
  [[nodiscard]] bool IsTrue() const {
    return segments_ == SegmentTree(session_.Work()) && structure_ == StructureTree(session_.Work());
  }

 private:
  static TreeNode* Find(TreeNode& node, const std::string& key) {
    TreeNode* found = node.Key == key ? &node : nullptr;
    for (auto child = node.Children.begin(); found == nullptr && child != node.Children.end(); ++child) {
      found = Find(*child, key);
    }
    return found;
  }
  TreeNode* NodeOf(const std::string& key) {
    TreeNode* node = Find(segments_, key);
    return node != nullptr ? node : Find(structure_, key);
  }

  EditSession& session_;
  TreeNode segments_;
  TreeNode structure_;
};

class SessionTest : public testing::Test {
 protected:
  // A step of whatever kind.
  void Do(const std::function<void(Change&)>& what) {
    Change change(Session, "Step");
    what(change);
    static_cast<void>(change.Commit());
    EXPECT_TRUE(Model.IsTrue());
  }
  void AddFilm(const std::string& name, std::size_t scenes) {
    Do([&](Change& change) {
      const std::size_t index = change.Work().Tracks.Count();
      change.Touch({Part::OfTrack(index)}).Tracks.Add(Film(name, scenes, "16:9")).Letter = true;
      for (const Scene& scene : change.Work().Tracks[index].Scenes) {
        Cell_P cell;
        cell.SegmentUsed = static_cast<std::int32_t>(index);
        cell.SceneUsed = scene.Name;
        change.EditEntry(2).Title.Item(1)->PGC.Item(1)->PG.Add({}).Cell.Add(cell);
      }
    });
  }
  [[nodiscard]] std::string Script() const { return WriteScript(Session.Work()); }

  EditSession Session{Rules::Players, {.Import = {}, .DestinationFolder = "out"}};
  Mirror Model{Session};
};

TEST_F(SessionTest, StartsOnAStructureWhoseCommandsLead) {
  EXPECT_TRUE(Session.Commands().Errors.empty());
  EXPECT_EQ(Session.Commands().CommandCount, 3U);
  EXPECT_EQ(Session.Work().FirstPlay.PreCommands[0].CommandHex, "3002000000010000");
  EXPECT_EQ(Session.Work().DestinationFolder, "out");
  EXPECT_NE(Session.Work().Palettes.Item("Default"), nullptr);
  EXPECT_FALSE(Session.IsUnsaved() || Session.CanUndo() || Session.CanRedo());
}

TEST_F(SessionTest, UndoAndRedoBringEveryStateBack) {
  const std::string start = Script();
  AddFilm("Film", 3);
  std::vector<std::string> states{start, Script()};
  const auto then = [&](const std::function<void(Change&)>& what) {
    Do(what);
    states.push_back(Script());
  };
  then([](Change& change) {  // a set more, and a film that the one before has the row of
    Project& project = change.Touch({Part::OfEntry(3), Part::OfTrack(1)});
    AddNewVTSSet(project, true, 2);
    project.Tracks.Add(Film("Second", 2));
  });
  then([](Change& change) {  // button sets show below cells
    change.EditTrack(0).HasHighlights = true;
    change.EditTrack(0).HighlightPlays.emplace_back();
  });
  then([](Change& change) { change.EditTrack(0).Removed = true; });
  then([](Change& change) { change.EditEntry(2).Removed = true; });
  then([](Change& change) {
    change.EditDestination() = "elsewhere";
    change.EditPalettes().Remove(1);
    change.EditFirstPlay().PreCommands.clear();
  });
  for (std::size_t i = states.size(); i-- > 1;) {
    EXPECT_EQ(Script(), states[i]);
    EXPECT_TRUE(Session.IsUnsaved());
    Session.Undo();
    EXPECT_TRUE(Model.IsTrue()) << i;
  }
  EXPECT_EQ(Script(), states[0]);
  EXPECT_FALSE(Session.IsUnsaved() || Session.CanUndo());
  while (Session.CanRedo()) {
    Session.Redo();
    EXPECT_TRUE(Model.IsTrue());
  }
  EXPECT_EQ(Script(), states.back());
}

TEST_F(SessionTest, MovesOfOneGestureAreOneStep) {
  const auto move = [this](const std::string& to) {
    Session.JoinNextStep();
    Do([&to](Change& change) { change.EditDestination() = to; });
  };
  Do([](Change& change) { change.EditPalettes().Remove(1); });
  const std::string start = Script();
  Do([](Change& change) { change.EditDestination() = "a"; });
  move("b");
  move("c");
  Session.Undo();
  EXPECT_EQ(Script(), start);
  Session.Redo();
  EXPECT_EQ(Session.Work().DestinationFolder, "c");
  move("out");  // where it began: both joined steps are none
  EXPECT_EQ(Script(), start);
  Session.Undo();
  EXPECT_FALSE(Session.CanUndo() || Session.IsUnsaved());
}

TEST_F(SessionTest, WhatIsNotCommittedIsPutBack) {
  AddFilm("Film", 2);
  const std::string before = Script();
  const auto fault = [&] {
    Change change(Session, "Step");
    Project& project = change.Touch({Part::OfTrack(1), Part::OfTrack(2), Part::OfEntry(3)});
    project.Tracks.Add(Film("Lost", 1));
    AddNewVTSSet(project, true, 2);
    change.EditTrack(0).Scenes.clear();
    throw std::runtime_error("in the middle");
  };
  EXPECT_THROW(fault(), std::runtime_error);
  EXPECT_EQ(Script(), before);
  EXPECT_EQ(Session.Work().Tracks.Count(), 1U);

  {  // of two changes within one, the second is given up
    Change step(Session, "Whole");
    Change(Session, "First").EditDestination() = "given up";
    EXPECT_EQ(step.Work().DestinationFolder, "out");
    Change kept(Session, "Second");
    kept.EditDestination() = "kept";
    static_cast<void>(kept.Commit());
    step.EditTrack(0).TrackName = "Renamed";
    static_cast<void>(step.Commit());
  }
  EXPECT_EQ(Session.Work().DestinationFolder, "kept");
  EXPECT_EQ(Session.UndoWords(), "Whole");
  Session.Undo();
  EXPECT_EQ(Script(), before);
  EXPECT_EQ(Session.RedoWords(), "Whole");
}

TEST_F(SessionTest, WhatFollowsFromTheStructureIsSettled) {
  AddFilm("Film", 2);
  const VTS_P& set = *Session.Work().Disc.Item(2);
  const Cell_P& second = *set.Title.Item(1)->PGC.Item(1)->PG.Item(2)->Cell.Item(1);
  EXPECT_EQ(set.Standard(), "PAL");
  EXPECT_TRUE(set.VTSTitleInfo.Letter);
  EXPECT_EQ(second.TrackName, "Film");
  EXPECT_EQ(second.pScene, 1);
  EXPECT_TRUE(Session.Work().Tracks[0].IDsLocked && Session.Work().Tracks[0].UsedInStructure);

  Do([](Change& change) {
    Track& film = change.EditTrack(0);
    film.TrackName = "Other";
    Scene between;
    between.Name = "Between";
    film.Scenes.insert(film.Scenes.begin() + 1, between);
  });
  EXPECT_EQ(second.TrackName, "Other");
  EXPECT_EQ(second.pScene, 2) << "by its name";

  Do([](Change& change) {
    for (PG_P& program : change.EditEntry(2).Title.Item(1)->PGC.Item(1)->PG) {
      program.Removed = true;
    }
  });
  EXPECT_EQ(set.Standard(), "");
  EXPECT_FALSE(set.VTSTitleInfo.Letter || Session.Work().Tracks[0].IDsLocked);
  Session.Undo();
  EXPECT_EQ(set.Standard(), "PAL");
}

TEST_F(SessionTest, TheHistoryIsBoundedByBytes) {
  Track film = Film("Film", 1);
  film.SubStreams.emplace_back().SubPlays.resize(20000);
  Do([&](Change& change) { change.Touch({Part::OfTrack(0)}).Tracks.Add(film); });
  for (int i = 0; i < 20; ++i) {
    Do([i](Change& change) { change.EditTrack(0).VideoFrames = i + 1; });
  }
  EXPECT_GT(Session.LastStepBytes(), 20000 * sizeof(SubPicturePlay));
  EXPECT_LE(Session.HistoryBytes(), EditSession::MostHistoryBytes);
  std::int32_t undone = 0;
  for (; Session.CanUndo(); ++undone) {
    Session.Undo();
  }
  EXPECT_EQ(Session.Work().Tracks[0].VideoFrames, 20 - undone) << "from the newest on";
  EXPECT_GT(undone, 2);
  EXPECT_LE(Session.HistoryBytes(), EditSession::MostHistoryBytes);
}

TEST(Carry, TellsRefusalsAndAsksQuestions) {
  RecordingUi ui;
  ui.Unattended = true;
  const auto asks = [](Consent consent) {
    return consent == Consent::Given ? Outcome::Done("key") : Outcome::Asks({});
  };
  EXPECT_FALSE(Carry(ui, asks).IsDone()) << "nobody there: no";
  ui.Answers = {true};
  EXPECT_EQ(Carry(ui, asks).Key, "key");
  EXPECT_TRUE(ui.Messages.empty());
  EXPECT_FALSE(Carry(ui, [](Consent) { return Outcome::Refused({}); }).IsDone());
  EXPECT_EQ(ui.Messages.size(), 1U);
}

}  // namespace
}  // namespace quorvelant
