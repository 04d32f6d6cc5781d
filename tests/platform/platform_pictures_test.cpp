#include "platform/platform_pictures.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtGlobal>
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "picture/bmp.h"
#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

Picture Ramp(int width, int height) {
  Picture picture(width, height);
  for (int i = 0; i < width * height; ++i) {
    picture.Set(i % width, i / width, static_cast<std::uint32_t>(i * 77) & 0xFFFFFF);
  }
  return picture;
}

TEST(PlatformPictures, SavesAndLoadsWithoutADisplay) {
  unsetenv("DISPLAY");
  unsetenv("WAYLAND_DISPLAY");
  const TempFolder folder;
  const auto service = MakePlatformPictures();
  const Picture picture = Ramp(7, 5);
  for (const char* name : {"a.bmp", "b.PNG"}) {
    service->Save(picture, folder / name);
    EXPECT_EQ(service->Load(folder / name), picture) << name;
  }
  // The bitmap is the system's own, byte for byte.
  const Bytes own = WriteBmp(picture);
  EXPECT_EQ(TempFolder::Read(folder / "a.bmp"), std::string(own.begin(), own.end()));
  EXPECT_THROW(service->Save(picture, folder / "c.gif"), PictureError);
  EXPECT_THROW(service->Save(picture, folder / "no/such/folder.png"), PictureError);
}

// Files of other programs: what a photograph and a scan look like.
TEST(PlatformPictures, LoadsWhatOtherProgramsWrote) {
  const TempFolder folder;
  const std::string make = "ffmpeg -v error -f lavfi -i color=c=0x3060C0:s=64x48,format=rgb24 -frames:v 1 ";
  if (std::system((make + "-y " + (folder / "a.jpg") + " 2> /dev/null").c_str()) != 0) {
    GTEST_SKIP() << "ffmpeg is not at hand";
  }
  ASSERT_EQ(std::system((make + "-pix_fmt gray16be -y " + (folder / "grey.png")).c_str()), 0);
  const auto service = MakePlatformPictures();
  const Picture jpeg = service->Load(folder / "a.jpg");
  EXPECT_EQ(jpeg.Width, 64);
  EXPECT_NEAR(jpeg.At(30, 30) & 255, 0x30, 4);
  EXPECT_NEAR(jpeg.At(30, 30) >> 16, 0xC0, 4);
  const Picture grey = service->Load(folder / "grey.png");
  EXPECT_EQ(grey.At(0, 0) & 255, grey.At(0, 0) >> 16);
}

// Four inks as print programs write them, upside down: all of cyan and half of the others.
TEST(PlatformPictures, LoadsJpegOfFourInks) {
  Bytes jpeg{
      0xFF, 0xD8,                                                            //
      0xFF, 0xEE, 0, 14, 'A',  'd', 'o', 'b', 'e', 0, 100, 0,  0, 0, 0,  0,  // no transform
      0xFF, 0xC0, 0, 20, 8,    0,   8,   0,   8,   4, 1,   17, 0, 2, 17, 0, 3, 17, 0, 4, 17, 0,  // 8 by 8
      0xFF, 0xC4, 0, 21, 0x00, 1,   1,   0,   0,   0, 0,   0,  0, 0, 0,  0, 0, 0,  0, 0, 0,  0x00,
      0x0B,  // DC: 0, 10
      0xFF, 0xC4, 0, 20, 0x10, 1,   0,   0,   0,   0, 0,   0,  0, 0, 0,  0, 0, 0,  0, 0, 0,  0x00,  // AC: 0
      0xFF, 0xDB, 0, 67, 0};
  jpeg.insert(jpeg.end(), 64, 1);
  const Bytes scan{0xFF, 0xDA, 0,    14,   4,   1, 0, 2, 0, 3, 0, 4, 0, 0, 63, 0,  //
                   0x9F, 0xF8, 0x0F, 0xFF, 0xD9};  // -1024, and three zeros; the end
  jpeg.insert(jpeg.end(), scan.begin(), scan.end());
  const TempFolder folder;
  folder.Write("inks.jpg", {reinterpret_cast<const char*>(jpeg.data()), jpeg.size()});
  const std::uint32_t color = MakePlatformPictures()->Load(folder / "inks.jpg").At(4, 4);
  EXPECT_EQ(color & 255, 0U);
  EXPECT_NEAR(color >> 8 & 255, 64, 1);
  EXPECT_NEAR(color >> 16, 64, 1);
}

