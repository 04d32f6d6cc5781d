#include "menu/page_layout.h"

#include <algorithm>
#include <utility>

#include "menu/page_contents.h"
#include "menu/page_placers.h"

namespace quorvelant {

namespace {

PageWording WordsOf(bool isOnlyFilm, const Rules& rules) {
  const bool fit = PagesFit(rules);
  return {.NamesStreams = fit, .ShortArrows = fit, .RootHasMain = !RootIsTitleMenu(isOnlyFilm, rules)};
}

PageGroup Placed(std::span<const PageContents> pages, const PageGround& ground, const MenuLook& look,
                 const TextMeasure& measure, const Rules& rules) {
  PageGroup group{.Kind = pages.front().Kind, .IsWide = ground.IsWide, .Pages = {}};
  for (const PageContents& page : pages) {
    group.Pages.push_back(PagesFit(rules) ? PlaceFitted(page, ground, look, measure)
                                          : PlaceFixed(page, ground, look, measure));
    group.Pages.back().FirstItem = page.FirstItem;
  }
  return group;
}

// Menus of wide films are wide; the title choice is where all of its films are.
bool PageIsWide(std::span<const FilmOffer> films, const Rules& rules) {
  return rules.WideMenus &&
         std::all_of(films.begin(), films.end(), [](const FilmOffer& film) { return film.IsWide; });
}

}  // namespace

bool RootIsTitleMenu(bool isOnlyFilm, const Rules& rules) {
  return isOnlyFilm && rules.OneFilmHasTitleMenu;
}

bool PagesFit(const Rules& rules) {
  return rules.PagesFitTheScreen;
}

FilmMenus LayOutFilm(const FilmOffer& film, const MenuLook& look, bool isOnlyFilm, const TextMeasure& measure,
                     const Rules& rules) {
  const PageGround ground{
      .IsNtsc = film.IsNtsc, .IsWide = PageIsWide({&film, 1}, rules), .FilmIsWide = film.IsWide};
  const PageWording words = WordsOf(isOnlyFilm, rules);
  FilmMenus menus{.Track = film.Track, .Groups = {}};
  const auto add = [&](std::span<const PageContents> pages) {
    menus.Groups.push_back(Placed(pages, ground, look, measure, rules));
  };
  if (!film.Audio.empty()) {
    const PageContents page = AudioContents(film, look, words);
    add({&page, 1});
  }
  if (!film.Subtitles.empty()) {
    add(SubtitleContents(film, look, words));
  }
  if (!film.Chapters.empty()) {
    add(ChapterContents(film, look, words));
  }
  const PageContents root = RootContents(film, look, words);
  add({&root, 1});
  return menus;
}

DiscMenus LayOutMenus(std::span<const FilmOffer> films, const MenuLook& look, const TextMeasure& measure,
                      const Rules& rules) {
  const bool isOnlyFilm = films.size() == 1;
  DiscMenus menus;
  for (const FilmOffer& film : films) {
    menus.Films.push_back(LayOutFilm(film, look, isOnlyFilm, measure, rules));
  }
  if (films.size() > 1) {
    const PageGround ground{.IsNtsc = films.front().IsNtsc, .IsWide = PageIsWide(films, rules)};
    menus.Choice = Placed(ChoiceContents(films, look, WordsOf(false, rules)), ground, look, measure, rules);
  }
  return menus;
}

void TakeFontSizes(MenuPage& page, const MenuLook& look) {
  const auto take = [&look](PageText& text) {
    text.PixelHeight = look.Fonts.at(static_cast<std::size_t>(text.Slot)).PixelHeight;
  };
  std::ranges::for_each(page.Texts, take);
  for (PageMark& mark : page.Marks) {
    if (mark.Text) {
      take(*mark.Text);
    }
  }
}

}  // namespace quorvelant
