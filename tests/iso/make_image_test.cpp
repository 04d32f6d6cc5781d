// Images of folders that are whole and of such as are not, and runs that are held up.
#include "iso/make_image.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>
#include <functional>

#include "iso/image_writer.h"
#include "iso/messages.h"
#include "small_tree.h"
#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

// A folder of two sets, each VOB sector of which tells its own number.
class Images : public testing::Test {
 protected:
  Images() {
    fs::create_directory(folder);
    SmallTree disc(3, 5, {{.MenuVob = 6, .TitleVobs = {700, 9}}, {}});
    std::ranges::copy(std::string_view("DVDVIDEO-VMG"), disc.Tree.Sets[0].Tables.begin());
    for (std::size_t i = 0; i < disc.Tree.Sets.size(); ++i) {
      TreeSet& set = disc.Tree.Sets[i];
      if (i > 0) {
        std::ranges::copy(std::string_view("DVDVIDEO-VTS"), set.Tables.begin());
        PutBytes(set.Tables, 0xE0, 4, 2);                                     // VTS_C_ADT
        PutBytes(set.Tables, 2 * SectorBytes + 4, 4, 8 + 12 - 1);             // its last byte
        PutBytes(set.Tables, 2 * SectorBytes + 8 + 8, 4, i == 1 ? 708 : 19);  // the last cell's last sector
      }
      Put(set.Ifo.Name, set.Tables);
      Put(set.Backup.Name, set.Tables);
      for (const TreeFile& vob : set.TitleVobs) {
        PutVob(vob);
      }
      if (set.MenuVob) {
        PutVob(*set.MenuVob);
      }
    }
  }

  void Put(const std::string& name, const Bytes& bytes) { temp.Write("VIDEO_TS/" + name, bytes); }
  void PutVob(const TreeFile& vob) {
    Bytes bytes(vob.Size);
    for (std::uint32_t sector = 0; sector < vob.Sectors(); ++sector) {
      PutBytes(bytes, sector * SectorBytes, 4, sector + 1);
    }
    Put(vob.Name, bytes);
  }

  ImageResult Make(Disk& disk = SystemDisk()) {
    ui.Messages.clear();
    return MakeImage({.Folder = folder, .Path = image, .Label = "SMALL", .Replace = replace, .Sync = false},
                     ui, disk);
  }
  std::vector<std::string> Codes() const {
    std::vector<std::string> codes;
    for (const Message& told : ui.Messages) {
      codes.emplace_back(told.Code);
    }
    return codes;
  }
  // What lies beside the folder.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(temp.Path())) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }

  TempFolder temp;
  std::string folder = temp / "VIDEO_TS";
  std::string image = temp / "disc.iso";
  bool replace = true;
  RecordingUi ui;
};

TEST_F(Images, AreTheSameWhateverTheFolderIsCalled) {
  EXPECT_EQ(Make().Outcome, ImageOutcome::Done);
  EXPECT_THAT(ui.Messages, IsEmpty());
  const std::string first = TempFolder::Read(image);
  EXPECT_EQ(first.size() % (16 * SectorBytes), 0U);
  fs::create_directory(temp / "disc");
  fs::rename(folder, temp / "disc/video_ts");
  for (const char* name : {"VIDEO_TS.IFO", "VTS_01_1.VOB"}) {
    std::string lower = name;
    std::ranges::transform(lower, lower.begin(), [](unsigned char letter) { return std::tolower(letter); });
    fs::rename(temp.Path() / "disc/video_ts" / name, temp.Path() / "disc/video_ts" / lower);
  }
  folder = temp / "disc";
  EXPECT_EQ(Make().Outcome, ImageOutcome::Done);
  EXPECT_TRUE(TempFolder::Read(image) == first);
}

