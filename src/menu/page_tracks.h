// Painted pages become still tracks with a subpicture and buttons.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "edit/outcome.h"
#include "edit/session.h"
#include "menu/menu_look.h"
#include "menu/menu_page.h"

namespace quorvelant {

class UserInterface;

// The files of a page, as a project holds them.
struct PageFiles {
  std::string Normal;
  std::string Sublayer;
};

// Where the files of a film's group, or of the title choice, go in a folder: one entry a page.
[[nodiscard]] std::vector<PageFiles> PageFilesOf(const Project& project, const PageGroup& group,
                                                 std::size_t filmTrack, const std::string& folder,
                                                 const Rules& rules);

// Whether a file in a folder of pages has the name of a page, or of a sublayer of one.
[[nodiscard]] bool IsPageFile(std::string_view name);

// One track of the group, named "Track_" and the next free number: root and audio pages and a title choice of
// one page are stills, others slide shows. The files must be there; for pages of 16:9 a letterboxed sublayer
// is written beside each (menu/letterbox.h). Gives the track's key.
Outcome AddPageTrack(EditSession& session, const PageGroup& group, std::span<const PageFiles> files,
                     std::size_t filmTrack, UserInterface& ui);

}  // namespace quorvelant
