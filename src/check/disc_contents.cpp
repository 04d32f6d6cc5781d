#include "check/disc_contents.h"

#include <algorithm>
#include <array>
#include <limits>

#include "model/walk.h"

namespace quorvelant {

DiscContents::DiscContents(const Project& project) {
  for (const VTS_P* entry : Live(project.Disc)) {
    SetContents& contents = contents_[entry];
    contents.Titles = Live(entry->Title);
    for (const Title_P* title : contents.Titles) {
      contents.Pgcs += Live(title->PGC).size();
    }
    if (entry != project.Disc.Item(1)) {
      sets_.push_back(entry);
      titles_ += contents.Titles.size();
      continue;
    }
    const auto languages = Live(entry->Lang);
    managerPgcs_ = languages.empty() ? 0 : std::numeric_limits<std::size_t>::max();
    for (const Lang_P* language : languages) {
      managerPgcs_ = std::min(managerPgcs_, Live(language->PGC).size());
    }
  }
}

std::size_t ProgramCount(const PGC_P& chain) {
  const auto programs = Live(chain.PG);
  return static_cast<std::size_t>(
      std::ranges::count_if(programs, [](const PG_P* program) { return !Live(program->Cell).empty(); }));
}

std::size_t PartCount(const Title_P& title) {
  std::size_t parts = 0;
  for (const PGC_P* chain : Live(title.PGC)) {
    parts += ProgramCount(*chain);
  }
  return parts;
}

std::string_view MenuNameOf(std::int32_t menu) {
  constexpr std::array<std::string_view, 6> Names{"title menu", "root menu",  "subpicture menu",
                                                  "audio menu", "angle menu", "part menu"};
  constexpr std::int32_t First = 2;
  const auto index = static_cast<std::size_t>(menu - First);
  return menu >= First && index < Names.size() ? Names.at(index) : "menu without a number";
}

}  // namespace quorvelant
