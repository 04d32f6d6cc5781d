#include "edit/button_numbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/text.h"
#include "model/keys.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view LinkWord = "button=";
constexpr std::string_view SetWord = "hl_bttn=";

// Where the digits of a text's button stand.
struct Digits {
  std::size_t Offset = 0;
  std::size_t Length = 0;
};

std::optional<Digits> DigitsOf(std::string_view text) {
  const std::string lower = Lower(text);
  for (const std::string_view word : {LinkWord, SetWord}) {
    const std::size_t at = lower.find(word);
    if (at == std::string::npos) {
      continue;
    }
    const std::size_t offset = lower.find_first_not_of(' ', at + word.size());
    const std::size_t end = std::min(lower.find_first_not_of("0123456789", offset), lower.size());
    if (offset < end) {
      return Digits{offset, end - offset};
    }
  }
  return std::nullopt;
}

bool Plays(const Cell_P* cell, const RenumberedSet& set) {
  return cell != nullptr && std::cmp_equal(cell->SegmentUsed, set.Track) &&
         std::cmp_equal(cell->pScene, set.Scene);
}

const Cell_P* FirstCell(const std::vector<const Cell_P*>& cells) {
  return cells.empty() ? nullptr : cells.front();
}

// The PGCs, programs and cells that a link can name, by their keys, with the cell that it comes to first.
const Cell_P* FirstCellAt(const PGC_P& chain, std::string_view key) {
  for (const PG_P* program : Live(chain.PG)) {
    for (const Cell_P* cell : Live(program->Cell)) {
      if (key == chain.Key || key == program->Key || key == cell->Key) {
        return cell;
      }
    }
  }
  return nullptr;
}

// The commands of one PGC.
class PgcCommands {
 public:
  PgcCommands(const PGC_P& chain, const CommandAims& aims, const RenumberedSet& set)
      : chain_(chain), aims_(aims), set_(set), cells_(LiveCells(chain)) {
    allPlay_ =
        !cells_.empty() && std::ranges::all_of(cells_, [&](const Cell_P* cell) { return Plays(cell, set); });
  }

  void Follow(std::vector<CommandEdit>& edits) const {
    FollowList({chain_.Key, ListKind::Pre}, chain_.PreCommands, nullptr, edits);
    FollowList({chain_.Key, ListKind::Post}, chain_.PostCommands, nullptr, edits);
    FollowList({chain_.Key, ListKind::Cell}, chain_.CellCommands, nullptr, edits);
    for (const Cell_P* cell : cells_) {
      for (std::size_t play = 0; play < cell->ButtonCommands.size(); ++play) {
        FollowList({cell->Key, ListKind::Button, play}, cell->ButtonCommands[play].Commands, cell, edits);
      }
    }
  }

 private:
  void FollowList(CommandPlace place, const CommandList& list, const Cell_P* own,
                  std::vector<CommandEdit>& edits) const {
    for (place.Position = 0; place.Position < list.size(); ++place.Position) {
      const VMICommand_P& command = list[place.Position];
      const auto number = command.Deleted ? std::nullopt : NewNumber(command.FullCommand);
      if (number && LeadsToSet(command.FullCommand, own)) {
        edits.push_back({place, WithSelectedButton(command.FullCommand, *number)});
      }
    }
  }

  // Another number for the button of the text.
  [[nodiscard]] std::optional<std::int32_t> NewNumber(std::string_view text) const {
    const auto selected = SelectedButton(text);
    if (!selected || std::cmp_greater(*selected, set_.Numbers.size())) {
      return std::nullopt;
    }
    const std::int32_t number = set_.Numbers[static_cast<std::size_t>(*selected) - 1];
    const std::int32_t least = Contains(Lower(text), SetWord) ? 1 : 0;
    return number == *selected ? std::nullopt : std::optional(std::max(number, least));
  }

  [[nodiscard]] bool LeadsToSet(std::string_view text, const Cell_P* own) const {
    const std::string lower = Lower(text);
    if (Contains(lower, SetWord)) {
      return allPlay_;
    }
    const auto aims = aims_.Of(text, own != nullptr ? own->Key : chain_.Key);
    if (!aims.empty()) {
      return std::ranges::any_of(
          aims, [&](const CommandReferenceAim& aim) { return Plays(FirstCellAt(chain_, aim.Key), set_); });
    }
    if (Contains(lower, "linktoppgc")) {
      return Plays(FirstCell(cells_), set_);
    }
    if (own != nullptr && Contains(lower, "linktopc")) {
      return Plays(own, set_);
    }
    const auto says = [&](std::string_view word) { return Contains(lower, word); };
    constexpr std::array<std::string_view, 3> Away{"linknextpgc", "linkprevpgc", "linkgouppgc"};
    constexpr std::array<std::string_view, 6> Within{"linktopc",  "linknextc",  "linkprevc",
                                                     "linktoppg", "linknextpg", "linkprevpg"};
    return allPlay_ && std::ranges::none_of(Away, says) && std::ranges::any_of(Within, says);
  }

  const PGC_P& chain_;
  const CommandAims& aims_;
  const RenumberedSet& set_;
  std::vector<const Cell_P*> cells_;
  bool allPlay_ = false;
};

}  // namespace

std::optional<std::int32_t> SelectedButton(std::string_view text) {
  const auto digits = DigitsOf(text);
  std::int32_t number = 0;
  if (digits) {
    const std::string_view piece = text.substr(digits->Offset, digits->Length);
    std::from_chars(piece.data(), piece.data() + piece.size(), number);
  }
  return number > 0 ? std::optional(number) : std::nullopt;
}

std::string WithSelectedButton(std::string_view text, std::int32_t number) {
  std::string changed(text);
  if (const auto digits = DigitsOf(text)) {
    changed.replace(digits->Offset, digits->Length, fmt::format("{}", number));
  }
  return changed;
}

std::vector<CommandEdit> FollowButtons(const Project& project, const CommandAims& aims,
                                       const RenumberedSet& set) {
  std::vector<CommandEdit> edits;
  bool moves = false;
  for (std::size_t i = 0; i < set.Numbers.size(); ++i) {
    moves = moves || std::cmp_not_equal(set.Numbers[i], i + 1);
  }
  if (moves) {
    for (const auto& at : LivePgcs(project)) {
      PgcCommands(*at.Chain, aims, set).Follow(edits);
    }
  }
  return edits;
}

}  // namespace quorvelant
