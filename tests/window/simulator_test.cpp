#include <gtest/gtest.h>

#include <QGraphicsView>
#include <QListWidget>
#include <QTest>
#include <algorithm>

#include "edit/segments.h"
#include "edit/structure.h"
#include "open_window.h"
#include "support/temp_folder.h"
#include "ui/simulation.h"
#include "window/map_window.h"
#include "window/picture_view.h"
#include "window/simulator_pane.h"

namespace quorvelant {
namespace {

// From the title menu into a title by keys, back by the remote, to the place of a command by its row.
TEST(Simulator, PlaysTheDiscBeforeItIsMade) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  Simulation& player = open.Window.Parts().Player;
  open.Key(Qt::Key_F5);
  ASSERT_TRUE(player.IsOn());
  EXPECT_EQ(player.State().At.Domain, NavDomain::ManagerMenu);
  EXPECT_EQ(player.State().Registers.Button(), 1);
  EXPECT_EQ(open.Window.Parts().View.TrackIndex(), 0U);
  auto& picture = *open.Window.findChild<PictureView*>();
  ASSERT_EQ(QApplication::focusWidget(), &picture);
  const auto before = open.Work().Tracks[0].HighlightPlays.at(0).Buttons;
  open.Key(Qt::Key_Down);
  EXPECT_EQ(player.State().Registers.Button(), 2);
  EXPECT_EQ(open.Window.Parts().View.Button(), 1U);
  open.Key(Qt::Key_Return);
  EXPECT_EQ(player.State().At.Domain, NavDomain::Title);
  EXPECT_EQ(player.State().Registers.Of(Sprm::Title), 2);
  EXPECT_EQ(open.Window.Parts().View.TrackIndex(), 2U);
  open.Key(Qt::Key_T);
  EXPECT_EQ(player.State().At.Domain, NavDomain::ManagerMenu);

  auto& steps = *open.Window.findChild<SimulatorPane*>()->findChild<QListWidget*>();
  const auto rows = steps.findItems(QStringLiteral("JumpTT VTS1_Title2"), Qt::MatchContains);
  ASSERT_EQ(rows.size(), 1);
  open.Window.Parts().Chosen.Choose("Track.1");
  emit steps.itemActivated(rows.front());
  EXPECT_TRUE(open.Window.Parts().Chosen.Key().starts_with("VMG1.LANGUAGE1.PGC1"));
  open.Key(Qt::Key_Escape);
  EXPECT_FALSE(player.IsOn());
  EXPECT_EQ(open.Work().Tracks[0].HighlightPlays.at(0).Buttons.size(), before.size());
}

// A disc of another project than the one that is worked on is none to play.
TEST(Simulator, TakesTheDiscOutWhenTheProjectChanges) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  Simulation& player = open.Window.Parts().Player;
  player.Insert();
  ASSERT_TRUE(player.IsOn());
  for (int press = 0; press < 200; ++press) {
    player.Press({static_cast<NavKey>(press % 20), static_cast<std::uint16_t>(press % 5)});
  }
  EXPECT_FALSE(player.Steps().empty());
  open.Doc().Do([](EditSession& session, Consent) { return RenameTrack(session, "Track.1", "Other"); });
  EXPECT_FALSE(player.IsOn());
}

// Every chain has a box and a row; what nobody reaches says so, and a row leads to its place.
TEST(MapOfTheDisc, ShowsWhatNobodyReaches) {
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  open.Doc().Do([](EditSession& session, Consent) { return NewTitle(session, "VTS2", "Alone"); });
  open.Key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
  auto* const map = open.Window.findChild<MapWindow*>();
  ASSERT_NE(map, nullptr);
  auto& chains = *map->findChild<QListWidget*>();
  const auto lost = chains.findItems(QStringLiteral("nobody comes here"), Qt::MatchContains);
  ASSERT_FALSE(lost.isEmpty());
  EXPECT_GT(chains.count(), static_cast<int>(lost.size()));
  const auto boxes = map->findChild<QGraphicsView*>()->scene()->items();
  EXPECT_GE(boxes.size(), chains.count());
  emit chains.itemActivated(lost.front());
  EXPECT_TRUE(open.Window.Parts().Chosen.Key().starts_with("VTS")) << open.Window.Parts().Chosen.Key();
}

}  // namespace
}  // namespace quorvelant
