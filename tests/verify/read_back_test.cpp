#include "verify/read_back.h"

#include <gmock/gmock.h>

#include "base/bytes.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "verify/messages.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

// A Video Manager of 2 x 2 sectors with one title, and a title set of 2 x 2 and three in its VOB, of which
// the first and the last are navigation packs.
struct SmallestDisc {
  Bytes Manager = Bytes(2 * SectorBytes);
  Bytes Set = Bytes(2 * SectorBytes);
  Bytes Vob = Bytes(3 * SectorBytes);

  SmallestDisc() {
    std::ranges::copy(std::string_view("DVDVIDEO-VMG"), Manager.begin());
    PutBytes(Manager, 0x0C, 4, 3);              // its last sector
    PutBytes(Manager, 0xC4, 4, 1);              // the sector of its titles
    PutBytes(Manager, SectorBytes, 2, 1);       // one title
    PutBytes(Manager, SectorBytes + 4, 4, 19);  // the last byte of that table
    Manager[SectorBytes + 8 + 6] = 1;           // the title's set
    Manager[SectorBytes + 8 + 11] = 4;          // which starts at sector 4
    std::ranges::copy(std::string_view("DVDVIDEO-VTS"), Set.begin());
    PutBytes(Set, 0x0C, 4, 6);
    PutBytes(Set, 0xE4, 4, 1);                     // the sector of the map of VOBUs
    PutBytes(Set, SectorBytes, 4, 4 + 2 * 4 - 1);  // the last byte of a map of two
    PutBytes(Set, SectorBytes + 8, 4, 2);
    for (const std::size_t sector : {0U, 2U}) {
      PutBytes(Vob, sector * SectorBytes + 38, 4, 0x1BF);   // private stream 2
      PutBytes(Vob, sector * SectorBytes + 45, 4, sector);  // the pack's own address
    }
  }
};

using Files = std::map<std::string, Bytes>;

Files FilesOf(const SmallestDisc& disc) {
  return {{"VIDEO_TS.IFO", disc.Manager}, {"VIDEO_TS.BUP", disc.Manager}, {"VTS_01_0.IFO", disc.Set},
          {"VTS_01_0.BUP", disc.Set},     {"VTS_01_1.VOB", disc.Vob},     {"notes.txt", Bytes(SectorBytes)}};
}

// The codes of the faults, each with its file.
std::vector<std::string> FaultsOf(const Files& files) {
  const TempFolder folder;
  for (const auto& [name, bytes] : files) {
    folder.Write(name, bytes);
  }
  RecordingUi ui;
  std::vector<std::string> codes;
  for (const Message& fault : ReadBack(folder.Path().string(), ui)) {
    codes.push_back(std::string(fault.Code) + " " + fault.Place.substr(folder.Path().string().size() + 1));
  }
  return codes;
}

TEST(ReadBack, NamesEachFaultOfTheContents) {
  EXPECT_EQ(FaultsOf(FilesOf({})), std::vector<std::string>{});
  const struct {
    Bytes SmallestDisc::*File;
    std::size_t Offset;
    unsigned Width;
    std::uint64_t Value;
    const char* Fault;
  } cases[] = {
      {&SmallestDisc::Manager, 9, 1, 'X', "read-back-no-ifo VIDEO_TS.IFO"},
      {&SmallestDisc::Set, 0xC8, 4, 2, "read-back-pointer VTS_01_0.IFO"},
      {&SmallestDisc::Manager, SectorBytes + 4, 4, SectorBytes, "read-back-table VIDEO_TS.IFO"},
      {&SmallestDisc::Set, 0x0C, 4, 7, "read-back-set-size VTS_01_0.IFO"},
      {&SmallestDisc::Manager, SectorBytes + 8 + 11, 1, 0, "read-back-title-start VIDEO_TS.IFO"},
      {&SmallestDisc::Manager, SectorBytes + 8 + 6, 1, 2, "read-back-title-start VIDEO_TS.IFO"},
      {&SmallestDisc::Vob, 38 + 3, 1, 0xE0, "read-back-nav-missing VTS_01_1.VOB"},
      {&SmallestDisc::Vob, 2 * SectorBytes + 48, 1, 1, "read-back-nav-address VTS_01_1.VOB"},
      {&SmallestDisc::Set, SectorBytes + 8, 4, 3, "read-back-nav-missing VTS_01_1.VOB"},
  };
  for (const auto& test : cases) {
    SmallestDisc disc;
    PutBytes(disc.*test.File, test.Offset, test.Width, test.Value);
    EXPECT_THAT(FaultsOf(FilesOf(disc)), ElementsAre(test.Fault));
  }
}

TEST(ReadBack, NamesFilesThatAreMissingCutOrUnlike) {
  Files files = FilesOf({});
  files["VTS_01_0.BUP"][100] = 1;
  files["VTS_01_1.VOB"].push_back(0);
  EXPECT_THAT(FaultsOf(files),
              ElementsAre("read-back-part-sector VTS_01_1.VOB", "read-back-backup VTS_01_0.BUP"));
  files = FilesOf({});
  files.erase("VTS_01_1.VOB");
  EXPECT_THAT(FaultsOf(files),
              ElementsAre("read-back-set-size VTS_01_0.IFO", "read-back-nav-missing VTS_01_1.VOB"));
  files.erase("VIDEO_TS.BUP");
  files["VTS_02_1.VOB"] = Bytes(SectorBytes);
  EXPECT_THAT(FaultsOf(files),
              ElementsAre("read-back-missing VIDEO_TS.BUP", "read-back-set-size VTS_01_0.IFO",
                          "read-back-nav-missing VTS_01_1.VOB", "read-back-missing VTS_02_0.IFO"));
}

}  // namespace
}  // namespace quorvelant
