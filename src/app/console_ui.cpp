#include "app/console_ui.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

#include "app/level_word.h"
#include "base/text.h"

namespace quorvelant {

namespace {

constexpr int AllTenths = 1000;
constexpr int TenthsPerPlainLine = 100;
constexpr std::chrono::seconds PlainLinePause{2};
constexpr std::string_view ClearLine = "\r\033[K";

// A signal handler can reach nothing but an object of the whole process.
volatile std::sig_atomic_t stopRaised = 0;

void RaiseStop(int) {
  stopRaised = 1;
}

struct SignalRow {
  int Number;
  void (*Handler)(int);
  int Flags;
};
constexpr int Once = static_cast<int>(SA_RESETHAND) | SA_RESTART;
const std::array SignalRows{SignalRow{SIGINT, &RaiseStop, Once}, SignalRow{SIGTERM, &RaiseStop, Once},
                            SignalRow{SIGHUP, &RaiseStop, Once}, SignalRow{SIGPIPE, &RaiseStop, SA_RESTART},
                            SignalRow{SIGXFSZ, SIG_IGN, 0}};

std::string Joined(std::string_view place, std::string_view title, std::string_view text) {
  std::string line;
  for (const std::string_view part : {place, title}) {
    if (!part.empty()) {
      line.append(part).append(": ");
    }
  }
  return line.append(text);
}

}  // namespace

StopSignal::StopSignal() {
  stopRaised = 0;
  for (std::size_t i = 0; i < SignalRows.size(); ++i) {
    struct sigaction action = {};
    action.sa_handler = SignalRows.at(i).Handler;
    action.sa_flags = SignalRows.at(i).Flags;
    sigaction(SignalRows.at(i).Number, nullptr, &previous_.at(i));
    if (previous_.at(i).sa_handler != SIG_IGN) {
      sigaction(SignalRows.at(i).Number, &action, nullptr);
    }
  }
}

StopSignal::~StopSignal() {
  for (std::size_t i = 0; i < SignalRows.size(); ++i) {
    sigaction(SignalRows.at(i).Number, &previous_.at(i), nullptr);
  }
}

bool StopSignal::Raised() {
  return stopRaised != 0;
}

ConsoleUi::ConsoleUi(std::ostream& err, bool terminal, std::function<bool()> stop, Clock clock)
    : err_(&err),
      terminal_(terminal),
      stop_(std::move(stop)),
      clock_(std::move(clock)),
      lastLine_(clock_()) {}

ConsoleUi::~ConsoleUi() {
  if (lineOpen_) {
    *err_ << '\n' << std::flush;
  }
}

void ConsoleUi::Line(std::string_view text) {
  if (lineOpen_) {
    *err_ << ClearLine;
    lineOpen_ = false;
    shownTenths_ = -1;
  }
  *err_ << Printable(text) << '\n' << std::flush;
}

void ConsoleUi::Tell(const Message& message) {
  const std::string_view level = LevelWord(message.Level);
  if (Form == MessageForm::Titled) {
    Line(Joined(message.Place, message.Title, message.Text));
  } else if (message.Level != Severity::Information || !IsQuiet()) {
    const std::string_view title = EqualNoCase(message.Title, level) ? std::string_view() : message.Title;
    const bool coded = Loudness == Verbosity::Verbose && !message.Code.empty();
    Line(fmt::format("{}: {}{}", level, Joined(message.Place, title, message.Text),
                     coded ? fmt::format(" [{}]", message.Code) : ""));
  }
}

void ConsoleUi::TellAnswer(std::string_view title, std::string_view text, std::string_view answer) {
  Tell({.Level = Severity::Information,
        .Title = std::string(title),
        .Text = fmt::format("{} [{}]", text, answer),
        .Place = {}});
}

bool ConsoleUi::Ask(std::string_view title, std::string_view text, bool unattended) {
  TellAnswer(title, text, unattended ? "Yes" : "No");
  return unattended;
}

std::optional<std::string> ConsoleUi::AskText(std::string_view title, std::string_view text,
                                              std::string_view proposal) {
  TellAnswer(title, text, proposal);
  return std::string(proposal);
}

void ConsoleUi::Status(std::string_view words) {
  if (IsQuiet() || words == words_) {
    return;
  }
  words_ = words;
  shownTenths_ = -1;
  if (terminal_) {
    DrawProgress();
  } else if (Loudness == Verbosity::Verbose || Form == MessageForm::Titled) {
    Line(words_);
  }
}

void ConsoleUi::Progress(double done, double total) {
  if (IsQuiet() || !std::isfinite(done) || !std::isfinite(total) || total <= 0) {
    return;
  }
  const int tenths = static_cast<int>(std::clamp(done / total, 0.0, 1.0) * AllTenths);
  if (terminal_ && tenths != shownTenths_) {
    shownTenths_ = tenths;
    DrawProgress();
  } else if (!terminal_ &&
             (shownTenths_ < 0 || tenths / TenthsPerPlainLine != shownTenths_ / TenthsPerPlainLine) &&
             clock_() - lastLine_ >= PlainLinePause) {
    lastLine_ = clock_();
    shownTenths_ = tenths;
    Line(fmt::format("{} {} %", words_, tenths / 10));
  }
}

void ConsoleUi::DrawProgress() {
  *err_ << ClearLine << words_;
  if (shownTenths_ >= 0) {
    *err_ << fmt::format(" {}.{} %", shownTenths_ / 10, shownTenths_ % 10);
  }
  *err_ << std::flush;
  lineOpen_ = true;
}

bool ConsoleUi::StopRequested() {
  return stop_ && stop_();
}

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace quorvelant
