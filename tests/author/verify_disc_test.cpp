// What people bring to the verifier: discs that are whole, cut, renamed, mixed up, or none.
#include "verify/verify_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "base/text.h"
#include "disc_maker.h"
#include "support/damaged_disk.h"
#include "support/disc_judges.h"
#include "verify/messages.h"
#include "verify/nav_of_disc.h"

namespace quorvelant {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

class VerifyDiscs : public testing::Test {
 protected:
  VerifyDiscs() { maker_.LoadSmall(2); }

  std::vector<std::string> Faults(const std::string& path) {
    std::vector<std::string> codes;
    const VerifyResult result = VerifyDisc(path, maker_.Ui);
    for (const DiscFinding& finding : result.Findings.All()) {
      if (finding.Kind->Level != Severity::Information) {
        codes.push_back(std::string(finding.Kind->Code) + " " + finding.Spot.File);
      }
    }
    return codes;
  }

  DiscMaker maker_{{.Width = 352, .Height = 288, .Frames = 60, .Closed = true, .KbitPerSecond = 500}};
};

void Overwrite(const fs::path& path, std::size_t at, const std::string& bytes) {
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(at));
  file << bytes;
}

TEST_F(VerifyDiscs, NameWhatIsWrongByItsFile) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  EXPECT_THAT(Faults(maker_.Folder), IsEmpty());
  EXPECT_THAT(Faults(maker_.Temp.Path().string()), IsEmpty());  // the folder that holds VIDEO_TS
  const fs::path disc = maker_.Folder;
  const auto former = maker_.Files();
  const struct {
    const char* What;
    std::function<void()> Harm;
    const char* Found;
  } cases[] = {
      {"a file that was not copied", [&] { fs::remove(disc / "VTS_01_1.VOB"); }, "verify-file VTS_01_1.VOB"},
      {"a copy that was cut", [&] { fs::resize_file(disc / "VTS_01_1.VOB", 10 * SectorBytes); },
       "verify-layout VTS_01_0.IFO"},
      {"... within a sector", [&] { fs::resize_file(disc / "VTS_01_1.VOB", 10 * SectorBytes + 7); },
       "verify-file VTS_01_1.VOB"},
      {"an IFO of zeros", [&] { Overwrite(disc / "VTS_01_0.IFO", 0, std::string(SectorBytes, '\0')); },
       "verify-table VTS_01_0.IFO"},
      {"an empty IFO", [&] { fs::resize_file(disc / "VIDEO_TS.IFO", 0); }, "verify-table VIDEO_TS.IFO"},
      {"a backup of another run", [&] { Overwrite(disc / "VTS_01_0.BUP", 0x2000, "x"); },
       "verify-backup VTS_01_0.BUP"},
      {"small letters", [&] { fs::rename(disc / "VIDEO_TS.BUP", disc / "video_ts.bup"); },
       "verify-file video_ts.bup"},
      {"a sector that could not be read",
       [&] { Overwrite(disc / "VTS_01_1.VOB", 4 * SectorBytes, std::string(SectorBytes, '\0')); },
       "verify-pack VTS_01_1.VOB"},
      {"a sector of another place",
       [&] {
         Overwrite(disc / "VTS_01_1.VOB", 8 * SectorBytes, former.at("VTS_01_1.VOB").substr(0, SectorBytes));
       },
       "verify-nav VTS_01_1.VOB"},
      {"VOBs of the other domain", [&] { fs::copy_file(disc / "VTS_01_0.VOB", disc / "VTS_01_2.VOB"); },
       "verify-layout VTS_01_0.IFO"},
  };
  for (const auto& test : cases) {
    test.Harm();
    EXPECT_THAT(Faults(maker_.Folder), Contains(test.Found)) << test.What;
    fs::remove_all(disc);
    fs::create_directory(disc);
    for (const auto& [name, bytes] : former) {
      std::ofstream(disc / name, std::ios::binary) << bytes;
    }
  }
  EXPECT_THAT(Faults(maker_.Folder), IsEmpty());
}

