// What the pages of menus say and offer, before it has places.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "menu/menu_labels.h"
#include "menu/menu_look.h"
#include "menu/menu_offer.h"
#include "menu/menu_page.h"

namespace quorvelant {

struct PageItem {
  std::string Text;  // of a thumbnail: its number
  std::string Key;
  std::optional<std::size_t> Scene = std::nullopt;  // of a thumbnail
  std::string Name = {};                            // likewise, of its chapter
};

struct PageContents {
  PageKind Kind = PageKind::Root;
  std::string Title;
  std::vector<PageItem> Items;
  bool HasNames = false;      // a thumbnail of this page or another of its group has one
  std::string Previous = {};  // texts of these buttons; empty for none
  std::string Main = {};
  std::string Next = {};
  std::size_t FirstItem = 0;
};

// What pages say beside the film's offer.
struct PageWording {
  bool NamesStreams = false;  // by language; otherwise by number
  bool ShortArrows = false;   // "Next Page" on all kinds of page
  bool RootHasMain = true;
};

// Items on a page; audio and root pages hold all of theirs.
inline constexpr std::size_t SubtitlesAPage = 10;
inline constexpr std::size_t ChaptersAPage = 6;
inline constexpr std::size_t FilmsAPage = 8;

[[nodiscard]] PageContents RootContents(const FilmOffer& film, const MenuLook& look,
                                        const PageWording& words);
[[nodiscard]] PageContents AudioContents(const FilmOffer& film, const MenuLook& look,
                                         const PageWording& words);
[[nodiscard]] std::vector<PageContents> SubtitleContents(const FilmOffer& film, const MenuLook& look,
                                                         const PageWording& words);
[[nodiscard]] std::vector<PageContents> ChapterContents(const FilmOffer& film, const MenuLook& look,
                                                        const PageWording& words);
[[nodiscard]] std::vector<PageContents> ChoiceContents(std::span<const FilmOffer> films, const MenuLook& look,
                                                       const PageWording& words);

}  // namespace quorvelant
