#include "author/output_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "author/messages.h"
#include "disc/disc_files.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class Destination : public testing::Test {
 protected:
  std::set<std::string> NamesIn(const fs::path& folder) const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  // A run that writes one file and completes.
  bool Run(const std::string& destination, bool force, const std::string& content = "new") {
    auto folder = OutputFolder::Prepare(destination, force, ui);
    if (!folder) {
      return false;
    }
    std::ofstream(folder->Path() + "/VIDEO_TS.IFO") << content;
    return folder->Place(ui);
  }
  std::string Ifo() const { return TempFolder::Read(temp / "disc/VIDEO_TS.IFO"); }
  bool Told(const MessageKind& kind) const { return !ui.Messages.empty() && ui.Messages.back().Is(kind); }

  TempFolder temp;
  RecordingUi ui;
};

TEST(DiscFileNames, AreTheFormatsOwn) {
  for (const char* name : {"VIDEO_TS.IFO", "video_ts.vob", "VTS_01_0.BUP", "vts_99_9.VOB"}) {
    EXPECT_TRUE(IsDiscFileName(name)) << name;
  }
  for (const char* name :
       {"", ".IFO", "VIDEO_TS", "VIDEO_TS.TXT", "VTS_1_0.IFO", "VTS_01_0.IFO.part", "VTS_AB_0.VOB"}) {
    EXPECT_FALSE(IsDiscFileName(name)) << name;
  }
}

TEST_F(Destination, IsMadeWithItsParentsWhateverItsName) {
  for (const char* name : {"disc", "a/b/VIDEO_TS/", "with blank/it's \"quoted\"",
                           "Zw\xC3\xB6lf/\xE6\x98\xA0\xE7\x94\xBB", "not utf\xFF"}) {
    EXPECT_TRUE(Run(temp / name, false)) << name;
    EXPECT_TRUE(fs::exists(temp.Path() / name / "VIDEO_TS.IFO")) << name;
  }
  EXPECT_THAT(ui.Messages, IsEmpty());
}

TEST_F(Destination, IsReplacedByForceAlone) {
  ASSERT_TRUE(Run(temp / "disc", false, "old"));
  std::ofstream(temp.Path() / "disc" / "VTS_07_1.VOB") << "of the old disc";
  EXPECT_FALSE(Run(temp / "disc", false));
  EXPECT_TRUE(Told(message::DestinationHoldsDisc));
  EXPECT_TRUE(Run(temp / "disc", true));
  EXPECT_THAT(NamesIn(temp / "disc"), ElementsAre("VIDEO_TS.IFO"));
  EXPECT_EQ(Ifo(), "new");
  EXPECT_THAT(NamesIn(temp.Path()), ElementsAre("disc"));
}

TEST_F(Destination, WithForeignFilesIsRefusedAndNeverCleared) {
  temp.Write("disc/notes.txt", "mine");
  temp.Write("disc/VIDEO_TS.IFO", "old");
  for (const bool force : {false, true}) {
    EXPECT_FALSE(Run(temp / "disc", force));
    EXPECT_EQ(ui.Messages.back().Text, "The destination holds \"notes.txt\", which is not part of a disc");
  }
  EXPECT_THAT(NamesIn(temp / "disc"), ElementsAre("VIDEO_TS.IFO", "notes.txt"));
}

TEST_F(Destination, StaysAsItWasWhenTheRunEndsEarly) {
  ASSERT_TRUE(Run(temp / "disc", false, "old"));
  {
    auto folder = OutputFolder::Prepare(temp / "disc", true, ui);
    ASSERT_TRUE(folder);
    std::ofstream(folder->Path() + "/VTS_01_1.VOB") << "half";
  }
  EXPECT_EQ(Ifo(), "old");
  EXPECT_THAT(NamesIn(temp.Path()), ElementsAre("disc"));
}

TEST_F(Destination, ThatCannotBeAFolderIsRefused) {
  temp.Write("file", "x");
  EXPECT_FALSE(Run(temp / "file", true));
  EXPECT_TRUE(Told(message::DestinationIsNoFolder));
  EXPECT_FALSE(Run(temp / "file/disc", true));
  EXPECT_TRUE(Told(message::FolderNotMade));
}

TEST_F(Destination, ThroughALinkReplacesWhatItPointsAt) {
  ASSERT_TRUE(Run(temp / "disc", false, "old"));
  fs::create_directory_symlink("disc", temp.Path() / "link");
  EXPECT_TRUE(Run(temp / "link", true));
  EXPECT_TRUE(fs::is_symlink(temp.Path() / "link"));
  EXPECT_EQ(Ifo(), "new");
}

TEST_F(Destination, FreeSpaceIsThatOfTheNearestFolder) {
  EXPECT_TRUE(FreeBytes(temp.Path().string()));
  EXPECT_GT(FreeBytes(temp / "not/there/yet").value_or(0), 0U);
}

}  // namespace
}  // namespace quorvelant
