#include "disc/disc_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "base/text.h"

namespace quorvelant {
namespace {

constexpr std::array<std::string_view, 3> Extensions{".IFO", ".BUP", ".VOB"};
constexpr std::string_view NotOpenedLine = "The file '{}' could not be opened.";

}  // namespace

bool IsDiscFileName(std::string_view name) {
  const std::string upper = Upper(name);
  const std::string_view text = upper;
  if (std::ranges::none_of(Extensions, [&](std::string_view end) { return text.ends_with(end); })) {
    return false;
  }
  const std::string_view stem = text.substr(0, text.size() - 4);
  const auto digit = [&](std::size_t at) { return std::isdigit(static_cast<unsigned char>(stem[at])) != 0; };
  return stem == "VIDEO_TS" ||
         (stem.size() == 8 && stem.starts_with("VTS_") && stem[6] == '_' && digit(4) && digit(5) && digit(7));
}

std::string IfoBaseName(std::size_t set) {
  return set == 0 ? "VIDEO_TS" : fmt::format("VTS_{:02}_0", set);
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
    throw NotOpened(path);
  }
  Bytes bytes = files.ReadBytes(static_cast<std::size_t>(files.FileBytes(slot::Source)), slot::Source);
  files.CloseFile(slot::Source);
  return bytes;
}

FileError NotOpened(const std::string& path) {
  return {FileError::OpenNumber, fmt::format(NotOpenedLine, path)};
}

}  // namespace quorvelant
