#include "player/nav_map.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <span>
#include <unordered_map>

#include "player/nav_words.h"

namespace quorvelant {

namespace {

std::string WordsOf(const NavWalk& walk, const NavChains::Placed& placed, bool severalLanguages) {
  NavState state;
  state.At = placed.Point;
  state.At.Cell = 1;
  state.Phase = NavPhase::Playing;
  state.Registers = FreshRegisters(walk.Language());
  if (state.At.Domain == NavDomain::Title) {
    return fmt::format("set {}, title {}", state.At.Set, placed.Chain->Title);
  }
  const std::string words = PlaceWords(walk.Disc(), state);
  const bool isMenu = state.At.Domain != NavDomain::FirstPlay;
  return isMenu && severalLanguages ? fmt::format("{} ({})", words, LanguageLetters(walk.Language())) : words;
}

class MapMaker {
 public:
  // Chains that another language showed already are not added again.
  void Add(const NavWalk& walk, bool severalLanguages) {
    const auto& all = walk.Chains().All();
    for (std::size_t i = 0; i < all.size(); ++i) {
      const NavChain& chain = *all[i].Chain;
      const auto [known, isNew] = places_.try_emplace(&chain, map_.Chains.size());
      if (isNew) {
        map_.Chains.push_back({.Name = chain.Name,
                               .At = all[i].Point,
                               .Words = WordsOf(walk, all[i], severalLanguages),
                               .IsReached = false});
      }
      NavMapChain& shown = map_.Chains[known->second];
      shown.IsReached = shown.IsReached || walk.Enters(i);
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
      AddArrowsOf(walk.Chains(), i);
    }
  }

  NavMap Take() {
    map_.Arrows.assign(arrows_.begin(), arrows_.end());
    return std::move(map_);
  }

 private:
  void AddArrowsOf(const NavChains& chains, std::size_t from) {
    const NavChain& chain = *chains.All()[from].Chain;
    for (const NavCell& cell : chain.Cells) {
      for (const NavPage& page : cell.Pages) {
        for (const NavButton& button : page.Buttons) {
          AddArrow(chains, from, LeadOf(button.Command));
        }
      }
    }
    for (const auto* list : {&chain.Pre, &chain.CellCommands, &chain.Post}) {
      for (const NavCommand& command : *list) {
        AddArrow(chains, from, LeadOf(command));
      }
    }
    AddArrow(chains, from, {.What = NavLead::Kind::NextChain});
  }

  void AddArrow(const NavChains& chains, std::size_t from, const NavLead& lead) {
    const std::size_t to = chains.TargetOf(chains.All()[from].Point, lead);
    if (to != NavChains::None && to != from) {
      arrows_.insert({places_.at(chains.All()[from].Chain), places_.at(chains.All()[to].Chain)});
    }
  }

  NavMap map_;
  std::unordered_map<const NavChain*, std::size_t> places_;
  std::set<NavMapArrow> arrows_;
};

}  // namespace

NavMap MapOf(const NavWalks& walks) {
  MapMaker maker;
  const auto hasMenus = [](const auto& walk) {
    return std::ranges::any_of(walk->Chains().All(), [](const NavChains::Placed& placed) {
      return placed.Point.Domain == NavDomain::ManagerMenu || placed.Point.Domain == NavDomain::SetMenu;
    });
  };
  const bool several = std::ranges::count_if(walks, hasMenus) > 1;
  for (const auto& walk : walks) {
    maker.Add(*walk, several);
  }
  return maker.Take();
}

}  // namespace quorvelant
