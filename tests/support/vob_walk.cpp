#include "support/vob_walk.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace quorvelant {
namespace {

std::int64_t StampAt(ByteView sector, std::size_t at) {
  const std::uint64_t bits = GetBytes(sector, at, 5);
  return static_cast<std::int64_t>((bits >> 33 & 7) << 30 | (bits >> 17 & 0x7FFF) << 15 |
                                   (bits >> 1 & 0x7FFF));
}

void Cut(Bytes& data, std::size_t count) {
  data.erase(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(count));
}

void ReadPrivateHeader(ReadPack& pack) {
  pack.Substream = pack.Payload.at(0);
  if (pack.Substream < 0x80) {
    Cut(pack.Payload, 1);
    return;
  }
  const std::size_t header = pack.Substream >= 0xA0 ? 7 : 4;
  pack.Frames = pack.Payload.at(1);
  pack.Pointer = pack.Payload.at(2) << 8 | pack.Payload.at(3);
  pack.AudioBits = {pack.Payload.begin() + 4, pack.Payload.begin() + static_cast<std::ptrdiff_t>(header)};
  Cut(pack.Payload, header);
}

// The video of one VOBU as one run of bytes, with the sector of each.
struct VideoRun {
  Bytes Data;
  std::vector<std::uint32_t> Sectors;
};

// A picture as its headers tell it (ISO/IEC 13818-2 6.2.3).
struct CodedPicture {
  int TemporalReference = 0;
  int Group = 0;
  int Fields = 2;  // fields that it is shown
};

// The pictures of a VOBU in coded order; a reference picture ends where the next start code above slices is.
void FindPictures(const VideoRun& run, WalkedVobu& vobu) {
  std::vector<CodedPicture> pictures;
  int group = 0;
  bool reference = false;  // one is open
  const auto closeAt = [&](std::size_t end) {
    if (reference) {
      vobu.ReferenceEnds.push_back(run.Sectors[end - 1]);
    }
    reference = false;
  };
  const auto at = [&](std::size_t i) { return i < run.Data.size() ? run.Data[i] : 0; };
  for (std::size_t i = 0; i + 4 <= run.Data.size(); ++i) {
    if (run.Data[i] != 0 || run.Data[i + 1] != 0 || run.Data[i + 2] != 1) {
      continue;
    }
    const std::uint8_t code = run.Data[i + 3];
    if (code == 0x00 || code == 0xB3 || code == 0xB7 || code == 0xB8) {  // picture, sequence, end, group
      closeAt(i);
      vobu.EndCode = code == 0xB7;
      group += code == 0xB8 ? 1 : 0;
    }
    if (code == 0x00) {
      reference = (at(i + 5) >> 3 & 7) != 3;
      pictures.push_back({at(i + 4) << 2 | at(i + 5) >> 6, group});
    } else if (code == 0xB5 && at(i + 4) >> 4 == 8 && !pictures.empty()) {
      pictures.back().Fields = ((at(i + 6) & 3) == 3 ? 2 : 1) + ((at(i + 7) & 2) != 0 ? 1 : 0);
    }
  }
  closeAt(run.Data.size());
  for (const CodedPicture& picture : pictures) {
    const CodedPicture& first = pictures.front();
    const bool before = picture.Group == first.Group && picture.TemporalReference < first.TemporalReference;
    vobu.Fields += picture.Fields;
    vobu.FieldsBeforeFirst += before ? picture.Fields : 0;
  }
}

}  // namespace

ReadPack ReadPackOf(ByteView sector) {
  EXPECT_EQ(GetBytes(sector, 0, 4), 0x1BAU);
  ReadPack pack;
  const std::uint64_t clock = GetBytes(sector, 4, 6);
  const std::uint64_t base = (clock >> 43 & 7) << 30 | (clock >> 27 & 0x7FFF) << 15 | (clock >> 11 & 0x7FFF);
  pack.Scr = static_cast<std::int64_t>(base * 300 + (clock >> 1 & 0x1FF));
  pack.StreamId = sector[17];
  if (pack.StreamId != VideoPack && pack.StreamId != 0xBD) {
    return pack;
  }
  const std::size_t end = 20 + GetBytes(sector, 18, 2);
  const unsigned flags = sector[21];
  std::size_t at = 23;
  for (const auto& [flag, stamp] : {std::pair{0x80U, &pack.Pts}, {0x40U, &pack.Dts}}) {
    if ((flags & flag) != 0) {
      *stamp = StampAt(sector, at);
      at += 5;
    }
  }
  if ((flags & 1) != 0) {
    pack.BufferKib = static_cast<int>(GetBytes(sector, at + 1, 2) & 0x1FFF);
  }
  const ByteView data = sector.first(end).subspan(23U + sector[22]);
  pack.Payload = {data.begin(), data.end()};
  if (pack.StreamId == 0xBD) {
    ReadPrivateHeader(pack);
  }
  return pack;
}

Bytes SectorsOf(const std::vector<std::string>& files) {
  Bytes sectors;
  for (const std::string& name : files) {
    const std::string file = TempFolder::Read(name);
    EXPECT_EQ(file.size() % SectorBytes, 0U) << name;
    sectors.insert(sectors.end(), file.begin(), file.end());
  }
  return sectors;
}

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
      run.Data.insert(run.Data.end(), pack.Payload.begin(), pack.Payload.end());
      run.Sectors.resize(run.Data.size(), number);
    } else if (pack.Substream >= 0) {
      vobu.Packs.push_back({number, pack.Substream, pack.Pts.value_or(-1)});
    }
  }
  finish();
  return vobus;
}

}  // namespace quorvelant
