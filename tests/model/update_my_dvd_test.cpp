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
    FindPgc(Work.Disc, ProgramPlace)->PG.Add({}).Key = ProgramPlace;
    AddTrack("16:9").Pan = true;
  }
  Track& AddTrack(const std::string& aspect) {
    Track& track = Work.Tracks.Add({});
    track.TrackName = "Track_" + std::to_string(Work.Tracks.Count());
    track.TrackType = "Motion";
    track.Standard = "PAL";
    track.Aspect = aspect;
    track.Scenes.emplace_back().Name = track.TrackName + "_Scene1";
    return track;
  }
  // A scene of the track becomes a cell, or the cell of that number is updated.
  static DiscUpdate Place(std::int32_t segment = 0) {
    return {.Key = ProgramPlace,
            .AddCell = true,
            .TrackName = "Track_" + std::to_string(segment + 1),
            .Segment = segment,
            .NewName = "Cell1 ->"};
  }
  static DiscUpdate Again(std::int32_t counter = 0) {
    DiscUpdate update = Place();
    update.ReNameOnly = true;
    update.CellCounter = counter;
    update.NewName = "again";
    return update;
  }
  Collection<Cell_P>& Cells() { return FindProgram(Work.Disc, ProgramPlace)->Cell; }
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
  const VTS_P& set = *Work.Disc.Item(2);
  EXPECT_EQ(set.Standard(), "PAL");
  EXPECT_EQ(set.VTSTitleInfo.Aspect, "16:9");
  EXPECT_FALSE(set.VTSMenuInfo.Set) << "a title's track is no menu's";
  AddTrack("4:3");
  UpdateMyDVD(Work, Place(1));
  EXPECT_EQ(set.VTSTitleInfo.Aspect, "4:3");
  EXPECT_TRUE(set.VTSTitleInfo.Pan) << "once on, it stays on";
}

TEST_F(UpdateMyDVDTest, CounterZeroIsTheLastCell) {
  UpdateMyDVD(Work, Place());
  UpdateMyDVD(Work, Place());
  EXPECT_EQ(UpdateMyDVD(Work, Again()), Cells().Item(2));
  DiscUpdate first = Again(1);
  first.KeepName = true;
  EXPECT_EQ(UpdateMyDVD(Work, first)->CellName, "Cell1 ->");
  EXPECT_EQ(Cells().Count(), 2U);
}

TEST_F(UpdateMyDVDTest, AStillWaitsForEverUnlessItsCellHadATime) {
  Work.Tracks[0].TrackType = "Still";
  Cell_P& cell = *UpdateMyDVD(Work, Place());
  EXPECT_EQ(cell.StillTime, InfiniteStill);
  cell.StillTime = 10;
  EXPECT_EQ(UpdateMyDVD(Work, Again())->StillTime, 10);
}

TEST_F(UpdateMyDVDTest, ARenameChangesTheNameAlone) {
  UpdateMyDVD(Work, Place());
  const Cell_P before = *Cells().Item(1);
  for (const char* key : {"VTS1.TITLE1", "VTS1.TITLE1.PGC1", ProgramPlace, "VTS9.TITLE1"}) {
    EXPECT_EQ(UpdateMyDVD(Work, {.Key = key, .TrackName = {}, .NewName = std::string("new ") + key}),
              nullptr);
  }
  EXPECT_EQ(FindTitle(Work.Disc, ProgramPlace)->TitleName, "new VTS1.TITLE1");
  EXPECT_EQ(FindPgc(Work.Disc, ProgramPlace)->PGCName, "new VTS1.TITLE1.PGC1");
  EXPECT_EQ(FindProgram(Work.Disc, ProgramPlace)->PGName, std::string("new ") + ProgramPlace);
  EXPECT_EQ(*Cells().Item(1), before);
}

TEST_F(UpdateMyDVDTest, UnknownPlacesAndTracksChangeNothing) {
  const Project before = Work;
  DiscUpdate elsewhere = Place();
  elsewhere.Key = "VTS1.TITLE1.PGC1.PG2";
  for (const DiscUpdate& update : {elsewhere, Place(1), Again(), Again(-1)}) {
    EXPECT_EQ(UpdateMyDVD(Work, update), nullptr);
  }
  EXPECT_TRUE(Work.SameContent(before));
}

std::string Shown(const std::optional<Message>& box) {
  return box ? box->Title + ": " + box->Text : "";
}

TEST(CompareStreams, BoxesNameEveryDifferenceOfTheFirstNumberInConflict) {
  Track source;
  source.SubStreams.resize(2);
  source.SubStreams[1].StreamNumber = 1;
  source.SubStreams[1].DisplayMode = "Wide";
  AudioStream& audio = source.AudioStreams.emplace_back();
  audio.Format = "AC3";
  audio.Traits = {.BitRate = 448, .ChannelCount = 6};
  Track added = source;
  const auto boxes = [&] {
    return Shown(CompareSubStreams(source, added)) + Shown(CompareAudioStreams(source, added));
  };
  EXPECT_EQ(boxes(), "");
  SubtitleStream& sub = added.SubStreams[1];
  sub.Language = "French";
  sub.Extension = "Large";
  sub.DisplayMode = "Pan";
  added.AudioStreams[0].Format = "PCM";
  added.AudioStreams[0].Traits = {.BitRate = 1536, .ChannelCount = 2};
  EXPECT_EQ(boxes(),
            "SubStream ID Error: New track subtitle information does not match the source PGC "
            "[[Source Language=English; New track Langauge=French][Source Extension=Normal; New track "
            "Extension=Large][Source DisplayMode=Wide; New track DisplayMode=Pan]] for Stream ID 1"
            "Audio ID Error: New track audio information does not match the source PGC [[Source has 6 "
            "channels; New track has 2 channels][Source AudioType=AC3; New track AudioType=PCM][Source "
            "Bitrate=448; New track Bitrate=1536]] for Stream ID 0");
  sub.StreamNumber = 2;
  added.AudioStreams[0].Removed = true;
  EXPECT_EQ(boxes(), "") << "a number that one of them lacks is no conflict";
}

}  // namespace
}  // namespace quorvelant
