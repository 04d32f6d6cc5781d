#include "vm/command_aims.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "base/text.h"

namespace quorvelant {

namespace {

bool IsTitle(const DiscPlace& place) {
  return place.InTitles && place.Pgc == 0;
}
bool IsPgc(const DiscPlace& place) {
  return place.Pgc > 0 && place.Program == 0;
}
bool IsProgram(const DiscPlace& place) {
  return place.Program > 0 && place.Cell == 0;
}

// Whether a reference of this kind may name an element there.
bool MayName(ReferenceKind kind, const DiscPlace& place) {
  switch (kind) {
    case ReferenceKind::LinkPgc:
    case ReferenceKind::TimerPgc:
      return IsPgc(place);
    case ReferenceKind::VmgPgc:
      return IsPgc(place) && place.Entry == 1 && !place.InTitles;
    case ReferenceKind::LinkProgram:
      return IsProgram(place);
    case ReferenceKind::LinkPart:
    case ReferenceKind::JumpSetPart:
      return IsProgram(place) && place.InTitles;
    case ReferenceKind::LinkCell:
      return place.Cell > 0;
    case ReferenceKind::ResumeCell:
      return place.Cell > 0 && place.InTitles;
    case ReferenceKind::JumpTitle:
    case ReferenceKind::JumpSetTitle:
      return IsTitle(place);
    default:
      return false;
  }
}

// A name's place cannot be told from the text alone, so its number is only what it reads as.
LiveNumber NumberOf(const TextReference& reference) {
  return {.Number = reference.Number.value_or(0), .Within = reference.Within};
}

std::size_t HashOf(std::string_view text) {
  return std::hash<std::string_view>()(text);
}

}  // namespace

CommandAims::CommandAims(const Project& project, const Rules& rules) : rules_(rules), named_(1) {
  parts_.resize(project.Disc.Count() + 1);
  for (std::size_t entry = 0; entry < parts_.size(); ++entry) {
    Read(project, entry);
  }
}

void CommandAims::Update(const Project& project, std::span<const std::size_t> entries) {
  parts_.resize(std::max(parts_.size(), project.Disc.Count() + 1));
  for (const std::size_t entry : entries) {
    if (entry < parts_.size()) {
      Read(project, entry);
    }
  }
}

// --- reading ---

std::uint32_t CommandAims::NameOf(std::string_view name) {
  std::string key = NameKey(name);
  if (key.empty()) {
    return NoName;
  }
  const auto [found, isNew] = nameIds_.try_emplace(std::move(key), static_cast<std::uint32_t>(named_.size()));
  if (isNew) {
    named_.emplace_back();
  }
  return found->second;
}

std::uint32_t CommandAims::KnownName(std::string_view name) const {
  const auto found = nameIds_.find(NameKey(name));
  return found == nameIds_.end() ? NoName : found->second;
}

CommandAims::Held CommandAims::HeldOf(const TextReference& reference, std::uint32_t name) {
  return {.Kind = reference.Kind,
          .Name = name,
          .HasNumber = reference.Number.has_value() || reference.Kind == ReferenceKind::FirstPlay,
          .Number = NumberOf(reference)};
}

void CommandAims::Read(const Project& project, std::size_t entry) {
  Part& part = parts_[entry];
  for (const std::uint32_t name : part.Names) {
    std::erase_if(named_[name], [entry](const Named& named) { return named.Place.Entry == entry; });
  }
  part = {};
  if (entry == 0) {
    AddCommands(FirstPlayPlace, project.FirstPlay);
    return;
  }
  const auto number = static_cast<std::uint32_t>(entry);
  numbers_.Read(project, number);
  const VTS_P* live = project.Disc.Item(entry);
  if (live == nullptr || live->Removed) {
    return;
  }
  VisitLive(live->Title, {.Entry = number, .InTitles = true}, &DiscPlace::Unit,
            [this](const DiscPlace& at, const Title_P& title) { AddName(title.TitleName, at); });
  VisitLivePgcs(*live, number, [this](const DiscPlace& at, const PGC_P& pgc) {
    AddNames(at, pgc);
    AddCommands(at, pgc);
  });
}

void CommandAims::AddNames(const DiscPlace& place, const PGC_P& pgc) {
  AddName(pgc.PGCName, place);
  VisitLive(pgc.PG, place, &DiscPlace::Program, [this](const DiscPlace& at, const PG_P& program) {
    AddName(program.PGName, at, !rules_.EmptyProgramsUncounted || std::ranges::any_of(program.Cell, IsLive));
    VisitLive(program.Cell, at, &DiscPlace::Cell,
              [this](const DiscPlace& cell, const Cell_P& named) { AddName(named.CellName, cell); });
  });
}

void CommandAims::AddName(std::string_view name, const DiscPlace& place, bool isCounted) {
  const std::uint32_t id = NameOf(name);
  if (id == NoName) {
    return;
  }
  parts_[place.Entry].Names.push_back(id);
  auto& same = named_[id];
  same.insert(std::ranges::upper_bound(same, place, std::less(), &Named::Place), {place, isCounted});
}

void CommandAims::AddCommands(const DiscPlace& place, const PGC_P& pgc) {
  AddList({.Stand = place, .List = ListKind::Pre}, pgc.PreCommands);
  AddList({.Stand = place, .List = ListKind::Post}, pgc.PostCommands);
  AddList({.Stand = place, .List = ListKind::Cell}, pgc.CellCommands);
  VisitLive(pgc.PG, place, &DiscPlace::Program, [this](const DiscPlace& at, const PG_P& program) {
    VisitLive(program.Cell, at, &DiscPlace::Cell, [this](const DiscPlace& stand, const Cell_P& cell) {
      for (std::size_t play = 0; play < cell.ButtonCommands.size(); ++play) {
        AddList({.Stand = stand, .List = ListKind::Button, .Play = play}, cell.ButtonCommands[play].Commands);
      }
    });
  });
}

void CommandAims::AddList(Command at, const CommandList& list) {
  Part& part = parts_[at.Stand.Entry];
  for (at.Position = 0; at.Position < list.size(); ++at.Position) {
    const VMICommand_P& command = list[at.Position];
    const auto references =
        command.Deleted ? std::vector<TextReference>() : TextReferencesOf(command.FullCommand);
    if (references.empty()) {
      continue;
    }
    at.TextHash = HashOf(command.FullCommand);
    at.First = part.References.size();
    at.Count = references.size();
    for (const TextReference& reference : references) {
      part.References.push_back(HeldOf(reference, NameOf(reference.Name)));
    }
    part.Commands.push_back(at);
  }
}

// --- looking up ---

const CommandAims::Named* CommandAims::FindNamed(const Held& held) const {
  if (held.Name == NoName) {
    return nullptr;
  }
  const auto& same = named_[held.Name];
  const auto fits = [&held](const Named& named) { return MayName(held.Kind, named.Place); };
  const auto counted =
      std::ranges::find_if(same, [&fits](const Named& named) { return named.IsCounted && fits(named); });
  const auto found = counted != same.end() ? counted : std::ranges::find_if(same, fits);
  return found == same.end() ? nullptr : &*found;
}

std::optional<DiscPlace> CommandAims::Find(const Held& held, const DiscPlace& stand) const {
  if (const Named* named = FindNamed(held)) {
    return named->Place;
  }
  return held.HasNumber ? numbers_.Find(held.Kind, held.Number, stand) : std::nullopt;
}

std::vector<CommandReferenceAim> CommandAims::Of(std::string_view text, std::string_view key) const {
  std::vector<CommandReferenceAim> aims;
  const auto stand = PlaceOfKey(key);
  if (!stand) {
    return aims;
  }
  for (TextReference& reference : TextReferencesOf(text)) {
    const Held held = HeldOf(reference, KnownName(reference.Name));
    const auto place = Find(held, *stand);
    const bool byName = FindNamed(held) != nullptr;
    aims.push_back({std::move(reference), byName, place ? KeyOf(*place) : std::string()});
  }
  return aims;
}

template <class Visit>
void CommandAims::ForEachCommand(Visit visit) const {
  for (const Part& part : parts_) {
    const std::span<const Held> references = part.References;
    for (const Command& command : part.Commands) {
      visit(command, references.subspan(command.First, command.Count));
    }
  }
}

CommandPlace CommandAims::PlaceOf(const Command& command) {
  return {KeyOf(command.Stand), command.List, command.Play, command.Position};
}

bool CommandAims::HasName(std::string_view name) const {
  const std::uint32_t known = KnownName(name);
  return known != NoName && !named_[known].empty();
}

std::vector<CommandPlace> CommandAims::To(std::string_view key) const {
  std::vector<CommandPlace> places;
  const auto element = PlaceOfKey(key);
  if (!element) {
    return places;
  }
  ForEachCommand([&](const Command& command, std::span<const Held> references) {
    const auto leadsThere = [&](const Held& held) {
      const auto place = Find(held, command.Stand);
      return place && element->Holds(*place);
    };
    if (!element->Holds(command.Stand) && std::ranges::any_of(references, leadsThere)) {
      places.push_back(PlaceOf(command));
    }
  });
  return places;
}

// --- new texts ---

template <class Choose>
std::vector<CommandAims::Rewrite> CommandAims::ChooseRewrites(const Project& project, Choose choose) const {
  std::vector<Rewrite> rewrites;
  ForEachCommand([&](const Command& command, std::span<const Held> references) {
    Rewrite rewrite;
    for (std::size_t i = 0; i < references.size(); ++i) {
      if (const std::optional<LiveNumber> number = choose(references[i], command.Stand)) {
        rewrite.Pieces.emplace_back(i, *number);
      }
    }
    if (rewrite.Pieces.empty()) {
      return;
    }
    rewrite.Edit.Place = PlaceOf(command);
    const VMICommand_P* there = FindCommand(project, rewrite.Edit.Place);
    if (there != nullptr && !there->Deleted && HashOf(there->FullCommand) == command.TextHash) {
      rewrite.Edit.Text = there->FullCommand;
      rewrites.push_back(std::move(rewrite));
    }
  });
  return rewrites;
}

// Last first, so that the places of the others stay.
std::vector<std::pair<TextReference, LiveNumber>> CommandAims::Rewrite::LastFirst() const {
  std::vector<std::pair<TextReference, LiveNumber>> pieces;
  const auto references = TextReferencesOf(Edit.Text);
  for (const auto& [index, number] : Pieces) {
    pieces.emplace_back(references.at(index), number);
  }
  std::ranges::sort(pieces, std::greater(), [](const auto& piece) { return piece.first.Offset; });
  return pieces;
}

std::optional<std::vector<CommandEdit>> CommandAims::Renamed(const Project& project, std::string_view key,
                                                             std::string_view newName) const {
  const auto element = PlaceOfKey(key);
  const auto names = [&](const Held& held, const DiscPlace& /*stand*/) {
    const Named* named = FindNamed(held);
    return named != nullptr && named->Place == element ? std::optional(LiveNumber()) : std::nullopt;
  };
  std::vector<CommandEdit> edits;
  for (Rewrite& rewrite : ChooseRewrites(project, names)) {
    for (const auto& piece : rewrite.LastFirst()) {
      auto text = RenamedText(rewrite.Edit.Text, piece.first, newName);
      if (!text) {
        return std::nullopt;
      }
      rewrite.Edit.Text = std::move(*text);
    }
    edits.push_back(std::move(rewrite.Edit));
  }
  return edits;
}

std::vector<CommandEdit> CommandAims::Renumbered(const Project& changed,
                                                 std::span<const std::size_t> entries) const {
  LiveNumbers now = numbers_;
  for (const std::size_t entry : entries) {
    if (entry > 0) {
      now.Read(changed, static_cast<std::uint32_t>(entry));
    }
  }
  const auto moved = [&](const Held& held, const DiscPlace& stand) -> std::optional<LiveNumber> {
    const bool byNumber = held.HasNumber && held.Kind < ReferenceKind::Menu && FindNamed(held) == nullptr;
    const auto place = byNumber ? numbers_.Find(held.Kind, held.Number, stand) : std::nullopt;
    if (!place) {
      return std::nullopt;
    }
    const LiveNumber number = now.NumberOf(held.Kind, *place, stand).value_or(LiveNumber());
    const bool titleMoved = held.Kind == ReferenceKind::JumpSetPart && number.Within != held.Number.Within;
    return number.Number != held.Number.Number || titleMoved ? std::optional(number) : std::nullopt;
  };
  std::vector<CommandEdit> edits;
  for (Rewrite& rewrite : ChooseRewrites(changed, moved)) {
    for (const auto& [reference, number] : rewrite.LastFirst()) {
      rewrite.Edit.Text = RenumberedText(rewrite.Edit.Text, reference, number.Number, number.Within);
    }
    edits.push_back(std::move(rewrite.Edit));
  }
  return edits;
}

}  // namespace quorvelant