TEST_F(Images, OfWhatIsNoWholeDiscAreRefusedByName) {
  const std::string vob = TempFolder::Read(folder + "/VTS_01_2.VOB");
  const std::string ifo = TempFolder::Read(folder + "/VTS_01_0.IFO");
  const std::string manager = TempFolder::Read(folder + "/VIDEO_TS.IFO");
  const auto with = [](std::string text, std::size_t at, char byte) {
    text[at] = byte;
    return text;
  };
  const std::string missing = "-";
  const struct {
    const char* Name;
    std::string Content;  // "-": the file is gone
    const char* Code;
    const char* Place;
  } cases[] = {
      {"VIDEO_TS.IFO", missing, "iso-no-disc", ""},
      {"VIDEO_TS.BUP", missing, "iso-file-missing", "VIDEO_TS.BUP"},
      {"VTS_01_0.IFO", missing, "iso-file-missing", "VTS_01_0.IFO"},
      {"VTS_02_0.BUP", missing, "iso-file-missing", "VTS_02_0.BUP"},
      {"VTS_01_1.VOB", missing, "iso-file-missing", "VTS_01_1.VOB"},
      {"VTS_01_2.VOB", missing, "iso-cells-outside", "VTS_01_1.VOB"},
      {"VTS_02_1.VOB", missing, "iso-file-missing", "VTS_02_1.VOB"},
      {"VTS_01_2.VOB", vob.substr(0, 5000), "iso-part-sector", "VTS_01_2.VOB"},
      {"VTS_01_2.VOB", "", "iso-part-sector", "VTS_01_2.VOB"},
      {"VTS_01_2.VOB", vob.substr(0, 8 * SectorBytes), "iso-cells-outside", "VTS_01_2.VOB"},
      {"VTS_01_2.VOB", vob + vob, "iso-tables-disagree", "VTS_01_0.BUP"},
      {"VTS_01_0.BUP", ifo + ifo, "iso-backup-size", "VTS_01_0.BUP"},
      {"VTS_01_0.IFO", with(ifo, 11, 'G'), "iso-no-ifo", "VTS_01_0.IFO"},
      {"VIDEO_TS.IFO", with(manager, 0, 'X'), "iso-no-ifo", "VIDEO_TS.IFO"},
      {"VIDEO_TS.IFO", with(manager, 0x3F, 100), "iso-set-count", "VIDEO_TS.IFO"},
      {"VIDEO_TS.IFO", with(manager, 0x3F, 0), "iso-set-count", "VIDEO_TS.IFO"},
      {"VIDEO_TS.IFO", with(manager, 0x3F, 3), "iso-file-missing", "VTS_03_0.IFO"},
  };
  for (const auto& test : cases) {
    const std::string path = folder + "/" + test.Name;
    const std::string before = TempFolder::Read(path);
    fs::remove(path);
    if (test.Content != missing) {
      temp.Write(std::string("VIDEO_TS/") + test.Name, test.Content);
    }
    EXPECT_EQ(Make().Outcome, ImageOutcome::Failed);
    ASSERT_FALSE(ui.Messages.empty()) << test.Name << test.Code;
    EXPECT_EQ(ui.Messages[0].Code, test.Code) << test.Name;
    EXPECT_EQ(ui.Messages[0].Place, *test.Place == '\0' ? folder : folder + "/" + test.Place);
    EXPECT_THAT(Names(), ElementsAre("VIDEO_TS"));
    temp.Write(std::string("VIDEO_TS/") + test.Name, before);
  }
  fs::create_directory(folder + "/extras");
  temp.Write("VIDEO_TS/VTS_03_1.VOB", vob);
  EXPECT_EQ(Make().Outcome, ImageOutcome::Done);
  EXPECT_THAT(Codes(), ElementsAre("iso-left-out", "iso-left-out"));
  folder = temp / "nowhere";
  EXPECT_EQ(Make().Outcome, ImageOutcome::Failed);
  EXPECT_THAT(Codes(), ElementsAre("iso-no-disc"));
}

// Each write in turn is the first that fails.
// By another name, too: the disc that is read stays.
TEST_F(Images, NeverTakeThePlaceOfTheirDisc) {
  fs::create_directory(temp / "links");
  fs::create_symlink(folder + "/VTS_01_1.VOB", temp / "links/disc.iso");
  fs::create_hard_link(folder + "/VTS_02_0.IFO", temp / "links/hard.iso");
  const std::string film = TempFolder::Read(folder + "/VTS_01_1.VOB");
  for (const std::string& place :
       {folder + "/VTS_01_1.VOB", folder + "/disc.iso", temp / "links/../VIDEO_TS/disc.iso",
        temp / "links/disc.iso", temp / "links/hard.iso"}) {
    image = place;
    EXPECT_EQ(Make().Outcome, ImageOutcome::Failed) << place;
    EXPECT_THAT(Codes(), ElementsAre("iso-in-disc")) << place;
  }
  EXPECT_TRUE(TempFolder::Read(folder + "/VTS_01_1.VOB") == film);
}

