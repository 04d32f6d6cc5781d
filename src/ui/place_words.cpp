#include "ui/place_words.h"

#include <fmt/format.h>

#include "edit/live_elements.h"
#include "model/keys.h"
#include "ui/selection.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

std::string SourceWords(const Project& project, const SourceKey& source, const GoToPlace& place) {
  std::string words = project.Tracks[source.Track].TrackName;
  if (place.SubStream) {
    words += fmt::format(", subtitles {}", *place.SubStream + 1);
  }
  if (place.SubEntry) {
    words += fmt::format(", line {}", *place.SubEntry + 1);
  }
  return words;
}

std::string ElementWords(const Project& project, const std::string& key) {
  if (const PGC_P* chain = LivePgc(project, key)) {
    return chain->PGCName;
  }
  if (const Title_P* title = LiveTitle(project, key)) {
    return title->TitleName;
  }
  if (const Cell_P* cell = LiveCell(project, key)) {
    return cell->CellName;
  }
  return key;
}

}  // namespace

QString PlaceWords(const Project& project, const std::string& place) {
  const auto found = ParsePlace(project, place);
  if (!found) {
    return Shown(place);
  }
  if (const auto source = ParseSourceKey(found->Key)) {
    return Shown(SourceWords(project, *source, *found));
  }
  std::string words = ElementWords(project, found->Key);
  const std::size_t blank = place.find(' ');
  if (found->Command && blank != std::string::npos) {
    words += place.substr(blank);
  }
  return Shown(words);
}

}  // namespace quorvelant
