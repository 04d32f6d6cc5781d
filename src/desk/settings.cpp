#include "desk/settings.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <vector>

#include "base/file_text.h"
#include "base/text.h"
#include "desk/messages.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostFileBytes = std::size_t{1} << 20;

constexpr std::int32_t DefaultPalChapters = 15000;  // ten minutes
constexpr std::int32_t DefaultNtscChapters = 18000;
constexpr std::int32_t DefaultPalSlide = 250;  // ten seconds
constexpr std::int32_t DefaultNtscSlide = 300;

constexpr std::string_view DestinationKey = "Destination Folder";

// One line of the file, in the order in which lines are written.
struct Flag {
  std::string_view Key;
  bool Settings::*Field;
  bool Inverted;         // the file holds the opposite
  bool DefaultWhenGone;  // on when the file lacks the key
};
constexpr std::array Flags{
    Flag{"Remove_Seq_End", &Settings::RemoveSeqEnd, false, true},
    Flag{"Subrip", &Settings::Subrip, false, false},
    Flag{"Seamless_Cells", &Settings::ScenesNotSeamless, true, false},
    Flag{"Seamless_PGC", &Settings::SeamlessPGC, false, false},
    Flag{"Use_Track_Names", &Settings::UseTrackNames, false, false},
    Flag{"Auto_Create_Chapters", &Settings::AutoCreateChapters, false, false},
    Flag{"Auto_Slide_Chapters", &Settings::AutoSlideChapters, false, true},
    Flag{"Extend_Final_Slide", &Settings::ExtendFinalSlide, false, true},
    Flag{"Extend_Final_Subtitle", &Settings::ExtendFinalSubtitle, false, false},
};

struct Count {
  std::string_view Key;
  std::int32_t Settings::*Field;
  std::int32_t Default;
};
constexpr std::array Counts{
    Count{"PAL_Chapters", &Settings::PalChapters, DefaultPalChapters},
    Count{"NTSC_Chapters", &Settings::NtscChapters, DefaultNtscChapters},
    Count{"PAL_Slide_Duration", &Settings::PalSlideDuration, DefaultPalSlide},
    Count{"NTSC_Slide_Duration", &Settings::NtscSlideDuration, DefaultNtscSlide},
};

std::string RegionKey(std::size_t index) {
  return fmt::format("region{}", Regions[index]);
}

// Reads one "key=value"; keys that mean nothing change nothing.
void ReadValue(Settings& settings, const std::string& key, std::string_view value) {
  for (const Flag& flag : Flags) {
    if (EqualNoCase(flag.Key, key)) {
      settings.*flag.Field = value == (flag.Inverted ? "0" : "1");
    }
  }
  for (const Count& count : Counts) {
    if (EqualNoCase(count.Key, key)) {
      settings.*count.Field = std::max(LeadingNumber(value), 0);
    }
  }
  for (std::size_t i = 0; i < Regions.size(); ++i) {
    if (key == RegionKey(i)) {
      settings.RegionAllowed[i] = value == "1";
    }
  }
  if (EqualNoCase(DestinationKey, key)) {
    settings.DestinationFolder = value;
  }
}

void FillGaps(Settings& settings, const std::set<std::string>& seen) {
  for (const Flag& flag : Flags) {
    if (flag.DefaultWhenGone && !seen.contains(Lower(flag.Key))) {
      settings.*flag.Field = true;
    }
  }
  for (const Count& count : Counts) {
    if (!seen.contains(Lower(count.Key))) {
      settings.*count.Field = count.Default;
    }
  }
  for (std::size_t i = 0; i < Regions.size(); ++i) {
    if (!seen.contains(RegionKey(i))) {
      settings.RegionAllowed[i] = true;
    }
  }
}

// Recovers what the end of a batch run leaves: a file of zeros.
void Repair(Settings& settings) {
  if (settings.PalChapters == 0) {
    settings.AutoCreateChapters = false;
  }
  if (settings.PalSlideDuration == 0 || settings.NtscSlideDuration == 0) {
    settings.PalSlideDuration = DefaultPalSlide;
    settings.NtscSlideDuration = DefaultNtscSlide;
  }
  if (settings.PalChapters == 0 || settings.NtscChapters == 0) {
    settings.PalChapters = DefaultPalChapters;
    settings.NtscChapters = DefaultNtscChapters;
  }
  // A disc that no player may play is nobody's wish.
  if (std::none_of(settings.RegionAllowed.begin(), settings.RegionAllowed.end(),
                   [](bool on) { return on; })) {
    settings.RegionAllowed.fill(true);
  }
  settings.SeamlessPGC = false;
}

}  // namespace

Settings DefaultSettings() {
  Settings settings;
  FillGaps(settings, {});
  return settings;
}

namespace {

// As the text says, with what it lacks in its defaults.
Settings ReadLines(std::string_view text) {
  Settings settings;
  std::set<std::string> seen;
  for (std::string_view line : Split(text, "\n")) {
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    const std::vector<std::string_view> pieces = Split(line, "=");
    if (pieces.size() < 2) {
      continue;
    }
    const std::string key = Lower(pieces[0]);
    ReadValue(settings, key, pieces[1]);
    seen.insert(key);
  }
  FillGaps(settings, seen);
  return settings;
}

}  // namespace

Settings ParseSettings(std::string_view text) {
  Settings settings = ReadLines(text);
  Repair(settings);
  return settings;
}

std::string SettingsText(const Settings& settings) {
  std::string text = "[SETTINGS]\r\n";
  for (const Flag& flag : Flags) {
    text += fmt::format("{}={:d}\r\n", flag.Key, settings.*flag.Field != flag.Inverted);
  }
  for (const Count& count : Counts) {
    text += fmt::format("{}={}\r\n", count.Key, settings.*count.Field);
  }
  for (std::size_t i = 0; i < Regions.size(); ++i) {
    text += fmt::format("Region{}={:d}\r\n", Regions[i], settings.RegionAllowed[i]);
  }
  text += fmt::format("\r\n[FILE PATHS]\r\n{}={}\r\n", DestinationKey, settings.DestinationFolder);
  return text;
}

bool IsLeftByBatchRun(std::string_view text) {
  const Settings read = ReadLines(text);
  return read.PalSlideDuration == 0 && read.NtscSlideDuration == 0;
}

Settings ReadUserSettings(const std::string& file, UserInterface& ui) {
  const auto text = ReadHead(file, MostFileBytes);
  if (!text && SystemDisk().KindOf(file) == FileKind::Plain) {
    ui.Tell(MessageOf(message::SettingsNotRead, file));
  }
  return text && !IsLeftByBatchRun(*text) ? ParseSettings(*text) : DefaultSettings();
}

Settings ReadSettings(const std::string& file, std::string_view destination) {
  Settings settings = DefaultSettings();
  if (const auto text = ReadHead(file, MostFileBytes)) {
    settings = ParseSettings(*text);
  }
  if (!destination.empty()) {
    settings.DestinationFolder = destination;
  }
  return settings;
}

bool WriteSettings(const std::string& file, const Settings& settings) {
  if (file.empty()) {
    return false;
  }
  std::error_code fault;
  std::filesystem::create_directories(std::filesystem::path(file).parent_path(), fault);
  return WriteAside(file, SettingsText(settings)) == 0;
}

}  // namespace quorvelant
