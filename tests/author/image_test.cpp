// Whole discs as images, read by those who know nothing of who wrote them.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "author/author.h"
#include "author/messages.h"
#include "disc_maker.h"
#include "support/image_readers.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class AuthoredImage : public testing::Test {
 protected:
  AuthoredImage() { maker.LoadSmall(2); }

  AuthorResult Author(bool withFolder, bool force = false) {
    maker.Ui.Messages.clear();
    BmpLoader bitmaps;
    AuthorOrder order{.Folder = withFolder ? maker.Folder : "",
                      .Regions = AllRegions,
                      .Pictures = &bitmaps,
                      .Force = force,
                      .Verify = verify};
    order.Image = ImageOrder{.Path = image, .Label = "SMALL_FILM", .Replace = force};
    order.Sync = false;
    return quorvelant::Author(maker.Disc, order, maker.Ui);
  }
  std::string LastCode() const {
    return maker.Ui.Messages.empty() ? "" : std::string(maker.Ui.Messages.back().Code);
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(out)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  DiscMaker maker{{.Width = 352, .Height = 288, .Frames = 60, .Closed = true, .KbitPerSecond = 500}};
  std::string out = maker.Temp / "out";
  std::string image = out + "/film.iso";
  bool made = fs::create_directory(out);
  bool verify = false;
};

TEST_F(AuthoredImage, HoldsTheFolderByBothFileSystems) {
  if (!HasImageReaders()) {
    GTEST_SKIP() << ImageReadersMissing;
  }
  const AuthorResult result = Author(true);
  ASSERT_EQ(result.Outcome, AuthorOutcome::Done);
  EXPECT_THAT(maker.Ui.Messages, IsEmpty());
  EXPECT_EQ(result.Image.Size, fs::file_size(image));
  const ImageFiles files = maker.Files();
  std::vector<std::string> names;
  for (const auto& [name, content] : files) {
    names.push_back(name);
  }
  EXPECT_TRUE(FilesByIso9660(image) == files);
  EXPECT_TRUE(FilesByUdf(image, names) == files);
  auto figures = UdfFigures(image);
  EXPECT_EQ(figures["complaints"], "");
  for (const auto& [key, value] : {std::pair{"label", "SMALL_FILM"},
                                   {"vid", "SMALL_FILM"},
                                   {"udfrev", "1.02"},
                                   {"integrity", "closed"},
                                   {"accesstype", "readonly"},
                                   {"numdirs", "3"},
                                   {"blocksize", "2048"}}) {
    EXPECT_EQ(figures[key], value) << key;
  }
  EXPECT_EQ(figures["numfiles"], std::to_string(files.size()));
  EXPECT_EQ(figures["blocks"], std::to_string(result.Image.Size / SectorBytes));
}

TEST_F(AuthoredImage, AloneLeavesNoFolder) {
  ASSERT_EQ(Author(true).Outcome, AuthorOutcome::Done);
  const std::string both = TempFolder::Read(image);
  fs::remove(image);
  ASSERT_EQ(Author(false).Outcome, AuthorOutcome::Done);
  EXPECT_TRUE(TempFolder::Read(image) == both);
  EXPECT_THAT(Names(), ElementsAre("film.iso"));
}

TEST_F(AuthoredImage, AStopLeavesNeitherFolderNorImage) {
  for (const char* stage : {"Writing VOBID", "Writing the image"}) {
    maker.Ui.StatusWords.clear();
    maker.Ui.StopWhen = [&] {
      return !maker.Ui.StatusWords.empty() && maker.Ui.StatusWords.back().starts_with(stage);
    };
    for (const bool withFolder : {true, false}) {
      EXPECT_EQ(Author(withFolder).Outcome, AuthorOutcome::Stopped) << stage;
      EXPECT_THAT(Names(), IsEmpty());
      EXPECT_FALSE(fs::exists(maker.Folder));
    }
  }
}

TEST_F(AuthoredImage, IsRefusedWhereItWouldHarm) {
  image = maker.Temp / "film.ac3";
  EXPECT_EQ(Author(true, true).Outcome, AuthorOutcome::Failed);
  EXPECT_EQ(LastCode(), "image-is-source");
  image = maker.Folder + "/film.iso";
  EXPECT_EQ(Author(true).Outcome, AuthorOutcome::Failed);
  EXPECT_EQ(LastCode(), "image-in-folder");
  EXPECT_FALSE(fs::exists(maker.Folder));
}

