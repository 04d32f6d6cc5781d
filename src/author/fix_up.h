// What no file can know of the others while it is written: the sectors of whole sets, put into every IFO
// and BUP once all files are there.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/user_interface.h"
#include "disc/disc_files.h"

namespace quorvelant {

// The sectors of one set of files; row 0 is the Video Manager, row n title set n.
struct SetSectors {
  std::uint32_t Ifo = 0;
  std::uint32_t Total = 0;
  std::uint32_t MenuVob = 0;
};

struct DiscSectors {
  std::vector<SetSectors> Rows;  // up to the highest title set number met
  std::string Foreign;           // the first file of another name than a disc has; empty for none
};

// Sums the files by their names: "VTS_nn..." and "VIDE...", in any case.
[[nodiscard]] DiscSectors SumSectors(std::span<const DiscFile> files);

// Puts the sums into one IFO. `row` is the number of its set. Bytes that are no IFO are left alone.
void PatchIfo(Bytes& ifo, std::size_t row, std::span<const SetSectors> rows);

// Lists the folder, patches each IFO and copies it to its BUP. The folder is the guide, not the model: a
// set that an earlier run left there is counted. With a foreign file in the folder nothing is changed, and
// the answer is its name; otherwise there is none. Raises FileError.
[[nodiscard]] std::optional<std::string> FixUp(const std::string& folder, UserInterface& ui);

}  // namespace quorvelant
