#include "analysis/picture_index.h"
#include "command_run.h"
#include "platform/platform_pictures.h"
#include "support/media.h"

namespace quorvelant {
namespace {

using testing::HasSubstr;

Picture Shades(int width, int height) {
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto shade = static_cast<std::uint32_t>(20 + x * 200 / width);
      picture.Set(x, y, shade | shade << 8 | static_cast<std::uint32_t>(20 + y * 200 / height) << 16);
    }
  }
  return picture;
}

TEST(CommandPicture, BitmapToStillToPicture) {
  const TempFolder folder;
  const auto service = MakePlatformPictures();
  for (const auto& [width, height] : {std::pair{720, 576}, {720, 480}, {360, 288}, {360, 240}}) {
    const Picture picture = Shades(width, height);
    service->Save(picture, folder / "in.bmp");
    ASSERT_EQ(CommandRun({"still", folder / "in.bmp", folder / "still.m2v", "--wide"}).Status, ExitDone);
    const std::string stream = TempFolder::Read(folder / "still.m2v");
    EXPECT_EQ(stream[7], height % 288 == 0 ? 0x33 : 0x34);
    EXPECT_EQ(stream.substr(stream.size() - 4), std::string("\x00\x00\x01\xB7", 4));
    for (const std::string name : {"out.png", "out.bmp"}) {
      ASSERT_EQ(CommandRun({"picture", folder / "still.m2v", "-o", folder / name}).Status, ExitDone);
      const Picture shown = service->Load(folder / name);
      ASSERT_EQ(shown.Width, 720);
      ASSERT_EQ(shown.Height, height < 400 ? height * 2 : height);
      const int scale = 720 / width;
      for (int i = 0; i < width; i += 37) {
        const auto before = picture.At(i, height / 2);
        const auto after = shown.At(i * scale, height / 2 * scale);
        for (const unsigned shift : {0U, 8U, 16U}) {
          EXPECT_NEAR((before >> shift) & 0xFF, (after >> shift) & 0xFF, 5) << width << " " << i;
        }
      }
    }
  }
}

TEST(CommandPicture, TakesTheNearestIndexedPicture) {
  const TempFolder folder;
  const std::string film = folder / "film.m2v";
  std::filesystem::copy_file(SampleVideo({.Frames = 50, .GopLength = 12, .BFrames = 0}), film);
  EXPECT_THAT(CommandRun({"picture", film, "-o", folder / "a.png"}).Out,
              HasSubstr("720x576, frame 0 (00:00:00:00)"));
  EXPECT_THAT(CommandRun({"picture", film, "--at", "00:00:01:00", "-o", folder / "b.png"}).Out,
              HasSubstr("frame 24 (00:00:00:24)"));
  EXPECT_THAT(CommandRun({"picture", film, "--at", "10:00:00:00", "-o", folder / "c.png"}).Out,
              HasSubstr("frame 48"));
  EXPECT_FALSE(std::filesystem::exists(IndexName(film)));
  // An index that is there is used, even one that points behind the end.
  folder.Write("film.m2v.qvi", "Frame=3;Offset=99999999;Size=10\r\nTotalFrames=50\r\n");
  const CommandRun behind({"picture", film, "-o", folder / "d.png"});
  EXPECT_EQ(behind.Status, ExitFailed);
  ASSERT_EQ(behind.Messages.size(), 1U);
  EXPECT_EQ(behind.Messages[0].Place, film + "@99999999");
  EXPECT_FALSE(std::filesystem::exists(folder / "d.png"));
}

TEST(CommandPicture, SaysWhatIsWrong) {
  const TempFolder folder;
  const std::string text = folder.Write("text.m2v", "no video");
  MakePlatformPictures()->Save(Picture(100, 100), folder / "small.bmp");
  EXPECT_EQ(CommandRun({"picture", text, "-o", folder / "x.png"}).LastText(), "this is no MPEG video");
  EXPECT_EQ(CommandRun({"picture", folder / "missing.m2v", "-o", folder / "x.png"}).Status, ExitFailed);
  EXPECT_THAT(CommandRun({"picture", text, "--at", "soon", "-o", folder / "x.png"}).Err,
              HasSubstr("soon is no time"));
  EXPECT_THAT(CommandRun({"picture", text, "-o", "x.gif"}).Err,
              HasSubstr("x.gif is no picture that can be written"));
  EXPECT_EQ(CommandRun({"still", folder / "small.bmp", folder / "x.m2v"}).LastText(),
            "Image sizes must be 720*576 or 360*288 or 720*480 or 360*240");
  EXPECT_EQ(CommandRun({"still", folder / "missing.bmp", folder / "x.m2v"}).Status, ExitFailed);
  MakePlatformPictures()->Save(Picture(720, 576), folder / "full.bmp");
  EXPECT_THAT(CommandRun({"still", folder / "full.bmp", folder / "missing/x.m2v"}).LastText(),
              HasSubstr("cannot be written"));
}

}  // namespace
}  // namespace quorvelant
