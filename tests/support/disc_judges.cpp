#include "support/disc_judges.h"

#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <regex>
#include <stdexcept>

#include "support/media.h"

namespace quorvelant {

constexpr std::string_view Checker = "dvdcheck/dvdcheck.py";

std::vector<std::string> LinesOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen((command + " 2>&1").c_str(), "r"), &pclose);
  if (!pipe) {
    throw std::runtime_error("cannot run " + command);
  }
  std::vector<std::string> lines;
  std::array<char, 1024> buffer{};
  while (fgets(buffer.data(), static_cast<int>(buffer.size()), pipe.get()) != nullptr) {
    lines.emplace_back(buffer.data());
  }
  return lines;
}

bool HasChecker() {
  return SharedFile(Checker).has_value();
}

std::vector<std::string> CheckerErrors(const std::string& folder) {
  const std::string checker = SharedFile(Checker).value();
  std::vector<std::string> errors;
  bool finished = false;
  for (const std::string& line : LinesOf(fmt::format("python3 '{}' '{}'", checker, folder))) {
    if (line.starts_with("ERROR ")) {
      errors.push_back(line);
    }
    finished = finished || line.starts_with("ERRORS ");
  }
  if (!finished) {
    errors.emplace_back("the checker did not finish");
  }
  return errors;
}

Decoded Decode(const std::vector<std::string>& files) {
  Decoded decoded;
  for (const std::string& line :
       LinesOf(fmt::format("ffmpeg -nostdin -nostats -hide_banner -v warning -progress pipe:1 -i 'concat:{}' "
                           "-map 0:v -map 0:a? -fps_mode passthrough -enc_time_base:v 1:90000 -f null -",
                           fmt::join(files, "|")))) {
    static const std::regex Progress(
        R"((frame|fps|stream_\w+|bitrate|total_size|out_time\w*|\w+_frames|speed|progress)=.*\n)");
    std::smatch figure;
    const bool said = !std::regex_match(line, figure, Progress);
    // Subtitles may begin after what ffmpeg looks at first.
    if (said && line.find("New subtitle stream") == std::string::npos) {
      decoded.Complaints.push_back(line);
    } else if (figure[1] == "frame") {
      decoded.Pictures = std::stoi(line.substr(6));
    }
  }
  return decoded;
}

std::vector<std::string> TitleVobs(const std::string& folder, int set) {
  std::vector<std::string> files;
  for (int number = 1; number <= 9; ++number) {
    files.push_back(fmt::format("{}/VTS_{:02}_{}.VOB", folder, set, number));
  }
  std::erase_if(files, [](const std::string& file) { return !std::filesystem::exists(file); });
  return files;
}

}  // namespace quorvelant
