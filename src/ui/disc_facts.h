// What the rows of the disc's structure say of its elements.
#pragma once

#include <functional>
#include <string>

#include "ui/tree_model.h"

namespace quorvelant {

using DiscFactTaker = std::function<void(const std::string& key, RowFacts facts)>;

void TellFirstPlayFacts(const Project& project, const DiscFactTaker& take);
// Of an entry and all below it.
void TellEntryFacts(const Project& project, const VTS_P& entry, const DiscFactTaker& take);

}  // namespace quorvelant
