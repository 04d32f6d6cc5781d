#include "ui/listed_film.h"

#include <algorithm>

namespace quorvelant {

bool ListedFilm::HasFile(const std::string& file) const {
  return Video == file || std::ranges::any_of(Streams, [&file](const ListedStream& stream) {
           return stream.Source.File == file;
         });
}

bool ListedFilm::HasChapters() const {
  return std::ranges::find(Streams, FileRole::Chapters, &ListedStream::Role) != Streams.end();
}

std::size_t ListedFilm::PlaceFor(FileRole role) const {
  const auto place =
      std::ranges::find_if(Streams, [role](const ListedStream& other) { return other.Role > role; });
  return static_cast<std::size_t>(place - Streams.begin());
}

std::size_t ListedFilm::NumberOf(const ListedStream& stream) const {
  std::size_t number = 1;
  for (const ListedStream& before : Streams) {
    if (&before == &stream) {
      break;
    }
    number += before.Role == stream.Role ? 1 : 0;
  }
  return number;
}

OrderedFilm ListedFilm::Ordered() const {
  OrderedFilm film{.Name = Name, .Video = Video, .After = After};
  for (const ListedStream& stream : Streams) {
    if (stream.Role == FileRole::Chapters) {
      film.ChapterFile = stream.Source.File;
    } else {
      (stream.Role == FileRole::Audio ? film.Audio : film.Subtitles).push_back(stream.Source);
    }
  }
  return film;
}

}  // namespace quorvelant
