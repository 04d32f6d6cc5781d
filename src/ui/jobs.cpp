#include "ui/jobs.h"

#include <QMetaObject>
#include <algorithm>
#include <exception>
#include <utility>

#include "base/messages.h"
#include "ui/messages.h"

namespace quorvelant {

namespace {

constexpr qint64 MsBetweenProgress = 40;

}  // namespace

// Speaks in threads of the work, one at a time. The job it forwards to lives in the window's, and outlives
// the thread.
class Job::WorkVoice : public UserInterface {
 public:
  explicit WorkVoice(Job& job) : job_(job) { sinceProgress_.start(); }

  void Tell(const Message& message) override {
    Later([message](Job& job) {
      job.told_.push_back(message);
      emit job.HasTold(message);
    });
  }

  bool Ask(std::string_view title, std::string_view text, bool unattended) override {
    return Answered<bool>([&](Voice& voice) { return voice.Ask(title, text, unattended); });
  }

  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override {
    return Answered<std::optional<std::string>>(
        [&](Voice& voice) { return voice.AskText(title, text, proposal); });
  }

  void Status(std::string_view words) override {
    Later([stage = std::string(words)](Job& job) {
      job.stage_ = stage;
      job.done_ = 0;
      job.total_ = 0;
      job.sinceStage_.restart();
      emit job.Moved();
    });
  }

  void Progress(double done, double total) override {
    if (done < total && sinceProgress_.elapsed() < MsBetweenProgress) {
      return;
    }
    sinceProgress_.restart();
    Later([done, total](Job& job) {
      job.done_ = done;
      job.total_ = total;
      emit job.Moved();
    });
  }

  bool StopRequested() override { return job_.stop_; }

 private:
  template <class Function>
  void Later(Function function) {
    Job* const job = &job_;
    QMetaObject::invokeMethod(
        job, [job, function = std::move(function)] { function(*job); }, Qt::QueuedConnection);
  }

  // A job that is to stop asks nobody: the window may be waiting for its thread.
  template <class Answer, class Question>
  Answer Answered(Question question) {
    Answer answer{};
    if (!job_.stop_) {
      QMetaObject::invokeMethod(
          &job_, [&] { answer = question(job_.voice_); }, Qt::BlockingQueuedConnection);
    }
    return answer;
  }

  Job& job_;
  QElapsedTimer sinceProgress_;
};

Job::Job(std::string title, Voice& voice, QObject* parent)
    : QObject(parent),
      title_(std::move(title)),
      voice_(voice),
      workVoice_(std::make_unique<WorkVoice>(*this)) {
  sinceStage_.start();
}

Job::~Job() {
  stop_ = true;
  if (thread_) {
    thread_->wait();
  }
}

void Job::Start(Work work) {
  const auto verdict = std::make_shared<Verdict>();
  thread_.reset(QThread::create([this, verdict, work = std::move(work)] {
    try {
      *verdict = work(*workVoice_);
    } catch (const std::exception& fault) {
      workVoice_->Tell(MessageOf(message::JobBroken, {}, fault.what()));
      *verdict = {State::Failed, fault.what()};
    }
  }));
  connect(thread_.get(), &QThread::finished, this, [this, verdict] {
    state_ = verdict->Result;
    words_ = std::move(verdict->Words);
    folder_ = std::move(verdict->Folder);
    emit Moved();
    emit Ended();
  });
  thread_->start();
}

double Job::Share() const {
  return total_ > 0 ? std::clamp(done_ / total_, 0.0, 1.0) : 0.0;
}

std::optional<double> Job::UnitsPerSecond() const {
  const qint64 elapsed = sinceStage_.elapsed();
  return elapsed > 0 && done_ > 0 ? std::optional(done_ * 1000 / static_cast<double>(elapsed)) : std::nullopt;
}

std::optional<std::chrono::seconds> Job::TimeLeft() const {
  const auto rate = UnitsPerSecond();
  if (!rate || total_ <= done_) {
    return std::nullopt;
  }
  return std::chrono::seconds(static_cast<std::int64_t>((total_ - done_) / *rate) + 1);
}

void Job::Stop() {
  if (state_ == State::Running) {
    stop_ = true;
    state_ = State::Stopping;
    emit Moved();
  }
}

Jobs::~Jobs() {
  for (const auto& job : jobs_) {
    job->stop_ = true;
  }
}

Job* Jobs::Start(std::string title, Job::Work work, std::function<void(const Job& job)> ended) {
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the constructor is for this class alone
  jobs_.push_back(std::unique_ptr<Job>(new Job(std::move(title), voice_, nullptr)));
  Job* const job = jobs_.back().get();
  connect(job, &Job::HasTold, &voice_, [this](const Message& message) { voice_.Tell(message); });
  if (ended) {
    connect(job, &Job::Ended, this, [job, ended = std::move(ended)] { ended(*job); });
  }
  emit Began(job);
  job->Start(std::move(work));
  return job;
}

bool Jobs::AnyRunning() const {
  return std::ranges::any_of(jobs_, [](const auto& job) { return !job->IsOver(); });
}

}  // namespace quorvelant
