// What discs of other programs may do and play: no errors, and errors where it goes further.
#include <gmock/gmock.h>

#include "disc/pgc_layout.h"
#include "support/media.h"
#include "support/temp_folder.h"
#include "verify/audio_walk.h"
#include "verify/ifo_chains.h"
#include "verify/video_walk.h"

namespace quorvelant {
namespace {

// Findings of a VOB of its own.
struct ToldOfVob {
  bool Has(const MessageKind& kind) const {
    return std::ranges::any_of(Findings.All(), [&](const DiscFinding& each) { return each.Kind == &kind; });
  }
  DiscSourceFile File{.Name = "VTS_01_1.VOB"};
  VobSetFiles Files{{{.File = &File, .First = 0, .Sectors = 100}}};
  DiscFindings Findings;
  VobTeller Teller{Files, Findings};
};

TEST(AudioWalk, PausesWhereItIsDeclared) {
  const std::string sound = TempFolder::Read(SampleAc3({.Seconds = 1}));
  const Bytes bytes(sound.begin(), sound.end());
  const std::size_t frame = AudioFramer(AudioCoding::Ac3).Feed(bytes, 0).at(1).At;
  constexpr std::uint32_t Start = 90000;
  constexpr std::uint32_t Frame = 2880;
  constexpr std::uint32_t Pause = 45000;
  const struct {
    AudioGap Gap;
    bool IsFault;
  } cases[] = {{{}, true},
               {{Start + 3 * Frame, Pause}, false},
               {{Start + 3 * Frame, 2 * Pause}, true},
               {{Start + 9 * Frame, Pause}, true}};
  for (const auto& test : cases) {
    ToldOfVob told;
    AudioWalk walk(told.Teller, 0x80, true);
    walk.Buffer().SetSize(58 * 1024);
    for (std::uint32_t i = 0; i < 6; ++i) {
      Bytes payload{0x80, 1, 0, 1};
      payload.insert(payload.end(), bytes.begin() + static_cast<std::ptrdiff_t>(i * frame),
                     bytes.begin() + static_cast<std::ptrdiff_t>((i + 1) * frame));
      const std::uint32_t pts = Start + i * Frame + (i < 3 ? 0 : Pause);
      walk.SetGaps({AudioGap{}, test.Gap});
      walk.Feed({.Sector = i, .Payload = payload, .Pts = pts, .Begin = pts * 200LL, .End = pts * 201LL});
    }
    EXPECT_EQ(told.Has(message::StampWrong), test.IsFault) << test.Gap.Stop << " " << test.Gap.Length;
  }
}

// A GOP without its first B pictures, as an editor's cut leaves it.
TEST(VideoWalk, KnowsGroupsOfABrokenLink) {
  const struct {
    bool IsBroken;
    int SecondP;
    bool IsFault;
  } cases[] = {{true, 5, false}, {true, 6, true}, {false, 5, true}};
  for (const auto& test : cases) {
    Bytes bytes{0,    0,    1,    0xB3, 0x2D,
                0x02, 0x40, 0x23, 0x10, 0x00,
                0x23, 0x80, 0,    0,    1,
                0xB8, 0,    8,    0,    static_cast<std::uint8_t>(test.IsBroken ? 0x20 : 0)};
    for (const auto& [kind, reference] : {std::pair{1, 2}, {2, test.SecondP}, {3, 3}, {3, 4}}) {
      const auto low = static_cast<std::uint8_t>((reference & 3) << 6 | kind << 3);
      for (const int byte : {0, 0, 1, 0, reference >> 2, int{low}, 0xFF, 0xF8, 0, 0, 1, 1, 0x55, 0x55}) {
        bytes.push_back(static_cast<std::uint8_t>(byte));
      }
    }
    ToldOfVob told;
    VideoWalk walk(told.Teller, {}, false);
    constexpr std::array<std::uint16_t, 6> Headers{0, 12, 20, 34, 48, 62};
    walk.Feed({.Payload = bytes, .Pts = 90000, .Dts = 86400, .End = 27'000, .Headers = Headers});
    walk.EndVobu(0);
    walk.EndVob();
    EXPECT_EQ(told.Has(message::VideoBroken), test.IsFault) << test.IsBroken << " " << test.SecondP;
  }
}

// Headers alone, and the end of the sequence.
TEST(VideoWalk, KnowsAVobuWithoutPictures) {
  const Bytes bytes{0, 0, 1, 0xB3, 0x2D, 0x02, 0x40, 0x23, 0x10, 0, 0x23, 0x80, 0, 0, 1, 0xB8, 0,
                    8, 0, 0, 0,    0,    1,    0xB7, 0xFF, 0xFF, 0, 0,    0,    0, 0, 0, 0};
  constexpr std::array<std::uint16_t, 3> Headers{0, 12, 20};
  ToldOfVob told;
  VideoWalk walk(told.Teller, {}, false);
  walk.Feed({.Payload = bytes, .Pts = 90000, .End = 27'000, .Headers = Headers});
  walk.EndVobu(0);
  walk.EndVob();
  EXPECT_TRUE(told.Has(message::VideoBroken));
}

// The times of two cells of two seconds, and of their chain.
TEST(IfoChains, OfOthersMayRoundTheirTimes) {
  const struct {
    std::uint32_t Time;  // BCD
    bool OfOurs;         // whether it is a fault on a disc of this program
    bool OfOthers;
  } cases[] = {{0x00000440, false, false},
               {0x00000442, true, false},
               {0x00000443, true, true},
               {0x000004C0, true, true}};
  for (const auto& test : cases) {
    Bytes bytes(pgc::Size + 4 + 2 * (cell_playback::Size + cell_position::Size));
    const std::size_t playback = pgc::Size + 4;
    PutBytes(bytes, pgc::Programs.Offset, 1, 1);
    PutBytes(bytes, pgc::Cells.Offset, 1, 2);
    PutBytes(bytes, pgc::PlaybackTime.Offset, 4, test.Time);
    PutBytes(bytes, pgc::ProgramMap.Offset, 2, pgc::Size);
    PutBytes(bytes, pgc::CellPlayback.Offset, 2, playback);
    PutBytes(bytes, pgc::CellPosition.Offset, 2, playback + 2 * cell_playback::Size);
    bytes[pgc::Size] = 1;
    for (const std::size_t cell : {0U, 1U}) {
      PutBytes(bytes, playback + cell * cell_playback::Size + cell_playback::PlaybackTime.Offset, 4,
               0x00000240);
    }
    for (const bool isOurs : {true, false}) {
      DiscFindings findings;
      (void)ReadIfoChain(IfoView(bytes, 0, bytes.size()), 1, "PGC 1", IfoTeller("X.IFO", findings, isOurs));
      EXPECT_EQ(findings.HasFaults(), isOurs ? test.OfOurs : test.OfOthers) << test.Time << " " << isOurs;
    }
  }
}

}  // namespace
}  // namespace quorvelant
