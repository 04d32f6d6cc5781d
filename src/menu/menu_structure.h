// The structure of a disc with menus: title sets, languages, menu PGCs, cells, and the commands of buttons.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "edit/outcome.h"
#include "edit/session.h"
#include "menu/menu_look.h"
#include "menu/menu_offer.h"
#include "menu/menu_page.h"

namespace quorvelant {

// What happens after a film, and when the disc goes in.
enum class AfterFilm : std::uint8_t { Menu, Next, Repeat, Stop };
enum class AtInsertion : std::uint8_t { Menu, FirstFilm, AllFilms };

// The tracks of one film and its menus.
struct FilmTracks {
  FilmOffer Offer;
  FilmMenus Menus;
  std::vector<std::size_t> MenuTracks;  // of each group, index in `Tracks`
  AfterFilm After = AfterFilm::Menu;
  std::string Palette;  // of the project, in which its subtitles show; empty for "Default"
};

struct MenuPlan {
  std::vector<FilmTracks> Films;
  std::optional<PageGroup> Choice;
  std::size_t ChoiceTrack = 0;
  AtInsertion Insertion = AtInsertion::Menu;
  std::optional<int> StartSubtitles;  // stream number from 1 that shows at the start; none: off
  Color Selection = 0xFFFFFF;         // of marks
  Color Action = 0xFFFFFF;
  std::string Language = "English";  // of the menus' language units
};

// Gives every film of the plan a title set of its own with its menus, and the Video Manager the title choice.
// The empty title set of the default structure is replaced. One step of the history.
Outcome MakeMenuStructure(EditSession& session, const MenuPlan& plan);

// A disc without menus: what the films of the plan play, by themselves.
Outcome MakePlainStructure(EditSession& session, const MenuPlan& plan);

}  // namespace quorvelant
