// Places of messages for people.
#pragma once

#include <QString>
#include <string>

#include "model/project.h"

namespace quorvelant {

// "Film 1, subtitles 1, line 7"; "Title 1, pre command 2"; the place itself where it is none of the project.
[[nodiscard]] QString PlaceWords(const Project& project, const std::string& place);

}  // namespace quorvelant
