// What the load of a project asks about source files, answered by the files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/rules.h"
#include "base/user_interface.h"
#include "script/source_scanner.h"

namespace quorvelant {

class FileScanner : public SourceScanner {
 public:
  FileScanner(const Rules& rules, UserInterface& ui) : rules_(rules), ui_(&ui) {}

  std::optional<VideoTraits> Video(const std::string& path) const override;
  std::optional<AudioTraits> Audio(const std::string& path, std::string_view format) const override;

 private:
  Rules rules_;
  UserInterface* ui_;
};

}  // namespace quorvelant
