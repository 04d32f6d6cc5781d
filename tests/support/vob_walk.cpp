#include "support/vob_walk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/pack_reader.h"

namespace quorvelant {
namespace {

// The video of one VOBU as one run of bytes, with the sector of each.
struct VideoRun {
  Bytes Data;
  std::vector<std::pair<std::size_t, std::uint32_t>> Starts;  // offset in Data, sector

  std::uint32_t SectorOf(std::size_t offset) const {
    const auto behind =
        std::ranges::upper_bound(Starts, offset, {}, [](const auto& start) { return start.first; });
    return (behind - 1)->second;
  }
};

// Where a start code from the list that ends a picture stands: picture, sequence, end, group.
bool EndsPicture(std::uint8_t code) {
  return code == 0x00 || code == 0xB3 || code == 0xB7 || code == 0xB8;
}

// A picture as its headers tell it (ISO/IEC 13818-2 6.2.3).
struct CodedPicture {
  int Type = 0;  // 1 I, 2 P, 3 B
  int TemporalReference = 0;
  int Halves = 2;  // half frames that it is shown
  int Group = 0;
};

// The pictures of a VOBU in coded order; a reference picture ends where the next start code above slices is.
void FindPictures(const VideoRun& run, WalkedVobu& vobu) {
  std::vector<CodedPicture> pictures;
  int group = 0;
  bool open = false;
  for (std::size_t i = 0; i + 4 <= run.Data.size(); ++i) {
    if (run.Data[i] != 0 || run.Data[i + 1] != 0 || run.Data[i + 2] != 1) {
      continue;
    }
    const std::uint8_t code = run.Data[i + 3];
    const auto at = [&](std::size_t offset) {
      return i + offset < run.Data.size() ? run.Data[i + offset] : 0;
    };
    if (EndsPicture(code)) {
      if (open && pictures.back().Type != 3) {
        vobu.ReferenceEnds.push_back(run.SectorOf(i - 1));
      }
      open = code == 0x00;
      vobu.EndCode = code == 0xB7;
      group += code == 0xB8 ? 1 : 0;
    }
    if (code == 0x00) {
      pictures.push_back({at(5) >> 3 & 7, at(4) << 2 | at(5) >> 6, 2, group});
    } else if (code == 0xB5 && at(4) >> 4 == 8 && !pictures.empty()) {
      pictures.back().Halves = ((at(6) & 3) == 3 ? 2 : 1) + ((at(7) & 2) != 0 ? 1 : 0);
    }
  }
  if (open && pictures.back().Type != 3) {
    vobu.ReferenceEnds.push_back(run.SectorOf(run.Data.size() - 1));
  }
  for (const CodedPicture& picture : pictures) {
    const CodedPicture& first = pictures.front();
    const bool ahead = picture.Group == first.Group && picture.TemporalReference < first.TemporalReference;
    vobu.Halves += picture.Halves;
    vobu.HalvesAheadOfFirst += ahead ? picture.Halves : 0;
  }
}

}  // namespace

std::vector<WalkedVobu> WalkVobs(const std::vector<std::string>& files) {
  const Bytes sectors = SectorsOf(files);
  std::vector<WalkedVobu> vobus;
  VideoRun run;
  std::uint32_t number = 0;
  const auto finish = [&] {
    if (!vobus.empty()) {
      vobus.back().Last = number - 1;
      FindPictures(run, vobus.back());
    }
    run = {};
  };
  for (; number < sectors.size() / SectorBytes; ++number) {
    const ByteView sector = ByteView(sectors).subspan(number * SectorBytes, SectorBytes);
    const ReadPack pack = ReadPackOf(sector);
    if (pack.StreamId == NavigationPack) {
      finish();
      WalkedVobu& vobu = vobus.emplace_back();
      vobu.Sector = number;
      vobu.Nav = {sector.begin(), sector.end()};
      vobu.ScrBase = pack.Scr / 300;
      continue;
    }
    if (vobus.empty()) {
      ADD_FAILURE() << "the first sector is no navigation pack";
      return vobus;
    }
    WalkedVobu& vobu = vobus.back();
    if (pack.StreamId == VideoPack) {
      vobu.FirstPackPts = run.Data.empty() ? pack.Pts.value_or(-1) : vobu.FirstPackPts;
      vobu.HasVideo = true;
      run.Starts.emplace_back(run.Data.size(), number);
      run.Data.insert(run.Data.end(), pack.Payload.begin(), pack.Payload.end());
    } else if (pack.Substream >= 0) {
      vobu.Packs.push_back({number, pack.Substream, pack.Pts.value_or(-1)});
    }
  }
  finish();
  return vobus;
}

}  // namespace quorvelant
