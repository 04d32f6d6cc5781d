#include "disc/disc_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/text.h"

namespace quorvelant {
namespace {

constexpr std::string_view NotOpenedLine = "The file '{}' could not be opened.";

// The row a file counts for; nothing for a name that no disc file has.
bool RowOf(std::string_view upperName, std::size_t& row) {
  if (upperName.starts_with("VTS_")) {
    row = static_cast<std::size_t>(std::max(LeadingNumber(upperName.substr(4, 2)), 0));
    return true;
  }
  row = 0;
  return upperName.starts_with("VIDE");
}

}  // namespace

std::string IfoBaseName(std::size_t row) {
  return row == 0 ? "VIDEO_TS" : fmt::format("VTS_{:02}_0", row);
}

DiscSectors SumSectors(std::span<const DiscFile> files) {
  DiscSectors sums;
  sums.Rows.resize(1);
  for (const DiscFile& file : files) {
    const std::string name = Upper(file.Name);
    std::size_t row = 0;
    if (!RowOf(name, row)) {
      sums.OnlyDiscFiles = false;
      continue;
    }
    sums.Rows.resize(std::max(sums.Rows.size(), row + 1));
    SetSectors& set = sums.Rows[row];
    const auto sectors = static_cast<std::uint32_t>((file.Size + SectorBytes / 2) / SectorBytes);
    set.Total += sectors;
    if (name.ends_with("0.VOB") || name.ends_with("S.VOB")) {
      set.MenuVob = sectors;
    }
    if (name.ends_with(".IFO")) {
      set.Ifo = sectors;
    }
  }
  return sums;
}

std::vector<DiscFile> ListFiles(const std::string& folder) {
  std::vector<DiscFile> files;
  std::error_code failed;
  for (const auto& entry : std::filesystem::directory_iterator(folder, failed)) {
    std::error_code unreadable;
    if (entry.is_regular_file(unreadable)) {
      files.push_back({entry.path().filename().string(), entry.file_size(unreadable)});
    }
  }
  std::ranges::sort(files, {}, &DiscFile::Name);
  return files;
}

Bytes ReadWhole(const std::string& path, Random& files) {
  if (!files.OpenSource(path, slot::Source)) {
    throw FileError(FileError::OpenNumber, fmt::format(NotOpenedLine, path));
  }
  Bytes bytes = files.ReadBytes(static_cast<std::size_t>(files.FileBytes(slot::Source)), slot::Source);
  files.CloseFile(slot::Source);
  return bytes;
}

}  // namespace quorvelant
