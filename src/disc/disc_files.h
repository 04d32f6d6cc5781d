// The files of a disc's folder: their names, and the sectors that each set of them takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/random.h"

namespace quorvelant {

// A file of the folder.
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

// "VIDEO_TS" for row 0, "VTS_nn_0" for title set nn.
std::string IfoBaseName(std::size_t row);

// The regular files of a folder by name; empty where it cannot be listed.
std::vector<DiscFile> ListFiles(const std::string& folder);

// The whole of a file. Raises FileError.
Bytes ReadWhole(const std::string& path, Random& files);

}  // namespace quorvelant