TEST(PlatformPictures, RefusesAndNamesTheFile) {
  const TempFolder folder;
  const auto service = MakePlatformPictures();
  service->Save(Ramp(64, 64), folder / "a.png");
  const std::string png = TempFolder::Read(folder / "a.png");
  folder.Write("cut.png", png.substr(0, png.size() / 2));
  // 30000x30000, 8 bits, three colours, and the checksum of that.
  const std::string header("\x00\x00\x75\x30\x00\x00\x75\x30\x08\x02\x00\x00\x00\xe9\x45\x6f\xed", 17);
  folder.Write("huge.png", std::string(png).replace(16, 17, header));
  folder.Write("text.png", "no picture at all");
  folder.Write("empty.jpg", "");
  for (const auto& [name, text] : {std::pair{"cut.png", "the picture cannot be read"},
                                   {"huge.png", "a picture of 30000x30000 is too large"},
                                   {"text.png", "this is no picture that can be read"},
                                   {"empty.jpg", "the file is empty"},
                                   {"none.png", "the file does not exist"}}) {
    EXPECT_THAT([&] { service->Load(folder / name); },
                ThrowsMessage<PictureError>(HasSubstr(fmt::format("{}: {}", name, text))));
  }
  EXPECT_THROW(MakePlatformPictures({.MostSide = 63})->Load(folder / "a.png"), PictureError);
}

// A worker's pictures are the same, and what the program has set for its whole process stays.
TEST(PlatformPictures, TwoThreadsLoadAtOnceAndTheProgramsMessageHandlerStays) {
  static std::atomic<int> heard{0};
  const QtMessageHandler own = [](QtMsgType, const QMessageLogContext&, const QString&) { ++heard; };
  const TempFolder folder;
  const auto service = MakePlatformPictures();
  const Picture picture = Ramp(64, 64);
  service->Save(picture, folder / "a.png");
  folder.Write("text.png", "no picture at all");
  const QtMessageHandler before = qInstallMessageHandler(own);
  const auto load = [&] {
    const auto mine = MakePlatformPictures();
    for (int i = 0; i < 50; ++i) {
      EXPECT_EQ(mine->Load(folder / "a.png"), picture);
      EXPECT_THROW(mine->Load(folder / "text.png"), PictureError);
    }
  };
  {
    const std::jthread one(load);
    const std::jthread two(load);
  }
  heard = 0;
  qWarning("the program's own");
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(qInstallMessageHandler(before), own);
}

// What is measured is what is drawn, leaning and joined letters too.
TEST(PlatformPictures, TextCoversWhatWasMeasured) {
  const auto service = MakePlatformPictures();
  struct Case {
    const char* Text;
    TextStyle Style;
  };
  const TextStyle soft{.Font = "sans-serif", .PixelHeight = 30, .Smooth = true, .Color = 0xFFFFFF};
  std::vector<Case> cases{
      {"Wharf", soft}, {"jWf", soft}, {"\u0641\u064A\u0644\u0645", soft}, {"\u6620", soft}};
  cases[1].Style.Italic = true;
  cases.push_back({"Wide letters", soft});
  cases.back().Style.Stretch = 70;
  cases.push_back({"Hard", soft});
  cases.back().Style.Smooth = false;
  cases.push_back({"struck", soft});
  cases.back().Style.StrikeOut = true;
  for (const Case& c : cases) {
    constexpr int Origin = 40;
    Picture picture(400, 120);
    service->DrawText(picture, Origin, Origin, c.Text, c.Style);
    const TextSize size = service->MeasureText(c.Text, c.Style);
    int left = 400;
    int right = 0;
    for (int y = 0; y < picture.Height; ++y) {
      for (int x = 0; x < picture.Width; ++x) {
        if (picture.At(x, y) != 0) {
          left = std::min(left, x);
          right = std::max(right, x);
          EXPECT_TRUE(y - Origin >= size.InkTop && y - Origin < size.InkBottom) << c.Text << " row " << y;
        }
      }
    }
    EXPECT_GE(left - Origin, std::min(size.InkLeft, 0)) << c.Text;
    EXPECT_LT(right - Origin, std::max(size.InkRight, size.Width)) << c.Text;
    EXPECT_GT(right - left, size.Width / 2) << c.Text;
  }
  TextStyle struck = soft;
  struck.StrikeOut = true;
  Picture blank(60, 60);
  service->DrawText(blank, 0, 0, "    ", struck);
  EXPECT_NE(blank, Picture(60, 60));
}

TEST(PlatformPictures, FontsAndLettersThatAreMissingAreKnown) {
  const auto service = MakePlatformPictures();
  const TextStyle style{.Font = "sans-serif"};
  EXPECT_EQ(service->MissingLetters("A film, \u042F \u6620\u753B e\u0301 \u200E", style), "");
  // An unassigned plane of letters, in no font.
  EXPECT_EQ(service->MissingLetters("a\U00012345b\U00012345 \xFF", style), "\U00012345\uFFFD");
  EXPECT_EQ(service->FontTaken("dejavu sans"), "dejavu sans");
  EXPECT_EQ(service->FontTaken("sans-serif"), "sans-serif");
  EXPECT_NE(service->FontTaken("No Such Face"), "No Such Face");
}

