#include "app/console_ui.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

namespace quorvelant {
namespace {

// Ten seconds of work, of which the second stage has nine: told from the second second on, at each tenth of a
// stage, and never twice in two seconds.
TEST(ConsoleUi, ProgressIsToldSparinglyWhereThereIsNoTerminal) {
  for (const auto& [loudness, lines] :
       {std::pair{Verbosity::Normal, "Muxing 11 %\nMuxing 33 %\nMuxing 55 %\nMuxing 77 %\nMuxing 100 %\n"},
        {Verbosity::Verbose,
         "Indexing\nMuxing\nMuxing 11 %\nMuxing 33 %\nMuxing 55 %\nMuxing 77 %\nMuxing 100 %\n"},
        {Verbosity::Quiet, ""}}) {
    std::ostringstream err;
    std::chrono::steady_clock::time_point now;
    ConsoleUi ui(err, false, {}, [&now] { return now; });
    ui.Loudness = loudness;
    for (int second = 0; second <= 10; ++second) {
      now = std::chrono::steady_clock::time_point(std::chrono::seconds(second));
      ui.Status(second == 0 ? "Indexing" : "Muxing");
      ui.Progress(second == 0 ? 1 : second - 1, second == 0 ? 1 : 9);
    }
    EXPECT_EQ(err.str(), lines);
  }
}

TEST(ConsoleUi, MessagesBeginWithTheirLevelOrHaveTitlesAlone) {
  std::ostringstream err;
  ConsoleUi ui(err, false);
  ui.Tell({Severity::Error, "Error", "There is no memory", "a.m2v"});
  EXPECT_TRUE(ui.Ask("Confirm", "Go on?", true));
  ui.Loudness = Verbosity::Verbose;
  ui.Tell({Severity::Warning, "Index", "it is old", "", "index-old"});
  ui.Loudness = Verbosity::Quiet;
  ui.Tell({Severity::Information, "", "No matter", ""});
  EXPECT_EQ(err.str(),
            "error: a.m2v: There is no memory\nnote: Confirm: Go on? [Yes]\nwarning: Index: it is old "
            "[index-old]\n");
  err.str("");
  ui.Form = MessageForm::Titled;
  ui.Tell({Severity::Error, "Import Error", "No such file", "a.m2v"});
  ui.Tell({Severity::Information, "", "No script file specified", ""});
  ui.Tell({Severity::Error, "", "two\nlines, \x1B[31m\x7F and \xC3\xA9", ""});  // steers no terminal
  EXPECT_TRUE(ui.Ask("Confirm", "Go on?", true));
  EXPECT_EQ(ui.AskText("Name", "Which?", "this"), "this");
  EXPECT_EQ(err.str(),
            "a.m2v: Import Error: No such file\nNo script file specified\n"
            "two\nlines, \\x1B[31m\\x7F and \xC3\xA9\nConfirm: Go on? [Yes]\nName: Which? [this]\n");
}

TEST(ConsoleUi, OneLineOnATerminalThatMessagesClear) {
  std::ostringstream err;
  {
    ConsoleUi ui(err, true);
    ui.Status("Muxing");
    ui.Progress(0.5, 1);
    ui.Progress(0.5, 1);
    ui.Tell({Severity::Warning, "", "late", ""});
    ui.Progress(1, 1);
  }
  EXPECT_EQ(err.str(), "\r\033[KMuxing\r\033[KMuxing 50.0 %\r\033[Kwarning: late\n\r\033[KMuxing 100.0 %\n");
}

}  // namespace
}  // namespace quorvelant
