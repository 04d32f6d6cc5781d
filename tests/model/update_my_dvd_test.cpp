#include "model/update_my_dvd.h"

#include <gtest/gtest.h>

#include "model/default_structure.h"
#include "model/keys.h"

namespace quorvelant {
namespace {

constexpr const char* ProgramPlace = "VTS1.TITLE1.PGC1.PG1";

class UpdateMyDVDTest : public testing::Test {
 protected:
  UpdateMyDVDTest() {
    MakeDefaultStructure(Work);
    PG_P program;
    program.Key = ProgramPlace;
    FindPgc(Work.Disc, ProgramPlace)->PG.Add(program);
    Track& track = AddTrack();
    track.Standard = "PAL";
    track.Aspect = "16:9";
    track.Pan = true;
  }
  Track& AddTrack() {
    Track track;
    track.TrackName = "Track_" + std::to_string(Work.Tracks.Count() + 1);
    track.TrackType = "Motion";
    track.Scenes.emplace_back().Name = track.TrackName + "_Scene1";
    return Work.Tracks.Add(std::move(track));
  }
  DiscUpdate Place(std::int32_t segment = 0) const {
    DiscUpdate update;
    update.Key = ProgramPlace;
    update.AddCell = true;
    update.TrackName = Work.Tracks[static_cast<std::size_t>(segment)].TrackName;
    update.Segment = segment;
    update.NewName = "Cell1 ->";
    return update;
  }
  Project Work;
};

TEST_F(UpdateMyDVDTest, ThePlacedCellCarriesTheTrackUpward) {
  DiscUpdate update = Place();
  update.Seamless = true;
  const Cell_P* cell = UpdateMyDVD(Work, update);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->SceneUsed, "Track_1_Scene1");
  EXPECT_EQ(cell->CellName, "Cell1 ->");
  EXPECT_TRUE(cell->Seamless && cell->EnableSeamlessFlag);
  EXPECT_TRUE(Work.Tracks[0].UsedInStructure);
  EXPECT_EQ(Work.Disc.Item(2)->Standard(), "PAL");
  EXPECT_EQ(Work.Disc.Item(2)->VTSTitleInfo.Aspect, "16:9");
  EXPECT_FALSE(Work.Disc.Item(2)->VTSMenuInfo.Set) << "a title's track is no menu's";
}

TEST_F(UpdateMyDVDTest, PanOnceOnStaysOn) {
  AddTrack().Aspect = "4:3";
  UpdateMyDVD(Work, Place(0));
  UpdateMyDVD(Work, Place(1));
  EXPECT_TRUE(Work.Disc.Item(2)->VTSTitleInfo.Pan);
  EXPECT_EQ(Work.Disc.Item(2)->VTSTitleInfo.Aspect, "4:3");
}

TEST_F(UpdateMyDVDTest, CounterZeroIsTheLastCell) {
  UpdateMyDVD(Work, Place());
  UpdateMyDVD(Work, Place());
  DiscUpdate again = Place();
  again.ReNameOnly = true;
  again.NewName = "last";
  EXPECT_EQ(UpdateMyDVD(Work, again), FindProgram(Work.Disc, ProgramPlace)->Cell.Item(2));
  again.CellCounter = 1;
  again.KeepName = true;
  again.NewName = "lost";
  EXPECT_EQ(UpdateMyDVD(Work, again)->CellName, "Cell1 ->");
  EXPECT_EQ(FindProgram(Work.Disc, ProgramPlace)->Cell.Count(), 2U);
}

TEST_F(UpdateMyDVDTest, AStillWaitsForEverUnlessItsCellHadATime) {
  Work.Tracks[0].TrackType = "Still";
  Cell_P& cell = *UpdateMyDVD(Work, Place());
  EXPECT_EQ(cell.StillTime, InfiniteStill);
  cell.StillTime = 10;
  DiscUpdate loaded = Place();
  loaded.ReNameOnly = true;
  EXPECT_EQ(UpdateMyDVD(Work, loaded)->StillTime, 10);
}

TEST_F(UpdateMyDVDTest, ARenameChangesTheNameAlone) {
  UpdateMyDVD(Work, Place());
  const Cell_P before = *FindProgram(Work.Disc, ProgramPlace)->Cell.Item(1);
  for (const char* key : {"VTS1.TITLE1", "VTS1.TITLE1.PGC1", ProgramPlace, "VTS9.TITLE1"}) {
    DiscUpdate rename;
    rename.Key = key;
    rename.NewName = std::string("new ") + key;
    EXPECT_EQ(UpdateMyDVD(Work, rename), nullptr);
  }
  EXPECT_EQ(FindTitle(Work.Disc, ProgramPlace)->TitleName, "new VTS1.TITLE1");
  EXPECT_EQ(FindPgc(Work.Disc, ProgramPlace)->PGCName, "new VTS1.TITLE1.PGC1");
  EXPECT_EQ(FindProgram(Work.Disc, ProgramPlace)->PGName, std::string("new ") + ProgramPlace);
  EXPECT_EQ(*FindProgram(Work.Disc, ProgramPlace)->Cell.Item(1), before);
}

TEST_F(UpdateMyDVDTest, UnknownPlacesAndTracksChangeNothing) {
  const Project before = Work;
  DiscUpdate update = Place();
  update.Key = "VTS1.TITLE1.PGC1.PG2";
  EXPECT_EQ(UpdateMyDVD(Work, update), nullptr);
  update = Place();
  update.Segment = 1;
  EXPECT_EQ(UpdateMyDVD(Work, update), nullptr);
  update = Place();
  update.ReNameOnly = true;
  EXPECT_EQ(UpdateMyDVD(Work, update), nullptr);
  update.CellCounter = -1;
  EXPECT_EQ(UpdateMyDVD(Work, update), nullptr);
  EXPECT_TRUE(Work.SameContent(before));
}

TEST(CompareStreams, BoxesNameEveryDifferenceOfTheFirstNumberInConflict) {
  Track source;
  source.SubStreams.resize(2);
  source.SubStreams[1].StreamNumber = 1;
  source.SubStreams[1].DisplayMode = "Wide";
  source.AudioStreams.resize(1);
  source.AudioStreams[0].Format = "AC3";
  source.AudioStreams[0].Traits = {.BitRate = 448, .ChannelCount = 6};
  Track added = source;
  EXPECT_FALSE(CompareSubStreams(source, added));
  EXPECT_FALSE(CompareAudioStreams(source, added));

  added.SubStreams[1].Language = "French";
  added.SubStreams[1].Extension = "Large";
  added.SubStreams[1].DisplayMode = "Pan";
  const auto subs = CompareSubStreams(source, added);
  ASSERT_TRUE(subs);
  EXPECT_EQ(subs->Title, "SubStream ID Error");
  EXPECT_EQ(subs->Text,
            "New track subtitle information does not match the source PGC "
            "[[Source Language=English; New track Langauge=French][Source Extension=Normal; New track "
            "Extension=Large][Source DisplayMode=Wide; New track DisplayMode=Pan]] for Stream ID 1");

  added.AudioStreams[0].Format = "PCM";
  added.AudioStreams[0].Traits = {.BitRate = 1536, .ChannelCount = 2};
  const auto audio = CompareAudioStreams(source, added);
  ASSERT_TRUE(audio);
  EXPECT_EQ(audio->Title, "Audio ID Error");
  EXPECT_EQ(
      audio->Text,
      "New track audio information does not match the source PGC [[Source has 6 channels; New track has 2 "
      "channels][Source AudioType=AC3; New track AudioType=PCM][Source Bitrate=448; New track "
      "Bitrate=1536]] for Stream ID 0");

  added.AudioStreams[0].Removed = true;
  added.SubStreams[1].StreamNumber = 2;
  EXPECT_FALSE(CompareAudioStreams(source, added)) << "a number that one of them lacks is no conflict";
  EXPECT_FALSE(CompareSubStreams(source, added));
}

}  // namespace
}  // namespace quorvelant
