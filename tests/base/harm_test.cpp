// What a write may never touch, and what a failing disk may never take.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "base/file_text.h"
#include "base/fresh_name.h"
#include "base/random.h"
#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

std::size_t CountIn(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

TEST(Harm, WriteAsideReplacesPlainFilesAlone) {
  const TempFolder temp;
  fs::create_directory(temp / "folder");
  ASSERT_EQ(mkfifo((temp / "fifo").c_str(), 0600), 0);
  fs::create_symlink("/dev/null", temp / "device");
  for (const auto& [name, code] : {std::pair{"folder", EISDIR}, {"fifo", ENOTSUP}, {"device", ENOTSUP}}) {
    EXPECT_EQ(WriteAside(temp / name, "x"), code) << name;
  }
  EXPECT_EQ(WriteAside("/dev/null", "x"), ENOTSUP);
  EXPECT_TRUE(fs::is_fifo(temp / "fifo") && fs::is_symlink(temp / "device"));
  EXPECT_EQ(CountIn(temp.Path()), 3U);

  const std::string kept = temp.Write("kept", "before");
  ASSERT_EQ(chmod(kept.c_str(), 0640), 0);
  EXPECT_EQ(WriteAside(kept, "after"), 0);
  struct stat now {};
  ASSERT_EQ(stat(kept.c_str(), &now), 0);
  EXPECT_EQ(now.st_mode & ALLPERMS, 0640U);
}

// Every write, flush and close of it fails in turn.
TEST(Harm, AFailingDiskLeavesTheFileAsItWas) {
  const TempFolder temp;
  const std::string file = temp.Write("list", "before");
  int failing = 1;
  for (;; ++failing) {
    FaultyDisk disk(failing, EIO);
    if (WriteAside(file, "after", disk) == 0) {
      break;
    }
    EXPECT_EQ(TempFolder::Read(file), "before");
    EXPECT_EQ(CountIn(temp.Path()), 1U);
  }
  EXPECT_EQ(failing, 4);
  EXPECT_EQ(TempFolder::Read(file), "after");
}

TEST(Harm, ALinkInTheWayOfANewFileIsNotFollowed) {
  const TempFolder temp;
  const std::string mine = temp.Write("mine", "mine");
  fs::create_symlink(mine, temp / "link");
  EXPECT_THROW(SystemDisk().Open(temp / "link", FileAccess::New), FileError);
  RecordingUi ui;
  Random files(ui);
  files.DimFiles(1);
  ASSERT_TRUE(files.CreateFile(temp / "link", 1));
  files.WriteBytes(Bytes{1});
  files.CloseFile(1);
  EXPECT_EQ(TempFolder::Read(mine), "mine");
  EXPECT_FALSE(fs::is_symlink(temp / "link"));
}

TEST(Harm, WhatOnlyACloseTellsIsRaised) {
  const TempFolder temp;
  FaultyDisk disk(2, EDQUOT);
  RecordingUi ui;
  Random files(ui, disk);
  files.DimFiles(1);
  for (const bool abandoned : {true, false}) {
    ASSERT_TRUE(files.CreateFile(temp / "VTS_01_1.VOB", 1));
    if (abandoned) {
      files.WriteBytes(Bytes{1});
      EXPECT_NO_THROW(files.AbandonFile(1));
    } else {
      EXPECT_THROW(files.CloseFile(1), FileError);
    }
    EXPECT_FALSE(files.IsOpen(1));
  }
}

TEST(Harm, FreshNamesDifferAndAreKnownAgain) {
  const std::string name = FreshName(".disc.making.");
  EXPECT_NE(name, FreshName(".disc.making."));
  EXPECT_TRUE(IsFreshName(name, ".disc.making."));
  for (const char* other : {".disc.making.", ".disc.making.0123456g", ".disc.making.012345678", "x"}) {
    EXPECT_FALSE(IsFreshName(other, ".disc.making.")) << other;
  }
}

}  // namespace
}  // namespace quorvelant
