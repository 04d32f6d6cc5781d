// The chapters of an ordered film.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "check/findings.h"
#include "edit/outcome.h"
#include "edit/session.h"
#include "menu/disc_order.h"

namespace quorvelant {

class UserInterface;

// What is wrong with a film's chapters by themselves: a list that cannot be read, times that are none, more
// than a film can have. The list of a file is read into `film.Chapters`, where it is of use.
[[nodiscard]] Findings ReadChapters(OrderedFilm& film, bool isNtsc);

// Makes a scene of each chapter, for which the film is indexed, and gives a name for each scene, empty where
// none was told. Chapters that fall on one picture become one, which is told.
Outcome AddChapters(EditSession& session, std::size_t track, const OrderedFilm& film, UserInterface& ui,
                    std::vector<std::string>& names);

}  // namespace quorvelant