TEST_F(Images, ABackupThatDiffersIsTold) {
  std::string backup = TempFolder::Read(folder + "/VTS_02_0.BUP");
  backup[100] = '!';
  Put("VTS_02_0.BUP", Bytes(backup.begin(), backup.end()));
  EXPECT_EQ(Make().Outcome, ImageOutcome::Done);
  EXPECT_THAT(Codes(), ElementsAre("iso-backup-differs"));
}

TEST_F(Images, AFullDiskLeavesTheImageBefore) {
  FaultyDisk whole(1'000'000);
  temp.Write("disc.iso", "before");
  ASSERT_EQ(Make(whole).Outcome, ImageOutcome::Done);
  EXPECT_GT(whole.Writes(), 10);
  temp.Write("disc.iso", "before");
  for (int failing = 1; failing <= whole.Writes(); ++failing) {
    FaultyDisk disk(failing);
    EXPECT_EQ(Make(disk).Outcome, ImageOutcome::Failed) << failing;
    EXPECT_THAT(Codes(), ElementsAre("iso-file-failed")) << failing;
    EXPECT_EQ(TempFolder::Read(image), "before");
    EXPECT_THAT(Names(), ElementsAre("VIDEO_TS", "disc.iso"));
  }
}

TEST_F(Images, AStopEndsARunWherever) {
  int asked = 0;
  ui.StopWhen = [&asked] { return ++asked < 0; };
  ASSERT_EQ(Make().Outcome, ImageOutcome::Done);
  const int all = asked;
  EXPECT_GT(all, 10);
  fs::remove(image);
  for (int at = 1; at <= all; ++at) {
    asked = 0;
    ui.StopWhen = [&asked, at] { return ++asked >= at; };
    EXPECT_EQ(Make().Outcome, ImageOutcome::Stopped) << at;
    EXPECT_THAT(Names(), ElementsAre("VIDEO_TS"));
  }
}

// A run that is killed leaves a file with the mark, half of it written; or, killed at the end, a whole image
// that has no name yet.
TEST_F(Images, WhatAKilledRunLeftIsWrittenAnew) {
  std::string left;
  ui.StopWhen = [&] {
    std::error_code none;
    if (fs::exists(temp / ".disc.iso.making") && left.empty()) {
      EXPECT_FALSE(fs::exists(image));
      left = TempFolder::Read(temp / ".disc.iso.making");
      RecordingUi other;
      const auto second = WriteImageAside({.Folder = folder, .Path = image, .Label = "SMALL"}, other);
      EXPECT_FALSE(second.Aside);
      EXPECT_TRUE(other.Messages.at(0).Is(message::IsoBusy));
    }
    return false;
  };
  ASSERT_EQ(Make().Outcome, ImageOutcome::Done);
  const std::string whole = TempFolder::Read(image);
  ASSERT_FALSE(left.empty());
  for (const std::string& was : {left + std::string(whole.size(), 'x'), whole}) {
    fs::remove(image);
    temp.Write(".disc.iso.making", was);
    EXPECT_EQ(Make().Outcome, ImageOutcome::Done);
    EXPECT_THAT(Codes(), ElementsAre("iso-leftover-taken"));
    EXPECT_TRUE(TempFolder::Read(image) == whole);
    EXPECT_THAT(Names(), ElementsAre("VIDEO_TS", "disc.iso"));
  }
}

