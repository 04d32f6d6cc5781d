#include "window/window_arguments.h"

#include "desk/version.h"

namespace quorvelant {

namespace {

constexpr std::string_view Help =
    R"(Makes DVD-Video discs in a window: material, menus, subtitles, checks and the finished disc.
Usage: quorvelant-window [OPTIONS] [FILE ...]

Files:
  PROJECT.qvp     Opens the project
  other files     Become tracks: video, sound, pictures, subtitles, also whole folders

Options:
  -h, --help      Print this help message and exit
  --version       Display program version information and exit
  -platform NAME  Show the window there: wayland, xcb, or offscreen for nowhere
  -style NAME     Draw controls in that style
)";

}  // namespace

WindowArguments ReadWindowArguments(const std::vector<std::string>& arguments) {
  WindowArguments read;
  bool isFiles = false;  // after "--" all are
  for (const std::string& argument : arguments) {
    if (isFiles || !argument.starts_with('-')) {
      read.Files.push_back(argument);
    } else if (argument == "--") {
      isFiles = true;
    } else if (argument == "-h" || argument == "--help") {
      read.Printed = Help;
      return read;
    } else if (argument == "--version") {
      read.Printed = "quorvelant-window " + std::string(ProgramVersion()) + "\n";
      return read;
    } else if (read.Fault.empty()) {
      read.Fault =
          "error: There is no option \"" + argument + "\"\nnote: run with --help for more information\n";
    }
  }
  return read;
}

}  // namespace quorvelant
