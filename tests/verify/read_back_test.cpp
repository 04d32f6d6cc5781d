#include "verify/read_back.h"

#include <gmock/gmock.h>

#include "disc/nav_layout.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"
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
    const auto begin = [](Bytes& ifo, std::string_view id, std::uint32_t sectors) {
      std::ranges::copy(id, ifo.begin());
      Put(ifo, vtsi::SetLast, disc::Sectors{sectors - 1});
    };
    begin(Manager, "DVDVIDEO-VMG", 4);
    Put(Manager, vmgi::TitleSearch, disc::Sectors{1});
    const ByteSpan titles = ByteSpan(Manager).subspan(SectorBytes);
    Put(titles, table_head::Count, disc::Number{1});
    Put(titles, table_head::Last, disc::ByteOffset{table_head::Size + title_entry::Size - 1});
    Put(titles.subspan(table_head::Size), title_entry::TitleSet, disc::Number{1});
    Put(titles.subspan(table_head::Size), title_entry::SetStart, disc::Sectors{4});
    begin(Set, "DVDVIDEO-VTS", 7);
    Put(Set, vtsi::TitleVobus, disc::Sectors{1});
    PutBytes(Set, SectorBytes, 4, 4 + 2 * 4 - 1);  // the last byte of a map of two
    PutBytes(Set, SectorBytes + 8, 4, 2);
    for (const std::uint32_t sector : {0U, 2U}) {
      const ByteSpan pack = ByteSpan(Vob).subspan(sector * SectorBytes);
      Put(pack, nav::PciStartCode, disc::Number{nav::PrivateStream2});
      Put(pack, nav::PciLbn, disc::Sectors{sector});
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
    folder.Write(name, std::string(bytes.begin(), bytes.end()));
  }
  RecordingUi ui;
  std::vector<std::string> codes;
  for (const Message& fault : ReadBack(folder.Path().string(), ui)) {
    codes.push_back(std::string(fault.Code) + " " + fault.Place.substr(folder.Path().string().size() + 1));
  }
  return codes;
}

TEST(ReadBack, NamesEachFaultOfTheContents) {
  struct Case {
    std::function<void(SmallestDisc&)> Spoil;
    std::vector<std::string> Faults;
  };
  for (const Case& c : {
           Case{[](SmallestDisc&) {}, {}},
           Case{[](SmallestDisc& disc) { disc.Manager[9] = 'X'; }, {"read-back-no-ifo VIDEO_TS.IFO"}},
           Case{[](SmallestDisc& disc) { Put(disc.Set, vtsi::Chapters, disc::Sectors{2}); },
                {"read-back-pointer VTS_01_0.IFO"}},
           Case{[](SmallestDisc& disc) { PutBytes(disc.Manager, SectorBytes + 4, 4, SectorBytes); },
                {"read-back-table VIDEO_TS.IFO"}},
           Case{[](SmallestDisc& disc) { Put(disc.Set, vtsi::SetLast, disc::Sectors{7}); },
                {"read-back-set-size VTS_01_0.IFO"}},
           Case{[](SmallestDisc& disc) { disc.Manager[SectorBytes + 8 + 11] = 0; },
                {"read-back-title-start VIDEO_TS.IFO"}},
           Case{[](SmallestDisc& disc) { disc.Manager[SectorBytes + 8 + 6] = 2; },
                {"read-back-title-start VIDEO_TS.IFO"}},
           Case{[](SmallestDisc& disc) { disc.Vob[38 + 3] = 0xE0; }, {"read-back-nav-missing VTS_01_1.VOB"}},
           Case{[](SmallestDisc& disc) { disc.Vob[2 * SectorBytes + 48] = 1; },
                {"read-back-nav-address VTS_01_1.VOB"}},
           Case{[](SmallestDisc& disc) { PutBytes(disc.Set, SectorBytes + 8, 4, 3); },
                {"read-back-nav-missing VTS_01_1.VOB"}},
       }) {
    SmallestDisc disc;
    c.Spoil(disc);
    EXPECT_EQ(FaultsOf(FilesOf(disc)), c.Faults);
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
