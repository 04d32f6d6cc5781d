#include "player/nav_reach.h"

#include <algorithm>
#include <set>
#include <utility>

#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

constexpr std::uint32_t AudioForbidden = 1U << 20U;
constexpr std::uint32_t SubpictureForbidden = 1U << 21U;

using Kind = NavFinding::Kind;

// What no walk came to.
class ReachJudge {
 public:
  ReachJudge(const NavDisc& disc, const NavWalks& walks, std::vector<NavFinding>& findings)
      : disc_(disc), walks_(walks), findings_(findings) {}

  void Judge() {
    for (std::size_t i = 0; i < disc_.Titles.size(); ++i) {
      Title(i);
    }
    Menus();
    Keys();
  }

 private:
  void Add(Kind what, std::string name, const NavPoint& at, int number) {
    NavFinding& finding = findings_.emplace_back();
    finding.What = what;
    finding.Name = std::move(name);
    finding.At = at;
    finding.Number = number;
  }

  [[nodiscard]] bool Plays(const NavPoint& at, std::size_t cell) const {
    return std::ranges::any_of(walks_, [&](const auto& walk) {
      const std::size_t chain = walk->Chains().IndexOf(at);
      return chain != NavChains::None && walk->Plays(chain, cell);
    });
  }
  [[nodiscard]] bool PlaysAny(const NavPoint& at, const NavChain& chain) const {
    for (std::size_t cell = 1; cell <= chain.Cells.size(); ++cell) {
      if (Plays(at, cell)) {
        return true;
      }
    }
    return false;
  }

  static NavPoint TitlePoint(std::size_t set, std::size_t chain) {
    return {.Domain = NavDomain::Title,
            .Set = static_cast<std::uint8_t>(set),
            .Chain = static_cast<std::uint16_t>(chain),
            .Program = 0,
            .Cell = 0};
  }

  void Title(std::size_t index) {
    const NavTitle& title = disc_.Titles[index];
    const NavSet* set = SetOf(disc_, title.Set);
    if (set == nullptr || title.Number < 1 || title.Number > set->Parts.size()) {
      return;
    }
    const auto number = static_cast<int>(index + 1);
    std::set<std::size_t> chains;
    for (const NavPart& part : set->Parts[title.Number - 1U]) {
      if (part.Chain >= 1 && part.Chain <= set->Titles.size()) {
        chains.insert(part.Chain);
      }
    }
    const bool isReached = std::ranges::any_of(chains, [&](std::size_t chain) {
      return PlaysAny(TitlePoint(title.Set, chain), set->Titles[chain - 1]);
    });
    if (!isReached) {
      if (!chains.empty()) {
        Add(Kind::TitleUnreachable, title.Name, TitlePoint(title.Set, *chains.begin()), number);
      }
      return;
    }
    Parts(title, *set);
    Streams(title, *set, chains);
  }

  void Parts(const NavTitle& title, const NavSet& set) {
    int number = 0;
    for (const NavPart& part : set.Parts[title.Number - 1U]) {
      ++number;
      const bool isThere = part.Chain >= 1 && part.Chain <= set.Titles.size() && part.Program >= 1 &&
                           part.Program <= set.Titles[part.Chain - 1U].Programs.size();
      if (!isThere) {
        continue;
      }
      const NavChain& chain = set.Titles[part.Chain - 1U];
      const std::size_t cell = chain.Programs[part.Program - 1U];
      NavPoint at = TitlePoint(title.Set, part.Chain);
      if (cell >= 1 && cell <= chain.Cells.size() && !Plays(at, cell)) {
        at.Cell = static_cast<std::uint8_t>(cell);
        Add(Kind::PartUnreachable, chain.Cells[cell - 1].Name, at, number);
      }
    }
  }

