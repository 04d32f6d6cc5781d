// The files of a disc's folder: their names, sizes and bounds, and what tells their kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/random.h"

namespace quorvelant {

// Of a file: a block short of 1 GiB (UDF 1.02 6.9.1).
inline constexpr std::uint32_t MostVobSectors = 524287;
inline constexpr int MostTitleVobs = 9;  // numbered files of a title set
// Far more than the largest tables take.
inline constexpr std::uint64_t MostIfoBytes = std::uint64_t{64} << 20U;
// Of an error correction block: what a scratch takes together.
inline constexpr std::uint32_t EccSectors = 16;

// What an IFO begins with.
inline constexpr std::string_view ManagerId = "DVDVIDEO-VMG";
inline constexpr std::string_view TitleSetId = "DVDVIDEO-VTS";

// A file of the folder.
struct DiscFile {
  std::string Name;
  std::uint64_t Size = 0;  // bytes
};

// A file name that a disc folder may hold: VIDEO_TS or VTS_nn_n with IFO, BUP or VOB, in any case.
[[nodiscard]] bool IsDiscFileName(std::string_view name);

// The name of an IFO without its extension: "VIDEO_TS" for set 0, the Video Manager, "VTS_nn_0" for title
// set nn.
[[nodiscard]] std::string IfoBaseName(std::size_t set);

// The regular files of a folder by name; empty where it cannot be listed.
[[nodiscard]] std::vector<DiscFile> ListFiles(const std::string& folder);

// The whole of a file. Raises FileError.
[[nodiscard]] Bytes ReadWhole(const std::string& path, Random& files);

// To be thrown for a file that `Random` did not open.
[[nodiscard]] FileError NotOpened(const std::string& path);

}  // namespace quorvelant
