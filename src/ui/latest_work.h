// Silent work beside the window of which only the newest result counts.
#pragma once

#include <QMetaObject>
#include <QObject>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "base/silent_ui.h"

namespace quorvelant {

// The user interface of work that nobody watches.
class StoppableUi : public SilentUi {
 public:
  bool StopRequested() override { return stop_; }
  void Stop() { stop_ = true; }

 private:
  std::atomic<bool> stop_ = false;
};

// Works on copies alone, in a thread of its own; `done` is called in the thread that started it. Work that
// newer work overtakes is asked to stop, and its result is lost. The end of this object stops and waits.
template <class Result>
class LatestWork {
 public:
  using Work = std::function<Result(UserInterface& ui)>;
  using Done = std::function<void(Result result)>;

  LatestWork() = default;
  LatestWork(const LatestWork&) = delete;
  LatestWork& operator=(const LatestWork&) = delete;
  ~LatestWork() {
    next_.reset();
    if (thread_) {
      ui_->Stop();
      thread_->wait();
    }
  }

  void Start(Work work, Done done) {
    next_ = Order{std::move(work), std::move(done)};
    if (thread_) {
      ui_->Stop();
    } else {
      Begin();
    }
  }
  [[nodiscard]] bool IsRunning() const { return thread_ != nullptr; }

 private:
  struct Order {
    quorvelant::LatestWork<Result>::Work Work;
    quorvelant::LatestWork<Result>::Done Done;
  };

  void Begin() {
    const auto result = std::make_shared<std::optional<Result>>();
    ui_ = std::make_unique<StoppableUi>();
    thread_.reset(QThread::create([result, work = std::move(next_->Work), ui = ui_.get()] {
      try {
        result->emplace(work(*ui));
      } catch (const std::exception&) {  // nothing is known then, as before the work
        result->reset();
      }
    }));
    QObject::connect(thread_.get(), &QThread::finished, &context_,
                     [this, result, done = std::move(next_->Done)] { End(*result, done); });
    next_.reset();
    thread_->start();
  }

  void End(std::optional<Result>& result, const Done& done) {
    thread_->wait();
    thread_.release()->deleteLater();  // this is its own signal
    if (next_) {
      Begin();
    } else if (result) {
      done(std::move(*result));
    }
  }

  std::optional<Order> next_;
  std::unique_ptr<StoppableUi> ui_;
  std::unique_ptr<QThread> thread_;
  QObject context_;  // lives in the thread that started the work
};

}  // namespace quorvelant
