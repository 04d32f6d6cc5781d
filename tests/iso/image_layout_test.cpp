#include "iso/image_layout.h"

#include <gmock/gmock.h>

#include "disc/disc_media.h"
#include "iso/image_writer.h"
#include "small_tree.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t GibSectors = 524287;  // of a VOB file that is full

ImageLayout LayoutOf(const SmallTree& disc) {
  std::vector<Message> faults;
  ImageLayout layout = LayOutImage(disc.Tree, faults);
  EXPECT_THAT(faults, IsEmpty());
  return layout;
}

std::string FaultOf(const DiscTree& tree) {
  std::vector<Message> faults;
  const ImageLayout layout = LayOutImage(tree, faults);
  EXPECT_TRUE(faults.empty() || layout.Files.empty());
  return faults.empty() ? "" : fmt::format("{} {}", faults[0].Code, faults[0].Place);
}

// Names with the sectors from the first file on.
std::vector<std::string> PlacesOf(const ImageLayout& layout) {
  std::vector<std::string> places;
  for (const PlacedFile& file : layout.Files) {
    places.push_back(fmt::format("{} {}", file.File.Name, file.Start - layout.Files[0].Start));
  }
  return places;
}

TEST(ImageLayout, FilesStandWhereTheTablesSay) {
  const SmallTree disc(4, 7, {{.Ifo = 2, .MenuVob = 5, .TitleVobs = {30, 6}, .GapBeforeBackup = 3}, {}});
  const ImageLayout layout = LayoutOf(disc);
  EXPECT_THAT(PlacesOf(layout),
              ElementsAre("VIDEO_TS.IFO 0", "VIDEO_TS.VOB 4", "VIDEO_TS.BUP 11", "VTS_01_0.IFO 15",
                          "VTS_01_0.VOB 17", "VTS_01_1.VOB 22", "VTS_01_2.VOB 52", "VTS_01_0.BUP 61",
                          "VTS_02_0.IFO 63", "VTS_02_1.VOB 66", "VTS_02_0.BUP 86"));
  EXPECT_EQ(layout.Sectors % 16, 0U);
  EXPECT_GT(layout.Sectors, layout.Files.back().End());
  EXPECT_LE(layout.Sectors, layout.Files.back().End() + 16);
  EXPECT_FALSE(layout.TwoLayers);
}

// Without a menu the Video Manager's two files touch; sets of few sectors want their own start.
TEST(ImageLayout, AnIfoAndItsBackupLieInBlocksOfTheirOwn) {
  for (std::uint32_t ifo = 2; ifo <= 40; ++ifo) {
    for (const std::uint32_t vob : {1U, 9U, 14U, 200U}) {
      const ImageLayout layout =
          LayoutOf(SmallTree(ifo, vob == 9 ? 12 : 0, {{.Ifo = ifo, .TitleVobs = {vob}}}));
      for (const std::size_t first : {0U, 1U}) {
        const bool together = std::ranges::find(layout.Together, first) != layout.Together.end();
        const std::string base = first == 0 ? "VIDEO_TS" : "VTS_01_0";
        const auto file = [&](const std::string& name) {
          return std::ranges::find(layout.Files, name, [](const PlacedFile& one) { return one.File.Name; });
        };
        EXPECT_EQ(together, (file(base + ".IFO")->End() - 1) / 16 == file(base + ".BUP")->Start / 16) << ifo;
        EXPECT_FALSE(together && (first == 0 || vob > 14)) << ifo << " " << vob;
      }
    }
  }
  // Both touch, and 13 sectors lie between the places where they do.
  EXPECT_THAT(LayoutOf(SmallTree(2, 0, {{.Ifo = 9, .TitleVobs = {1}}})).Together, ElementsAre(1));
}

TEST(ImageLayout, TablesThatContradictTheFilesAreRefused) {
  const SmallTree good(3, 5, {{.MenuVob = 6}, {}});
  EXPECT_EQ(FaultOf(good.Tree), "");
  const struct {
    std::size_t Set;
    std::size_t At;
    std::uint32_t Value;
    const char* Fault;
  } cases[] = {{0, 0x0C, 8, "iso-tables-disagree /disc/VIDEO_TS.BUP"},
               {0, 0xC0, 2, "iso-tables-disagree /disc/VIDEO_TS.VOB"},
               {0, SectorBytes + 8 + 8, 10, "iso-tables-disagree /disc/VTS_01_0.IFO"},
               {0, SectorBytes + 20 + 8, 0, "iso-tables-disagree /disc/VTS_02_0.IFO"},
               {1, 0xC4, 8, "iso-tables-disagree /disc/VTS_01_1.VOB"},
               {2, 0x0C, 24, "iso-tables-disagree /disc/VTS_02_0.BUP"},
               {2, 0x0C, 0xFFFFFFFF, "iso-too-large "},
               {0, SectorBytes + 20 + 8, 0xFFFFFFF0, "iso-too-large "}};
  for (const auto& test : cases) {
    DiscTree tree = good.Tree;
    PutBytes(tree.Sets[test.Set].Tables, test.At, 4, test.Value);
    EXPECT_EQ(FaultOf(tree), test.Fault) << test.At;
  }
}

