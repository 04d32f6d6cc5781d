// The tables of one IFO as values: VIDEO_TS.IFO or VTS_nn_0.IFO.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"

namespace quorvelant {

// A time in BCD with its rate, as it stands.
struct IfoTime {
  std::uint32_t Raw = 0;

  [[nodiscard]] int Rate() const;      // frames a second: 25, 30, or 0 for a rate that there is not
  [[nodiscard]] bool IsValid() const;  // digits, minutes, seconds, frames in range; zero alone needs no rate
  [[nodiscard]] std::int64_t Frames() const;
  [[nodiscard]] std::string Text() const;
};

struct IfoCell {
  std::uint32_t At = 0;  // of its C_PBI: byte of the file
  int Number = 0;
  std::uint8_t Category = 0;
  std::uint8_t StillTime = 0;
  std::uint8_t Command = 0;
  IfoTime Time = {};
  std::uint32_t First = 0;  // sectors of the VOB set
  std::uint32_t FirstIlvuEnd = 0;
  std::uint32_t LastVobu = 0;
  std::uint32_t Last = 0;
  std::uint16_t VobId = 0;
  std::uint8_t CellId = 0;

  [[nodiscard]] unsigned BlockMode() const { return Category >> 6U; }  // 1 first, 2 inner, 3 last of a block
  [[nodiscard]] unsigned BlockType() const { return Category >> 4U & 3U; }
  [[nodiscard]] bool IsInterleaved() const { return (Category & 4U) != 0; }
  [[nodiscard]] bool ClockRestarts() const { return (Category & 2U) != 0; }
};

using IfoCommand = std::array<std::uint8_t, 8>;

struct IfoChain {
  std::uint32_t At = 0;
  int Number = 0;
  std::uint8_t Category = 0;
  IfoTime Time = {};
  std::uint32_t UserOperations = 0;
  std::array<std::uint16_t, 8> Audio{};
  std::array<std::uint32_t, 32> Subpictures{};
  std::uint16_t Next = 0;
  std::uint16_t Previous = 0;
  std::uint16_t GoUp = 0;
  std::uint8_t Playback = 0;
  std::uint8_t StillTime = 0;
  std::vector<IfoCommand> Pre = {};
  std::vector<IfoCommand> Post = {};
  std::vector<IfoCommand> CellCommands = {};
  std::vector<std::uint8_t> Programs = {};
  std::vector<IfoCell> Cells = {};

  [[nodiscard]] bool IsEntry() const { return (Category & 0x80U) != 0; }
};

struct IfoLanguage {
  std::uint32_t At = 0;
  std::uint16_t Language = 0;
  std::uint8_t Existence = 0;
  std::vector<IfoChain> Chains = {};
};

struct IfoTitle {
  std::uint32_t At = 0;
  std::uint8_t PlaybackType = 0;
  int Angles = 0;
  int Parts = 0;
  int Set = 0;
  int InSet = 0;
  std::uint32_t SetStart = 0;
};

struct IfoPart {
  std::uint16_t Chain = 0;
  std::uint16_t Program = 0;
  bool operator==(const IfoPart&) const = default;
  auto operator<=>(const IfoPart&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

struct IfoTimeMap {
  std::uint32_t At = 0;
  int UnitSeconds = 0;
  std::vector<std::uint32_t> Entries = {};
};

// A row of a cell address table.
struct IfoCellAddress {
  std::uint16_t VobId = 0;
  std::uint8_t CellId = 0;
  std::uint32_t Start = 0;
  std::uint32_t Last = 0;
  bool operator==(const IfoCellAddress&) const = default;
  auto operator<=>(const IfoCellAddress&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

struct IfoVideo {
  std::uint16_t Raw = 0;

  [[nodiscard]] bool IsMpeg2() const { return Raw >> 14U == 1; }
  [[nodiscard]] bool IsNtsc() const { return (Raw >> 12U & 3U) == 0; }
  [[nodiscard]] bool IsWide() const { return (Raw >> 10U & 3U) == 3; }
  [[nodiscard]] int Width() const;
  [[nodiscard]] int Height() const;
};

struct IfoAudio {
  std::uint64_t Raw = 0;

  [[nodiscard]] unsigned Format() const { return static_cast<unsigned>(Raw >> 61U); }
  [[nodiscard]] unsigned Quantization() const { return static_cast<unsigned>(Raw >> 54U & 3U); }
  [[nodiscard]] unsigned Frequency() const { return static_cast<unsigned>(Raw >> 52U & 3U); }
  [[nodiscard]] int Channels() const { return static_cast<int>(Raw >> 48U & 7U) + 1; }
  // The id of the first stream of this coding: a substream of private stream 1, or a stream (from 0xC0 on);
  // 0 for a coding that there is not.
  [[nodiscard]] std::uint8_t FirstStream() const;
};

// What the IFO says of the streams of its menus, or of its titles.
struct IfoStreams {
  IfoVideo Video;
  std::vector<IfoAudio> Audio = {};
  int Subpictures = 0;
};

struct IfoTables {
  std::string Name;  // of the file
  int Set = 0;       // 0 is the Video Manager
  Bytes Data;
  std::uint32_t LastSector = 0;  // of the whole set
  std::uint32_t MenuStart = 0;   // sectors from the start of the IFO; 0 for none
  std::uint32_t TitleStart = 0;
  int TitleSets = 0;
  bool IsOurs = false;  // by the name of its maker
  IfoStreams Menus;
  IfoStreams TitleStreams;
  std::optional<IfoChain> FirstPlay;
  std::vector<IfoTitle> Titles = {};
  std::vector<std::vector<IfoPart>> Parts = {};  // by title of the set
  std::vector<IfoChain> Chains = {};             // of the titles
  std::vector<IfoLanguage> Languages = {};
  std::optional<std::vector<IfoTimeMap>> TimeMaps;
  std::vector<std::pair<std::uint32_t, Bytes>> SetAttributes = {};  // with where they stand
  std::optional<std::vector<IfoCellAddress>> MenuCells;
  std::optional<std::vector<IfoCellAddress>> TitleCells;
  std::optional<std::vector<std::uint32_t>> MenuVobus;
  std::optional<std::vector<std::uint32_t>> TitleVobus;

  [[nodiscard]] bool IsManager() const { return Set == 0; }
};

}  // namespace quorvelant
