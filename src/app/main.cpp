#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "app/batch_services.h"
#include "app/command_form.h"
#include "app/console_ui.h"
#include "app/switch_form.h"
#include "app/window_start.h"
#include "desk/user_folders.h"

// A standard stream that was closed would be the next file that is opened, and what is printed would go into
// it: each is given a file that takes nothing.
static void OpenClosedStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) == -1 && errno == EBADF) {
      open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
  }
}

// Decides between the two doors. The switch form is taken when the first argument is one of its switches.
int main(int argc, char** argv) {
  using namespace quorvelant;
  OpenClosedStreams();
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  if (arguments.empty()) {
    BecomeWindow(ProcessEnvironment);
  }
  // What the picture decoders would print besides is said by this program's own messages, unless the user's
  // environment asks for it. No other thread runs yet.
  setenv("QT_LOGGING_RULES", "*=false", 0);  // NOLINT(concurrency-mt-unsafe)
  const StopSignal stop;
  ConsoleUi ui(std::cerr, StandardErrorIsTerminal());
  if (IsSwitchForm(arguments)) {
    ui.Form = MessageForm::Titled;
    return RunSwitchForm(arguments, ui, ProcessEnvironment, MakeBatchServices(ui));
  }
  return RunCommandForm(arguments, ui, std::cout, std::cerr, ProcessEnvironment,
                        [&ui](Verbosity loudness) { ui.Loudness = loudness; });
}