// A title of five GiB: from the middle on the first cell at a block's start. The manager's menu leaves the
// start of all free, so that any cell can be given one.
TEST(ImageLayout, TheSecondLayerBeginsWithACellFromTheMiddleOn) {
  std::vector<std::uint32_t> cells{0};
  while (cells.size() < 100) {
    cells.push_back(cells.back() + 26'003);
  }
  const SmallTree disc(
      3, 60, {{.TitleVobs = {GibSectors, GibSectors, GibSectors, GibSectors, GibSectors}, .Cells = cells}});
  const ImageLayout layout = LayoutOf(disc);
  EXPECT_TRUE(layout.TwoLayers);
  ASSERT_TRUE(layout.Break);
  EXPECT_EQ(layout.Break->Sector % 16, 0U);
  EXPECT_GE(layout.Break->Sector, layout.Sectors / 2);
  EXPECT_LT(layout.Break->Sector, layout.Sectors / 2 + 26'003 + 1000);
  const std::uint32_t titles = layout.Files[4].Start;
  EXPECT_EQ(layout.Break->Sector, titles + cells[layout.Break->Cell - 1]);
  EXPECT_EQ(layout.Break->Set, 1U);
  EXPECT_EQ(layout.Break->Pgc, 1U);
  ASSERT_EQ(layout.Break->Marks.size(), 1U);
  EXPECT_EQ(layout.Break->Marks[0].At, SmallTree::CategoryAt(layout.Break->Cell - 1));
  EXPECT_EQ(layout.Break->Marks[0].Value, 0);
}

TEST(ImageLayout, WithoutACellThereIsNoBreak) {
  const std::vector<std::uint32_t> full(5, GibSectors);
  const struct {
    std::uint32_t Menu;
    std::vector<std::uint32_t> Cells;
    std::uint8_t Category;
    bool Found;
  } cases[] = {
      {60, {0, 1'400'003}, 0x08, true},  {60, {0, 1'200'000}, 0x08, false},  // ahead of the middle
      {60, {0, 2'090'000}, 0x08, false},                                     // more than a layer holds
      {60, {0, 1'400'003}, 0x58, false},                                     // of an angle
      {60, {0, 1'400'003}, 0x0C, false},                                     // interleaved
      {0, {0, 1'400'008}, 0x08, true},  // the manager's two files fix where all stands
      {0, {0, 1'400'003}, 0x08, false},
  };
  for (const auto& test : cases) {
    SmallTree disc(8, test.Menu, {{.Ifo = 16, .TitleVobs = full, .Cells = test.Cells}});
    disc.Tree.Sets[1].Tables[SmallTree::CategoryAt(1)] = test.Category;
    const ImageLayout layout = LayoutOf(disc);
    EXPECT_THAT(layout.Together, IsEmpty());
    EXPECT_EQ(layout.Break.has_value(), test.Found) << test.Menu << " " << test.Cells[1];
  }
}

TEST(ImageLayout, NineGigabytesAreTooLarge) {
  const std::vector<SetSizes> full(9, {.TitleVobs = {463'450}});
  EXPECT_EQ(FaultOf(SmallTree(3, 0, full).Tree), "");
  EXPECT_EQ(FaultOf(SmallTree(3, 400, full).Tree), "iso-too-large ");
}

// Any bytes of tables give a layout or a fault.
TEST(ImageLayout, DamagedTablesAreNoHarm) {
  const SmallTree good(3, 5, {{.MenuVob = 6, .Cells = {0, 8}}, {}});
  for (std::size_t set = 0; set < good.Tree.Sets.size(); ++set) {
    for (std::size_t at = 0; at < good.Tree.Sets[set].Tables.size(); ++at) {
      DiscTree tree = good.Tree;
      tree.Sets[set].Tables[at] = 0xFF;
      (void)FaultOf(tree);
    }
    DiscTree cut = good.Tree;
    cut.Sets[set].Tables.resize(SectorBytes);
    (void)FaultOf(cut);
  }
}

// 99 sets of ten VOB files: the names fill many sectors of both directories.
TEST(ImageHead, ALargeDirectoryHasRoom) {
  const SmallTree disc(
      30, 1, std::vector<SetSizes>(99, {.MenuVob = 1, .TitleVobs = std::vector<std::uint32_t>(9, 1)}));
  const ImageLayout layout = LayoutOf(disc);
  EXPECT_EQ(layout.Files.size(), 3U + 99 * 12);
  const Bytes head = ImageHead(layout, {.Label = "FULL"});
  EXPECT_EQ(head.size(), layout.Files[0].Start * SectorBytes);
  const std::uint32_t entry =
      image_sector::Partition + image_block::VideoNames + VideoNameBlocks(layout.Files.size()) + 1190;
  EXPECT_EQ(VideoNameBlocks(layout.Files.size()), 31U);
  EXPECT_LT(entry, layout.Files[0].Start);
  EXPECT_EQ(GetBytes(head, entry * SectorBytes, 2), 0x0501U);  // the last file's entry
}

}  // namespace
}  // namespace quorvelant
