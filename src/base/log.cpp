#include "base/log.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

namespace quorvelant {

namespace {

constexpr int ApplicationSeverity = 9;
constexpr int MostTabs = 3;

}  // namespace

void Log::SetFile(std::string file) {
  file_ = std::move(file);
  active_ = true;
}

void Log::Output(std::string_view text, int severity, int tabs) {
  if (!active_ || SeverityLevel == -1 || severity < SeverityLevel || tabs > MostTabs) {
    return;
  }
  std::ofstream file(file_, std::ios::app | std::ios::binary);
  file << std::string(static_cast<std::size_t>(std::max(tabs, 0)), '\t') << text << "\r\n";
}

void Log::Reset() {
  std::error_code ignored;
  std::filesystem::remove(file_, ignored);
}

void Log::Header(std::string_view text) {
  Output("***** " + std::string(text) + " *****", ApplicationSeverity, 0);
}

void Log::EndHeader() {
  Output("***** ***** *****", ApplicationSeverity, 0);
  Output(" ", ApplicationSeverity, 0);
}

void Log::WriteText(std::string_view text, int tabs) {
  Output(text, ApplicationSeverity, tabs);
}

Log StartLog(const std::string& file) {
  if (file.empty()) {
    return {};
  }
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
  Log log(file);
  log.Reset();
  return log;
}

}  // namespace quorvelant
