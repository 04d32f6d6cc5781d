// Which commands lead where, kept beside a project under work.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/rules.h"
#include "model/project.h"
#include "vm/command_place.h"
#include "vm/disc_place.h"
#include "vm/live_numbers.h"
#include "vm/references.h"

namespace quorvelant {

// A reference of a command with what it leads to.
struct CommandReferenceAim {
  TextReference Text;
  bool ByName = false;  // else by number, or by a word of the language
  std::string Key;      // of the element; empty where there is none
};

// A command's new text.
struct CommandEdit {
  CommandPlace Place;
  std::string Text;
  bool operator==(const CommandEdit&) const = default;
};

// The references of all live commands, read once; every lookup then goes through numbers alone. A name leads
// to the first live element that has it, as `NameIndex` finds it; a number that is no name to the element
// that it means on the disc where the command stands. It holds no reference to the project.
class CommandAims {
 public:
  CommandAims(const Project& project, const Rules& rules);

  // Reads again what was changed: numbers of entries of the disc (also of one that is gone), 0 for First
  // Play.
  void Update(const Project& project, std::span<const std::size_t> entries);

  // Whether a live title, PGC, program or cell has the name, blanks and case aside.
  [[nodiscard]] bool HasName(std::string_view name) const;

  // The references of a text that stood in a PGC or cell.
  [[nodiscard]] std::vector<CommandReferenceAim> Of(std::string_view text, std::string_view key) const;

  // The commands outside of an element that lead to it or to what lies below it, in the order of the disc.
  [[nodiscard]] std::vector<CommandPlace> To(std::string_view key) const;

  // The commands that name this very element, wherever they stand, with texts that name it by `newName`.
  // Nothing where one of them could not carry that name: then the element cannot have it.
  [[nodiscard]] std::optional<std::vector<CommandEdit>> Renamed(const Project& project, std::string_view key,
                                                                std::string_view newName) const;

  // After a change of the structure, and before `Update`: the commands that lead by number to an element
  // which has another number now, with texts that lead to it again. A number whose element is gone becomes 0,
  // which is no element. `entries` as for `Update`; commands whose text was changed as well are left alone.
  [[nodiscard]] std::vector<CommandEdit> Renumbered(const Project& changed,
                                                    std::span<const std::size_t> entries) const;

 private:
  static constexpr std::uint32_t NoName = 0;

  // A reference of a command, its name as a number.
  struct Held {
    ReferenceKind Kind;
    std::uint32_t Name;
    bool HasNumber;
    LiveNumber Number;
  };
  struct Command {
    DiscPlace Stand;
    ListKind List = ListKind::Pre;
    std::size_t Play = 0;
    std::size_t Position = 0;
    std::size_t TextHash = 0;
    std::size_t First = 0;  // of its references in `Part::References`
    std::size_t Count = 0;
  };
  // What one entry of the disc adds.
  struct Part {
    std::vector<Command> Commands;  // that have references
    std::vector<Held> References;
    std::vector<std::uint32_t> Names;
  };
  // An element of some name.
  struct Named {
    DiscPlace Place;
    bool IsCounted = true;  // not so a program that does not reach the disc
  };
  // A command whose text changes.
  struct Rewrite {
    CommandEdit Edit;
    std::vector<std::pair<std::size_t, LiveNumber>> Pieces;  // by index of the reference in the text

    [[nodiscard]] std::vector<std::pair<TextReference, LiveNumber>> LastFirst() const;
  };

  std::uint32_t NameOf(std::string_view name);
  [[nodiscard]] std::uint32_t KnownName(std::string_view name) const;
  static Held HeldOf(const TextReference& reference, std::uint32_t name);
  void Read(const Project& project, std::size_t entry);
  void AddNames(const DiscPlace& place, const PGC_P& pgc);
  void AddName(std::string_view name, const DiscPlace& place, bool isCounted = true);
  void AddCommands(const DiscPlace& place, const PGC_P& pgc);
  void AddList(Command at, const CommandList& list);
  [[nodiscard]] std::optional<DiscPlace> Find(const Held& held, const DiscPlace& stand) const;
  [[nodiscard]] const Named* FindNamed(const Held& held) const;
  template <class Visit>
  void ForEachCommand(Visit visit) const;
  template <class Choose>
  std::vector<Rewrite> ChooseRewrites(const Project& project, Choose choose) const;
  static CommandPlace PlaceOf(const Command& command);

  Rules rules_;
  LiveNumbers numbers_;
  std::vector<Part> parts_;                                 // by entry
  std::unordered_map<std::string, std::uint32_t> nameIds_;  // by `NameKey`, from 1
  std::vector<std::vector<Named>> named_;                   // by name, in the order of the disc
};

}  // namespace quorvelant
