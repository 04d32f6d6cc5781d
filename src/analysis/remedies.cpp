#include "analysis/remedies.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace quorvelant {

namespace {

bool IsPlain(char letter) {
  constexpr std::string_view Marks = "_-./,+=@%:";
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= '0' && letter <= '9') || Marks.find(letter) != std::string_view::npos;
}

// A path that ffmpeg takes for nothing else: a leading "-" makes an option, a colon a protocol.
std::string PathWord(const std::string& path) {
  const bool odd = path.starts_with('-') || path.find(':') < path.find('/');
  return ShellWord(odd ? "./" + path : path);
}

std::string Line(const std::string& file, std::string_view options, std::string_view extension) {
  std::string target = std::filesystem::path(file).replace_extension(extension).string();
  if (target == file) {
    target.insert(target.size() - extension.size(), "-dvd");
  }
  return fmt::format("ffmpeg -i {} {} {}", PathWord(file), options, PathWord(target));
}

}  // namespace

std::string ShellWord(std::string_view text) {
  if (!text.empty() && std::ranges::all_of(text, IsPlain)) {
    return std::string(text);
  }
  std::string word = "'";
  for (const char letter : text) {
    word += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  }
  return word + "'";
}

std::string CopyVideoLine(const std::string& file) {
  return Line(file, "-map 0:v:0 -c:v copy", ".m2v");
}

std::string RepeatSequenceLine(const std::string& file) {
  return Line(file, "-map 0:v:0 -c:v copy -bsf:v dump_extra=freq=keyframe", ".m2v");
}

std::string EncodeVideoLine(const std::string& file, const VideoTarget& target) {
  const std::string_view rate = target.Ntsc ? "30000/1001" : "25";
  // A film `dar` wide takes 405 * dar columns of 16:9, or all of them with bars above and below.
  const std::string shape =
      target.Aspect.empty()
          ? fmt::format("-vf \"scale='min(720,405*dar)':'min({})',pad=720:{}:-1:-1,setdar=16/9\" -r {}",
                        target.Ntsc ? "480,2560/3/dar" : "576,1024/dar", target.Ntsc ? 480 : 576, rate)
          : fmt::format("-s 720x{} -r {} -aspect {}", target.Ntsc ? 480 : 576, rate, target.Aspect);
  // A group of 15 or 12 pictures is half a second; the decoder's buffer holds 1,835,008 bits.
  return Line(file,
              fmt::format("-map 0:v:0 -c:v mpeg2video {} -pix_fmt yuv420p -b:v 6M -maxrate 9M "
                          "-bufsize 1835008 -g {} -bf 2",
                          shape, target.Ntsc ? 15 : 12),
              ".m2v");
}

std::string EncodeAudioLine(const std::string& file, const AudioTarget& target) {
  const std::string channels = target.Channels > 0 ? fmt::format(" -ac {}", target.Channels) : "";
  if (target.Pcm) {
    const int bits = target.Bits > 16 ? 24 : 16;
    return Line(file, fmt::format("-map 0:a:0 -c:a pcm_s{}le -ar {}{}", bits, target.KHz * 1000, channels),
                ".wav");
  }
  return Line(file, fmt::format("-map 0:a:0 -c:a ac3 -b:a {}k -ar 48000{}", target.Kbps, channels), ".ac3");
}

}  // namespace quorvelant
