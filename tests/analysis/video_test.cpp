#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "analysis/header_walk.h"
#include "analysis/picture_index.h"
#include "analysis/video_info.h"
#include "base/text.h"
#include "disc/start_code_search.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/stream_builder.h"
#include "support/temp_folder.h"
#include "support/trial.h"

namespace quorvelant {
namespace {

// Bytes in which start codes of every kind are dense, cut and overlapping.
Bytes RandomStream(std::mt19937& random, std::size_t bytes) {
  constexpr std::uint8_t Codes[] = {0x00, 0x00, 0x01, 0xB3, 0xB5, 0xB8, 0xB7, 0x80, 0x10, 0x20, 0x0A, 0x12};
  Bytes stream(bytes);
  const std::size_t spread = 2 + random() % 40;
  for (std::uint8_t& byte : stream) {
    byte = random() % spread == 0 ? static_cast<std::uint8_t>(random()) : Codes[random() % std::size(Codes)];
  }
  for (std::size_t at = 0; at + 6 < bytes; at += 1 + random() % 60) {
    const Bytes code{0, 0, 1, Codes[random() % std::size(Codes)]};
    std::copy(code.begin(), code.end(), stream.begin() + static_cast<std::ptrdiff_t>(at));
  }
  return stream;
}

TEST(StartCodeSearch, AgreesWithThePlainLoop) {
  std::mt19937 random(1);
  for (int round = 0; round < 300; ++round) {
    const Bytes data = RandomStream(random, random() % 400);
    for (std::size_t from = 0, found = 0; found != NoStartCode; from = found + 1) {
      found = FindStartCode(data, from);
      ASSERT_EQ(found, FindStartCodePlainly(data, from)) << round << " from " << from;
      ASSERT_EQ(found, FindStartCodeNarrow(data, from));
      std::size_t header = found;
      while (header != NoStartCode && header + 3 < data.size() && data[header + 3] >= 1 &&
             data[header + 3] <= 0xAF) {
        header = FindStartCodePlainly(data, header + 1);
      }
      ASSERT_EQ(FindHeaderStartCode(data, from), header) << round << " from " << from;
    }
  }
}

class VideoFiles : public testing::Test {
 protected:
  VideoInfo Info(const Bytes& stream, bool pulldownHandled = false) {
    const auto info = GetVideoInfo(Folder.Write("v.m2v", stream), pulldownHandled, Ui);
    EXPECT_TRUE(info);
    return info.value_or(VideoInfo{});
  }
  PictureIndex Scan(const std::string& file, std::size_t block, bool letters) {
    Random files(Ui);
    files.DimFiles(0);
    EXPECT_TRUE(files.OpenSource(file, 0));
    return ScanPictures(files, 0, {.WantLetters = letters, .BlockBytes = block}, Ui).value();
  }
  TempFolder Folder;
  RecordingUi Ui;
};

TEST_F(VideoFiles, AttributesOfTheHeaders) {
  struct Case {
    SequenceFields Sequence;
    std::string Attributes;
    int Pictures = 2;  // of one alone the height tells the standard
    bool DisplayExtension = false;
  };
  const Case cases[] = {
      {{}, "PAL 4:3 MPEG2 25"},
      {{.Height = 480, .AspectCode = 3, .FrameRateCode = 4}, "NTSC 16:9 MPEG2 30"},
      {{.AspectCode = 1, .Mpeg2 = false}, "PAL 16:9 MPEG1 25"},
      {{.AspectCode = 4, .FrameRateCode = 5}, " 16:9 MPEG2 0"},
      {{.Height = 480, .FrameRateCode = 1}, "NTSC 4:3 MPEG2 23.976 pulldown"},
      {{.DisplayWidth = 540}, "PAL 4:3 MPEG2 25 pan"},
      {{.DisplayWidth = 540, .ColourDescription = true}, "PAL 4:3 MPEG2 25 pan"},
      {{.DisplayWidth = 720}, "PAL 4:3 MPEG2 25"},
      {{.AspectCode = 3, .DisplayWidth = 540}, "PAL 16:9 MPEG2 25"},
      {{.FrameRateCode = 4}, "PAL 4:3 MPEG2 25", 1},
      {{.Height = 480}, "NTSC 4:3 MPEG2 30 pan", 1, true},
  };
  for (const auto& [sequence, attributes, pictures, displayExtension] : cases) {
    StreamBuilder stream;
    stream.Sequence(sequence).Group({.Hours = 1, .Minutes = 2, .Seconds = 3, .Pictures = 4});
    for (int i = 0; i < pictures; ++i) {
      stream.Picture({.Type = i == 0 ? 'I' : 'P', .DisplayExtension = displayExtension});
    }
    const VideoInfo info = Info(stream.Data());
    EXPECT_EQ(fmt::format("{} {} {} {}{}{}", info.Standard, info.Aspect, info.Coding, info.FrameRate,
                          info.PanScan ? " pan" : "", info.NeedsPulldown ? " pulldown" : ""),
              attributes);
    EXPECT_FALSE(Info(stream.Data(), true).NeedsPulldown);
    EXPECT_EQ(info.Width, 720);
    EXPECT_EQ(info.Height, sequence.Height);
    EXPECT_EQ(info.PicturesSeen, pictures);
    EXPECT_EQ(info.GroupTimeCode, fmt::format("{}", 3723 * (sequence.FrameRateCode == 3 ? 25 : 30) + 4));
  }
}

TEST_F(VideoFiles, HeadersAtEveryOffsetAroundABlocksEndAreFoundOnce) {
  for (std::size_t lead = PlainBlockBytes - 60; lead < PlainBlockBytes + 4; ++lead) {
    SCOPED_TRACE(lead);
    const Bytes stream = StreamBuilder()
                             .Raw(Bytes(lead, 0xFF))
                             .Sequence({.Height = 480, .FrameRateCode = 4, .DisplayWidth = 540})
                             .Group({.Seconds = 7})
                             .Picture({.RepeatFirstField = true})
                             .Picture({.Type = 'P'})
                             .Data();
    const VideoInfo info = Info(stream);
    ASSERT_EQ(info.Height, 480);
    ASSERT_TRUE(info.PanScan);
    ASSERT_EQ(info.Coding, "MPEG2");
    ASSERT_EQ(info.GroupTimeCode, "210");
    ASSERT_EQ(info.PicturesSeen, 2);
    const PictureIndex index = Scan(Folder / "v.m2v", PlainBlockBytes, true);
    ASSERT_EQ(index.Letters, "IRP");
    ASSERT_EQ(index.Entries.size(), 1U);
    ASSERT_EQ(index.Entries[0].Offset, lead);
  }
}

TEST_F(VideoFiles, IndexOfTwoGops) {
  StreamBuilder stream;
  stream.Sequence().Group().Picture({.TotalBytes = 5000});
  const std::size_t second = stream.Size();
  for (int i = 1; i < 12; ++i) {
    stream.Picture({.Type = i % 3 == 0 ? 'P' : 'B', .TotalBytes = 900, .RepeatFirstField = i % 2 == 1});
  }
  const std::size_t sequence = stream.Size();
  stream.Sequence().Group().Picture({.TotalBytes = 70000});  // over two plain blocks
  const std::size_t fourth = stream.Size();
  stream.Picture({.Type = 'P'}).Sequence().Picture({.TotalBytes = 100});  // one picture: no line
  const std::string file = Folder.Write("f.m2v", stream.Text());
  IndexStore store;
  const IndexRun run = BuildPictureIndex({{file, false}, {"", false}, {"x.bmp", true}}, file, store, Ui);
  EXPECT_TRUE(run.Complete);
  const std::string lines =
      fmt::format("Frame=0;Offset=0;Size={}\nFrame=15;Offset={};Size={}\nTotalFrames=18\n", second, sequence,
                  fourth - sequence);
  const std::string letters = "IBRBPRBBRPBRBPRBBRIPI\n";
  EXPECT_EQ(TempFolder::Read(IndexName(file)), Replace(lines, "\n", "\r\n"));
  EXPECT_EQ(TempFolder::Read(LettersName(file)), Replace(letters, "\n", "\r\n"));
  const std::string page = TempFolder::Read(SourceFile("docs/formats/picture_index.md"));
  EXPECT_THAT(page, testing::HasSubstr("```qvi\n" + lines + "```"));
  EXPECT_THAT(page, testing::HasSubstr("```gpi\n" + letters + "```"));
  EXPECT_EQ(ReadPictureIndex(TempFolder::Read(IndexName(file))).Entries, run.Files[0].Index.Entries);
}

TEST_F(VideoFiles, SingleAndRepeatedPictures) {
  const Bytes still = StreamBuilder().Sequence().Group().Picture({.TotalBytes = 3000}).SequenceEnd().Data();
  EXPECT_EQ(WritePictureIndex(Scan(Folder.Write("s", still), 0, false)),
            fmt::format("Frame=0;Offset=0;Size={}\r\nTotalFrames=1\r\n", still.size()));
  EXPECT_EQ(Scan(Folder.Write("f", BuildStream({.Gops = 2, .Pulldown = true})), 0, true).TotalFrames, 30);
  const PictureIndex fields =
      Scan(Folder.Write("p", BuildStream({.Gops = 2, .FieldPictures = true})), 0, true);
  EXPECT_EQ(fields.TotalFrames, 24);
  EXPECT_EQ(fields.Entries.at(1).Frame, 12);
  // Pictures of types 1, 2, 0 (none), 4 and 3, each cut by the next start code.
  const Bytes cut{0, 0, 1, 0x00, 0, 0x08, 0, 0, 1, 0x00, 0, 0x10, 0,    0, 1, 0x00, 0, 0x00,
                  0, 0, 1, 0x00, 0, 0x20, 0, 0, 1, 0x00, 0, 0x18, 0x80, 0, 0, 1,    0, 0};
  EXPECT_EQ(Scan(Folder.Write("c", cut), 0, true).Letters, "IP?B");
}

TEST_F(VideoFiles, IndexIsReusedWhateverItHoldsUnlessForced) {
  const std::string file = Folder.Write("v.m2v", BuildStream({}));
  Folder.Write("v.m2v.qvi", "");
  IndexStore store;
  IndexRun run = BuildPictureIndex({{file, false}}, "", store, Ui);
  EXPECT_EQ(run.Files[0].State, IndexState::Reused);
  EXPECT_EQ(TempFolder::Read(IndexName(file)), "");
  run = BuildPictureIndex({{file, false}}, "", store, Ui, true);
  EXPECT_EQ(run.Files[0].State, IndexState::Built);
  EXPECT_EQ(FindPictureIndex(file, store)->TotalFrames, 48);
  std::filesystem::last_write_time(IndexName(file),
                                   std::filesystem::last_write_time(file) - std::chrono::seconds(5));
  EXPECT_TRUE(IndexIsOlder(file));
}

TEST_F(VideoFiles, AnIndexOfAnotherFileIsTold) {
  const std::string other = WritePictureIndex(Scan(Folder.Write("o", BuildStream({.Gops = 9})), 0, false));
  const std::string own = WritePictureIndex(Scan(Folder.Write("v", BuildStream({})), 0, false));
  const std::pair<std::string, const char*> cases[] = {
      {own, ""},
      {"", "it holds nothing"},
      {other, "the file is shorter than it says"},
      {Replace(own, "Frame=0;Offset=0", "Frame=0;Offset=8"), "no sequence header stands where it says"}};
  for (const auto& [text, why] : cases) {
    const std::string file = Folder.Write("v.m2v", BuildStream({}));
    Folder.Write("v.m2v.qvi", text);
    IndexStore store;
    Ui.Messages.clear();
    BuildPictureIndex({{file, false}}, "", store, Ui);
    ASSERT_EQ(Ui.Messages.size(), *why == 0 ? 0U : 1U) << why;
    EXPECT_TRUE(Ui.Messages.empty() || Ui.Messages[0].Text.find(why) != std::string::npos);
  }
}

TEST_F(VideoFiles, AnIndexThatCannotBeWrittenIsKeptWithOneMessage) {
  const std::string first = Folder.Write("a.m2v", BuildStream({}));
  const std::string second = Folder.Write("b.m2v", BuildStream({}));
  std::filesystem::create_directory(IndexName(first));  // in the way: root is refused too
  std::filesystem::create_directory(IndexName(second));
  IndexStore store;
  const IndexRun run = BuildPictureIndex({{first, false}, {second, false}}, "", store, Ui, true);
  EXPECT_TRUE(run.Complete);
  EXPECT_EQ(run.Files[1].State, IndexState::KeptInMemory);
  ASSERT_EQ(Ui.Messages.size(), 1U);
  EXPECT_EQ(Ui.Messages[0].Text,
            "The index of '" + first +
                "' can't be written (Is a directory). Indexes are kept in memory for this run");
  EXPECT_EQ(FindPictureIndex(second, store)->TotalFrames, 48);
}

TEST_F(VideoFiles, AStoppedOrFailedRunLeavesNoIndex) {
  const std::string file = Folder.Write("a.m2v", BuildStream({.Gops = 30}));
  const auto run = [&](const std::vector<IndexSource>& files) {
    IndexStore store;
    EXPECT_FALSE(BuildPictureIndex(files, "", store, Ui).Complete);
    EXPECT_FALSE(std::filesystem::exists(IndexName(file)));
  };
  Ui.Answers = {false};
  run({{Folder / "none"}, {file}});  // the list stops at the first that cannot be opened
  Ui.StopWhen = [] { return true; };
  run({{file}});
  EXPECT_TRUE(Ui.Messages.empty());
  Ui.StopWhen = [&] {
    std::filesystem::resize_file(file, 100000);
    return false;
  };
  run({{file}});
  ASSERT_EQ(Ui.Messages.size(), 1U);
  EXPECT_EQ(Ui.Messages[0].Text, "The file '" + file + "' became shorter while it was read.");
}

// A window that holds the whole file, as the fast one does here, is no walk at all.
TEST_F(VideoFiles, IndexesAreTheSameForEveryBlockSize) {
  std::mt19937 random(7);
  const int rounds = TrialCount(200, 1000);
  for (int round = 0; round < rounds; ++round) {
    const bool longFile = round % 50 == 0;
    const std::string file =
        Folder.Write("random", RandomStream(random, (longFile ? 280000 : 30000) + random() % 70000));
    const PictureIndex fast = Scan(file, 0, true);
    EXPECT_GT(fast.Entries.size(), 0U);
    ASSERT_EQ(Scan(file, PlainBlockBytes, true), fast) << round;
    if (round % 10 == 0) {
      ASSERT_EQ(Scan(file, 37, true), fast) << round;
      ASSERT_EQ(WritePictureIndex(Scan(file, PlainBlockBytes, false)),
                WritePictureIndex(Scan(file, 0, false)));
    }
  }
}

TEST_F(VideoFiles, BytesThatAreNoVideo) {
  for (const std::string& content : {std::string(), std::string("abc"), std::string(100000, '\0'),
                                     std::string("\0\0\1\xB3", 4), std::string("\0\0\1\xB5\x10", 5)}) {
    const std::string file = Folder.Write("bad", content);
    const auto info = GetVideoInfo(file, false, Ui);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->Coding, "NO") << content.size();
    EXPECT_EQ(info->PicturesSeen, 0);
    EXPECT_EQ(WritePictureIndex(Scan(file, 0, false)), "TotalFrames=0\r\n");
  }
  EXPECT_FALSE(GetVideoInfo(Folder.Path().string(), false, Ui));
  EXPECT_EQ(Ui.Messages.size(), 1U);
  EXPECT_EQ(
      ReadPictureIndex("frame=9;OFFSET=99999999999999999999;size=\ngarbage\nTOTALFRAMES=x").Entries.size(),
      1U);
}

}  // namespace
}  // namespace quorvelant
