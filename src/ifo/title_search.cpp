#include "ifo/title_search.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "disc/table_layout.h"
#include "ifo/title_tables.h"

namespace quorvelant {
namespace {

// Whether a live command of the list leads away from where it stands.
bool LeadsAway(const CommandList& list) {
  constexpr std::array<std::string_view, 4> Words{"call", "jump", "link", "exit"};
  return std::ranges::any_of(list, [&](const VMICommand_P& command) {
    const std::string text = command.Deleted ? std::string() : Lower(command.FullCommand);
    return std::ranges::any_of(Words, [&](std::string_view word) { return Contains(text, word); });
  });
}

bool ButtonsLeadAway(const PGC_P& chain) {
  return std::ranges::any_of(LiveCells(chain), [](const Cell_P* cell) {
    return std::ranges::any_of(cell->ButtonCommands,
                               [](const ButtonCommands_P& play) { return LeadsAway(play.Commands); });
  });
}

}  // namespace

std::uint8_t PlaybackTypeOf(const Title_P& title) {
  unsigned type = 0;
  for (const PGC_P* chain : Live(title.PGC)) {
    type |= LeadsAway(chain->CellCommands) ? title_entry::JumpsInCells : 0U;
    type |=
        LeadsAway(chain->PreCommands) || LeadsAway(chain->PostCommands) ? title_entry::JumpsInPrePost : 0U;
    type |= ButtonsLeadAway(*chain) ? title_entry::JumpsInButtons : 0U;
  }
  type |= type != 0 ? title_entry::JumpsAnywhere : 0U;
  type |= IsSequential(title) ? 0U : title_entry::NotSequential;
  type |= title.UOPPTTPlay ? title_entry::NoPartPlay : 0U;
  type |= title.UOPTimePlay ? title_entry::NoTimePlay : 0U;
  return static_cast<std::uint8_t>(type);
}

Bytes BuildTitleSearch(std::span<const WrittenSet> sets) {
  Bytes bytes(table_head::Size);
  std::size_t count = 0;
  for (std::size_t set = 0; set < sets.size(); ++set) {
    const auto titles = Live(sets[set].Entry->Title);
    const auto chapters = ChaptersOf(*sets[set].Entry, *sets[set].Title);
    for (std::size_t i = 0; i < titles.size(); ++i) {
      bytes.resize(bytes.size() + title_entry::Size);
      const ByteSpan entry = ByteSpan(bytes).last(title_entry::Size);
      Put(entry, title_entry::PlaybackType, disc::Number{PlaybackTypeOf(*titles[i])});
      Put(entry, title_entry::Angles, disc::Number{1});
      Put(entry, title_entry::Chapters, disc::Number{chapters[i].size()});
      Put(entry, title_entry::TitleSet, disc::Number{set + 1});
      Put(entry, title_entry::TitleInSet, disc::Number{i + 1});
      ++count;
    }
  }
  Put(bytes, table_head::Count, disc::Number{count});
  Put(bytes, table_head::Last, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size() - 1)});
  return bytes;
}

}  // namespace quorvelant
