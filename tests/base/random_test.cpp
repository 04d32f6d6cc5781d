#include "base/random.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <utility>

#include "base/file_text.h"
#include "base/fresh_name.h"
#include "base/messages.h"
#include "base/uint64.h"
#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

FileError Raised(const std::function<void()>& action) {
  try {
    action();
  } catch (const FileError& error) {
    return error;
  }
  return {0, "nothing was raised"};
}

class RandomFiles : public testing::Test {
 protected:
  RandomFiles() { Files.DimFiles(9); }
  TempFolder Folder;
  RecordingUi Ui;
  Random Files{Ui};
};

TEST_F(RandomFiles, WritesAndReadsBeyondFourGigabytes) {
  const std::string name = Folder / "sparse";
  constexpr std::uint64_t Position = (std::uint64_t{5} << 30) + 3;
  ASSERT_TRUE(Files.OpenFile(name, 1));
  Files.WriteBytes(Bytes{1, 2, 3, 4}, Position);
  EXPECT_EQ(Files.FileBytes(1), Position + 4);
  const cUInt64 words(Position + 1);
  Files.SeekAbsolute(words.Upper, words.Lower, 1);
  EXPECT_EQ(Files.ReadBytes(5, 1), (Bytes{2, 3, 4, 0, 0}));  // a short read leaves the tail 0
  Files.SeekRelative(-4, 1, true);
  Bytes buffer(9);
  EXPECT_EQ(Files.ReadInto(buffer, 1), 4U);
  Files.SeekAbsolute(Position, 1);
  EXPECT_EQ(Files.ReadPCMBytes(4, 1), (std::vector<std::uint16_t>{0x0201, 0x0403, 0, 0}));
}

TEST_F(RandomFiles, WordsAndPartsOfBlocksInANewFile) {
  ASSERT_TRUE(Files.OpenSource(Folder.Write("out", "the file before"), 0));
  ASSERT_TRUE(Files.CreateFile(Folder / "out", 1));
  Files.WriteBytes(Bytes{9, 9, 9, 9});
  Files.WritePCMBytes({0x0201, 0x0403}, 1);
  Files.WriteSpecifiedBytes(Bytes{5, 6, 7, 8}, 2, 1);
  EXPECT_EQ(TempFolder::Read(Folder / "out"), "\x09\x01\x02\x03\x04\x06\x07");
  EXPECT_EQ(Raised([&] { Files.WriteSpecifiedBytes(Bytes{1}, 2, 0); }).Number, 45600);
  EXPECT_EQ(Files.FileBytes(0), 15U);  // who has it open keeps it
}

TEST_F(RandomFiles, ANameOpenTwiceSharesItsHandleAndSourcesDoNot) {
  const std::string name = Folder.Write("both", "abcdef");
  ASSERT_TRUE(Files.OpenFile(name, 1));
  ASSERT_TRUE(Files.OpenFile(name, 2));
  EXPECT_EQ(Files.FileHandle(1), Files.FileHandle(2));
  ASSERT_TRUE(Files.OpenSource(name, 3));
  EXPECT_EQ(Files.ReadBytes(2, 1), (Bytes{'a', 'b'}));
  EXPECT_EQ(Files.ReadBytes(1, 2), (Bytes{'c'}));
  EXPECT_EQ(Files.ReadBytes(1, 3), (Bytes{'a'}));
  Files.CloseFile(2);
  EXPECT_FALSE(Files.IsOpen(1));
  EXPECT_TRUE(Files.IsOpen(3));
}

