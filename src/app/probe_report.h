// What a source file is, found out and put into words or JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "analysis/disc_fit.h"
#include "analysis/quick_scan.h"
#include "analysis/video_probe.h"
#include "base/rules.h"
#include "base/user_interface.h"
#include "picture/bitmap_size.h"

namespace quorvelant {

enum class IndexAge { None, Current, Older };

// One of `Video`, `Audio` and `Bitmap` is there, or none and `Fit` says why a disc cannot carry the file.
struct ProbeReport {
  std::string File;
  std::optional<VideoProbe> Video;
  std::optional<AudioAttributes> Audio;
  std::optional<BitmapSize> Bitmap;
  std::string OtherKind;  // what else it is, e.g. "an MPEG program stream"
  IndexAge Index = IndexAge::None;
  DiscFit Fit;
  std::vector<std::string> Remedies;  // lines for a shell that make files which a disc carries

  bool Known() const { return Video || Audio || Bitmap; }
};

// Goes by the file's content, and by its name where the content says nothing. Reads video whole. Nothing for
// a file that is missing or cannot be read, which is reported, and when the user stopped it.
std::optional<ProbeReport> ProbeFile(const std::string& file, const Rules& rules, UserInterface& ui);

std::string ProbeText(const ProbeReport& report);
nlohmann::ordered_json ProbeJson(const ProbeReport& report);

}  // namespace quorvelant
