#include "edit/project_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "boxes.h"
#include "edit/messages.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/structure.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

class ProjectFile : public testing::Test {
 protected:
  std::vector<std::string> Titles() const {
    std::vector<std::string> titles;
    for (const Message& question : Ui.Questions) {
      titles.push_back(question.Title);
      ExpectBox(question);
    }
    return titles;
  }
  void Work() { ASSERT_TRUE(NewTitleSet(Session).IsDone()); }

  TempFolder Folder;
  RecordingUi Ui;
  EditSession Session{Rules::Players};
};

TEST_F(ProjectFile, UnsavedWorkIsAskedForAndAFailedSaveKeepsIt) {
  Ui.Answers = {true};
  EXPECT_TRUE(NewProject(Session, Ui));
  EXPECT_THAT(Titles(), ElementsAre("New Project")) << "nothing to lose";

  Work();
  const auto tries = [&](std::deque<bool> answers, std::deque<std::optional<std::string>> texts) {
    Ui.Questions.clear();
    Ui.Answers = std::move(answers);
    Ui.Texts = std::move(texts);
    return NewProject(Session, Ui);
  };
  EXPECT_FALSE(tries({false}, {})) << "no new one wanted";
  EXPECT_FALSE(tries({true, true}, {std::nullopt})) << "the save was given up";
  EXPECT_THAT(Titles(), ElementsAre("New Project", "Save Project", "Please choose your output location"));
  EXPECT_FALSE(tries({true, true}, {Folder / "missing/p.qvp"})) << "the save failed";
  Ui.Answers = {true};
  Ui.Texts = {std::nullopt};
  EXPECT_FALSE(MayLeave(Session, Ui));
  EXPECT_EQ(Session.Work().Disc.Count(), 3U);
  EXPECT_TRUE(Session.IsUnsaved());
  EXPECT_TRUE(tries({true, true}, {Folder / "p.qvp"}));
  EXPECT_EQ(Session.Work().Disc.Count(), 2U);
  EXPECT_FALSE(Session.CanUndo());

  Ui.Questions.clear();
  EXPECT_TRUE(OpenProjectFile(Session, Folder / "p.qvp", false, Ui));
  EXPECT_EQ(Session.Work().Disc.Count(), 3U);
  EXPECT_FALSE(OpenProjectFile(Session, Folder / "nowhere.qvp", false, Ui));
  EXPECT_EQ(Session.File(), Folder / "p.qvp") << "as it was";
  Work();
  EXPECT_TRUE(SaveProject(Session, false, Ui));
  EXPECT_TRUE(Ui.Questions.empty()) << "it has a file";
  Session.Undo();
  EXPECT_TRUE(Session.IsUnsaved());
}

TEST_F(ProjectFile, AScriptThatWasNotUnderstoodIsNotSavedOver) {
  ASSERT_TRUE(SaveProjectAs(Session, Folder / "p.qvp", Ui));
  const std::string whole = TempFolder::Read(Folder / "p.qvp");
  for (const std::string& text : {whole.substr(0, whole.size() / 2), whole + "Of a later version=1\n"}) {
    const std::string file = Folder.Write("part.qvp", text);
    Ui.Questions.clear();
    Ui.Messages.clear();
    ASSERT_TRUE(OpenProjectFile(Session, file, false, Ui));
    EXPECT_TRUE(Ui.Messages.back().Is(message::OpenedInPart));
    Ui.Texts = {std::nullopt};
    EXPECT_FALSE(SaveProject(Session, false, Ui));
    EXPECT_THAT(Titles(), ElementsAre("Please choose your output location"));
    EXPECT_EQ(TempFolder::Read(file), text);
  }
}

TEST_F(ProjectFile, WhatOthersWroteMeanwhileIsAskedAbout) {
  ASSERT_TRUE(SaveProjectAs(Session, Folder / "p.qvp", Ui));
  const std::string saved = TempFolder::Read(Folder / "p.qvp");
  const std::string file = Folder.Write("p.qvp", "# mine\n" + saved);
  ASSERT_TRUE(OpenProjectFile(Session, file, false, Ui));
  for (const auto& [there, answers, holds, questions] :
       {std::tuple{"# mine\n" + saved, std::deque<bool>{}, "# mine", 0U},
        {"# theirs\n" + saved, {false}, "# theirs", 1U},
        {"# theirs\n" + saved, {true}, "# mine", 1U}}) {
    Folder.Write("p.qvp", there);
    Ui.Questions.clear();
    Ui.Answers = answers;
    EXPECT_EQ(SaveProject(Session, false, Ui), answers.empty() || answers.front()) << there.substr(0, 20);
    EXPECT_EQ(Ui.Questions.size(), questions);
    EXPECT_THAT(TempFolder::Read(file), testing::StartsWith(holds));
  }
  std::filesystem::remove(file);
  EXPECT_TRUE(SaveProject(Session, false, Ui));
  EXPECT_THAT(TempFolder::Read(file), testing::StartsWith("# mine")) << "the comments were kept";
}

TEST_F(ProjectFile, SourcesAreFoundFromWhereverItIsSaved) {
  std::filesystem::create_symlink(SampleVideo({.Frames = 75}), Folder / "film.m2v");
  std::filesystem::create_directory(Folder / "deep");
  std::filesystem::create_directory(Folder / "other");
  Project project = Session.Work();
  project.ScriptFile = Folder / "deep/p.qvp";
  Session.Replace(std::move(project), {});
  ASSERT_TRUE(NewTrack(Session, "Motion", "Film").IsDone());
  ASSERT_TRUE(ImportFile(Session, "Track.0.Video1", "../film.m2v", Ui, Consent::None).IsDone());
  for (const std::string& file : {Folder / "other/q.qvp", Folder / "r.qvp", Folder / "deep/p.qvp"}) {
    ASSERT_TRUE(SaveProjectAs(Session, file, Ui));
    EditSession again(Rules::Players, {.Import = {}, .DestinationFolder = "out"});
    ASSERT_TRUE(OpenProjectFile(again, file, false, Ui));
    EXPECT_EQ(again.Work().DestinationFolder, "out");
    EXPECT_EQ(again.Work().Tracks[0].Resolution, "720x576") << "the film was looked at: " << file;
    EXPECT_THAT(again.Work().Tracks[0].VideoPlays[0].File, testing::EndsWith("film.m2v"));
    EXPECT_FALSE(again.Work().Tracks[0].VideoPlays[0].File.starts_with("/"));
  }
  EXPECT_TRUE(Ui.Messages.empty());
}

TEST_F(ProjectFile, WhatLiesBesideANewProjectMovesWithIt) {
  std::filesystem::create_directory(Folder / "disc");
  std::filesystem::create_symlink(SampleVideo({.Frames = 75}), Folder / "disc/film.m2v");
  for (const auto& [file, held] :
       {std::pair("disc/p.qvp", std::string("film.m2v")), std::pair("p.qvp", std::string("disc/film.m2v"))}) {
    EditSession fresh(Rules::Players, {});
    ASSERT_TRUE(NewTrack(fresh, "Motion", "Film").IsDone());
    ASSERT_TRUE(ImportFile(fresh, "Track.0.Video1", Folder / "disc/film.m2v", Ui, Consent::None).IsDone());
    for (int saved = 0; saved < 2; ++saved) {
      ASSERT_TRUE(SaveProjectAs(fresh, Folder / file, Ui));
      EXPECT_NE(TempFolder::Read(Folder / file).find("=" + held + "\r\n"), std::string::npos)
          << file << saved;
    }
  }
}

}  // namespace
}  // namespace quorvelant
