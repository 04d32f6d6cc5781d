#include "app/run_reporter.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "app/author_report.h"
#include "app/level_word.h"

namespace quorvelant {

void RunReporter::WriteEvent(const std::string& event) {
  *out_ << event << '\n' << std::flush;
}

void RunReporter::Tell(const Message& message) {
  if (!told_.IsNew(message)) {
    return;
  }
  if (events_) {
    WriteEvent(JsonLine({{"event", LevelWord(message.Level)},
                         {"code", message.Code},
                         {"title", message.Title},
                         {"text", message.Text},
                         {"place", message.Place}}));
  }
  PassingUi::Tell(message);
}

bool RunReporter::Ask(std::string_view title, std::string_view text, bool unattended) {
  const bool answer = PassingUi::Ask(title, text, unattended);
  if (events_) {
    WriteEvent(JsonLine({{"event", "question"}, {"title", title}, {"text", text}, {"answer", answer}}));
  }
  return answer;
}

void RunReporter::Status(std::string_view words) {
  if (events_) {
    WriteEvent(JsonLine({{"event", "phase"}, {"text", words}}));
  } else {
    PassingUi::Status(words);
  }
}

void RunReporter::Progress(double done, double total) {
  if (!events_) {
    PassingUi::Progress(done, total);
    return;
  }
  const int percent = total > 0 ? static_cast<int>(100 * done / total) : 0;
  if (percent != percent_) {
    percent_ = percent;
    WriteEvent(JsonLine({{"event", "progress"}, {"done", done}, {"total", total}}));
  }
}

}  // namespace quorvelant
