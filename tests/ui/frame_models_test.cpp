#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <map>

#include "disc/disc_media.h"
#include "edit/missing_sources.h"
#include "support/scripted_answers.h"
#include "support/temp_folder.h"
#include "ui/author_work.h"
#include "ui/disc_needs.h"
#include "ui/jobs_model.h"
#include "ui/latest_work.h"
#include "ui/message_list.h"
#include "ui/recent_files.h"

namespace quorvelant {
namespace {

Message Told(const std::string& text) {
  return {.Level = Severity::Warning, .Title = {}, .Text = text, .Place = "Track.0"};
}

// Whatever list follows whatever other, the rows are those of the second, and one that stays is not moved.
TEST(MessageList, FollowsLists) {
  const std::map<std::string, std::pair<std::string, std::string>> cases{
      {"first", {"", "abc"}},      {"end", {"abc", "abcd"}}, {"begin", {"abc", "xabc"}},
      {"middle", {"abc", "abxc"}}, {"gone", {"abcd", "ad"}}, {"all", {"abc", "xyz"}},
      {"same", {"abc", "abc"}},    {"none", {"abc", ""}},    {"twice", {"aa", "aaa"}},
      {"fewer", {"aaa", "a"}}};
  for (const auto& [name, lists] : cases) {
    SCOPED_TRACE(name);
    MessageList list;
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto messages = [](const std::string& letters) {
      std::vector<Message> some;
      for (const char letter : letters) {
        some.push_back(Told(std::string(1, letter)));
      }
      return some;
    };
    list.Replace(messages(lists.first));
    const QPersistentModelIndex stays = list.index(0, 1);
    list.Replace(messages(lists.second));
    std::string rows;
    for (int row = 0; row < list.rowCount(); ++row) {
      rows += list.index(row, 1).data().toString().toStdString();
    }
    EXPECT_EQ(rows, lists.second);
    EXPECT_EQ(stays.isValid(), name == "end" || name == "begin" || name == "middle" || name == "gone" ||
                                   name == "same" || name == "twice" || name == "fewer");
  }
  MessageList log;
  for (const char* text : {"1", "2", "3"}) {
    log.Append(Told(text), 2);
  }
  EXPECT_EQ(log.rowCount(), 2);
  EXPECT_EQ(log.index(0, 1).data(), QStringLiteral("2"));
}

TEST(JobsModel, ShowsWhatJobsSay) {
  ScriptedAnswers answers;
  Voice voice(answers);
  Jobs jobs(voice);
  JobsModel model(jobs);
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  Job* const job = jobs.Start("disc", [](UserInterface& ui) {
    ui.Status("Writing");
    while (!ui.StopRequested()) {
      ui.Progress(1, 4);
      QThread::msleep(1);
    }
    return Job::Verdict{Job::State::Stopped, "no disc"};
  });
  EXPECT_TRUE(QTest::qWaitFor(
      [&model] { return model.index(0, JobsModel::Share).data() == QStringLiteral("25 %"); }));
  EXPECT_EQ(model.index(0, JobsModel::Stage).data(), QStringLiteral("Writing"));
  EXPECT_EQ(model.index(0, JobsModel::Result).data(), QStringLiteral("Running"));
  job->Stop();
  EXPECT_TRUE(QTest::qWaitFor([job] { return job->IsOver(); }));
  EXPECT_EQ(model.index(0, 0).data(Qt::AccessibleTextRole), QStringLiteral("disc, no disc"));
}

// Only the newest result is told, and the end waits for nothing but the work's own look at the wish to stop.
TEST(LatestWork, TellsTheNewestAlone) {
  std::vector<int> done;
  LatestWork<int> work;
  for (int number = 1; number <= 3; ++number) {
    work.Start(
        [number](UserInterface& ui) {
          while (number < 3 && !ui.StopRequested()) {
            QThread::msleep(1);
          }
          return number;
        },
        [&done](int result) { done.push_back(result); });
  }
  EXPECT_TRUE(QTest::qWaitFor([&done] { return !done.empty(); }));
  EXPECT_EQ(done, std::vector{3});
  work.Start([](UserInterface&) -> int { throw std::runtime_error("disk"); }, [&done](int) { done.clear(); });
  EXPECT_TRUE(QTest::qWaitFor([&work] { return !work.IsRunning(); }));
  EXPECT_EQ(done, std::vector{3});
}

TEST(DiscNeeds, SayWhatToDrop) {
  DiscNeeds needs{.Bytes = 5'000'000'000,
                  .PeakMbits = 0,
                  .PeakTrack = {},
                  .Items = {{"Film", 4'000'000'000}, {"sound", 400'000'000}, {"menu", 100}}};
  EXPECT_EQ(WhatToDrop(needs, DiscMedia[1].Bytes), "");
  EXPECT_NE(WhatToDrop(needs, DiscMedia[0].Bytes).find("leave out sound"), std::string::npos);
  needs.Bytes = 8'000'000'000;
  EXPECT_NE(WhatToDrop(needs, DiscMedia[0].Bytes).find("leave out Film"), std::string::npos);
  for (const DiscMedium& medium : DiscMedia) {
    EXPECT_EQ(medium.Bytes % 2048, 0U) << medium.Name;
  }
  EXPECT_EQ(GroupedDigits(1904211), "1 904 211");
  EXPECT_EQ(GroupedDigits(12), "12");
}

TEST(RecentFiles, KeepTheLastOnesThatAreThere) {
  const TempFolder folder;
  RecentFiles recent(folder / "state");
  std::vector<std::string> files;
  for (int i = 0; i < 12; ++i) {
    files.push_back(folder.Write("p" + std::to_string(i) + ".qvp", "x"));
    recent.Add(files.back());
  }
  recent.Add(files[5]);
  std::filesystem::remove(files[11]);
  const QStringList now = RecentFiles(folder / "state").Files();
  EXPECT_EQ(now.size(), RecentFiles::Most);
  EXPECT_EQ(now.at(0).toStdString(), files[5]);
  EXPECT_EQ(now.at(1).toStdString(), files[10]);
}

// What lay beside the one that was found, or below it, is mended with it.
TEST(MissingSources, AreMendedTogether) {
  const TempFolder folder;
  std::filesystem::create_directories(folder / "new/subs");
  folder.Write("new/film.m2v", "x");
  folder.Write("new/film.ac3", "x");
  folder.Write("new/subs/1.png", "x");
  folder.Write("there.m2v", "x");
  Project project;
  project.ScriptFile = folder / "disc.qvp";
  Track track;
  track.VideoPlays.resize(2);
  track.VideoPlays[0].File = "old/film.m2v";
  track.VideoPlays[1].File = "there.m2v";
  track.AudioStreams.resize(1);
  track.AudioStreams[0].AudioPlays.resize(1);
  track.AudioStreams[0].AudioPlays[0].File = folder / "old/film.ac3";
  track.SubStreams.resize(1);
  track.SubStreams[0].SubPlays.resize(2);
  track.SubStreams[0].SubPlays[0].File = "old/subs/1.png";
  track.SubStreams[0].SubPlays[1].File = "elsewhere/2.png";
  project.Tracks.Add(track);
  const auto missing = MissingSources(project);
  ASSERT_EQ(missing.size(), 4U);
  EXPECT_EQ(MendSources(project, missing.front(), folder / "new/film.m2v"), 3U);
  EXPECT_EQ(MissingSources(project), std::vector<std::string>{folder / "elsewhere/2.png"});
}

}  // namespace
}  // namespace quorvelant
