// What stands at which sector of an image, as values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/message.h"
#include "iso/disc_tree.h"
#include "iso/layer_break.h"

namespace quorvelant {

// Sectors that are the same in every image. ISO 9660 has 16 and what its path tables lead to; UDF has the
// rest.
namespace image_sector {
inline constexpr std::uint32_t IsoVolume = 16;  // the primary volume descriptor, and the terminator after it
inline constexpr std::uint32_t Recognition = 18;      // BEA01, NSR02, TEA01
inline constexpr std::uint32_t MainSequence = 32;     // of volume descriptors
inline constexpr std::uint32_t ReserveSequence = 48;  // the same once more
inline constexpr std::uint32_t SequenceSectors = 16;
inline constexpr std::uint32_t Integrity = 64;  // the descriptor, and a terminator
inline constexpr std::uint32_t IntegritySectors = 2;
inline constexpr std::uint32_t LittlePathTable = 66;
inline constexpr std::uint32_t BigPathTable = 67;
inline constexpr std::uint32_t IsoRoot = 68;
inline constexpr std::uint32_t IsoAudioFolder = 69;  // AUDIO_TS, which is empty
inline constexpr std::uint32_t IsoVideoFolder = 70;  // up to 30 sectors
inline constexpr std::uint32_t Anchor = 256;
inline constexpr std::uint32_t Partition = 257;
}  // namespace image_sector

// Blocks of the partition, counted from its start. A folder's names follow its entry; the entries of the
// files follow the names of VIDEO_TS.
namespace image_block {
inline constexpr std::uint32_t FileSet = 0;  // the descriptor, and a terminator
inline constexpr std::uint32_t RootEntry = 2;
inline constexpr std::uint32_t AudioEntry = 4;
inline constexpr std::uint32_t VideoEntry = 6;
inline constexpr std::uint32_t VideoNames = 7;
}  // namespace image_block

struct PlacedFile {
  TreeFile File;
  std::uint32_t Start = 0;  // sector

  [[nodiscard]] std::uint32_t End() const { return Start + File.Sectors(); }
};

struct ImageLayout {
  std::vector<PlacedFile> Files;  // as they follow each other
  std::uint32_t Sectors = 0;      // of the image, a multiple of 16; the last one holds an anchor
  std::vector<std::size_t>
      Together;                     // sets that have IFO and BUP in one ECC block, since no start parts them
  bool TwoLayers = false;           // more than a DVD-5 holds
  std::optional<LayerBreak> Break;  // the cell that a second layer begins with; nothing where none fits

  [[nodiscard]] std::uint64_t Size() const { return std::uint64_t{Sectors} * SectorBytes; }
};

// Blocks that the names of VIDEO_TS take in its UDF directory.
[[nodiscard]] std::uint32_t VideoNameBlocks(std::size_t files);

// Lays the files out as the tables tell: within a set by its IFO, the sets by the search table of titles. All
// moves together by up to 15 sectors, so that IFO and BUP of as many sets as possible come to lie in
// different ECC blocks and a cell for the layer break at the start of one. Tables that contradict each other
// or the files, and what no disc holds, are added to `faults`.
[[nodiscard]] ImageLayout LayOutImage(const DiscTree& tree, std::vector<Message>& faults);

}  // namespace quorvelant
