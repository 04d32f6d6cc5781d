#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStatusBar>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>
#include <utility>

#include "edit/segments.h"
#include "edit/structure.h"
#include "open_window.h"
#include "played_window.h"
#include "support/pressed_action.h"
#include "support/temp_folder.h"
#include "ui/command_model.h"
#include "ui/simulation.h"
#include "window/notice_bar.h"
#include "window/picture_view.h"
#include "window/player_pane.h"
#include "window/simulator_pane.h"

namespace quorvelant {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

// From the title menu into a title by keys, back by the remote, and to the place of a command by its row.
TEST(Simulator, PlaysTheDiscBeforeItIsMade) {
  PlayedWindow window;
  OpenWindow& open = window.Open;
  ASSERT_TRUE(window.Player().IsOn());
  EXPECT_EQ(QApplication::focusWidget(), &window.Pane().Screen());
  EXPECT_FALSE(open.Window.findChild<PictureView*>()->isVisible());
  EXPECT_THAT(window.Where(), HasSubstr("title menu, button 1"));
  open.Key(Qt::Key_Down);
  EXPECT_THAT(window.Where(), HasSubstr("title menu, button 2"));
  open.Key(Qt::Key_Return);
  EXPECT_THAT(window.Where(), HasSubstr("title 2, chapter 1"));
  open.Key(Qt::Key_T);
  EXPECT_THAT(window.Where(), HasSubstr("title menu"));
  open.Key(Qt::Key_1);  // no button of this menu goes by a number
  EXPECT_THAT(window.Log(), HasSubstr("does nothing"));
  open.Key(Qt::Key_Return);
  EXPECT_THAT(window.Where(), HasSubstr("title 1, chapter 1"));
  open.Key(Qt::Key_2);
  EXPECT_THAT(window.Where(), HasSubstr("title 1, chapter 2"));

  const std::string chosen = open.Window.Parts().Chosen.Key();
  const auto rows = window.Steps().findItems(QStringLiteral("JumpTT VTS1_Title2"), Qt::MatchContains);
  ASSERT_EQ(rows.size(), 1);
  window.Steps().setCurrentItem(rows.front());
  open.Click(*open.Window.findChild<SimulatorPane*>()->findChild<QPushButton*>());
  EXPECT_NE(open.Window.Parts().Chosen.Key(), chosen);
  EXPECT_TRUE(open.Window.Parts().Chosen.Key().starts_with("VMG1.LANGUAGE1.PGC1"));
  const auto* const commands = qobject_cast<QTableView*>(QApplication::focusWidget());
  ASSERT_NE(commands, nullptr);
  EXPECT_TRUE(commands->isVisible());
  const QModelIndex row = commands->currentIndex().siblingAtColumn(CommandModel::Text);
  EXPECT_THAT(row.data().toString().toStdString(), HasSubstr("JumpTT VTS1_Title2"))
      << rows.front()->data(Qt::UserRole).toString().toStdString();
  EXPECT_THAT(window.Where(), HasSubstr("title 1, chapter 2"));  // what is chosen leaves the player alone

  window.Pane().Screen().setFocus();
  open.Key(Qt::Key_Escape);
  EXPECT_FALSE(window.Player().IsOn());
  EXPECT_TRUE(open.Window.findChild<PictureView*>()->isVisible());
  EXPECT_FALSE(open.Window.findChild<SimulatorPane*>()->isVisible());
  EXPECT_FALSE(open.Doc().Session().CanUndo());
}

// The remote does by its buttons what the keys do, and each has a name and says its key.
TEST(Simulator, HasARemote) {
  PlayedWindow window;
  OpenWindow& open = window.Open;
  for (const RemoteKey& key : RemoteKeys()) {
    EXPECT_THAT(open.Named<QToolButton>(key.Name, &window.Pane()).toolTip().toStdString(), HasSubstr("("));
  }
  const auto press = [&](const char* name) { open.Click(open.Named<QToolButton>(name, &window.Pane())); };
  press("Down");
  press("OK");
  EXPECT_EQ(window.Player().State().At.Domain, NavDomain::ManagerMenu);  // it shows as pressed first
  EXPECT_THAT(window.Where(), HasSubstr("title 2"));
  press("Title");
  press("OK");
  QTest::qWait(200);
  press("Next Chapter");
  EXPECT_THAT(window.Where(), HasSubstr("title 1, chapter 2"));
  press("Previous Chapter");
  press("Audio");
  EXPECT_EQ(window.Player().State().Registers.Of(Sprm::Audio), 0);
  press("Audio");
  EXPECT_EQ(window.Player().State().Registers.Of(Sprm::Audio), 1);
  auto& registers = open.Named<QTableWidget>("Registers");
  EXPECT_THAT(registers.item(17, 0)->text().toStdString(), HasSubstr("SPRM1  audio"));
  EXPECT_EQ(registers.item(17, 1)->text(), QStringLiteral("1 (stream 2)"));
  EXPECT_THAT(window.Log(), HasSubstr("audio 2 German"));
  EXPECT_TRUE(registers.item(17, 1)->font().bold());
  press("Menu");
  EXPECT_EQ(window.Player().State().At.Domain, NavDomain::SetMenu);
  EXPECT_THAT(window.Where(), EndsWith("button 1, waits for a button"));  // its still has no end
  press("Resume");
  EXPECT_THAT(window.Where(), HasSubstr("title 1"));
  press("Start Anew");
  EXPECT_THAT(window.Where(), HasSubstr("title menu"));
}

// Subtitles show once they are asked for, in the language that was; in menus the marks always do.
TEST(Simulator, ShowsWhatTheDiscWillShow) {
  PlayedWindow window;
  OpenWindow& open = window.Open;
  const auto overlay = [&] {
    EXPECT_TRUE(window.IsDrawn());
    OpenWindow::Wait([] { return false; }, 100);
    return window.Player().Look()->Overlay(false);
  };
  const QImage first = overlay();
  EXPECT_FALSE(first.isNull());
  EXPECT_NE(window.Player().Look()->Overlay(true), first);  // as pressed
  open.Key(Qt::Key_Down);
  EXPECT_NE(overlay(), first);
  open.Key(Qt::Key_Up);
  open.Key(Qt::Key_Return);
  EXPECT_THAT(window.Where(), HasSubstr("title 1"));
  EXPECT_TRUE(overlay().isNull());
  while (window.Player().Look()->Frame() == 0 && window.Player().State().At.Domain == NavDomain::Title) {
    open.Key(Qt::Key_PageDown);  // to where subtitles are
  }
  const std::vector<std::pair<std::uint16_t, const char*>> streams{
      {0x40, "subtitles 1 English"}, {0x41, "subtitles 2 German"}, {1, "no subtitles"}};
  for (const auto& [value, words] : streams) {
    open.Key(Qt::Key_S);
    EXPECT_EQ(window.Player().State().Registers.Of(Sprm::Subpicture), value);
    EXPECT_THAT(window.Log(), HasSubstr(words));
  }
  EXPECT_TRUE(overlay().isNull());
}

TEST(Simulator, ThePointerChoosesAndPresses) {
  PlayedWindow window;
  PlayerScreen& screen = window.Pane().Screen();
  ASSERT_TRUE(window.IsDrawn());
  const HighlightButton& second = window.Open.Work().Tracks[0].HighlightPlays.at(0).Buttons.at(1);
  const HighlightArea& area = second.Areas.at(GroupOfView(window.Player().Look()->View()));
  const QPoint place = screen.Geometry().ToSpace(area).center().toPoint();
  QTest::mouseMove(&screen, place);
  EXPECT_TRUE(OpenWindow::Wait([&] { return window.Player().State().Registers.Button() == 2; }, 2000));
  QTest::mouseClick(&screen, Qt::LeftButton, {}, place);
  EXPECT_THAT(window.Where(), HasSubstr("title 2"));
}

// What hinders a disc is told in words, and the player goes on or stops there.
struct Hindrance {
  const char* Name;
  std::string Line, Instead, Lost;
  std::vector<Qt::Key> Keys;
  const char* OnScreen;
  const char* InLog;
};
void PrintTo(const Hindrance& one, std::ostream* out) {
  *out << one.Name;
}

class HinderedSimulation : public testing::TestWithParam<Hindrance> {};

TEST_P(HinderedSimulation, SaysWhy) {
  const Hindrance& one = GetParam();
  PlayedWindow window(one.Line, one.Instead, one.Lost);
  ASSERT_TRUE(window.Player().IsOn());
  for (const Qt::Key key : one.Keys) {
    window.Open.Key(key);
    QTest::qWait(200);
  }
  const bool says =
      OpenWindow::Wait([&] { return window.Screen().find(one.OnScreen) != std::string::npos; }, 5000);
  EXPECT_TRUE(says) << window.Screen();
  EXPECT_THAT(window.Log(), HasSubstr(one.InLog));
  window.Open.Key(Qt::Key_Home);
  EXPECT_THAT(window.Where(), HasSubstr("title menu"));
}

INSTANTIATE_TEST_SUITE_P(
    All, HinderedSimulation,
    testing::Values(
        Hindrance{"Exit",
                  "JumpTT VTS1_Title1",
                  "Exit",
                  {},
                  {Qt::Key_Return},
                  "The disc stops: Exit",
                  "button 1: Exit"},
        Hindrance{"KeyOnAStoppedDisc",
                  "JumpTT VTS1_Title1",
                  "Exit",
                  {},
                  {Qt::Key_Return, Qt::Key_T},
                  "The disc stops: Exit",
                  "Title\n    This key does nothing, the disc has stopped"},
        Hindrance{"NoStreamsInMenus",
                  {},
                  {},
                  {},
                  {Qt::Key_A, Qt::Key_S},
                  "title menu",
                  "Audio\n    This key does nothing here\nSubtitles\n    This key does nothing here"},
        Hindrance{"NoCommand",
                  "JumpTT VTS1_Title1",
                  "JumpTT Nowhere",
                  {},
                  {Qt::Key_Return},
                  "title menu",
                  "Commands with errors"},
        Hindrance{"NoFilm", {}, {}, "examples/media/first.m2v", {Qt::Key_Return}, "first.m2v", "plays"},
        Hindrance{"DeadKey", {}, {}, {}, {Qt::Key_R}, "title menu", "This key does nothing here"}),
    [](const auto& one) { return std::string(one.param.Name); });

TEST(Simulator, HasNothingToPlayInAnEmptyProject) {
  const TempFolder folder;
  OpenWindow open(folder);
  QAction& simulate = *open.Window.Parts().Commands.Of(ActionId::Simulate);
  Press(simulate);
  QTest::qWait(20);
  EXPECT_FALSE(open.Window.Parts().Player.IsOn());
  EXPECT_FALSE(simulate.isChecked());
  EXPECT_THAT(open.Told, HasSubstr("put a track onto the disc"));
}

// A disc of another project than the one that is worked on is none to play; what changes nothing leaves it
// in.
struct ChangeWhilePlaying {
  const char* Name;
  void (*Do)(OpenWindow& open);
  bool Ends = true;
  bool IsTold = true;
};
void PrintTo(const ChangeWhilePlaying& one, std::ostream* out) {
  *out << one.Name;
}

class ChangedWhilePlaying : public testing::TestWithParam<ChangeWhilePlaying> {};

TEST_P(ChangedWhilePlaying, TakesTheDiscOut) {
  const auto& [name, change, ends, isTold] = GetParam();
  const TempFolder folder;
  OpenWindow open(folder);
  open.Window.Open({CopyOfExample(folder)});
  open.Settle();
  const auto rename = [](EditSession& session, Consent) { return RenameTrack(session, "Track.1", "Other"); };
  open.Doc().Do(rename);
  open.Key(Qt::Key_F5);
  Simulation& player = open.Window.Parts().Player;
  ASSERT_TRUE(player.IsOn());
  open.Named<QToolButton>("Play").click();
  open.Key(Qt::Key_Return);  // shows as pressed, and would act in a moment
  change(open);
  QTest::qWait(250);
  EXPECT_EQ(player.IsOn(), !ends);
  EXPECT_EQ(open.Window.Parts().Commands.Of(ActionId::Simulate)->isChecked(), !ends);
  EXPECT_EQ(open.Told.find("was taken out") != std::string::npos, isTold);
  const auto& notices = *open.Window.findChild<NoticeBar*>();
  EXPECT_EQ(notices.Words().contains(QStringLiteral("was taken out")), isTold);
  EXPECT_EQ(open.Window.findChild<PlayerPane*>()->isVisible(), !ends);
  player.Insert();
  EXPECT_FALSE(notices.Words().contains(QStringLiteral("was taken out")));
}

INSTANTIATE_TEST_SUITE_P(
    All, ChangedWhilePlaying,
    testing::Values(ChangeWhilePlaying{"Edit",
                                       [](OpenWindow& open) {
                                         open.Doc().Do([](EditSession& session, Consent) {
                                           return RenameTrack(session, "Track.0", "New");
                                         });
                                       }},
                    ChangeWhilePlaying{"Undo", [](OpenWindow& open) { open.Doc().Undo(); }},
                    ChangeWhilePlaying{"Replace",
                                       [](OpenWindow& open) {
                                         open.Answers.Yes = {false};
                                         Press(*open.Window.Parts().Commands.Of(ActionId::NewProject));
                                         QTest::qWait(50);
                                       },
                                       true, false},
                    ChangeWhilePlaying{"Save",
                                       [](OpenWindow& open) {
                                         Press(*open.Window.Parts().Commands.Of(ActionId::Save));
                                         QTest::qWait(50);
                                       },
                                       false, false},
                    ChangeWhilePlaying{"Layout",
                                       [](OpenWindow& open) {
                                         Press(*open.Window.Parts().Commands.Of(ActionId::ResetLayout));
                                         QTest::qWait(50);
                                       },
                                       false, false}),
    [](const auto& one) { return std::string(one.param.Name); });

// Time runs only while it is let, and never on a disc that is out or in a window that is gone.
TEST(Simulator, TimeRunsWhileThereIsAPlayer) {
  {
    PlayedWindow window;
    window.Open.Key(Qt::Key_Return);
    EXPECT_THAT(window.Where(), HasSubstr("title 1, chapter 1"));
    const auto end = window.Player().Log().End();
    EXPECT_FALSE(OpenWindow::Wait([&] { return window.Player().Log().End() != end; }, 500));
    window.Open.Key(Qt::Key_P);
    EXPECT_TRUE(OpenWindow::Wait([&] { return window.Player().Log().End() != end; }, 9000));
    EXPECT_THAT(window.Log(), HasSubstr("\ntime\n"));
    window.Open.Key(Qt::Key_Space);
    EXPECT_THAT(window.Log(), HasSubstr("\nGo On\n"));
    window.Open.Key(Qt::Key_Escape);
    EXPECT_EQ(window.Open.Window.statusBar()->findChild<QLabel*>()->text(), QStringLiteral("Ready"));
    EXPECT_FALSE(window.Player().Seconds());
    window.Open.Key(Qt::Key_F5);
    EXPECT_FALSE(window.Open.Named<QToolButton>("Play").isChecked());
    window.Open.Key(Qt::Key_P);
    window.Open.Key(Qt::Key_Return);
    window.Open.Answers.Yes = {false};
    window.Open.Window.close();
    EXPECT_FALSE(window.Player().IsOn());
  }
  QTest::qWait(300);
}

// The player's language chooses among the menus, and one that no menu has gets the first.
TEST(Simulator, SpeaksTheLanguageOfThePlayer) {
  PlayedWindow window;
  constexpr std::uint16_t German = 0x6465;
  constexpr std::uint16_t French = 0x6672;
  window.Open.Doc().Do([](EditSession& session, Consent) { return NewLanguage(session, "VMG1", "German"); });
  ASSERT_FALSE(window.Player().IsOn());
  window.Open.Key(Qt::Key_F5);
  ASSERT_TRUE(window.Player().IsOn());
  const std::string english = window.Player().Place();
  auto& languages = window.Open.Named<QComboBox>("Language of the player");
  ASSERT_GE(languages.findData(German), 0);
  languages.setCurrentIndex(languages.findData(German));
  EXPECT_EQ(window.Player().State().Registers.Of(Sprm::MenuLanguage), German);
  EXPECT_NE(window.Player().Place(), english);
  window.Player().SetPlayer({French, PlayerScreenKind::LetterBox});
  EXPECT_EQ(window.Player().Place(), english);
  EXPECT_EQ(window.Player().State().Registers.Of(Sprm::VideoPreference), 0x0200);
}

// The timer ends what plays where it is shorter.
TEST(Simulator, TheTimerGoesByWhereThePlayerGoesOn) {
  PlayedWindow window("Command=JumpSS TitleMenu",
                      "Command=SetNVTMR NV_TMR=2, TT_PGCN=2\n\t\t\tCommand=JumpSS TitleMenu");
  EXPECT_EQ(window.Player().State().Registers.Of(Sprm::Timer), 2);
  window.Open.Key(Qt::Key_Return);
  EXPECT_THAT(window.Where(), HasSubstr("title 1, chapter 1, goes on after 2 s"));
  window.Open.Key(Qt::Key_Space);
  EXPECT_EQ(window.Player().State().At.Chain, 2);
  EXPECT_EQ(window.Player().State().Registers.Of(Sprm::Timer), 0);
}

}  // namespace
}  // namespace quorvelant
