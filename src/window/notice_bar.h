// The bar above the panes: refusals and warnings in the system's own words, and what there is to decide.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QToolBar>
#include <functional>
#include <vector>

#include "base/message.h"
#include "ui/voice.h"

namespace quorvelant {

// Never in the way: it goes with the next step that is done. Of what is told in one go the worst message
// shows; the log holds all.
class NoticeBar : public QToolBar {
  Q_OBJECT
 public:
  NoticeBar(Voice& voice, QWidget* parent);

  // What there is to decide stays until it is decided or put away.
  struct Choice {
    QString Verb;
    std::function<void()> Run;
  };
  void Offer(const QString& words, std::vector<Choice> choices);
  // After a step that was done.
  void Fade();
  [[nodiscard]] QString Words() const { return isVisibleTo(parentWidget()) ? words_->text() : QString(); }

 private:
  void Hear(const Message& message);
  void ShowTold();
  void PutUp(const QString& words, bool isWarning);

  QLabel* sign_;
  QLabel* words_;
  std::vector<QPushButton*> buttons_;
  std::vector<Message> told_;
  bool isOffer_ = false;
};

}  // namespace quorvelant
