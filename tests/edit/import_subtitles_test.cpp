#include "edit/import_subtitles.h"

#include <gtest/gtest.h>

#include "edit/messages.h"
#include "edit/palettes.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

struct SubtitleImportTest : testing::Test {
  SubtitleImportTest() {
    Track& track = project.Tracks.Add({});
    track.Standard = "PAL";
    track.SubStreams.resize(1);
    project.ScriptFile = folder / "film.qvp";
  }
  bool Import(const std::string& name, const std::string& text) {
    return ImportSubtitleScript(project, 0, 0, folder.Write(name, text), false, Rules::Players, ui);
  }
  const std::vector<SubPicturePlay>& Plays() { return project.Tracks[0].SubStreams[0].SubPlays; }

  TempFolder folder;
  Project project;
  RecordingUi ui;
};

TEST_F(SubtitleImportTest, AddsToTheListAndCountsRelativeFoldersFromTheScript) {
  const std::string entry = "SP_NUMBER\n1\t00:00:01:00\t00:00:02:00\ta.bmp\n";
  const struct {
    const char* Name;
    const char* Directory;
    const char* File;
  } cases[] = {{"a.sst", "Directory\tbitmaps\n", "bitmaps\\a.bmp"},
               {"subs/b.sst", "Directory\tbitmaps\n", "subs\\bitmaps\\a.bmp"},
               {"subs/c.sst", "", "subs\\a.bmp"},
               {"subs/d.sst", "Directory\tD:\\bitmaps\n", "D:\\bitmaps\\a.bmp"}};
  for (const auto& test : cases) {
    EXPECT_TRUE(Import(test.Name, test.Directory + entry));
    EXPECT_EQ(Plays().back().File, test.File);
  }
  EXPECT_EQ(Plays().size(), 4U);
  EXPECT_TRUE(project.Tracks[0].HasSubs && ui.Messages.empty());
}

TEST_F(SubtitleImportTest, TellsWhatIsWrongWithTheFile) {
  const struct {
    const char* Name;
    std::string Text;
    MessageKind Told;
    const char* Place;
  } cases[] = {
      {"empty.sst", std::string("\0\xFF\t\t(", 5), message::SubtitlesEmpty, "empty.sst"},
      {"half.sst", "SP_NUMBER\nnonsense\n1\t1\t2\ta.bmp\n", message::SubtitleLinePassedOver, "half.sst:2"},
      {"large.sst", std::string((16 << 20) + 1, '\n'), message::SubtitlesTooLarge, "large.sst"}};
  for (const auto& test : cases) {
    EXPECT_EQ(Import(test.Name, test.Text), test.Name == std::string("half.sst"));
    ASSERT_FALSE(ui.Messages.empty());
    EXPECT_TRUE(ui.Messages.back().Is(test.Told)) << ui.Messages.back().Text;
    EXPECT_EQ(ui.Messages.back().Place, folder / test.Place);
  }
}

TEST_F(SubtitleImportTest, OffersThePaletteOnce) {
  std::string text = "Palette Entries\n";
  for (int i = 0; i < 20; ++i) {
    text += "RGB" + std::to_string(i) + " (" + std::to_string(i) + ", 0 ,255)\n";
  }
  text += "SP_NUMBER\n1\t1\t2\ta.bmp\n";
  project.Palettes.Add({.Key = "Taken"});
  ui.Answers = {true};
  ui.Texts = {"Taken", "Mine"};
  Import("a.sst", text);
  EXPECT_EQ(ui.Questions.size(), 3U);
  ASSERT_EQ(ui.Messages.size(), 1U);
  EXPECT_TRUE(ui.Messages[0].Is(message::PaletteNameTaken));
  ASSERT_EQ(project.Palettes.Count(), 2U);
  const Palette_P& mine = *project.Palettes.Item("Mine");
  EXPECT_EQ(mine.PaletteColors[0], 0xFF0000U);
  EXPECT_EQ(mine.PaletteColors[15], 0xFF000FU);

  ui.Answers = {false, true};
  ui.Texts = {std::nullopt};
  Import("a.sst", text);
  Import("a.sst", text);
  EXPECT_EQ(project.Palettes.Count(), 2U);
}

TEST_F(SubtitleImportTest, UnattendedThePaletteIsTakenUnderAFreeName) {
  project.Palettes.Add({.Key = "Palette_3"});
  project.Palettes.Add({.Key = "Palette_4"});
  ui.Unattended = true;
  // Chains that show the track take it, but not one that has a palette.
  Title_P& title = project.Disc.Add({}).Title.Add({});
  for (const char* palette : {"Default", "Palette_3"}) {
    PGC_P& chain = title.PGC.Add({});
    chain.PaletteName = palette;
    chain.PG.Add({}).Cell.Add({}).SegmentUsed = 0;
  }
  Import("a.sst", "Palette entries\n");
  EXPECT_EQ(title.PGC.Item(1)->PaletteName, "Palette_5");
  EXPECT_EQ(title.PGC.Item(2)->PaletteName, "Palette_3");
  ASSERT_GE(ui.Messages.size(), 2U);
  EXPECT_TRUE(ui.Messages[ui.Messages.size() - 1].Is(message::PaletteKeptByChains) ||
              ui.Messages[ui.Messages.size() - 2].Is(message::PaletteKeptByChains));
  EXPECT_NE(project.Palettes.Item("Palette_5"), nullptr);
  EXPECT_TRUE(UpdatePalette(project, "Palette_5", PaletteFrom(std::array<Color, 2>{1, 2})));
  EXPECT_EQ(project.Palettes.Item("Palette_5")->PaletteColors[1], 2U);
  EXPECT_FALSE(UpdatePalette(project, "palette_5", {}));
}

}  // namespace
}  // namespace quorvelant
