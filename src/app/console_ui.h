// The program on a terminal, in a pipe and under a scheduler.
#pragma once

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <iosfwd>
#include <string>

#include "base/user_interface.h"

namespace quorvelant {

// While it lives, SIGINT, SIGTERM and SIGHUP ask for an orderly stop instead of ending the process; a second
// signal ends it at once. So does SIGPIPE, each time: who reads the results has gone. SIGXFSZ is passed over,
// because the write that met the limit fails. What was ignored from the start stays so (nohup). One at a
// time: signals belong to the whole process.
class StopSignal {
 public:
  StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;
  ~StopSignal();

  static bool Raised();

 private:
  std::array<struct sigaction, 5> previous_ = {};  // in the order of their table
};

// Quiet: warnings, errors and results alone. Verbose: each stage as it begins, and the code of each message.
enum class Verbosity { Quiet, Normal, Verbose };

// How a message reads: "place: title: text", or the same after "error: ", "warning: " or "note: ".
enum class MessageForm { Titled, Levelled };

// Messages go to `err`. Nobody is asked: a question takes the answer for nobody there, and both are written.
// On a terminal, status and progress share one line that is drawn over. Elsewhere progress is a line at each
// tenth of a stage, none before two seconds and none within two seconds of the last.
class ConsoleUi : public UserInterface {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;

  // `terminal`: whether `err` is one. `stop` is asked by `StopRequested`.
  ConsoleUi(std::ostream& err, bool terminal, std::function<bool()> stop = &StopSignal::Raised,
            Clock clock = &std::chrono::steady_clock::now);
  ~ConsoleUi() override;

  void Tell(const Message& message) override;
  bool Ask(std::string_view title, std::string_view text, bool unattended) override;
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override;
  void Status(std::string_view words) override;
  void Progress(double done, double total) override;
  bool StopRequested() override;

  Verbosity Loudness = Verbosity::Normal;
  MessageForm Form = MessageForm::Levelled;

 private:
  // A note of what was asked, with the answer taken.
  void TellAnswer(std::string_view title, std::string_view text, std::string_view answer);
  [[nodiscard]] bool IsQuiet() const { return Loudness == Verbosity::Quiet; }
  // Writes a line of its own; the progress line is cleared first.
  void Line(std::string_view text);
  void DrawProgress();

  std::ostream* err_;
  bool terminal_;
  std::function<bool()> stop_;
  Clock clock_;
  std::chrono::steady_clock::time_point lastLine_;  // of progress; at first when the run began
  std::string words_;
  int shownTenths_ = -1;  // of a percent; what the line shows, -1 nothing
  bool lineOpen_ = false;
};

// Whether standard error is a terminal.
bool StandardErrorIsTerminal();

}  // namespace quorvelant
