// A folder that lives as long as the test that made it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace quorvelant {

class TempFolder {
 public:
  TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  const std::filesystem::path& Path() const { return path_; }
  std::string operator/(std::string_view name) const { return (path_ / name).string(); }
  // Writes a file into the folder and gives its path.
  std::string Write(std::string_view name, std::string_view content) const;
  std::string Write(std::string_view name, ByteView content) const {
    return Write(name, std::string(content.begin(), content.end()));
  }
  static std::string Read(const std::filesystem::path& file);

 private:
  std::filesystem::path path_;
};

}  // namespace quorvelant
