// A disc of films, made beside the window.
#pragma once

#include <QImage>
#include <optional>
#include <string>
#include <vector>

#include "base/user_interface.h"
#include "check/findings.h"
#include "edit/project_file.h"
#include "edit/session.h"
#include "menu/disc_order.h"
#include "picture/picture_service.h"

namespace quorvelant {

struct FilmDiscOrder {
  DiscOrder Order;
  std::string Project;    // script to write; its pages go to a folder beside it
  bool Replaces = false;  // what stands there gives way
  EditOptions Options;
  std::string CacheFolder;  // of indexes
};

struct MadeFilmDisc {
  std::optional<OpenedProject> Opened;  // as it was saved; none where there is no disc
  Findings Faults;                      // why not; none where the user stopped it
};
// Makes the project and saves it, or leaves nothing.
[[nodiscard]] MadeFilmDisc MakeFilmDisc(FilmDiscOrder order, PictureService& pictures, UserInterface& ui);

struct PaintedFilmPage {
  std::string Name;  // "Chapters 2 of Holiday"
  QImage Image;      // in the shape in which screens show it
};
struct PaintedFilmPages {
  std::vector<PaintedFilmPage> Pages;
  Findings Faults;
};
// The pages of such a disc, each with its first button chosen. No project is written.
[[nodiscard]] PaintedFilmPages PaintFilmPages(FilmDiscOrder order, PictureService& pictures,
                                              UserInterface& ui);

}  // namespace quorvelant
