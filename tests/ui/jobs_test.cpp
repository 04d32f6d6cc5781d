#include "ui/jobs.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <functional>
#include <map>
#include <stdexcept>

#include "support/scripted_answers.h"

namespace quorvelant {
namespace {

// Each way for work to end, seen from the window's thread.
TEST(Jobs, EndAsTheirWorkSays) {
  struct Case {
    Job::Work Work;
    bool Stop;
    Job::State State;
    std::string Words;
    std::size_t Told;
  };
  const auto untilStopped = [](UserInterface& ui) {
    while (!ui.StopRequested()) {
      QThread::msleep(1);
    }
    return Job::Verdict{Job::State::Stopped, ui.Ask("t", "q", true) ? "asked" : "not asked"};
  };
  const std::map<std::string, Case> cases{
      {"done",
       {[](UserInterface& ui) {
          ui.Status("Reading");
          ui.Progress(3, 4);
          return Job::Verdict{Job::State::Done, ui.AskText("t", "q", "film").value_or("none")};
        },
        false, Job::State::Done, "film!", 0}},
      {"failed",
       {[](UserInterface& ui) {
          ui.Tell({.Title = {}, .Text = "no", .Place = {}});
          return Job::Verdict{Job::State::Failed, "no disc"};
        },
        false, Job::State::Failed, "no disc", 1}},
      {"broken",
       {[](UserInterface&) -> Job::Verdict { throw std::runtime_error("disk"); }, false, Job::State::Failed,
        "disk", 1}},
      {"stopped", {untilStopped, true, Job::State::Stopped, "not asked", 0}}};
  for (const auto& [name, each] : cases) {
    SCOPED_TRACE(name);
    ScriptedAnswers answers;
    answers.Texts = {"film!"};
    Voice voice(answers);
    Jobs jobs(voice);
    int ended = 0;
    Job* const job = jobs.Start(name, each.Work, [&ended](const Job&) { ++ended; });
    EXPECT_TRUE(jobs.AnyRunning());
    if (each.Stop) {
      job->Stop();
    }
    EXPECT_TRUE(QTest::qWaitFor([job] { return job->IsOver(); }));
    EXPECT_EQ(job->Now(), each.State);
    EXPECT_EQ(job->Words(), each.Words);
    EXPECT_EQ(job->Told().size(), each.Told);
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(jobs.AnyRunning());
  }
}

// A window that closes asks its jobs to stop and waits for them.
TEST(Jobs, StopWithTheirWindow) {
  ScriptedAnswers answers;
  Voice voice(answers);
  bool stopped = false;
  {
    Jobs jobs(voice);
    jobs.Start("long", [&stopped](UserInterface& ui) {
      while (!ui.StopRequested()) {
        QThread::msleep(1);
      }
      stopped = true;
      return Job::Verdict{};
    });
  }
  EXPECT_TRUE(stopped);
}

}  // namespace
}  // namespace quorvelant
