// What no file can know of the others while it is written: the sectors of whole sets, put into every IFO
// and BUP once all files are there.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/random.h"

namespace quorvelant {

// A file of the output folder.
struct DiscFile {
  std::string Name;
  std::uint64_t Size = 0;  // bytes
};

// The sectors of one set of files; row 0 is the Video Manager, row n title set n.
struct SetSectors {
  std::uint32_t Ifo = 0;
  std::uint32_t Total = 0;
  std::uint32_t MenuVob = 0;
};

struct DiscSectors {
  std::vector<SetSectors> Rows;  // up to the highest title set number met
  bool OnlyDiscFiles = true;     // a file of any other name was met otherwise
};
// Sums the files by their names: "VTS_nn..." and "VIDE...", in any case.
DiscSectors SumSectors(std::span<const DiscFile> files);

// Puts the sums into one IFO. `row` is the number of its set. Bytes that are no IFO are left alone.
void PatchIfo(Bytes& ifo, std::size_t row, std::span<const SetSectors> rows);

// Lists the folder, patches each IFO and copies it to its BUP. The folder is the guide, not the model: a
// set that a former run left there is counted. With a foreign file in the folder nothing is changed; then
// the answer is false.
bool FixUp(const std::string& folder, Random& files);

// "VIDEO_TS" for row 0, "VTS_nn_0" for title set nn.
std::string IfoBaseName(std::size_t row);

}  // namespace quorvelant
