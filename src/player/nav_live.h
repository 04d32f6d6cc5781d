// Which registers still matter where a player stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "player/nav_command.h"
#include "player/nav_disc.h"
#include "player/nav_state.h"

namespace quorvelant {

// Every chain that a player of one menu language can meet, by a running number.
class NavChains {
 public:
  NavChains(const NavDisc& disc, std::uint16_t language);

  struct Placed {
    const NavChain* Chain = nullptr;
    NavPoint Point;  // of domain, set and chain
  };
  [[nodiscard]] const std::vector<Placed>& All() const { return all_; }
  static constexpr std::size_t None = static_cast<std::size_t>(-1);
  // `None` where the disc has no such chain.
  [[nodiscard]] std::size_t IndexOf(const NavPoint& point) const;
  // Where a lead goes out of a chain: the chain's index; `None` where it goes nowhere. What stays within a
  // chain, and links to parts, lead to the chain itself.
  [[nodiscard]] std::size_t TargetOf(const NavPoint& from, const NavLead& lead) const;
  [[nodiscard]] std::size_t EntryOf(const NavPoint& from, NavDomain domain, std::uint8_t set,
                                    std::uint8_t menuId) const;

 private:
  struct Group {
    std::size_t First = 0;
    std::size_t Count = 0;
  };
  Group Add(const std::vector<NavChain>& chains, NavDomain domain, std::uint8_t set);
  [[nodiscard]] std::size_t PartOf(std::uint8_t set, std::size_t title, std::size_t part) const;

  const NavDisc& disc_;
  std::uint16_t language_;
  std::vector<Placed> all_;
  Group firstPlay_;
  Group manager_;
  std::vector<Group> menus_;   // by set
  std::vector<Group> titles_;  // by set
};

// A register matters where some way on reads it before it is written. What may be read by a key that is
// pressed is counted in.
class NavLive {
 public:
  explicit NavLive(const NavChains& chains);
  // While a cell of the chain plays.
  [[nodiscard]] NavRegisterSet Standing(std::size_t chain) const { return rows_[chain].Stand; }

 private:
  struct Row {
    NavRegisterSet Entry = 0;  // ahead of the pre commands
    NavRegisterSet Stand = 0;
    NavRegisterSet Tail = 0;                  // ahead of the post commands
    std::vector<NavFacts> Pre, Post, Others;  // of cells and buttons
  };
  bool Update(std::size_t chain);
  [[nodiscard]] NavRegisterSet After(std::size_t chain, const NavLead& lead) const;
  [[nodiscard]] NavRegisterSet AheadOf(std::size_t chain, const std::vector<NavFacts>& list,
                                       NavRegisterSet after) const;
  [[nodiscard]] NavRegisterSet One(const NavFacts& facts, NavRegisterSet next, NavRegisterSet lead) const;
  [[nodiscard]] NavRegisterSet ByKeys(std::size_t chain) const;

  const NavChains& chains_;
  std::vector<Row> rows_;
  NavRegisterSet anyTitle_ = 0;  // resume may lead to any
  std::set<std::uint16_t> timerChains_;
};

}  // namespace quorvelant