  // Without the keys for them, a stream other than the first is chosen by commands alone.
  void Streams(const NavTitle& title, const NavSet& set, const std::set<std::size_t>& chains) {
    std::set<int> chosen;
    for (const auto& walk : walks_) {
      if (!walk->ChosenStreams()) {
        return;
      }
      chosen.insert(walk->ChosenStreams()->begin(), walk->ChosenStreams()->end());
    }
    const auto forbids = [&](std::uint32_t key) {
      return std::ranges::all_of(chains, [&](std::size_t number) {
        const NavChain& chain = set.Titles[number - 1];
        const auto isShut = [key](const NavCell& cell) { return (cell.UserOperations & key) != 0; };
        return (chain.UserOperations & key) != 0 ||
               (!chain.Cells.empty() && std::ranges::all_of(chain.Cells, isShut));
      });
    };
    const NavChain& first = set.Titles[*chains.begin() - 1];
    const NavPoint at = TitlePoint(title.Set, *chains.begin());
    for (int i = 1; forbids(AudioForbidden) && std::cmp_less(i, first.Audio.size()); ++i) {
      if ((first.Audio.at(static_cast<std::size_t>(i)) & 0x8000U) != 0 && !chosen.contains(i)) {
        Add(Kind::AudioUnreachable, title.Name, at, i);
      }
    }
    for (int i = 0; forbids(SubpictureForbidden) && std::cmp_less(i, first.Subpictures.size()); ++i) {
      if ((first.Subpictures.at(static_cast<std::size_t>(i)) & 0x80000000U) != 0 &&
          !chosen.contains(FirstSubpicture + i)) {
        Add(Kind::SubpictureUnreachable, title.Name, at, i);
      }
    }
  }

  void Menus() {
    for (const auto& walk : walks_) {
      const NavChains& chains = walk->Chains();
      for (std::size_t i = 0; i < chains.All().size(); ++i) {
        const NavChains::Placed& placed = chains.All()[i];
        const bool isMenu =
            placed.Point.Domain == NavDomain::ManagerMenu || placed.Point.Domain == NavDomain::SetMenu;
        // A set without units of this language shows another's, which its own walk judges.
        if (isMenu && IsOwn(placed.Point, walk->Language())) {
          Menu(*walk, i, placed);
        }
      }
    }
  }

  [[nodiscard]] bool IsOwn(const NavPoint& point, std::uint16_t language) const {
    const NavSet* set = SetOf(disc_, point.Set);
    const auto& units = point.Domain == NavDomain::ManagerMenu ? disc_.Menus : set->Menus;
    const NavMenus* unit = MenusIn(units, language);
    return unit != nullptr && unit->Language == language;
  }

  void Menu(const NavWalk& walk, std::size_t index, const NavChains::Placed& placed) {
    const auto& cells = placed.Chain->Cells;
    bool any = false;
    for (std::size_t cell = 1; cell <= cells.size(); ++cell) {
      any = any || walk.Plays(index, cell);
    }
    if (!any && !cells.empty()) {
      Add(Kind::PageUnreachable, placed.Chain->Name, placed.Point, placed.Point.Chain);
      findings_.back().Language = walk.Language();
    }
    for (std::size_t cell = 1; any && cell <= cells.size(); ++cell) {
      if (!walk.Plays(index, cell) && !cells[cell - 1].Pages.empty()) {
        NavPoint at = placed.Point;
        at.Cell = static_cast<std::uint8_t>(cell);
        Add(Kind::PageUnreachable, cells[cell - 1].Name, at, placed.Point.Chain);
        findings_.back().Language = walk.Language();
      }
    }
  }

  void Keys() {
    const NavWalk& walk = *walks_.front();
    const NavPoint nowhere;
    std::set<std::uint8_t> sets;
    for (const NavTitle& title : disc_.Titles) {
      const NavSet* set = SetOf(disc_, title.Set);
      if (set == nullptr || !sets.insert(title.Set).second) {
        continue;
      }
      if (walk.Chains().EntryOf(nowhere, NavDomain::SetMenu, title.Set, RootMenuId) == NavChains::None) {
        Add(Kind::RootKeyDead, title.Name, TitlePoint(title.Set, 0), title.Set);
      }
    }
    if (!disc_.Titles.empty() &&
        walk.Chains().EntryOf(nowhere, NavDomain::ManagerMenu, 0, TitleMenuId) == NavChains::None) {
      Add(Kind::TitleKeyDead, disc_.FirstPlay ? disc_.FirstPlay->Name : std::string(), nowhere, 0);
    }
  }

  const NavDisc& disc_;
  const NavWalks& walks_;
  std::vector<NavFinding>& findings_;
};

}  // namespace

void JudgeReach(const NavDisc& disc, const NavWalks& walks, std::vector<NavFinding>& findings) {
  ReachJudge(disc, walks, findings).Judge();
}

}  // namespace quorvelant
