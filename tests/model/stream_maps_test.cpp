#include "model/stream_maps.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "model/default_structure.h"
#include "model/keys.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Streams by their numbers: "0 1dts 2pcm 3removed"; AC3 where nothing is said.
std::vector<AudioStream> Streams(std::string_view text) {
  std::vector<AudioStream> streams;
  for (const std::string_view word : Split(text, " ")) {
    if (!word.empty()) {
      AudioStream& stream = streams.emplace_back();
      stream.StreamNumber = LeadingNumber(word);
      stream.Format = Contains(word, "dts") ? "DTS" : Contains(word, "pcm") ? "PCM" : "AC3";
      stream.Removed = Contains(word, "removed");
    }
  }
  return streams;
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
  void AddTrack(std::string_view audio, std::size_t subs = 0) {
    Track track;
    track.TrackName = "T" + std::to_string(Work.Tracks.Count());
    track.Scenes.resize(1);
    track.Scenes[0].Name = track.TrackName + "_Scene1";
    track.AudioStreams = Streams(audio);
    track.HasAudio = !audio.empty();
    track.HasSubs = subs > 0;
    for (std::size_t i = 0; i < subs; ++i) {
      track.SubStreams.emplace_back().StreamNumber = static_cast<std::int32_t>(i);
    }
    Work.Tracks.Add(std::move(track));
    Use(static_cast<std::int32_t>(Work.Tracks.Count()) - 1);
  }
  TrackList List() { return BuildTitleTrackList(Set(), Work.Tracks); }
  Project Work;
};

TEST_F(StreamMapsTest, TracksAreListedOnceInTheOrderOfFirstUse) {
  AddTrack("");
  AddTrack("");
  Use(0);
  Use(1).SegmentUsed = -1;
  EXPECT_THAT(List(), ElementsAre(TrackListRow{"T0", 0}, TrackListRow{"T1", 1}));
  EXPECT_THAT(BuildMenuTrackList(Set(), Work.Tracks), IsEmpty());
  TitlePgc().PG.Item(1)->Removed = true;
  EXPECT_THAT(List(), ElementsAre(TrackListRow{"T1", 1}, TrackListRow{"T0", 0}));
}

TEST_F(StreamMapsTest, RowsAndWhatIsMultiplexed) {
  struct Case {
    std::vector<std::string_view> Tracks;
    std::string_view Rows;   // "number x uses"
    std::string_view Muxed;  // "+" or "-" a stream, with a blank after each track
  };
  for (const Case& c : {
           Case{{"0 1", "0 1"}, "0x2 1x2 ", "++ ++ "},
           Case{{"0 1 2"}, "0x1 1x1 2x1 ", "++- "},
           // The mark follows the running count and not the stream's own row.
           Case{{"0", "1 0 2 1", "0"}, "0x3 1x2 2x1 ", "+ ++-- - "},
           // DTS has a row, does not count and is never marked.
           Case{{"0dts 1 2pcm"}, "0x1 1x1 2x1 ", "-++ "},
           // Streams of the first track that has any are never merged.
           Case{{"", "0 0", "0"}, "0x2 0x1 ", " ++ + "},
           Case{{"0removed -1 2147483647 1"}, "-1x1 2147483647x1 1x1 ", "---+ "},
       }) {
    MakeDefaultStructure(Work);
    for (const std::string_view track : c.Tracks) {
      AddTrack(track);
    }
    std::string rows;
    for (const AudioMapRow& row : BuildAudioMap(List(), Work.Tracks, Rules::Classic)) {
      rows += fmt::format("{}x{} ", row.StreamNumber, row.UseCount);
    }
    std::string muxed;
    for (const Track& track : Work.Tracks) {
      for (const AudioStream& stream : track.AudioStreams) {
        muxed += stream.MuxThisStream ? '+' : '-';
      }
      muxed += ' ';
    }
    EXPECT_EQ(rows, c.Rows);
    EXPECT_EQ(muxed, c.Muxed) << c.Rows;
  }
}

TEST_F(StreamMapsTest, FiveSubpictureNumbersFourMultiplexed) {
  AddTrack("0", 5);
  const Tracks before = Work.Tracks;
  ViewAudioMap(List(), Work.Tracks);
  ViewSubMap(List(), Work.Tracks);
  EXPECT_EQ(Work.Tracks, before) << "looking marks nothing";
  for (const Rules& rules : {Rules::Classic, Rules::Players}) {
    EXPECT_EQ(BuildSubMap(List(), Work.Tracks, rules).size(), 5U);
    EXPECT_TRUE(Work.Tracks[0].SubStreams[3].MuxThisStream);
    EXPECT_EQ(Work.Tracks[0].SubStreams[4].MuxThisStream, rules.AllStreamsMuxed);
  }
}

TEST_F(StreamMapsTest, ATitleSetHasTheExtensionsOfItsStreams) {
  AddTrack("1", 1);
  Work.Tracks[0].AudioStreams[0].Extension = "visually impaired";
  Work.Tracks[0].SubStreams[0].Extension = "no such";
  const StreamExtensions extensions = TitleExtensions(Set(), Work.Tracks);
  EXPECT_EQ(extensions.Audio[1], "Visually Impaired");
  EXPECT_EQ(extensions.Sub[0], "Unspecified");
}

TEST_F(StreamMapsTest, ThePageShowsEachNumberUpToTheHighest) {
  AddTrack("2 2 8", 1);
  const StreamMapPage page = ShowStreamMaps(Set(), Work.Tracks);
  std::string texts;
  for (const StreamMapLine& line : page.Lines) {
    texts += line.Text + "|";
  }
  EXPECT_EQ(texts,
            "Menu Map|(Audio)|(Subs)|Title Map|(Audio)|--Not Used--|--Not Used--|English|Error|Error|(Subs)|"
            "English|");
}

TEST_F(StreamMapsTest, ThePageTellsTooManyStreams) {
  const std::string_view eight = "0 1 2 3 4 5 6 7";
  const std::string_view nine = "0 1 2 3 4 5 6 7 8";
  const std::tuple<std::string_view, std::size_t, std::string_view> cases[] = {
      {eight, 32, ""},
      {nine, 31, "Maximum Audio Streams Error"},
      {eight, 33, "Maximum SubPicture Streams Error"},
      {nine, 33, "Maximum SubPicture and Audio Streams Error"}};
  for (const auto& [audio, subCount, title] : cases) {
    MakeDefaultStructure(Work);
    AddTrack(audio, subCount);
    EXPECT_EQ(ShowStreamMaps(Set(), Work.Tracks).Box.value_or(Message{}).Title, title);
  }
}

}  // namespace
}  // namespace quorvelant
