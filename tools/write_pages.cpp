// Writes what an installation tells of the command line: `write_pages man|completion` of quorvelant,
// `write_pages help NAME` of the program whose --help comes in on standard input. Part of a build.
#include <CLI/CLI.hpp>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "app/command_form.h"
#include "app/console_ui.h"
#include "app/program_pages.h"

int main(int argc, char** argv) {
  using namespace quorvelant;
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  ConsoleUi ui(std::cerr, false);
  CommandContext context{.Ui = ui, .Out = std::cout, .Options = {}, .LogFile = {}};
  CLI::App program;
  AddCommandForm(program, context, [](Verbosity) {});
  if (arguments == std::vector<std::string>{"man"}) {
    std::cout << ManPage(program);
  } else if (arguments == std::vector<std::string>{"completion"}) {
    std::cout << BashCompletion(program);
  } else if (arguments.size() == 2 && arguments[0] == "help") {
    const std::string help{std::istreambuf_iterator<char>(std::cin), {}};
    std::cout << ManPageOfHelp(arguments[1], help);
  } else {
    return ExitUsage;
  }
  return std::cout.flush() ? ExitDone : ExitFailed;
}
