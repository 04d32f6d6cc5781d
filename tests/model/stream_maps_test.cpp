#include "model/stream_maps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/default_structure.h"
#include "model/keys.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

AudioStream Audio(std::int32_t number, std::string format = "AC3") {
  AudioStream stream;
  stream.StreamNumber = number;
  stream.Format = std::move(format);
  return stream;
}

// A project whose title PGC plays every added track once, in order.
class StreamMapsTest : public testing::Test {
 protected:
  StreamMapsTest() { MakeDefaultStructure(Work); }
  VTS_P& Set() { return *Work.Disc.Item(2); }
  PGC_P& TitlePgc() { return *FindPgc(Work.Disc, "VTS1.TITLE1.PGC1"); }
  Cell_P& Use(std::int32_t track) {
    Cell_P& cell = TitlePgc().PG.Add({}).Cell.Add({});
    cell.SegmentUsed = track;
    cell.TrackName = Work.Tracks[static_cast<std::size_t>(track)].TrackName;
    cell.SceneUsed = cell.TrackName + "_Scene1";
    return cell;
  }
  void AddTrack(std::vector<AudioStream> audio, std::size_t subs = 0) {
    Track track;
    track.TrackName = "T" + std::to_string(Work.Tracks.Count());
    track.Scenes.resize(1);
    track.Scenes[0].Name = track.TrackName + "_Scene1";
    track.HasAudio = !audio.empty();
    track.AudioStreams = std::move(audio);
    track.HasSubs = subs > 0;
    for (std::size_t i = 0; i < subs; ++i) {
      track.SubStreams.emplace_back().StreamNumber = static_cast<std::int32_t>(i);
    }
    Work.Tracks.Add(std::move(track));
    Use(static_cast<std::int32_t>(Work.Tracks.Count()) - 1);
  }
  TrackList List() { return BuildTitleTrackList(Set(), Work.Tracks); }
  std::vector<bool> Marks(std::size_t track) {
    std::vector<bool> marks;
    for (const AudioStream& stream : Work.Tracks[track].AudioStreams) {
      marks.push_back(stream.MuxThisStream);
    }
    return marks;
  }
  static std::vector<std::pair<int, int>> NumbersAndUses(const AudioMap& map) {
    std::vector<std::pair<int, int>> rows;
    for (const AudioMapRow& row : map) {
      rows.emplace_back(row.StreamNumber, row.UseCount);
    }
    return rows;
  }
  Project Work;
};

TEST_F(StreamMapsTest, TracksAreListedOnceInTheOrderOfFirstUse) {
  AddTrack({});
  AddTrack({});
  for (int i = 0; i < 10; ++i) {
    Use(0);
  }
  Use(1).SegmentUsed = -1;
  EXPECT_THAT(List(), ElementsAre(TrackListRow{"T0", 0}, TrackListRow{"T1", 1}));
  EXPECT_THAT(BuildMenuTrackList(Set(), Work.Tracks), IsEmpty());
  TitlePgc().PG.Item(1)->Removed = true;
  EXPECT_THAT(List(), ElementsAre(TrackListRow{"T1", 1}, TrackListRow{"T0", 0}));
  Set().Title.Item(1)->Removed = true;
  EXPECT_THAT(List(), IsEmpty());
}

TEST_F(StreamMapsTest, EqualNumbersOfTwoTracksShareARow) {
  AddTrack({Audio(0), Audio(1)});
  AddTrack({Audio(0), Audio(1)});
  EXPECT_THAT(NumbersAndUses(BuildAudioMap(List(), Work.Tracks)),
              ElementsAre(std::pair(0, 2), std::pair(1, 2)));
  EXPECT_THAT(Marks(0), ElementsAre(true, true));
  EXPECT_THAT(Marks(1), ElementsAre(true, true));
}

TEST_F(StreamMapsTest, TheThirdNumberHasARowAndIsNotMultiplexed) {
  AddTrack({Audio(0), Audio(1), Audio(2)});
  EXPECT_EQ(BuildAudioMap(List(), Work.Tracks).size(), 3U);
  EXPECT_THAT(Marks(0), ElementsAre(true, true, false));
}