// The program alone in a folder: bitmaps are its own, and for the rest it says what it lacks.
TEST(PlatformPictures, WithoutItsModuleTheProgramTakesBitmapsAndSaysSo) {
  const TempFolder folder;
  const std::string program = folder / "bin/quorvelant";
  std::filesystem::create_directory(folder / "bin");
  std::filesystem::copy_file(BuildFile("quorvelant"), program);
  const auto service = MakePlatformPictures();
  service->Save(Ramp(720, 576), folder / "a.bmp");
  service->Save(Ramp(720, 576), folder / "a.png");
  const auto still = [&](const std::string& input) {
    const std::string words = fmt::format("'{}' still {} a.m2v --force > out 2>&1", program, input);
    return std::system(fmt::format("cd '{}' && {}", folder.Path().string(), words).c_str());
  };
  EXPECT_EQ(still("a.bmp"), 0) << TempFolder::Read(folder / "out");
  EXPECT_NE(still("a.png"), 0);
  EXPECT_THAT(TempFolder::Read(folder / "out"),
              HasSubstr("a.png: pictures other than Windows bitmaps need the module quorvelant_pictures.so"));
  // Where an installation puts it.
  std::filesystem::create_directories(folder / "lib/quorvelant");
  const std::string module = "quorvelant_pictures.so";
  std::filesystem::copy_file(BuildFile(module), folder / ("lib/quorvelant/" + module));
  EXPECT_EQ(still("a.png"), 0) << TempFolder::Read(folder / "out");
  folder.Write("cut.png", TempFolder::Read(folder / "a.png").substr(0, 1000));
  EXPECT_NE(still("cut.png"), 0);  // and the decoder prints nothing besides
  EXPECT_THAT(TempFolder::Read(folder / "out"), testing::MatchesRegex("error: [^\n]*cannot be read[^\n]*\n"));
}

TEST(PlatformPictures, Scales) {
  const auto service = MakePlatformPictures();
  Picture two(2, 1);
  two.Set(1, 0, 0xFFFFFF);
  const Picture sharp = service->Scale(two, 4, 2, false);
  EXPECT_EQ(sharp.At(1, 1), 0U);
  EXPECT_EQ(sharp.At(2, 0), 0xFFFFFFU);
  EXPECT_EQ(service->Scale(Ramp(64, 64), 360, 288, true).Width, 360);
  EXPECT_THROW(service->Scale(two, 0, 2, true), PictureError);
  EXPECT_THROW(service->Scale(two, 30000, 30000, true), PictureError);
}

TEST(PlatformPictures, DrawsTextInItsColoursAlone) {
  const auto service = MakePlatformPictures();
  Picture page(200, 60);
  std::fill(page.Pixels.begin(), page.Pixels.end(), std::uint8_t{0xFF});
  const Picture blank = page;
  service->DrawText(page, 10, 5, "Play \xC3\xA9",
                    {.Font = "Arial", .PixelHeight = 40, .Bold = true, .Color = 0x0000F0});
  int drawn = 0;
  for (int i = 0; i < 200 * 60; ++i) {
    const std::uint32_t color = page.At(i % 200, i / 200);
    // No soft edges: subtitles have four colours.
    EXPECT_TRUE(color == 0xFFFFFF || (color == 0x0000F0 && i % 200 >= 8)) << color;
    drawn += color == 0x0000F0 ? 1 : 0;
  }
  EXPECT_GT(drawn, 200);
  Picture soft = blank;
  service->DrawText(soft, 10, 5, "Play", {.PixelHeight = 40, .Smooth = true, .Color = 0x0000F0});
  EXPECT_NE(soft, page);
}

// Red, green of which four fifths show, blue of which two fifths do, and nothing.
TEST(PlatformPictures, SeeThroughPixelsAreWhiteOrBackground) {
  constexpr char File[] =  // NOLINT(modernize-avoid-c-arrays): it holds zeros
      "\x89\x50\x4E\x47\x0D\x0A\x1A\x0A\x00\x00\x00\x0D\x49\x48\x44\x52\x00\x00\x00\x04\x00\x00\x00\x01"
      "\x08\x06\x00\x00\x00\xF9\x3C\x0F\xCD\x00\x00\x00\x16\x49\x44\x41\x54\x78\xDA\x63\xF8\xCF\xC0\xF0"
      "\x1F\x08\x4F\x00\xA9\x14\x4E\x4E\x4E\x06\x00\x37\x30\x05\x44\x79\x31\x3C\xEB\x00\x00\x00\x00\x49"
      "\x45\x4E\x44\xAE\x42\x60\x82";
  const TempFolder folder;
  folder.Write("a.png", std::string(File, 79));
  const auto service = MakePlatformPictures();
  const Picture onWhite = service->Load(folder / "a.png");
  EXPECT_EQ(onWhite.At(0, 0), 0x0000FFU);
  EXPECT_EQ(onWhite.At(3, 0), 0xFFFFFFU);
  const Picture over = service->LoadOver(folder / "a.png", 0x123456);
  EXPECT_THAT((std::array{over.At(0, 0), over.At(1, 0), over.At(2, 0), over.At(3, 0)}),
              testing::ElementsAre(0x0000FFU, 0x00FF00U, 0x123456U, 0x123456U));
}

}  // namespace
}  // namespace quorvelant
