// How the core speaks in a window.
#pragma once

#include <QObject>
#include <QString>
#include <optional>
#include <string>
#include <string_view>

#include "base/message.h"
#include "base/user_interface.h"
#include "ui/answerer.h"

namespace quorvelant {

// The user interface of the window's own thread: what is told goes to the log and, where it is a refusal, to
// the bar above the panes; questions go to the answerer. Long work has a voice of its own (ui/jobs.h).
class Voice : public QObject, public UserInterface {
  Q_OBJECT
 public:
  explicit Voice(Answerer& answerer, QObject* parent = nullptr) : QObject(parent), answerer_(answerer) {}

  void Tell(const Message& message) override { emit Told(message); }
  bool Ask(std::string_view title, std::string_view text, bool unattended) override;
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override;
  void Status(std::string_view words) override;
  void Progress(double /*done*/, double /*total*/) override {}
  bool StopRequested() override { return false; }

  [[nodiscard]] Answerer& Answers() { return answerer_; }

 signals:
  void Told(const quorvelant::Message& message);
  void StatusTold(const QString& words);

 private:
  Answerer& answerer_;
};

}  // namespace quorvelant
