// The program-wide options and their file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/user_interface.h"

namespace quorvelant {

// Player regions 1 to 6 and 8; there is no region 7 to allow.
inline constexpr std::array<int, 7> Regions{1, 2, 3, 4, 5, 6, 8};

// As constructed every option is off and every number 0: the values of a batch run, which reads no file.
struct Settings {
  bool RemoveSeqEnd = false;        // remove sequence end codes within a track (of stills in a row too)
  bool Subrip = false;              // subtitle scripts were made by SubRip
  bool ScenesNotSeamless = false;   // scenes of one track follow each other without the seamless flag
  bool SeamlessPGC = false;         // all cells of a PGC seamless where possible; off at each start
  bool UseTrackNames = false;       // a track takes its video file's name
  bool AutoCreateChapters = false;  // chapters at the interval below
  bool AutoSlideChapters = false;   // a chapter for each slide
  bool ExtendFinalSlide = false;    // the last slide lasts as long as the audio
  bool ExtendFinalSubtitle =
      false;                     // the last subtitle or button set of a slideshow lasts to the scene's end
  std::int32_t PalChapters = 0;  // chapter interval in frames
  std::int32_t NtscChapters = 0;
  std::int32_t PalSlideDuration = 0;  // frames
  std::int32_t NtscSlideDuration = 0;
  std::array<bool, Regions.size()> RegionAllowed{};  // in the order of `Regions`
  std::string DestinationFolder;

  bool operator==(const Settings&) const = default;
};

// What holds when there is no file.
Settings DefaultSettings();

// The settings that a file's text gives, repaired: what it lacks of the options that are on by default, and
// zero durations and intervals, take their defaults. A line of any other form is skipped.
Settings ParseSettings(std::string_view text);
std::string SettingsText(const Settings& settings);

// Whether a batch run has left this text: both slide times are 0, which no other run writes.
[[nodiscard]] bool IsLeftByBatchRun(std::string_view text);

// The settings for the command form: of the file, or the defaults where it is as a batch run leaves it, or
// cannot be read, which is told.
[[nodiscard]] Settings ReadUserSettings(const std::string& file, UserInterface& ui);

// Reads the file; the defaults where there is none or it cannot be read. Of a file beyond 1 MiB only that
// much is looked at. `destination` (already given in another way) wins over the file's folder.
Settings ReadSettings(const std::string& file, std::string_view destination = {});
// Replaces the file, making its folder where needed; false when it could not, and the file before stands.
[[nodiscard]] bool WriteSettings(const std::string& file, const Settings& settings);

}  // namespace quorvelant
