// What an installation tells of the command line besides --help, from the same texts.
#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace quorvelant {

// quorvelant(1): the program, then each command with its arguments and options, in the language of man pages.
[[nodiscard]] std::string ManPage(const CLI::App& program);
// A page of the text that a program's own --help prints: a line of what it is, "Usage:", then sections of
// options, two blanks ahead of each. `name` is the program's.
[[nodiscard]] std::string ManPageOfHelp(std::string_view name, std::string_view help);
// For bash: commands, the options of each, the words that an option takes, else files.
[[nodiscard]] std::string BashCompletion(const CLI::App& program);

}  // namespace quorvelant
