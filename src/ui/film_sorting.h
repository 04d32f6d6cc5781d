// Files that come to films which are listed already.
#pragma once

#include <string>
#include <vector>

#include "base/message.h"
#include "edit/film_files.h"

namespace quorvelant {

// A film for each video of `listed`, with those of `files` that are its own, then the new ones, with what
// lies beside them too. Files go by the names of films of their folder, or, where it has no videos, of all.
// What is taken by no film is added to `told`.
[[nodiscard]] std::vector<FilmFiles> SortToFilms(std::vector<std::string> listed,
                                                 const std::vector<std::string>& files,
                                                 std::vector<Message>& told);

}  // namespace quorvelant