// A disc of a collection is damaged in places: those are named, and all the rest is proven.
TEST_F(VerifyDiscs, NameWhatCannotBeRead) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const std::uint64_t sectors = fs::file_size(fs::path(maker_.Folder) / "VTS_01_1.VOB") / SectorBytes;
  ASSERT_GT(sectors, 40U);
  const std::uint64_t whole = VerifyDisc(maker_.Folder, maker_.Ui).Bytes;
  const struct {
    Damage Done;
    std::string Unread;
    bool IsAll;  // nothing follows from it
  } cases[] = {{{.File = "VTS_01_1.VOB", .From = 20 * SectorBytes, .To = 20 * SectorBytes + 1},
                "/VTS_01_1.VOB sectors 16 to 31: Input/output error",
                false},
               {{.File = "VTS_01_1.VOB", .Opens = false},
                fmt::format("/VTS_01_1.VOB sectors 0 to {}: Permission denied", sectors - 1),
                false},
               {{.File = "VTS_01_1.VOB", .End = 30 * SectorBytes + 5},
                fmt::format("/VTS_01_1.VOB sectors 30 to {}: the end of the file", sectors - 1),
                false},
               {{.File = "VTS_01_0.IFO", .Opens = false}, "/VTS_01_0.IFO: Permission denied", true},
               {{.File = "VIDEO_TS.BUP", .To = 1}, "/VIDEO_TS.BUP: Input/output error", true}};
  for (const auto& test : cases) {
    DamagedDisk disk(test.Done);
    const VerifyResult result = VerifyDisc(maker_.Folder, maker_.Ui, disk);
    std::vector<std::string> unread;
    for (const DiscFinding& finding : result.Findings.All()) {
      if (finding.Kind == &message::Unread) {
        unread.push_back(SpotText(finding.Spot) + ": " + finding.Seen);
      }
    }
    EXPECT_THAT(unread, ElementsAre(test.Unread));
    EXPECT_EQ(result.Findings.Count(Severity::Error) == 1, test.IsAll) << test.Unread;
    EXPECT_LT(result.Bytes, whole) << test.Unread;
  }
}

// Nothing of what follows from it is told with it: the backup stands in for tables, and names in small
// letters are those of a disc that some systems mount.
TEST_F(VerifyDiscs, WhatIsLostIsToldOnce) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const fs::path disc = maker_.Folder;
  for (const char* name : {"VIDEO_TS.IFO", "VTS_01_0.IFO", "VTS_01_0.BUP"}) {
    fs::rename(disc / name, disc.parent_path() / "kept");
    EXPECT_THAT(Faults(maker_.Folder), ElementsAre(std::string("verify-file ") + name));
    fs::rename(disc.parent_path() / "kept", disc / name);
  }
  const std::string tables = maker_.Files().at("VTS_01_0.IFO");
  Overwrite(disc / "VTS_01_0.IFO", 0, std::string(tables.size(), '\0'));
  EXPECT_THAT(Faults(maker_.Folder),
              UnorderedElementsAre("verify-table VTS_01_0.IFO", "verify-backup VTS_01_0.BUP"));
  Overwrite(disc / "VTS_01_0.IFO", 0, tables);
  const auto lost = {"verify-file VTS_01_0.IFO", "verify-file VTS_01_0.BUP"};
  for (const char* name : {"VTS_01_0.IFO", "VTS_01_0.BUP"}) {
    fs::rename(disc / name, disc.parent_path() / name);
  }
  EXPECT_THAT(Faults(maker_.Folder), ElementsAreArray(lost));
  const std::string vob = maker_.Files().at("VTS_01_1.VOB");
  Overwrite(disc / "VTS_01_1.VOB", 4 * SectorBytes, std::string(SectorBytes, '\0'));
  EXPECT_THAT(Faults(maker_.Folder), Contains("verify-pack VTS_01_1.VOB")) << "sectors are read all the same";
  Overwrite(disc / "VTS_01_1.VOB", 0, vob);
  for (const char* name : {"VTS_01_0.IFO", "VTS_01_0.BUP"}) {
    fs::rename(disc.parent_path() / name, disc / name);
  }
  for (const auto& [name, bytes] : maker_.Files()) {
    fs::rename(disc / name, disc / Lower(name));
  }
  fs::rename(disc, disc.parent_path() / "video_ts");
  EXPECT_THAT(Faults(maker_.Temp.Path().string()), IsEmpty());
  for (const char* name : {"vts_01_0.ifo", "vts_01_0.bup", "vts_01_0.vob", "vts_01_1.vob"}) {
    fs::remove(disc.parent_path() / "video_ts" / name);
  }
  EXPECT_THAT(Faults(maker_.Temp.Path().string()), ElementsAre("verify-file VTS_01_0.IFO"));
}

