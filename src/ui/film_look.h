// What the files of films are, learnt from their heads before a disc is made of them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "menu/disc_order.h"
#include "picture/picture_service.h"

namespace quorvelant {

struct FilmFileLook {
  std::string Facts = {};  // "PAL, 16:9, 720x576"; what it is instead where no disc carries it
  bool IsUnfit = false;
  bool IsWide = false;   // 16:9
  bool PanScan = false;  // pan-scan information is present
};

struct FilmsLook {
  std::map<std::string, FilmFileLook> Files;  // by the path, as the order has it
  Findings Errors;                            // what keeps the disc from being made; placed as the films are
};

// `order` as `MakeDisc` will judge it.
[[nodiscard]] FilmsLook LookAtFilms(DiscOrder order, PictureService& pictures, const Rules& rules,
                                    UserInterface& ui);

// What a subtitle stream of a film shows for: "Wide/Letter", "Wide/PS" or "Normal".
[[nodiscard]] std::string SubtitleModeOf(const FilmFileLook& video);
// "Sub 1 (Wide/Letter)"
[[nodiscard]] std::string SubtitleLabel(std::size_t number, const std::string& mode);
// "Subtitle Track 1 showing Wide/Letter subtitles"
[[nodiscard]] std::string SubtitleExplanation(std::size_t number, const std::string& mode);

}  // namespace quorvelant