TEST_F(StreamMapsTest, TheMarkFollowsTheRunningCountAndNotTheRow) {
  AddTrack({Audio(0)});
  AddTrack({Audio(1), Audio(0), Audio(2), Audio(1)});
  AddTrack({Audio(0)});
  BuildAudioMap(List(), Work.Tracks);
  EXPECT_THAT(Marks(0), ElementsAre(true));
  EXPECT_THAT(Marks(1), ElementsAre(true, true, false, false));
  EXPECT_THAT(Marks(2), ElementsAre(false)) << "its row was multiplexed, but the count has passed the limit";
}

TEST_F(StreamMapsTest, DtsHasARowDoesNotCountAndIsNeverMarked) {
  AddTrack({Audio(0, "DTS"), Audio(1), Audio(2, "PCM")});
  EXPECT_EQ(BuildAudioMap(List(), Work.Tracks).size(), 3U);
  EXPECT_THAT(Marks(0), ElementsAre(false, true, true));
}

TEST_F(StreamMapsTest, StreamsOfTheFirstTrackAreNeverMerged) {
  AddTrack({});
  AddTrack({Audio(0), Audio(0)});
  AddTrack({Audio(0)});
  EXPECT_THAT(NumbersAndUses(BuildAudioMap(List(), Work.Tracks)),
              ElementsAre(std::pair(0, 2), std::pair(0, 1)));
}

TEST_F(StreamMapsTest, RemovedStreamsAndImpossibleNumbersAreLeftOut) {
  AddTrack({Audio(0), Audio(-1), Audio(2147483647), Audio(1)});
  Work.Tracks[0].AudioStreams[0].Removed = true;
  EXPECT_EQ(BuildAudioMap(List(), Work.Tracks).size(), 3U);
  EXPECT_THAT(Marks(0), ElementsAre(false, false, false, true));
}

TEST_F(StreamMapsTest, FiveSubpictureNumbersFourMultiplexed) {
  AddTrack({}, 5);
  EXPECT_EQ(BuildSubMap(List(), Work.Tracks).size(), 5U);
  const auto& subs = Work.Tracks[0].SubStreams;
  EXPECT_TRUE(subs[3].MuxThisStream);
  EXPECT_FALSE(subs[4].MuxThisStream);
}

TEST_F(StreamMapsTest, LookingMarksNothing) {
  AddTrack({Audio(0)}, 1);
  const Tracks before = Work.Tracks;
  ViewAudioMap(List(), Work.Tracks);
  ViewSubMap(List(), Work.Tracks);
  EXPECT_EQ(Work.Tracks, before);
}

TEST(GetSubStreamID, OffersTheNumbersThatNoLiveStreamUses) {
  Track track;
  EXPECT_THAT(GetSubStreamID(track), IsEmpty());
  track.SubStreams.resize(3);
  track.SubStreams[1].StreamNumber = 2;
  track.SubStreams[2].StreamNumber = 1;
  track.SubStreams[2].Removed = true;
  const auto free = GetSubStreamID(track);
  ASSERT_EQ(free.size(), 30U);
  EXPECT_EQ(free[0], 1);
  EXPECT_EQ(free[1], 3);
  EXPECT_EQ(free.back(), 31);
}

TEST_F(StreamMapsTest, ADropCarriesExtensionsToItsTitleSetAndLocksTheTrack) {
  AddTrack({Audio(1)}, 1);
  Work.Tracks[0].AudioStreams[0].Extension = "visually impaired";
  Work.Tracks[0].SubStreams[0].Extension = "no such";
  CarryExtensions(Work, Set(), Domain::Menu, 0);
  EXPECT_TRUE(Work.Tracks[0].IDsLocked);
  EXPECT_EQ(Set().AudioExtension[1], "Unspecified");
  CarryExtensions(Work, Set(), Domain::Title, 0);
  EXPECT_EQ(Set().AudioExtension[1], "Visually Impaired");
  EXPECT_EQ(Set().SubExtension[0], "Unspecified");
}

