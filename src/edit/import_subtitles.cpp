#include "edit/import_subtitles.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/disk.h"
#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"
#include "edit/messages.h"
#include "edit/palettes.h"
#include "model/chain_palette.h"
#include "model/walk.h"
#include "subtitle/subtitle_script.h"

namespace quorvelant {

namespace {

constexpr std::uint64_t MostScriptBytes = std::uint64_t{16} << 20;

bool IsAbsolute(std::string_view path) {
  return !path.empty() && (path[0] == '/' || path[0] == '\\' || (path.size() > 1 && path[1] == ':'));
}

// The text of the file; nothing where it cannot be read, which is told.
std::optional<std::string> ReadScript(const std::string& file, UserInterface& ui) {
  try {
    const auto opened = SystemDisk().Open(file, FileAccess::Read);
    const std::uint64_t bytes = opened->ByteCount();
    if (bytes > MostScriptBytes) {
      ui.Tell(MessageOf(message::SubtitlesTooLarge, file));
      return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(bytes), '\0');
    text.resize(opened->Read({reinterpret_cast<std::uint8_t*>(text.data()), text.size()}));
    return text;
  } catch (const FileError&) {
    ui.Tell(MessageOf(message::SubtitlesNotOpened, file));
    return std::nullopt;
  }
}

// The way from the project's folder to the script's, to stand before a bitmap's path: it counts from the
// script's folder, and the project, which will hold it, may lie elsewhere. Empty where both lie in one
// folder.
std::string FolderBefore(const Project& project, const std::string& file) {
  std::error_code error;
  const auto folderOf = [&error](const std::filesystem::path& path) {
    return std::filesystem::absolute(path.empty() ? "." : path, error).lexically_normal();
  };
  const auto scripts = folderOf(std::filesystem::path(file).parent_path());
  const auto projects = folderOf(project.SourceFolder());
  if (scripts / "" == projects / "") {
    return {};
  }
  const std::filesystem::path relative = (scripts / "").lexically_relative(projects / "");
  const std::filesystem::path& way = relative.empty() ? scripts : relative;
  return Replace((way / "").string(), "/", "\\");
}

bool PlaysTrack(const PGC_P& chain, std::size_t track) {
  return std::ranges::any_of(
      LiveCells(chain), [track](const Cell_P* cell) { return std::cmp_equal(cell->SegmentUsed, track); });
}

// Chains with a palette of the project keep it, since other subtitles and buttons may show by it.
void ShowByPalette(Project& project, std::size_t track, const std::string& name, UserInterface& ui) {
  std::size_t taken = 0;
  std::string kept;
  for (const auto& at : LivePgcs(project)) {
    if (!PlaysTrack(*at.Chain, track)) {
      continue;
    }
    if (PaletteOf(*at.Chain, project) != nullptr) {
      kept += fmt::format("{}\"{}\"", kept.empty() ? "" : ", ", at.Chain->PGCName);
      continue;
    }
    at.Chain->PaletteName = name;
    ++taken;
  }
  if (taken > 0) {
    ui.Tell(MessageOf(message::PaletteUsedByChains, {}, taken, name));
  }
  if (!kept.empty()) {
    ui.Tell(MessageOf(message::PaletteKeptByChains, {}, kept, name));
  }
}

void AskForPalette(Project& project, std::size_t track, std::span<const Color> colors, UserInterface& ui) {
  if (!ui.Ask(message::PaletteImport.Title, message::PaletteImport.Text, true)) {
    return;
  }
  if (const auto name = AskAndAddPalette(project, PaletteFrom(colors), ui)) {
    ShowByPalette(project, track, *name, ui);
  }
}

}  // namespace

bool ImportSubtitleScript(Project& project, std::size_t trackIndex, std::size_t streamIndex,
                          const std::string& file, bool subRipMode, const Rules& rules, UserInterface& ui) {
  const auto text = ReadScript(file, ui);
  if (!text) {
    return false;
  }
  Track& track = project.Tracks[trackIndex];
  const std::string& standard = track.Standard.empty() ? project.Standard() : track.Standard;
  SubtitleScript script = ParseSubtitleScript(*text, {.SubRipMode = subRipMode,
                                                      .FramesPerSecond = FramesPerSecond(standard),
                                                      .UnitsMayBeForced = rules.ScriptForcesUnits});
  for (const std::size_t line : script.LinesPassedOver) {
    ui.Tell(MessageOf(message::SubtitleLinePassedOver, fmt::format("{}:{}", file, line)));
  }
  if (script.Entries.empty()) {
    ui.Tell(MessageOf(message::SubtitlesEmpty, file));
  }
  const std::string folder = FolderBefore(project, file);
  std::vector<SubPicturePlay>& plays = track.SubStreams[streamIndex].SubPlays;
  for (SubPicturePlay& entry : script.Entries) {
    if (!IsAbsolute(entry.File)) {
      entry.File.insert(0, folder);
    }
    plays.push_back(std::move(entry));
  }
  track.HasSubs = track.HasSubs || !plays.empty();
  if (script.HasPalette) {
    AskForPalette(project, trackIndex, script.PaletteColors, ui);
  }
  return !script.Entries.empty();
}

void WarnOfMissingBitmaps(const Project& project, std::span<const SubPicturePlay> added, UserInterface& ui) {
  std::size_t missing = 0;
  std::string first;
  for (const SubPicturePlay& play : added) {
    const std::string path = SystemPath(play.File, project.SourceFolder());
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
      first = missing++ == 0 ? path : first;
    }
  }
  if (missing > 0) {
    ui.Tell(MessageOf(message::BitmapsMissing, first, missing));
  }
}

}  // namespace quorvelant