// VOB files of five GiB that are holes, of which marking reads nothing.
TEST_F(Images, AFolderIsMarkedForTheLayerBreak) {
  SmallTree disc(3, 5,
                 {{.TitleVobs = std::vector<std::uint32_t>(5, 524'287), .Cells = {0, 1'000'000, 1'400'008}}});
  fs::remove_all(folder);
  fs::create_directory(folder);
  for (std::size_t i = 0; i < 2; ++i) {
    TreeSet& set = disc.Tree.Sets[i];
    std::ranges::copy(std::string_view(i == 0 ? "DVDVIDEO-VMG" : "DVDVIDEO-VTS"), set.Tables.begin());
    Put(set.Ifo.Name, set.Tables);
    Put(set.Backup.Name, set.Tables);
    for (const TreeFile& vob : set.TitleVobs) {
      Put(vob.Name, {});
      fs::resize_file(folder + "/" + vob.Name, vob.Size);
    }
  }
  PutVob(*disc.Tree.Sets[0].MenuVob);
  Bytes marked = disc.Tree.Sets[1].Tables;
  marked[SmallTree::CategoryAt(2)] = 0;
  for (int time = 0; time < 2; ++time) {
    MarkLayerBreak(folder, ui);
    for (const char* name : {"/VTS_01_0.IFO", "/VTS_01_0.BUP"}) {
      EXPECT_TRUE(TempFolder::Read(folder + name) == std::string(marked.begin(), marked.end())) << name;
    }
  }
}

// An image has its own marks where the folder has none.
TEST_F(Images, AreMarkedForTheLayerBreak) {
  std::vector<Message> faults;
  const DiscTree tree = ReadDiscTree(folder, ui, faults);
  ImageLayout layout = LayOutImage(tree, faults);
  const std::size_t at = SmallTree::CategoryAt(0);
  layout.Break = LayerBreak{.Set = 1, .Pgc = 1, .Cell = 1, .Sector = 0, .Marks = {{at, 0x55}}};
  const auto file = SystemDisk().Open(image, FileAccess::New);
  ASSERT_TRUE(WriteImage(layout, {.Label = "SMALL"}, *file, SystemDisk(), false, ui));
  const std::string bytes = TempFolder::Read(image);
  for (const PlacedFile& placed : layout.Files) {
    std::string wanted = TempFolder::Read(placed.File.Path);
    if (placed.File.Name.starts_with("VTS_01_0") && !placed.File.Name.ends_with("VOB")) {
      wanted[at] = 0x55;
    }
    EXPECT_TRUE(bytes.substr(placed.Start * SectorBytes, placed.File.Size) == wanted) << placed.File.Name;
  }
}

TEST_F(Images, NothingOfTheUsersIsTakenForALeftover) {
  const std::string aside = temp / ".disc.iso.making";
  const std::string mine = temp.Write("mine", "mine");
  for (const auto& put : {std::function<void()>([&] { temp.Write(".disc.iso.making", "mine"); }),
                          {[&] { fs::create_symlink(mine, aside); }},
                          {[&] { fs::create_hard_link(mine, aside); }},
                          {[&] { fs::create_directory(aside); }}}) {
    put();
    EXPECT_EQ(Make().Outcome, ImageOutcome::Failed);
    EXPECT_THAT(Codes(), ElementsAre("iso-aside-foreign"));
    EXPECT_TRUE(fs::exists(aside));
    EXPECT_EQ(TempFolder::Read(mine), "mine");
    fs::remove(aside);
  }
}

TEST_F(Images, WhatCameMeanwhileStays) {
  replace = false;
  ui.StopWhen = [&] {
    if (fs::exists(temp / ".disc.iso.making")) {
      temp.Write("disc.iso", "mine");
    }
    return false;
  };
  EXPECT_EQ(Make().Outcome, ImageOutcome::Failed);
  EXPECT_THAT(Codes(), ElementsAre("iso-not-placed"));
  EXPECT_EQ(TempFolder::Read(image), "mine");
  EXPECT_THAT(Names(), ElementsAre(".disc.iso.making", "VIDEO_TS", "disc.iso"));
}

TEST_F(Images, ASourceThatShrinksEndsTheRun) {
  const std::string vob = folder + "/VTS_02_1.VOB";
  ui.StopWhen = [&] {
    if (fs::exists(temp / ".disc.iso.making")) {
      fs::resize_file(vob, 5 * SectorBytes);
    }
    return false;
  };
  EXPECT_EQ(Make().Outcome, ImageOutcome::Failed);
  EXPECT_THAT(Codes(), ElementsAre("iso-source-changed"));
  EXPECT_EQ(ui.Messages[0].Place, vob);
  EXPECT_THAT(Names(), ElementsAre("VIDEO_TS"));
}

}  // namespace
}  // namespace quorvelant
