// The keys of a player, and what it shows of films that come and go.
#include "window/player_pane.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDialog>
#include <QListWidget>
#include <QTest>
#include <QToolButton>
#include <filesystem>
#include <random>

#include "open_window.h"
#include "played_window.h"
#include "support/folders.h"
#include "support/trial.h"
#include "ui/simulation.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

// What is set up beside the screen, and what is clicked, leaves the keys to the remote.
TEST(PlayerPane, KeysStayThoseOfTheRemote) {
  PlayedWindow window;
  OpenWindow& open = window.Open;
  for (const char* const name : {"Screen", "Language of the player"}) {
    auto& box = open.Named<QComboBox>(name);
    const int before = window.Player().State().Registers.Button();
    box.setFocus();
    emit box.activated(0);
    open.Key(Qt::Key_Down);
    EXPECT_NE(window.Player().State().Registers.Button(), before) << name;
    EXPECT_EQ(box.currentIndex(), 0);
  }
  for (const char* const name : {"Title", "Play", "Digit 9"}) {
    open.Window.Parts().Commands.Of(ActionId::ShowDisc)->trigger();
    QTest::qWait(20);
    EXPECT_FALSE(window.Pane().Screen().hasFocus());
    open.Click(open.Named<QToolButton>(name, &window.Pane()));
    EXPECT_TRUE(window.Pane().Screen().hasFocus()) << name;
  }
}

TEST(PlayerPane, SeesAFilmThatComesBack) {
  constexpr const char* Film = "examples/media/first.m2v";
  PlayedWindow window({}, {}, Film);
  window.Open.Key(Qt::Key_Return);
  const auto says = [&window] { return window.Screen().find("first.m2v") != std::string::npos; };
  EXPECT_TRUE(OpenWindow::Wait(says));
  std::filesystem::copy(SourceFile(Film), window.Folder / Film);
  window.Open.Key(Qt::Key_PageDown);
  EXPECT_TRUE(window.IsDrawn());
  EXPECT_FALSE(says()) << window.Screen();
}

// Whatever is pressed, the player is somewhere or says that it stopped.
TEST(PlayerPane, AnyKeysDoNoHarm) {
  PlayedWindow window;
  PlayerPane& pane = window.Pane();
  std::mt19937 dice(14);
  const auto draw = [&dice](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(dice);
  };
  int stops = 0;
  const int presses = TrialCount(1500, 10000);
  for (int press = 0; press < presses; ++press) {
    const std::size_t what = draw(40);
    if (what == 0) {
      const QPoint place(static_cast<int>(draw(400)), static_cast<int>(draw(300)));
      QTest::mouseClick(&pane.Screen(), Qt::LeftButton, {}, place);
    } else if (what == 1) {
      window.Player().SetPlayer({static_cast<std::uint16_t>(draw(2) == 0 ? 0x656E : 0x6465),
                                 static_cast<PlayerScreenKind>(draw(3))});
    } else if (what < 6) {
      QTest::keyClick(&pane.Screen(), static_cast<Qt::Key>(Qt::Key_0 + static_cast<int>(draw(10))));
    } else {
      const RemoteKey& key = RemoteKeys()[draw(RemoteKeys().size())];
      QTest::keyClick(&pane.Screen(), key.Pressed);
    }
    ASSERT_TRUE(window.Player().IsOn());
    ASSERT_FALSE(window.Player().Words().isEmpty());
    if (window.Player().State().Phase == NavPhase::Stopped) {
      ++stops;
      ASSERT_THAT(window.Screen(), HasSubstr("The disc stops"));
      window.Player().Insert();
    }
  }
  EXPECT_LE(window.Steps().count(), static_cast<int>(SimulationLog::Most) + 1);
  EXPECT_LT(stops, presses);
}

}  // namespace
}  // namespace quorvelant