// The image is read once it is written: what went wrong there keeps both from their places.
TEST_F(AuthoredImage, IsProvenItself) {
  verify = true;
  ASSERT_EQ(Author(true).Outcome, AuthorOutcome::Done);
  EXPECT_THAT(maker.Ui.Messages, IsEmpty());
  const std::string whole = TempFolder::Read(image);
  ASSERT_EQ(Author(false, true).Outcome, AuthorOutcome::Done);
  EXPECT_TRUE(TempFolder::Read(image) == whole);
  fs::remove(image);
  fs::remove_all(maker.Folder);
  maker.Ui.StopWhen = [&] {  // a fault of the disk, between the menus and the titles
    const std::string aside = out + "/.film.iso.making";
    if (!maker.Ui.StatusWords.empty() && maker.Ui.StatusWords.back() == VerifyingStatus &&
        fs::exists(aside)) {
      std::fstream file(aside, std::ios::in | std::ios::out | std::ios::binary);
      file.seekp(-60 * static_cast<std::streamoff>(SectorBytes), std::ios::end);
      file << std::string(50 * SectorBytes, '\xFF');
    }
    return false;
  };
  for (const bool withFolder : {true, false}) {
    EXPECT_EQ(Author(withFolder).Outcome, AuthorOutcome::Failed) << withFolder;
    ASSERT_FALSE(maker.Ui.Messages.empty());
    EXPECT_THAT(maker.Ui.Messages.front().Place, testing::StartsWith(image + "/V"));
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_FALSE(fs::exists(maker.Folder));
  }
}

TEST_F(AuthoredImage, ThatCannotBeMadeLeavesNoFolder) {
  fs::create_directory(out + "/.film.iso.making");
  EXPECT_EQ(Author(true).Outcome, AuthorOutcome::Failed);
  EXPECT_EQ(LastCode(), "iso-aside-foreign");
  EXPECT_FALSE(fs::exists(maker.Folder));
  EXPECT_FALSE(fs::exists(image));
}

TEST_F(AuthoredImage, ThatCannotTakeItsNameIsToldOfItsFolder) {
  maker.Ui.StopWhen = [&] {  // another takes the name while the image is written
    if (!maker.Ui.StatusWords.empty() && maker.Ui.StatusWords.back() == ImageStatus) {
      fs::create_directory(image);
    }
    return false;
  };
  EXPECT_EQ(Author(true).Outcome, AuthorOutcome::Failed);
  EXPECT_EQ(LastCode(), "folder-without-image");
  EXPECT_TRUE(fs::exists(maker.Folder));
}

// The film stands on the disc twice, as the title and as its menu. Nothing but its size is large.
TEST_F(AuthoredImage, NineGigabytesAreAWarningForAFolderAndAnErrorForAnImage) {
  const std::string film = maker.Temp / "film.m2v";
  const std::string copy = maker.Temp / "copy.m2v";
  fs::copy_file(film, copy);
  fs::remove(film);
  fs::rename(copy, film);
  for (const auto& [bytes, warned, refused] : {std::tuple{std::uint64_t{4'100'000'000}, false, false},
                                               {std::uint64_t{4'200'000'000}, true, false},
                                               {std::uint64_t{4'500'000'000}, true, true}}) {
    fs::resize_file(film, bytes);
    const DiscPlan plan = PlanDisc(maker.Disc, Rules::Players, maker.Ui);
    const auto warning =
        std::ranges::find_if(plan.Findings, [](const Message& one) { return one.Is(message::DiscTooLarge); });
    EXPECT_EQ(warning != plan.Findings.end(), warned) << bytes;
    if (warned) {
      EXPECT_THAT(warning->Text, testing::HasSubstr("Film 4."));
    }
    if (refused) {
      EXPECT_EQ(Author(false).Outcome, AuthorOutcome::Failed);
      EXPECT_EQ(LastCode(), "image-too-large");
      EXPECT_THAT(Names(), IsEmpty());
    }
  }
}

}  // namespace
}  // namespace quorvelant
