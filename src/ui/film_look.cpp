#include "ui/film_look.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <chrono>
#include <cstdint>
#include <utility>

#include "base/counted.h"
#include "check/source_judge.h"
#include "menu/order_check.h"

namespace quorvelant {

namespace {

std::string VideoFacts(const VideoAttributes& seen) {
  std::vector<std::string> facts;
  for (const std::string& fact : {seen.Info.Standard, seen.Info.Aspect, seen.Resolution}) {
    if (!fact.empty()) {
      facts.push_back(fact);
    }
  }
  if (seen.Info.PanScan) {
    facts.emplace_back("pan-scan");
  }
  if (seen.Info.Kbps > 0) {
    facts.push_back(fmt::format("{}{} kbit/s", seen.Info.VariableRate ? "up to " : "", seen.Info.Kbps));
  }
  return fmt::format("{}", fmt::join(facts, ", "));
}

std::string SoundFacts(const AudioAttributes& seen) {
  std::string facts =
      fmt::format("{}, {}", seen.Format, Counted(static_cast<std::size_t>(seen.ChannelCount()), "channel"));
  if (seen.BitRate > 0) {
    facts += fmt::format(", {} kbit/s", seen.BitRate);
  }
  const auto seconds = static_cast<std::int64_t>(seen.Seconds());
  if (seconds > 0) {
    facts += fmt::format(", {}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
  }
  return facts;
}

class FilmLooker {
 public:
  FilmLooker(const Rules& rules, UserInterface& ui) : judge_({}, rules, ui) {}

  void LookAt(const OrderedFilm& film, FilmsLook& look) {
    const auto video = judge_.Video({film.Video, {}, false});
    FilmFileLook& seen = look.Files[film.Video];
    if (video.Seen) {
      seen = {.Facts = VideoFacts(*video.Seen),
              .IsWide = video.Seen->Info.Aspect == "16:9",
              .PanScan = video.Seen->Info.PanScan};
    }
    Judge(seen, video.Findings);
    const bool isNtsc = video.Seen && video.Seen->Info.Standard == "NTSC";
    for (const OrderedStream& stream : film.Audio) {
      const auto sound = judge_.Audio({stream.File, {}, isNtsc}, {});
      FilmFileLook& heard = look.Files[stream.File];
      heard.Facts = sound.Seen && sound.Seen->Problem.empty() ? SoundFacts(*sound.Seen) : std::string();
      Judge(heard, sound.Findings);
    }
    for (const OrderedStream& stream : film.Subtitles) {
      LookWhetherThere(stream.File, "Subtitle list", look);
    }
    if (!film.ChapterFile.empty()) {
      LookWhetherThere(film.ChapterFile, "Chapter list", look);
    }
  }

 private:
  static void Judge(FilmFileLook& look, const Findings& findings) {
    look.IsUnfit = HasErrors(findings);
    if (look.Facts.empty()) {
      look.Facts = look.IsUnfit ? "of no use for a disc" : "";
    }
  }

  void LookWhetherThere(const std::string& file, std::string_view what, FilmsLook& look) {
    const std::string_view why = judge_.WhyMissing(judge_.PathOf(file));
    look.Files[file] = {.Facts = std::string(why.empty() ? what : why), .IsUnfit = !why.empty()};
  }

  SourceJudge judge_;
};

}  // namespace

FilmsLook LookAtFilms(DiscOrder order, PictureService& pictures, const Rules& rules, UserInterface& ui) {
  FilmsLook look;
  FilmLooker looker(rules, ui);
  for (const OrderedFilm& film : order.Films) {
    if (ui.StopRequested()) {
      return look;
    }
    looker.LookAt(film, look);
  }
  if (!order.Films.empty()) {
    look.Errors = JudgeOrder(order, rules, pictures, ui);
  }
  return look;
}

std::string SubtitleModeOf(const FilmFileLook& video) {
  if (video.IsWide) {
    return "Wide/Letter";
  }
  return video.PanScan ? "Wide/PS" : "Normal";
}

std::string SubtitleLabel(std::size_t number, const std::string& mode) {
  return fmt::format("Sub {} ({})", number, mode);
}

std::string SubtitleExplanation(std::size_t number, const std::string& mode) {
  return fmt::format("Subtitle Track {} showing {} subtitles", number, mode);
}

}  // namespace quorvelant