TEST_F(RandomFiles, ErrorsHaveTheirNumbersAndNameTheFile) {
  const std::string name = Folder.Write("x", "abc");
  const std::function<void()> closed[] = {[&] { Files.ReadBytes(1, 4); }, [&] { Files.WriteBytes(Bytes{1}); },
                                          [&] { Files.Flush(0); }, [&] { Files.SeekAbsolute(1, 99); },
                                          [&] { Files.SeekRelative(1, -1, true); }};
  for (const auto& action : closed) {
    EXPECT_EQ(Raised(action).Number, 45603);
    EXPECT_STREQ(Raised(action).what(), "There is no open file.");
  }
  ASSERT_TRUE(Files.OpenSource(name, 1));
  EXPECT_STREQ(Raised([&] { (void)Files.OpenFile(Folder / "y", 1); }).what(),
               ("The file '" + name + "' is already open.").c_str());
  const FileError seek = Raised([&] { Files.SeekRelative(-1, 1, true); });
  EXPECT_EQ(seek.Number, 45604);
  EXPECT_STREQ(seek.what(), "Error \n22\nInvalid argument\nSeek Error.");
  EXPECT_EQ(Raised([&] { Files.SeekAbsolute(~std::uint64_t{0}, 1); }).Number, 45604);
  const FileError write = Raised([&] { Files.WriteBytes(Bytes{1}); });  // open for reading alone
  EXPECT_EQ(write.OneLine(), "Error writing '" + name + "': Bad file descriptor");
}

TEST_F(RandomFiles, AFullDiskIsOneErrorThatNamesTheFile) {
  const std::string name = Folder / "full";
  ASSERT_TRUE(Files.OpenFile(name, 1));
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{1000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const FileError error = Raised([&] { Files.WriteBytes(Bytes(3000, 7)); });  // 1000 go out, then none
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(error.OneLine(), "Error writing '" + name + "': File too large");
  EXPECT_EQ(Files.FileBytes(1), 1000U);
}

TEST_F(RandomFiles, ALinkInTheWayOfANewFileIsNotFollowed) {
  const std::string mine = Folder.Write("mine", "mine");
  std::filesystem::create_symlink(mine, Folder / "link");
  EXPECT_THROW(SystemDisk().Open(Folder / "link", FileAccess::New), FileError);
  ASSERT_TRUE(Files.CreateFile(Folder / "link", 1));
  Files.WriteBytes(Bytes{1});
  EXPECT_EQ(TempFolder::Read(mine), "mine");
  EXPECT_FALSE(std::filesystem::is_symlink(Folder / "link"));
}

TEST_F(RandomFiles, WhatOnlyACloseTellsIsRaised) {
  FaultyDisk disk(2, EDQUOT);
  Random files(Ui, disk);
  files.DimFiles(1);
  for (const bool abandoned : {true, false}) {
    ASSERT_TRUE(files.CreateFile(Folder / "VTS_01_1.VOB", 1));
    if (abandoned) {
      files.WriteBytes(Bytes{1});
      EXPECT_NO_THROW(files.AbandonFile(1));
    } else {
      EXPECT_THROW(files.CloseFile(1), FileError);
    }
    EXPECT_FALSE(files.IsOpen(1));
  }
}

TEST_F(RandomFiles, WhatIsNoPlainFileIsRefusedAtOnce) {
  const std::string fifo = Folder / "fifo";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const struct {
    std::string Path;
    std::string_view Why;
  } cases[] = {{fifo, "it is a pipe or a device, not a file"},
               {Folder.Path().string(), "it is a folder, not a file"},
               {Folder / "none", "there is no such file"},
               {Folder / std::string(300, 'x'), "it cannot be reached"},
               {Folder.Write("plain", ""), ""}};
  for (const auto& test : cases) {
    EXPECT_EQ(WhyNotPlainFile(test.Path), test.Why);
  }
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_FALSE(Files.OpenSource(cases[i].Path, 0));
    EXPECT_FALSE(Files.OpenFile(cases[i].Path, 1));
    EXPECT_THROW(SystemDisk().Open(cases[i].Path, FileAccess::Read), FileError);
    ASSERT_EQ(Ui.Messages.size(), 2U);
    for (const Message& told : std::exchange(Ui.Messages, {})) {
      EXPECT_TRUE(told.Is(message::OpenNotPlain));
      EXPECT_EQ(told.Text, fmt::format("Unable to open file {}: {}", cases[i].Path, cases[i].Why));
    }
  }
}

