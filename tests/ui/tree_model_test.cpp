#include "ui/tree_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>
#include <functional>
#include <map>
#include <random>

#include "edit/project_file.h"
#include "edit/removal.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "edit/structure.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/scripted_answers.h"
#include "ui/disc_model.h"
#include "ui/media_model.h"

namespace quorvelant {
namespace {

void AddLines(const QAbstractItemModel& model, const QModelIndex& parent, const std::string& indent,
              std::string& text) {
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex first = model.index(row, 0, parent);
    text.append(indent).append(first.data(Qt::AccessibleTextRole).toString().toStdString());
    for (int column = 0; column < model.columnCount(parent); ++column) {
      text.append("|").append(first.siblingAtColumn(column).data().toString().toStdString());
    }
    text += '\n';
    AddLines(model, first, indent + "  ", text);
  }
}

std::string Lines(const QAbstractItemModel& model) {
  std::string text;
  AddLines(model, {}, {}, text);
  return text;
}

// The trees of a document, watched by the testers of the library.
class TreeModels : public testing::Test {
 protected:
  TreeModels()
      : media_(document_), disc_(document_), mediaTester_(&media_, Fatal), discTester_(&disc_, Fatal) {
    answers_.IsAway = true;
  }

  void OpenExample() {
    RecordingUi ui;
    ui.Unattended = true;
    ASSERT_TRUE(OpenProjectFile(document_.Session(), SourceFile("examples/demo.qvp"), false, ui));
  }

  // What models say that have followed all changes, and others that begin now.
  void ExpectTrue() {
    EXPECT_EQ(Lines(media_), Lines(MediaModel(document_)));
    EXPECT_EQ(Lines(disc_), Lines(DiscModel(document_)));
  }