TEST_F(StreamMapsTest, TheOtherDialectsExtensionsAndLanguagesReachTheStreams) {
  AddTrack({Audio(0), Audio(1)}, 1);
  AddTrack({Audio(0)});
  TitlePgc().PG.Item(2)->Cell.Item(1)->SceneUsed = "nowhere";
  Set().AudioExtension[1] = "Directors Comments";
  Set().SubExtension[0] = "Forced";
  CarryScriptExtensions(Work);
  EXPECT_EQ(Work.Tracks[0].AudioStreams[1].Extension, "Directors Comments");
  EXPECT_EQ(Work.Tracks[0].SubStreams[0].Extension, "Forced");
  EXPECT_EQ(Work.Tracks[1].AudioStreams[0].Extension, "Normal") << "no cell names its scene";

  ScriptLanguages languages;
  languages.Audio = {"NOT specified", "French"};
  languages.SubPicture[0] = "none specified";
  CarryScriptLanguages(Work.Tracks, IndexScenes(Work.Tracks), *Set().Title.Item(1), languages);
  EXPECT_EQ(Work.Tracks[0].AudioStreams[0].Language, "English");
  EXPECT_EQ(Work.Tracks[0].AudioStreams[1].Language, "French");
  EXPECT_EQ(Work.Tracks[0].SubStreams[0].Language, "English");

  Work.Tracks[0].AudioStreams[0].Language.clear();
  Work.Tracks[0].SubStreams[0].Extension.clear();
  FillStreamDefaults(Work.Tracks);
  EXPECT_EQ(Work.Tracks[0].AudioStreams[0].Language, "English");
  EXPECT_EQ(Work.Tracks[0].SubStreams[0].Extension, "Unspecified");
}

TEST_F(StreamMapsTest, ThePageShowsEachNumberUpToTheHighest) {
  AddTrack({Audio(2), Audio(2), Audio(8)}, 1);
  const StreamMapPage page = ShowStreamMaps(Set(), Work.Tracks);
  std::vector<std::string> texts;
  for (const StreamMapLine& line : page.Lines) {
    texts.push_back(line.Text);
  }
  EXPECT_THAT(texts, ElementsAre("Menu Map", "(Audio)", "(Subs)", "Title Map", "(Audio)", "--Not Used--",
                                 "--Not Used--", "English", "Error", "Error", "(Subs)", "English"));
  EXPECT_FALSE(page.Box);
}

TEST_F(StreamMapsTest, ThePageTellsTooManyStreams) {
  constexpr const char* Advice = "Try altering the languages / extensions across the tracks to match";
  struct Case {
    int AudioCount;
    std::size_t SubCount;
    const char* Title;
    const char* Text;
  };
  for (const Case& c :
       {Case{8, 31, nullptr, nullptr},
        Case{9, 31, "Maximum Audio Streams Error", "The quantity of audio streams exceeds 8."},
        Case{8, 32, "Maximum SubPicture Streams Error", "The quantity of subpicture streams exceeds 32."},
        Case{9, 33, "Maximum SubPicture and Audio Streams Error",
             "The quantity of subpicture streams exceeds 32, and audio streams exceeds 8."}}) {
    MakeDefaultStructure(Work);
    std::vector<AudioStream> audio;
    for (int i = 0; i < c.AudioCount; ++i) {
      audio.push_back(Audio(i));
    }
    AddTrack(audio, c.SubCount);
    const auto box = ShowStreamMaps(Set(), Work.Tracks).Box;
    ASSERT_EQ(box.has_value(), c.Title != nullptr) << c.AudioCount << " " << c.SubCount;
    if (box) {
      EXPECT_EQ(box->Title, c.Title);
      EXPECT_EQ(box->Text, std::string(c.Text) + "\n" + Advice);
    }
  }
}

}  // namespace
}  // namespace quorvelant
