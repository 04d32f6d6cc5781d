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
#include "disc/disc_files.h"

namespace quorvelant {

// Puts the sums into one IFO. `row` is the number of its set. Bytes that are no IFO are left alone.
void PatchIfo(Bytes& ifo, std::size_t row, std::span<const SetSectors> rows);

// Lists the folder, patches each IFO and copies it to its BUP. The folder is the guide, not the model: a
// set that a former run left there is counted. With a foreign file in the folder nothing is changed; then
// the answer is false.
bool FixUp(const std::string& folder, Random& files);

}  // namespace quorvelant
