// Sample media for every test program, made when it is first asked for by ffmpeg and mpeg2enc and kept in
// build/media, for all builds of a checkout. Two calls with equal parameters give the same file; a file is
// written aside and then takes its name, so programs that run side by side never see half of one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvelant {

struct VideoSample {
  std::string Standard = "PAL";  // or "NTSC"
  std::string Aspect = "4:3";    // or "16:9"
  int Width = 720;
  int Height = 0;  // 0: the full height of the standard
  int Frames = 50;
  int GopLength = 12;  // pictures; 1 gives I pictures alone
  int BFrames = 2;
  bool Closed = false;  // every GOP closed
  bool Interlaced = false;
  // NTSC film: `Frames` coded pictures at 24000/1001 with repeat-field flags for 30000/1001.
  bool Pulldown = false;
  int KbitPerSecond = 4000;
  bool Mpeg1 = false;
};
std::string SampleVideo(const VideoSample& sample);

struct Ac3Sample {
  int Channels = 2;  // 1 to 6
  int Kbps = 192;
  int Rate = 48000;
  double Seconds = 2;
};
std::string SampleAc3(const Ac3Sample& sample);

struct WavSample {
  int Rate = 48000;
  int Bits = 16;  // 16, 24 or 32; from 24 bits on the header is the extensible one
  int Channels = 2;
  double Seconds = 2;
};
std::string SampleWav(const WavSample& sample);

// A file of the folder of real streams, nothing where that is missing (the test then skips, saying so).
// The folder is "../shared" beside the sources or what the environment's QUORVELANT_SHARED names.
std::optional<std::string> SharedFile(std::string_view name);
inline constexpr std::string_view StreamsMissing = "a real stream is not at hand: no samples/ in ../shared";

}  // namespace quorvelant
