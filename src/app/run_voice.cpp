#include "app/run_voice.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "app/author_report.h"

namespace quorvelant {

namespace {

std::string_view EventOf(Severity level) {
  switch (level) {
    case Severity::Error:
      return "error";
    case Severity::Warning:
      return "warning";
    case Severity::Information:
      break;
  }
  return "message";
}

}  // namespace

void RunVoice::Write(const std::string& event) {
  *out_ << event << '\n' << std::flush;
}

void RunVoice::Tell(const Message& message) {
  warnings_ += message.Level == Severity::Warning ? 1 : 0;
  errors_ += message.Level == Severity::Error ? 1 : 0;
  if (events_) {
    Write(JsonLine({{"event", EventOf(message.Level)},
                    {"title", message.Title},
                    {"text", message.Text},
                    {"place", message.Place}}));
  }
  ui_->Tell(message);
}

bool RunVoice::Ask(std::string_view title, std::string_view text, bool unattended) {
  const bool answer = ui_->Ask(title, text, unattended);
  if (events_) {
    Write(JsonLine({{"event", "question"}, {"title", title}, {"text", text}, {"answer", answer}}));
  }
  return answer;
}

std::optional<std::string> RunVoice::AskText(std::string_view title, std::string_view text,
                                             std::string_view proposal) {
  return ui_->AskText(title, text, proposal);
}

void RunVoice::Status(std::string_view words) {
  if (events_) {
    Write(JsonLine({{"event", "phase"}, {"text", words}}));
  } else {
    ui_->Status(words);
  }
}

void RunVoice::Progress(double done, double total) {
  if (!events_) {
    ui_->Progress(done, total);
    return;
  }
  const int percent = total > 0 ? static_cast<int>(100 * done / total) : 0;
  if (percent != percent_) {
    percent_ = percent;
    Write(JsonLine({{"event", "progress"}, {"done", done}, {"total", total}}));
  }
}

}  // namespace quorvelant
