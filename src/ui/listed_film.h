// A film of a list, with its streams.
#pragma once

#include <QtGlobal>
#include <cstddef>
#include <string>
#include <vector>

#include "edit/film_files.h"
#include "menu/disc_order.h"

namespace quorvelant {

struct ListedStream {
  FileRole Role = FileRole::Audio;
  FilmFiles::Stream Source;
};

struct ListedFilm {
  quintptr Id = 0;  // of its streams' indexes; never 0
  std::string Name;
  std::string Video;
  AfterFilm After = AfterFilm::Menu;
  std::vector<ListedStream> Streams;  // sound, then subtitles, then chapters

  [[nodiscard]] bool HasFile(const std::string& file) const;
  [[nodiscard]] bool HasChapters() const;
  // Where a new stream goes: after the last one of its kind.
  [[nodiscard]] std::size_t PlaceFor(FileRole role) const;
  // Of one of the streams among those of its kind, from 1.
  [[nodiscard]] std::size_t NumberOf(const ListedStream& stream) const;
  [[nodiscard]] OrderedFilm Ordered() const;
};

}  // namespace quorvelant
