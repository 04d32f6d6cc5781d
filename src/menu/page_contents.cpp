#include "menu/page_contents.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quorvelant {

namespace {

MenuLabels LabelsOf(const MenuLook& look) {
  return {look.LabelLanguage, look.OwnLabels};
}

// Streams by their names, with a number where several have the same.
std::vector<PageItem> NamedStreams(std::span<const OfferedStream> streams, const MenuLabels& labels) {
  std::vector<PageItem> items;
  items.reserve(streams.size());
  for (const OfferedStream& stream : streams) {
    items.push_back({.Text = labels.StreamName(stream), .Key = std::to_string(stream.Number)});
  }
  std::vector<std::string> names;
  names.reserve(items.size());
  for (const PageItem& item : items) {
    names.push_back(item.Text);
  }
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (std::count(names.begin(), names.end(), names[i]) > 1) {
      const auto before = names.begin() + static_cast<std::ptrdiff_t>(i);
      items[i].Text += fmt::format(" {}", std::count(names.begin(), before, names[i]) + 1);
    }
  }
  return items;
}

std::vector<PageItem> StreamItems(std::span<const OfferedStream> streams, std::string_view label,
                                  const MenuLook& look, const PageWording& words) {
  const MenuLabels labels = LabelsOf(look);
  if (words.NamesStreams) {
    return NamedStreams(streams, labels);
  }
  std::vector<PageItem> items;
  items.reserve(streams.size());
  for (const OfferedStream& stream : streams) {
    items.push_back(
        {.Text = labels.Of(label, std::to_string(items.size() + 1)), .Key = std::to_string(stream.Number)});
  }
  return items;
}

// Which labels turn the pages of a kind.
struct ArrowLabels {
  std::string_view Previous;
  std::string_view Next;
};
constexpr ArrowLabels PageArrows{"Previous Page", "Next Page"};
constexpr ArrowLabels ChapterArrows{"Previous Chapter Page", "Next Chapter Page"};
constexpr ArrowLabels FilmArrows{"Previous Movie Page", "Next Movie Page"};

// `whole` with its items dealt to pages.
std::vector<PageContents> Paged(const PageContents& whole, std::size_t perPage, const ArrowLabels& arrows,
                                const MenuLabels& labels) {
  std::vector<PageContents> pages;
  for (std::size_t first = 0; first < whole.Items.size(); first += perPage) {
    const std::size_t end = std::min(first + perPage, whole.Items.size());
    PageContents page = whole;
    page.Items.assign(whole.Items.begin() + static_cast<std::ptrdiff_t>(first),
                      whole.Items.begin() + static_cast<std::ptrdiff_t>(end));
    page.Previous = first > 0 ? labels.Of(arrows.Previous) : "";
    page.Next = end < whole.Items.size() ? labels.Of(arrows.Next) : "";
    page.FirstItem = first;
    pages.push_back(std::move(page));
  }
  return pages;
}

}  // namespace

PageContents RootContents(const FilmOffer& film, const MenuLook& look, const PageWording& words) {
  const MenuLabels labels = LabelsOf(look);
  PageContents page{
      .Kind = PageKind::Root,
      .Title = look.TrackNames ? labels.Of("{} Options", film.Name) : labels.Of("Movie Options"),
      .Items = {{.Text = look.TrackNames ? labels.Of("Play {}", film.Name) : labels.Of("Play Video"),
                 .Key = menu_key::Play}}};
  if (!film.Audio.empty()) {
    page.Items.push_back({.Text = labels.Of("Audio Options"), .Key = menu_key::Audio});
  }
  if (!film.Subtitles.empty()) {
    page.Items.push_back({.Text = labels.Of("Subtitle Options"), .Key = menu_key::Subtitle});
  }
  if (!film.Chapters.empty()) {
    page.Items.push_back({.Text = labels.Of("Chapter Jump"), .Key = menu_key::Chapter});
  }
  page.Main = words.RootHasMain ? labels.Of("Main Menu") : "";
  return page;
}

PageContents AudioContents(const FilmOffer& film, const MenuLook& look, const PageWording& words) {
  const MenuLabels labels = LabelsOf(look);
  return {.Kind = PageKind::Audio,
          .Title = labels.Of("Audio Selection"),
          .Items = StreamItems(film.Audio, "Audio {}", look, words),
          .Main = labels.Of("Main Menu")};
}

std::vector<PageContents> SubtitleContents(const FilmOffer& film, const MenuLook& look,
                                           const PageWording& words) {
  const MenuLabels labels = LabelsOf(look);
  PageContents whole{.Kind = PageKind::Subtitle,
                     .Title = labels.Of("Subtitle Selection"),
                     .Items = StreamItems(film.Subtitles, "Subtitle {}", look, words),
                     .Main = labels.Of("Main Menu")};
  whole.Items.insert(whole.Items.begin(),
                     {.Text = labels.Of("Subtitles Off"), .Key = menu_key::SubtitlesOff});
  return Paged(whole, SubtitlesAPage, PageArrows, labels);
}

std::vector<PageContents> ChapterContents(const FilmOffer& film, const MenuLook& look,
                                          const PageWording& words) {
  const MenuLabels labels = LabelsOf(look);
  PageContents whole{.Kind = PageKind::Chapter,
                     .Title = labels.Of("Chapter Selection"),
                     .Items = {},
                     .Main = labels.Of("Main Menu")};
  for (const OfferedChapter& chapter : film.Chapters) {
    const std::string number = std::to_string(whole.Items.size() + 1);
    whole.Items.push_back({.Text = number, .Key = number, .Scene = chapter.Scene, .Name = chapter.Name});
    whole.HasNames = whole.HasNames || !chapter.Name.empty();
  }
  return Paged(whole, ChaptersAPage, words.ShortArrows ? PageArrows : ChapterArrows, labels);
}

std::vector<PageContents> ChoiceContents(std::span<const FilmOffer> films, const MenuLook& look,
                                         const PageWording& words) {
  const MenuLabels labels = LabelsOf(look);
  PageContents whole{.Kind = PageKind::TitleChoice, .Title = labels.Of("Movie Selection"), .Items = {}};
  for (const FilmOffer& film : films) {
    const std::string number = std::to_string(whole.Items.size() + 1);
    whole.Items.push_back(
        {.Text = look.TrackNames ? film.Name : labels.Of("Movie {}", number), .Key = number});
  }
  return Paged(whole, FilmsAPage, words.ShortArrows ? PageArrows : FilmArrows, labels);
}

}  // namespace quorvelant
