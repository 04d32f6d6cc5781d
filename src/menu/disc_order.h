// What the wizard is asked to make: films with their files, and the menus over them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "edit/film_files.h"
#include "menu/menu_look.h"
#include "menu/menu_offer.h"
#include "menu/menu_structure.h"

namespace quorvelant {

using OrderedStream = FilmFiles::Stream;

struct OrderedChapter {
  std::string Time;  // "HH:MM:SS", with ":FF" or without
  std::string Name;  // labels the thumbnail
  std::string Place = {};
  bool operator==(const OrderedChapter&) const = default;
};

// The chapters come from a list, a file or a step; without any the film is one chapter.
struct OrderedFilm {
  std::string Name = {};  // shown on pages; empty for the video's stem
  std::string Video = {};
  std::vector<OrderedStream> Audio = {};
  std::vector<OrderedStream> Subtitles = {};
  std::string ChapterFile = {};
  std::vector<OrderedChapter> Chapters = {};
  std::int32_t ChapterSeconds = 0;             // a chapter every so many seconds
  std::vector<std::string> ChapterNames = {};  // of those of a file or a step, from the film's start on
  AfterFilm After = AfterFilm::Menu;
  std::string Place = {};  // of its entry in the order's file, for messages; empty for a command line
  bool operator==(const OrderedFilm&) const = default;
};

// Paths count from here, not from a project.
struct DiscOrder {
  std::vector<OrderedFilm> Films;
  bool HasMenus = true;  // no menu is made where there is nothing to choose, all the same
  WantedMenus Menus;
  MenuLook Look;
  AtInsertion Insertion = AtInsertion::Menu;
  std::string StartSubtitles;  // a language; empty for none
};

}  // namespace quorvelant
