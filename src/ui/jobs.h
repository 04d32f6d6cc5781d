// Long work beside the window.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QThread>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/message.h"
#include "base/user_interface.h"
#include "ui/voice.h"

namespace quorvelant {

// One piece of work in a thread of its own. Its signals come in the window's thread; progress at most 25
// times a second.
class Job : public QObject {
  Q_OBJECT
 public:
  enum class State : std::uint8_t { Running, Stopping, Done, Failed, Stopped };
  // What the work came to: the last words of a row ("Good disc: 3 titles, 0 findings").
  struct Verdict {
    State Result = State::Done;
    std::string Words;
    std::string Folder = {};  // of the disc that was made; a path of this system
  };
  // Works on copies alone, in its thread; tells, asks and polls for the wish to stop through `ui`.
  using Work = std::function<Verdict(UserInterface& ui)>;

  ~Job() override;  // asks to stop, and waits

  [[nodiscard]] const std::string& Title() const { return title_; }
  [[nodiscard]] State Now() const { return state_; }
  [[nodiscard]] const std::string& Stage() const { return stage_; }    // as the work last said
  [[nodiscard]] double Share() const;                                  // of the stage, 0 to 1
  [[nodiscard]] std::optional<double> UnitsPerSecond() const;          // of the stage's own units
  [[nodiscard]] std::optional<std::chrono::seconds> TimeLeft() const;  // of the stage
  [[nodiscard]] const std::vector<Message>& Told() const { return told_; }
  [[nodiscard]] const std::string& Words() const { return words_; }  // of the verdict
  [[nodiscard]] const std::string& Folder() const { return folder_; }
  [[nodiscard]] bool IsOver() const { return state_ > State::Stopping; }
  void Stop();

 signals:
  void Moved();  // any of the above but the messages
  void HasTold(const quorvelant::Message& message);
  void Ended();  // after `Moved`, once

 private:
  friend class Jobs;
  class WorkVoice;
  Job(std::string title, Voice& voice, QObject* parent);
  void Start(Work work);

  std::string title_;
  Voice& voice_;
  State state_ = State::Running;
  std::string stage_;
  std::string words_;
  std::string folder_;
  double done_ = 0;
  double total_ = 0;
  QElapsedTimer sinceStage_;
  std::vector<Message> told_;
  std::atomic<bool> stop_ = false;
  std::unique_ptr<WorkVoice> workVoice_;
  std::unique_ptr<QThread> thread_;
};

// All jobs since the program's start, in their order.
class Jobs : public QObject {
  Q_OBJECT
 public:
  explicit Jobs(Voice& voice, QObject* parent = nullptr) : QObject(parent), voice_(voice) {}
  ~Jobs() override;

  // Begins at once. `ended` is called in the window's thread, after the work, however it ended.
  Job* Start(std::string title, Job::Work work, std::function<void(const Job& job)> ended = {});
  [[nodiscard]] std::span<const std::unique_ptr<Job>> All() const { return jobs_; }
  [[nodiscard]] bool AnyRunning() const;

 signals:
  void Began(quorvelant::Job* job);

 private:
  Voice& voice_;
  std::vector<std::unique_ptr<Job>> jobs_;
};

}  // namespace quorvelant
