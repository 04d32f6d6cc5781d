#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "app/command_form.h"
#include "app/console_ui.h"
#include "app/user_folders.h"

int main(int argc, char** argv) {
  using namespace quorvelant;  // NOLINT(google-build-using-namespace): the program's own
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  const StopSignal stop;
  ConsoleUi ui(std::cerr, StandardErrorIsTerminal());
  return RunCommandForm(arguments, ui, std::cout, std::cerr, ProcessEnvironment);
}