TEST_F(RandomFiles, AFailedOpenAsksOnce) {
  const std::string name = Folder / "missing/file";
  Ui.Answers = {false, true};
  EXPECT_FALSE(Files.OpenSource(name, 0));
  EXPECT_FALSE(Files.OpenFile(name, 0));  // asked, tried again, and that is all
  ASSERT_EQ(Ui.Questions.size(), 2U);
  EXPECT_TRUE(Ui.Questions[1].Text.starts_with("Unable to open file " + name + ". Please close"));
  EXPECT_FALSE(std::filesystem::exists(name));
}

std::size_t CountIn(const std::filesystem::path& folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

// Every write, flush and close of it fails in turn.
TEST(WriteAside, LeavesWhatWasThereUntilAllIsWritten) {
  const TempFolder folder;
  const std::string file = folder.Write("real/list", "before");
  ASSERT_EQ(chmod(file.c_str(), 0640), 0);
  std::filesystem::create_symlink(file, folder / "link");
  for (int failing = 1; failing < 4; ++failing) {
    FaultyDisk disk(failing, EDQUOT);
    EXPECT_EQ(WriteAside(folder / "link", "after", disk), EDQUOT) << failing;
    EXPECT_EQ(ReadWhole(file, 6), "before");
    EXPECT_EQ(CountIn(folder / "real"), 1U);
  }
  EXPECT_EQ(WriteAside(folder / "link", "after it"), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_EQ(ReadHead(file, 5), "after");
  EXPECT_EQ(ReadWhole(file, 7), std::nullopt);
  EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(CountIn(folder / "real"), 1U);
  EXPECT_EQ(WriteAside(folder / "no/such/folder", "x"), ENOENT);
}

TEST(WriteAside, ReplacesPlainFilesAlone) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "folder");
  ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/null", folder / "device");
  for (const auto& [name, code] : {std::pair{"folder", EISDIR}, {"fifo", ENOTSUP}, {"device", ENOTSUP}}) {
    EXPECT_EQ(WriteAside(folder / name, "x"), code) << name;
  }
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "fifo") && std::filesystem::is_symlink(folder / "device"));
  EXPECT_EQ(CountIn(folder.Path()), 3U);
}

TEST(FreshName, DiffersAndIsKnownAgain) {
  const std::string name = FreshName(".disc.making.");
  EXPECT_NE(name, FreshName(".disc.making."));
  EXPECT_TRUE(IsFreshName(name, ".disc.making."));
  for (const char* other : {".disc.making.", ".disc.making.0123456g", ".disc.making.012345678", "x"}) {
    EXPECT_FALSE(IsFreshName(other, ".disc.making.")) << other;
  }
}

TEST(UInt64, WordsAreHeldSigned) {
  const cUInt64 value(0x00000005FFFFFFFEU);
  EXPECT_EQ(value, cUInt64(5, -2));
  EXPECT_EQ(value.Value(), 0x5FFFFFFFEU);
  EXPECT_EQ(value.ToString() + " " + value.ToString(true), "25769803774 5FFFFFFFE");
  EXPECT_EQ(cUInt64(1, 2).ToString(true) + " " + cUInt64(0, -1).ToString(true), "100000002 FFFFFFFF");
}

TEST(SystemPaths, CountFromTheScriptsFolder) {
  EXPECT_EQ(SystemPath("media\\a b.m2v", "/films"), "/films/media/a b.m2v");
  EXPECT_EQ(SystemPath("..\\x.ac3", "/films/"), "/films/../x.ac3");
  EXPECT_EQ(SystemPath("\\films\\x", "/other"), "/films/x");
  EXPECT_EQ(SystemPath("D:\\films\\x", "/other"), "D:/films/x");
  EXPECT_EQ(SystemPath("x", ""), "x");
  EXPECT_EQ(SystemPath("", "/films"), "");
}

}  // namespace
}  // namespace quorvelant
