// The bar above the panes: refusals and warnings in the system's own words, and what there is to decide.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QToolBar>
#include <functional>
#include <vector>

#include "base/message.h"
#include "ui/jobs.h"
#include "ui/voice.h"
#include "window/short_label.h"

namespace quorvelant {

// One line: a sign, words and buttons.
class NoticeRow : public QWidget {
  Q_OBJECT
 public:
  struct Choice {
    QString Verb;
    std::function<void()> Run;
  };

  explicit NoticeRow(QWidget* parent = nullptr);

  void PutUp(const QString& words, bool isWarning, const std::vector<Choice>& choices = {});
  [[nodiscard]] const QString& Words() const { return words_->Words(); }

 signals:
  void Answered();  // before a choice runs, and for "Dismiss"

 private:
  QLabel* sign_;
  ShortLabel* words_;
  std::vector<QPushButton*> buttons_;
};

// Refusals and warnings on the step just done, and jobs that fail; what else jobs tell is for the log alone.
// What is told goes with the next step that is done, with another project, or by Esc; what there is to decide
// stays until it is decided or put away. Neither hides the other. Of what is told in one go the worst message
// shows; the log holds all.
class NoticeBar : public QToolBar {
  Q_OBJECT
 public:
  enum class Subject : std::uint8_t { LeftWork, FileChanged };
  using Choice = NoticeRow::Choice;

  NoticeBar(Voice& voice, QWidget* parent);

  void Follow(Jobs& jobs);
  void Hear(const Message& message);
  // The last one shows, the others after it; a newer one of the same subject takes the place of the older.
  void Offer(Subject subject, const QString& words, std::vector<Choice> choices);
  void Withdraw(Subject subject);
  // After a step that was done.
  void Fade();
  // All that shows, a line for each.
  [[nodiscard]] QString Words() const;

 private:
  struct Standing {
    Subject About;
    QString Words;
    std::vector<Choice> Choices;
  };
  void ShowTold();
  void ShowOffer();
  void ShowRows();

  NoticeRow* offer_;
  NoticeRow* refusal_;
  QShortcut* escape_;
  std::vector<Standing> offers_;
  std::vector<Message> told_;
  bool isRefused_ = false;
};

}  // namespace quorvelant
