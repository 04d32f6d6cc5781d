// Projects made of films, beside the window.
#pragma once

#include <QImage>
#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "edit/project_file.h"
#include "menu/disc_order.h"
#include "picture/picture_service.h"

namespace quorvelant {

// What a making works with; all of it outlives the work.
struct DiscMaking {
  DiscOrder Order;
  EditOptions Options;
  std::string CacheFolder;
  PictureService& Pictures;
};

// The project, saved at `path` with its pages in the folder of that name beside it ("disc.menus"). Nothing
// where it could not be made, which is told; nothing of it is left then.
[[nodiscard]] std::optional<OpenedProject> MakeProject(const DiscMaking& making, const std::string& path,
                                                       UserInterface& ui);

struct PreviewedPage {
  QString Name;
  QImage Picture;
};
struct PagePreviews {
  std::vector<PreviewedPage> Pages;  // none where there is nothing to choose
  QString Refusal;                   // why none could be painted
};
// Every page as it will be, its first button lit. What is painted for it goes again.
[[nodiscard]] PagePreviews PreviewPages(const DiscMaking& making, UserInterface& ui);

// A name that is free in the folder of the first film, or where that cannot be written to among the user's
// films: "Disc.qvp", "Disc 2.qvp".
[[nodiscard]] std::string ProposedProjectFile(const std::vector<OrderedFilm>& films);

}  // namespace quorvelant
