#include "app/console_ui.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quorvelant {
namespace {

TEST(ConsoleUi, PlainLinesWhereThereIsNoTerminal) {
  std::ostringstream err;
  ConsoleUi ui(err, false);
  ui.Status("Indexing");
  ui.Status("Indexing");
  for (int i = 0; i <= 1000; ++i) {
    ui.Progress(i, 1000);
  }
  ui.Progress(1, 0);
  ui.Tell({Severity::Error, "Import Error", "No such file", "a.m2v"});
  ui.Tell({Severity::Information, "", "No script file specified", ""});
  ui.Tell({Severity::Error, "", "two\nlines, \x1B[31m\x7F and \xC3\xA9", ""});  // steers no terminal
  EXPECT_TRUE(ui.Ask("Confirm", "Go on?", true));
  EXPECT_EQ(ui.AskText("Name", "Which?", "this"), "this");
  std::string lines = "Indexing\n";
  for (int percent = 10; percent <= 100; percent += 10) {
    lines += "Indexing " + std::to_string(percent) + " %\n";
  }
  EXPECT_EQ(err.str(), lines +
                           "a.m2v: Import Error: No such file\nNo script file specified\n"
                           "two\nlines, \\x1B[31m\\x7F and \xC3\xA9\n"
                           "Confirm: Go on? [Yes]\nName: Which? [this]\n");
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
  EXPECT_EQ(err.str(), "\r\033[KMuxing\r\033[KMuxing 50.0 %\r\033[Klate\n\r\033[KMuxing 100.0 %\n");
}

TEST(ConsoleUi, QuietKeepsMessagesAlone) {
  std::ostringstream err;
  ConsoleUi ui(err, false);
  ui.Quiet = true;
  ui.Status("Muxing");
  ui.Progress(1, 1);
  ui.Tell({Severity::Warning, "", "late", ""});
  EXPECT_EQ(err.str(), "late\n");
}

}  // namespace
}  // namespace quorvelant
