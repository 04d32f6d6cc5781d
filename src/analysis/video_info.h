// The attributes of an MPEG video elementary stream, from its first headers.
#pragma once

#include <optional>
#include <string>

#include "base/random.h"

namespace quorvelant {

struct VideoInfo {
  double FrameRate = 0;        // 23.976, 25 or 30
  std::string Aspect;          // "4:3" or "16:9"
  bool PanScan = false;        // pan-scan information is present
  bool NeedsPulldown = false;  // 23.976 without repeat-field flags, so far as its headers tell
  int Width = 0;               // horizontal_size_value
  int Height = 0;              // vertical_size_value
  std::string Standard;        // "PAL" or "NTSC"
  int PicturesSeen = 0;        // 1 or 2: 1 means a still
  std::string GroupTimeCode;   // time code of the last group header seen, as a picture count
  std::string Coding = "NO";   // "MPEG1", "MPEG2", "NO" when nothing was found
  // What the tables do not carry but a refusal names: the codes themselves (ISO/IEC 13818-2 6.3.3).
  int AspectCode = 0;
  int FrameRateCode = 0;
  int Kbps = 0;               // bit_rate: of a stream of constant rate that rate, of others a bound
  bool VariableRate = false;  // a vbv_delay says so (6.3.9)
  int ChromaFormat = 1;       // 1: 4:2:0
};

// Reads `fileName` up to its second picture. Nothing if it cannot be opened or read, which was told then.
// `pulldownHandled` keeps the pulldown mark off.
std::optional<VideoInfo> GetVideoInfo(const std::string& fileName, bool pulldownHandled, UserInterface& ui);

// The same on an open slot, in blocks of `blockBytes`; raises FileError.
VideoInfo ReadVideoInfo(Random& files, int slot, bool pulldownHandled, std::size_t blockBytes,
                        UserInterface* ui = nullptr);

}  // namespace quorvelant
