#include "ui/selection.h"

#include <array>
#include <utility>

#include "edit/live_elements.h"
#include "edit/live_sources.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view Digits = "0123456789";

// The number, from 0, after a word that ends the text ("Pre2", "SubPlay7"): nothing where it does not.
std::optional<std::size_t> NumberAfter(std::string_view text, std::string_view word) {
  const std::size_t at = text.rfind(word);
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string digits(text.substr(at + word.size()));
  if (digits.empty() || digits.size() > 6 || digits.find_first_not_of(Digits) != std::string::npos) {
    return std::nullopt;
  }
  const auto number = static_cast<std::size_t>(std::stoul(digits));
  return number > 0 ? std::optional(number - 1) : std::nullopt;
}

std::optional<CommandPlace> CommandOf(const std::string& key, std::string_view word) {
  constexpr std::array<std::pair<std::string_view, ListKind>, 4> Lists{{{"Pre", ListKind::Pre},
                                                                        {"Post", ListKind::Post},
                                                                        {"Cell", ListKind::Cell},
                                                                        {"Button", ListKind::Button}}};
  for (const auto& [name, list] : Lists) {
    if (const auto number = NumberAfter(word, name); number && word.starts_with(name)) {
      return CommandPlace{.Key = key, .List = list, .Position = *number};
    }
  }
  return std::nullopt;
}

// The key of the nearest live element at or above a key of the structure; empty for none.
std::string NearestLive(const Project& project, std::string key) {
  const auto isLive = [&project](const std::string& one) {
    return one == FirstPgcKey || LiveEntry(project, one) != nullptr ||
           LiveLanguage(project, one) != nullptr || LiveTitle(project, one) != nullptr ||
           LivePgc(project, one) != nullptr || LiveProgram(project, one) != nullptr ||
           LiveCell(project, one) != nullptr;
  };
  while (!key.empty() && !isLive(key)) {
    const std::size_t dot = key.rfind('.');
    key = dot == std::string::npos ? std::string() : key.substr(0, dot);
  }
  return key;
}

// The same of a key of the source material: the element itself, its stream, its track.
std::string NearestSource(const Project& project, std::string key) {
  const auto isLive = [&project](const std::string& one) {
    const auto source = ParseSourceKey(one);
    return source && LiveSource(project, one, source->Kind);
  };
  while (!key.empty() && !isLive(key)) {
    const std::size_t dot = key.rfind('.');
    key = dot == std::string::npos ? std::string() : key.substr(0, dot);
  }
  return key;
}

// The track that a cell shows, or a program's or PGC's first cell.
std::optional<std::size_t> ShownBy(const Project& project, const std::string& key) {
  const Cell_P* cell = LiveCell(project, key);
  if (const PG_P* program = LiveProgram(project, key)) {
    const auto cells = Live(program->Cell);
    cell = cells.empty() ? nullptr : cells.front();
  } else if (const PGC_P* chain = LivePgc(project, key)) {
    const auto cells = LiveCells(*chain);
    cell = cells.empty() ? nullptr : cells.front();
  }
  return cell == nullptr || cell->SegmentUsed < 0
             ? std::nullopt
             : std::optional(static_cast<std::size_t>(cell->SegmentUsed));
}

std::optional<GoToPlace> SourcePlace(const Project& project, const std::string& key,
                                     const SourceKey& source) {
  if (source.Track >= project.Tracks.Count() || project.Tracks[source.Track].Removed) {
    return std::nullopt;
  }
  GoToPlace place{.Key = key, .Command = {}, .SubStream = {}, .SubEntry = {}, .ButtonSet = {}};
  const std::size_t dot = key.rfind('.');
  const std::string_view last = std::string_view(key).substr(dot + 1);
  if (const auto entry = NumberAfter(last, "SubPlay"); entry && last.starts_with("SubPlay")) {
    place.Key = key.substr(0, dot);
    place.SubEntry = entry;
  }
  const std::string_view stream = std::string_view(place.Key).substr(place.Key.rfind('.') + 1);
  if (stream.starts_with("Sub")) {
    place.SubStream = NumberAfter(stream, "Sub");
  }
  return place;
}

}  // namespace

std::optional<GoToPlace> ParsePlace(const Project& project, std::string_view place) {
  const std::size_t blank = place.find(' ');
  const std::string key(place.substr(0, blank));
  // An entry of a subtitle stream is named below the stream's key.
  if (const auto source = ParseSourceKey(std::string_view(key).substr(0, key.rfind(".SubPlay")))) {
    return SourcePlace(project, key, *source);
  }
  GoToPlace found{
      .Key = NearestLive(project, key), .Command = {}, .SubStream = {}, .SubEntry = {}, .ButtonSet = {}};
  if (found.Key.empty()) {
    return std::nullopt;
  }
  if (blank != std::string_view::npos && found.Key == key) {
    found.Command = CommandOf(key, place.substr(blank + 1));
  }
  return found;
}

Selection::Selection(Document& document, QObject* parent) : QObject(parent), document_(document) {
  connect(&document, qOverload<const ChangeEvent&>(&Document::Changed), this, &Selection::Follow);
}

void Selection::Choose(std::string key) {
  if (key == key_) {
    return;
  }
  key_ = std::move(key);
  const auto source = ParseSourceKey(key_);
  if (!key_.empty()) {
    (source ? source_ : structure_) = key_;
  }
  const std::optional<std::size_t> shown =
      source ? std::optional(source->Track) : ShownBy(document_.Work(), key_);
  emit KeyChanged();
  if (shown && shown != track_) {
    track_ = shown;
    emit TrackChanged();
  }
}

bool Selection::GoTo(std::string_view place) {
  const auto found = ParsePlace(document_.Work(), place);
  if (!found) {
    return false;
  }
  Choose(found->Key);
  emit WentTo(*found);
  return true;
}

void Selection::Follow(const ChangeEvent& event) {
  const Project& project = document_.Work();
  const auto settled = [&](const std::string& key) {
    if (event.Replaced) {
      return std::string();
    }
    return ParseSourceKey(key) ? NearestSource(project, key) : NearestLive(project, key);
  };
  const bool isTrackGone =
      track_ && (*track_ >= project.Tracks.Count() || project.Tracks[*track_].Removed || event.Replaced);
  if (isTrackGone) {
    track_.reset();
  }
  source_ = settled(source_);
  structure_ = settled(structure_);
  const std::string key = settled(key_);
  const bool isOther = key != key_;
  key_ = key;
  if (isOther) {
    emit KeyChanged();
  }
  if (isTrackGone) {
    emit TrackChanged();
  }
}

}  // namespace quorvelant