// Files in the order of their names: backups come first, where no table can lead.
TEST_F(VerifyDiscs, AnImageThatIsNotLaidOutForPlayersIsTold) {
  if (LinesOf("command -v genisoimage").empty()) {
    GTEST_SKIP() << "genisoimage is not at hand";
  }
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const std::string image = maker_.Temp / "plain.iso";
  LinesOf("genisoimage -quiet -udf -V DISC -o " + image + " " + maker_.Folder + "/..");
  EXPECT_THAT(Faults(image), UnorderedElementsAre("verify-layout VIDEO_TS.BUP", "verify-layout VTS_01_0.BUP",
                                                  "verify-layout VIDEO_TS.IFO"));
}

TEST_F(VerifyDiscs, WhatIsNoDiscIsTold) {
  EXPECT_THAT(Faults(maker_.Temp.Path().string()), Contains("verify-file VIDEO_TS.IFO"));
  EXPECT_THAT(Faults(maker_.Temp.Write("text.iso", "no image")), ElementsAre("verify-image "));
  EXPECT_THROW(Faults(maker_.Temp / "nowhere"), FileError);
}

TEST_F(VerifyDiscs, AStopEndsTheReading) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  maker_.Ui.StopWhen = [] { return true; };
  const VerifyResult result = VerifyDisc(maker_.Folder, maker_.Ui);
  EXPECT_TRUE(result.Stopped);
  EXPECT_THAT(result.Findings.All(), IsEmpty()) << "half a disc fits nothing that is said of it";
}

TEST_F(VerifyDiscs, TellWhatThereIsToPlay) {
  ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
  const NavDisc nav = NavOfDisc(VerifyDisc(maker_.Folder, maker_.Ui));
  ASSERT_TRUE(nav.FirstPlay);
  ASSERT_EQ(nav.Titles.size(), 1U);
  EXPECT_EQ(nav.Titles[0].Set, 1);
  ASSERT_EQ(nav.Sets.size(), 1U);
  const NavSet& set = nav.Sets[0];
  ASSERT_EQ(set.Titles.size(), 1U);
  EXPECT_EQ(set.Titles[0].Name, "VTS_01_0.IFO VTS_PGCIT PGC 1");
  EXPECT_EQ(set.Parts, (std::vector<std::vector<NavPart>>{{{1, 1}, {1, 2}}}));
  std::uint32_t ticks = 0;
  for (const NavCell& cell : set.Titles[0].Cells) {
    ticks += cell.Ticks;
  }
  EXPECT_EQ(ticks, 60U * 3600);
  ASSERT_EQ(set.Menus.size(), 1U);
  EXPECT_EQ(set.Menus[0].Chains.at(0).MenuId, 3);  // root
  EXPECT_TRUE(set.Menus[0].Chains.at(0).IsEntry);
}

}  // namespace
}  // namespace quorvelant