  static constexpr auto Fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
  ScriptedAnswers answers_;
  Voice voice_{answers_};
  Document document_{{}, {}, voice_};
  MediaModel media_;
  DiscModel disc_;
  QAbstractItemModelTester mediaTester_;
  QAbstractItemModelTester discTester_;
};

TEST_F(TreeModels, FollowEveryKindOfChange) {
  using Step = std::function<Outcome(EditSession&)>;
  const std::vector<Step> steps{
      [](EditSession& session) { return NewTrack(session, "Still", "A"); },
      [](EditSession& session) { return NewTrack(session, "Motion", "B"); },
      [](EditSession& session) { return AddAudio(session, "Track.5"); },
      [](EditSession& session) { return RenameTrack(session, "Track.1", "Again"); },
      [](EditSession& session) { return NewScene(session, "Track.1", "00:00:06:00"); },
      [](EditSession& session) { return RemoveSource(session, "Track.1.Audio1", Consent::Given); },
      [](EditSession& session) {
        return SetAudio(session, "Track.1.Audio2", [](AudioStream& stream) { stream.Language = "French"; });
      },
      [](EditSession& session) { return RemoveSource(session, "Track.0", Consent::Given); },
      [](EditSession& session) { return NewTitleSet(session); },
      [](EditSession& session) { return NewTitle(session, "VTS1", "Third"); },
      [](EditSession& session) { return NewLanguage(session, "VMG1", "German"); },
      [](EditSession& session) { return NewPgc(session, "VTS1.TITLE1", "More"); },
      [](EditSession& session) { return NewProgram(session, "VTS1.TITLE1.PGC2", "One"); },
      [](EditSession& session) { return Drop(session, {.Track = 2, .Scene = {}}, "VTS1.TITLE1.PGC2"); },
      [](EditSession& session) { return Drop(session, {.Track = 2, .Scene = 1}, "VTS1.TITLE1.PGC2.PG1"); },
      [](EditSession& session) { return Rename(session, "VTS1.TITLE1.PGC2.PG2", "Other"); },
      [](EditSession& session) { return Remove(session, "VTS1.TITLE1.PGC1.PG2", Consent::Given); },
      [](EditSession& session) { return Remove(session, "VTS1", Consent::Given); },
  };
  OpenExample();
  std::vector<std::string> states{Lines(media_) + Lines(disc_)};
  for (const Step& step : steps) {
    SCOPED_TRACE(states.size());
    const auto outcome = document_.Try(step);
    ASSERT_TRUE(outcome.IsDone()) << outcome.Words.Text;
    ExpectTrue();
    states.push_back(Lines(media_) + Lines(disc_));
    EXPECT_NE(states.back(), states[states.size() - 2]);
  }
  for (std::size_t i = states.size() - 1; i > 0; --i) {
    document_.Undo();
    EXPECT_EQ(Lines(media_) + Lines(disc_), states[i - 1]) << i;
  }
  for (std::size_t i = 1; i < states.size(); ++i) {
    document_.Redo();
    EXPECT_EQ(Lines(media_) + Lines(disc_), states[i]) << i;
  }
  document_.Session().StartAnew();
  ExpectTrue();
}

// Rows keep their places and views their rows: a change tells of those alone that it changes.
TEST_F(TreeModels, TellOfWhatChangesAlone) {
  OpenExample();
  const QSignalSpy resets(&disc_, &QAbstractItemModel::modelReset);
  const QSignalSpy texts(&disc_, &QAbstractItemModel::dataChanged);
  const QSignalSpy inserts(&disc_, &QAbstractItemModel::rowsInserted);
  const QPersistentModelIndex title = disc_.IndexOf("VTS1.TITLE2");
  static_cast<void>(
      document_.Try([](EditSession& session) { return NewPgc(session, "VTS1.TITLE1", "More"); }));
  EXPECT_EQ(resets.size(), 0);
  EXPECT_EQ(inserts.size(), 1);
  EXPECT_LE(texts.size(), 2);  // the facts of the title and of the new PGC
  EXPECT_EQ(disc_.KeyOf(title), "VTS1.TITLE2");
}

// The names by which people and screen readers know rows, as `check --tree` has them.
TEST_F(TreeModels, NameRows) {
  OpenExample();
  struct Case {
    std::string Key;
    std::string Name;
    std::string Facts;
  };
  const std::vector<Case> cases{
      {"Track.1", "track \"First\"", "Unknown!, PAL 4:3 720x576, used"},
      {"Track.1.Video1", "file \"media/first.m2v\"", ""},
      {"Track.1.Audio2", "audio \"Audio Stream 2\"", "AC3 2 ch 96 kbit/s, German, 1"},
      {"Track.1.Audio2.AudioPlay1", "file \"media/first_de.ac3\"", ""},
      {"Track.1.Sub2", "subtitles \"SubPicture Stream 2\"", "2 entries, German, 1"},
      {"Track.0.High1", "highlight \"HighLight Stream\"", "4 buttons"},
      {"Track.1.Scene2", "scene \"First_Scene2\"", "00:00:03:21"},
      {"Track.4.Video3", "file \"media/slide3.png\"", "00:00:02:00"},
      {"FirstPGC", "pgc \"First PGC\"", "1 command"},
      {"VMG1", "entry \"Video Manager\"", "1 language, PAL, menus 4:3"},
      {"VTS1", "entry \"VTS1\"", "2 titles, 1 language, PAL, menus 4:3, titles 4:3"},
      {"VTS1.LANGUAGE1", "language \"en\"", "1 menu"},
      {"VTS1.LANGUAGE1.PGC1", "pgc \"VTS1_English_PGC1\"", "1 program, menu Root, palette Menus"},
      {"VTS1.TITLE1", "title \"VTS1_Title1\"", "3 chapters"},
      {"VTS1.TITLE1.PGC1", "pgc \"VTS1_Title1_PGC1\"", "3 programs, palette Menus, 1 post"},
      {"VTS1.TITLE1.PGC1.PG2", "program \"VTS1_Title1_PGC1_PG2\"", "00:00:05:07, 1 cell"},
      {"VTS1.TITLE1.PGC1.PG2.CELL1", "cell \"Cell1 -> First; Scene_2\"", "00:00:05:07, First_Scene2"},
      {"VTS1.LANGUAGE1.PGC1.PG1.CELL1", "cell \"Cell1 -> Chapters; Scene_1\"",
       "Chapters_Scene1, still for ever, 4 button commands"},
      {"VTS1.LANGUAGE1.PGC1.PG1.CELL1.HP1", "highlight \"HighLight Stream\"", "4 buttons"},
  };
  for (const Case& each : cases) {
    const TreeModel& model = each.Key.starts_with("Track") ? static_cast<TreeModel&>(media_) : disc_;
    const QModelIndex index = model.IndexOf(each.Key);
    EXPECT_EQ(model.KeyOf(index), each.Key);
    EXPECT_EQ(index.data(Qt::AccessibleTextRole).toString().toStdString(), each.Name);
    EXPECT_EQ(index.data(Qt::AccessibleDescriptionRole).toString().toStdString(), each.Facts) << each.Key;
  }
  EXPECT_FALSE(media_.IndexOf("VTS1").isValid());
  EXPECT_EQ(media_.IndexOf("Track.1.AudioStreams"), media_.IndexOf("Track.1"));
}

// What is dropped on which row, and what becomes of it.
TEST_F(TreeModels, TakeTracksAndScenes) {
  OpenExample();
  struct Case {
    std::string Keys;
    std::string On;
    bool Taken;
  };
  const std::vector<Case> cases{
      {"Track.2", "VTS1.TITLE1.PGC1", true},
      {"Track.2.Scene1", "VTS1.TITLE1.PGC1.PG1", true},
      {"Track.2\nTrack.4", "VTS1.TITLE2", true},  // its only PGC
      {"Track.2", "VTS1.TITLE1.PGC1.PG1.CELL1", true},
      {"Track.2", "FirstPGC", false},
      {"Track.2", "VTS1", false},
      {"Track.2.Audio1", "VTS1.TITLE1.PGC1", false},
      {"Track.99", "VTS1.TITLE1.PGC1", false},
      {"VTS1.TITLE2", "VTS1.TITLE1.PGC1", false},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.Keys + " on " + each.On);
    QMimeData data;
    data.setData(QString::fromLatin1(KeysMimeType), QByteArray::fromStdString(each.Keys));
    const QModelIndex on = disc_.IndexOf(each.On);
    EXPECT_EQ(disc_.canDropMimeData(&data, Qt::CopyAction, -1, -1, on), each.Taken);
    const std::string before = Lines(disc_);
    EXPECT_EQ(disc_.dropMimeData(&data, Qt::CopyAction, -1, -1, on), each.Taken);
    EXPECT_EQ(Lines(disc_) != before, each.Taken);
  }
  const std::unique_ptr<QMimeData> dragged(disc_.mimeData({disc_.IndexOf("VTS1.TITLE1")}));
  EXPECT_EQ(KeysIn(*dragged), std::vector<std::string>{"VTS1.TITLE1"});
}

}  // namespace
}  // namespace quorvelant
