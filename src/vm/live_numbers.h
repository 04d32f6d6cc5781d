// What the numbers of commands lead to, and the way back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "model/project.h"
#include "vm/disc_place.h"
#include "vm/references.h"

namespace quorvelant {

// A number as a reference holds it; `Within` is that of the title or set, where it needs one.
struct LiveNumber {
  std::int32_t Number = 0;
  std::int32_t Within = 0;
  bool operator==(const LiveNumber&) const = default;
};

// Numbers as players count them on the finished disc: live elements, programs that have a cell, PGCs of
// titles through the table of their set. Holds no reference to the project, and copies of it are cheap.
class LiveNumbers {
 public:
  // Reads an entry of the disc anew, also one that is not there any more.
  void Read(const Project& project, std::uint32_t entry);

  // The element that the number of a reference means in a command at `stand`; nothing where the disc has no
  // such element there. A menu is its PGC where one language alone has it, else the entry whose menu it is. A
  // PGC of the Video Manager is that of the language in which the command stands, elsewhere of the first.
  [[nodiscard]] std::optional<DiscPlace> Find(ReferenceKind kind, const LiveNumber& number,
                                              const DiscPlace& stand) const;
  // The number by which a reference of this kind leads to an element that `Find` gave; nothing where the
  // disc does not have it any more.
  [[nodiscard]] std::optional<LiveNumber> NumberOf(ReferenceKind kind, const DiscPlace& place,
                                                   const DiscPlace& stand) const;

 private:
  using Places = std::vector<DiscPlace>;  // in order

  // What an entry holds of each level.
  struct Entry {
    Places Units, Pgcs, Programs, Cells;
    std::vector<std::int32_t> Menus;  // a PGC each: 2 title, 3 root, ..., 0 no menu by itself
  };
  // Where numbers of a kind are counted.
  struct Scope {
    Places Entry::*Level = nullptr;
    DiscPlace Parent;
  };
  [[nodiscard]] std::optional<Scope> ScopeOf(ReferenceKind kind, const DiscPlace& stand) const;
  [[nodiscard]] std::span<const DiscPlace> Counted(const Scope& scope) const;
  [[nodiscard]] const Entry* EntryAt(std::uint32_t entry) const;
  [[nodiscard]] std::vector<std::uint32_t> Sets() const;
  [[nodiscard]] std::optional<DiscPlace> FindTitle(std::int32_t number) const;
  [[nodiscard]] std::optional<DiscPlace> FindMenu(const LiveNumber& menu, const DiscPlace& stand) const;

  std::vector<std::shared_ptr<const Entry>> entries_;  // by number; nullptr where removed
};

}  // namespace quorvelant
