// The man page and the completion hold every command and option that --help prints.
#include "app/program_pages.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>
#include <regex>

#include "app/command_form.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;
using Words = std::vector<std::string>;

class ProgramPages : public testing::Test {
 protected:
  ProgramPages() {
    AddCommandForm(program_, context_, [](Verbosity) {});
  }

  // What --help prints of a command: the options at the starts of its lines.
  static Words OptionsInHelp(const CLI::App& command) {
    const std::string help = command.help();
    static const std::regex Option("(?:^|\n)  ((?:-\\w,)?--[\\w-]+)");
    Words options;
    for (std::sregex_iterator at(help.begin(), help.end(), Option), end; at != end; ++at) {
      const std::string names = (*at)[1];
      const auto comma = names.find(',');
      if (comma != std::string::npos) {
        options.push_back(names.substr(0, comma));
      }
      options.push_back(names.substr(comma == std::string::npos ? 0 : comma + 1));
    }
    return options;
  }

  // What bash offers for the last of these words.
  [[nodiscard]] Words Offered(const std::string& line) const {
    const std::string completion = folder_.Write("completion", BashCompletion(program_));
    const std::string script = folder_.Write(
        "script", fmt::format("source '{}'\nCOMP_WORDS=({})\nCOMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))\n"
                              "_quorvelant\nprintf '%s\\n' \"${{COMPREPLY[@]}}\"\n",
                              completion, line));
    const std::string command = fmt::format("bash '{}' > '{}'", script, folder_ / "out");
    EXPECT_EQ(std::system(command.c_str()), 0) << line;  // NOLINT(bugprone-command-processor)
    std::istringstream printed(TempFolder::Read(folder_ / "out"));
    Words words;
    for (std::string word; std::getline(printed, word);) {
      if (!word.empty()) {
        words.push_back(word);
      }
    }
    return words;
  }

  RecordingUi ui_;
  CommandContext context_{.Ui = ui_, .Out = std::cout, .Options = {}, .LogFile = {}};
  CLI::App program_;
  TempFolder folder_;
};

TEST_F(ProgramPages, HoldEachCommandWithItsOptions) {
  const std::string man = ManPage(program_);
  Words commands{"--help", "--version"};
  for (const CLI::App* command : program_.get_subcommands([](const CLI::App*) { return true; })) {
    const std::string& name = command->get_name();
    commands.push_back(name);
    const Words options = OptionsInHelp(*command);
    ASSERT_GE(options.size(), 6U) << name;
    EXPECT_THAT(Offered("quorvelant " + name + " -"), UnorderedElementsAreArray(options)) << name;
    const auto section = man.find(".SS " + name + "\n");
    ASSERT_NE(section, std::string::npos) << name;
    const std::string text = man.substr(section, man.find("\n.S", section + 1) - section);
    for (const std::string& option : options) {
      const std::string shown = std::regex_replace(option, std::regex("-"), "\\-");
      const bool isHelp = option == "-h" || option == "--help";
      EXPECT_TRUE(isHelp || text.find("\\fB" + shown + "\\fR") != std::string::npos) << name << " " << option;
    }
  }
  EXPECT_THAT(Offered("quorvelant ''"), UnorderedElementsAreArray(commands));
}

TEST_F(ProgramPages, OfferTheWordsOfAnOptionAndElseFiles) {
  EXPECT_THAT(Offered("quorvelant wiz"), UnorderedElementsAre("wizard"));
  EXPECT_THAT(Offered("quorvelant author --ru"), UnorderedElementsAre("--rules"));
  EXPECT_THAT(Offered("quorvelant author --rules ''"), UnorderedElementsAre("players", "classic"));
  EXPECT_THAT(Offered("quorvelant wizard --play f"), UnorderedElementsAre("first"));
  EXPECT_THAT(Offered("quorvelant author demo"), UnorderedElementsAre());
  EXPECT_THAT(Offered("quorvelant nothing -"), UnorderedElementsAre());
}

TEST(ManPageOfHelp, KeepsSectionsAndEscapesWhatTheFormatterWouldTake) {
  const std::string page = ManPageOfHelp(
      "a-b", "Shows things.\nUsage: a-b [OPTIONS]\n\nOptions:\n  -x, --long   'Quoted' \\ text\n  alone\n");
  EXPECT_THAT(page, HasSubstr(".TH A\\-B 1 "));
  EXPECT_THAT(page, HasSubstr("a\\-b \\- Shows things\n"));
  EXPECT_THAT(page, HasSubstr(".SH SYNOPSIS\n\\fBa\\-b [OPTIONS]\\fR\n"));
  EXPECT_THAT(page, HasSubstr(".SH \"Options\"\n.TP\n\\fB\\-x, \\-\\-long\\fR\n\\&'Quoted' \\e text\n"));
}

}  // namespace
}  // namespace quorvelant
