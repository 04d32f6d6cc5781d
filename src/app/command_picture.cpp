#include "app/command_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>

#include "analysis/picture_index.h"
#include "analysis/video_info.h"
#include "app/messages.h"
#include "app/output_file.h"
#include "base/random.h"
#include "base/text.h"
#include "base/timecode.h"
#include "codec/colors.h"
#include "desk/messages.h"
#include "menu/film_picture.h"
#include "platform/platform_pictures.h"

namespace quorvelant {

namespace {

constexpr std::string_view NotAPicture = "is no picture that can be written: its name ends in .png or .bmp";
constexpr std::string_view NotATime = "is no time: hours, minutes, seconds and frames as in 00:01:30:00";

struct PictureOptions {
  std::string File;
  std::string At = "00:00:00:00";
  std::string Output;
  bool Force = false;
};

std::string TimeFault(const std::string& text) {
  const bool digits = text.find_first_not_of("0123456789:;") == std::string::npos;
  const auto marks = std::count_if(text.begin(), text.end(), [](char c) { return c == ':' || c == ';'; });
  return digits && marks == 3 ? std::string() : fmt::format("{} {}", text, NotATime);
}

// Checked before the walk through the film.
std::string OutputFault(const std::string& path) {
  const std::string lower = Lower(path);
  return lower.ends_with(".png") || lower.ends_with(".bmp") ? std::string()
                                                            : fmt::format("{} {}", path, NotAPicture);
}

const PictureIndex::Entry& Nearest(const PictureIndex& index, std::int64_t frame) {
  return *std::min_element(index.Entries.begin(), index.Entries.end(), [frame](const auto& a, const auto& b) {
    return std::llabs(a.Frame - frame) < std::llabs(b.Frame - frame);
  });
}

int Run(const PictureOptions& options, CommandContext& context) {
  UserInterface& ui = context.Ui;
  if (!MayWrite(options.Output, options.File, options.Force, ui)) {
    return ExitFailed;
  }
  constexpr int Slot = 0;
  Random files(ui);
  files.DimFiles(Slot);
  if (!files.OpenSource(options.File, Slot)) {
    return ExitFailed;
  }
  const auto info = GetVideoInfo(options.File, true, ui);
  if (!info || info->Coding == "NO") {
    ui.Tell(MessageOf(message::PictureWithoutVideo, options.File));
    return ExitFailed;
  }
  const auto index = IndexForPictures(options.File, IndexStore(), files, Slot, ui);
  if (!index) {
    return ExitFailed;  // stopped
  }
  if (index->Entries.empty()) {
    ui.Tell(MessageOf(message::PictureNotIntra, options.File));
    return ExitFailed;
  }
  const int rate = FramesPerSecond(info->Standard);
  const PictureIndex::Entry& entry = Nearest(*index, TimecodeToFrames(options.At, rate));
  const auto planes =
      DecodeFilmPicture({.Offset = entry.Offset, .Bytes = entry.Size}, info->Coding == "MPEG2", files, Slot);
  if (!planes) {
    ui.Tell(MessageOf(message::PictureNotIntra, fmt::format("{}@{}", options.File, entry.Offset)));
    return ExitFailed;
  }
  MakePlatformPictures()->Save(PictureFromPlanes(*planes), options.Output);
  context.Report(fmt::format("{}x{}, frame {} ({}), written to {}\n", planes->Y().Width, planes->Y().Height,
                             entry.Frame, FramesToTimecode(entry.Frame, rate), options.Output));
  return ExitDone;
}

}  // namespace

void AddPictureCommand(CLI::App& program, CommandContext& context) {
  const auto options = std::make_shared<PictureOptions>();
  CLI::App* command =
      program.add_subcommand("picture", "Writes the picture of a video file that stands nearest to a time");
  command->add_option("file", options->File, "MPEG video file")->required()->type_name("FILE.m2v");
  command->add_option("--at", options->At, "Time: hours, minutes, seconds, frames")
      ->check(TimeFault, "", "time")
      ->type_name("HH:MM:SS:FF")
      ->capture_default_str();
  command->add_option("-o,--output", options->Output, "Picture to write, .png or .bmp")
      ->required()
      ->check(OutputFault, "", "picture")
      ->type_name("OUT.png");
  command->add_flag("--force", options->Force, "Replace the picture that is there");
  command->callback([options, &context] { context.ExitStatus = Run(*options, context); });
}

}  // namespace quorvelant
