#include "ui/voice.h"

namespace quorvelant {

bool Voice::Ask(std::string_view title, std::string_view text, bool /*unattended*/) {
  return answerer_.Ask(title, text, "Yes", "No");
}

std::optional<std::string> Voice::AskText(std::string_view title, std::string_view text,
                                          std::string_view proposal) {
  return answerer_.AskText(title, text, proposal);
}

void Voice::Status(std::string_view words) {
  emit StatusTold(QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size())));
}

}  // namespace quorvelant
