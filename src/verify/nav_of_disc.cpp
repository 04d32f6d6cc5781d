#include "verify/nav_of_disc.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "disc/vmgi_layout.h"
#include "player/nav_lookup.h"
#include "player/nav_words.h"

namespace quorvelant {
namespace {

// Offsets within the HLI.
constexpr std::size_t ShowsFrom = 2;
constexpr std::size_t ShowsUntil = 6;
constexpr std::size_t ChosenUntil = 10;
constexpr std::size_t Mode = 14;
constexpr std::size_t ButtonOffset = 16;
constexpr std::size_t ButtonCount = 17;
constexpr std::size_t ByNumber = 18;
constexpr std::size_t ForcedSelect = 20;
constexpr std::size_t ForcedAction = 21;
constexpr std::size_t Colors = 22;
constexpr std::size_t ColorBytes =
    8;  // of a scheme: four colours and contrasts selected, then as many in action
constexpr std::size_t Buttons = 46;
constexpr std::size_t ButtonBytes = 18;

// A mark that is chosen can be seen where any of its contrasts covers. Without a scheme it keeps the
// picture's.
bool IsSeen(ByteView hli, ByteView button) {
  const unsigned scheme = button[0] >> 6U;
  constexpr std::size_t Contrasts = 2;
  return scheme == 0 || GetBytes(hli, Colors + ColorBytes * (scheme - 1) + Contrasts, 2) != 0;
}

NavButton ButtonOf(ByteView row, std::string name) {
  NavButton button{.Up = row[6], .Down = row[7], .Left = row[8], .Right = row[9], .Name = std::move(name)};
  button.ActsWhenSelected = row[3] >> 6U == 1;
  std::copy_n(row.begin() + 10, button.Command.size(), button.Command.begin());
  return button;
}

// All groups have the same commands and neighbours; the first stands for them.
NavPage PageOf(ByteView hli, const std::string& name) {
  NavPage page;
  const unsigned groups = std::max(1U, hli[Mode] >> 4U & 3U);
  const std::size_t count = std::min<std::size_t>(hli[ButtonCount] & 0x3FU, 36 / groups);
  page.Shows = false;
  for (std::size_t i = 0; i < count; ++i) {
    const ByteView row = hli.subspan(Buttons + ButtonBytes * i, ButtonBytes);
    page.Buttons.push_back(ButtonOf(row, fmt::format("{} button {}", name, i + 1)));
    page.Shows = page.Shows || IsSeen(hli, row);
  }
  page.Offset = hli[ButtonOffset];
  page.ByNumber = hli[ByNumber] & 0x3FU;
  page.ForcedSelect = hli[ForcedSelect] & 0x3FU;
  page.ForcedAction = hli[ForcedAction] & 0x3FU;
  return page;
}

class DomainReader {
 public:
  DomainReader(const IfoTables& tables, const VobSetFacts& facts) : tables_(&tables), facts_(&facts) {}

  [[nodiscard]] NavChain ChainOf(const IfoChain& chain, const std::string& name) const {
    NavChain nav;
    nav.Name = name;
    nav.Pre = chain.Pre;
    nav.Post = chain.Post;
    nav.CellCommands = chain.CellCommands;
    nav.Programs = chain.Programs;
    nav.Next = chain.Next;
    nav.Previous = chain.Previous;
    nav.GoUp = chain.GoUp;
    nav.Playback = chain.Playback;
    nav.StillTime = chain.StillTime;
    nav.UserOperations = chain.UserOperations;
    nav.Audio = chain.Audio;
    nav.Subpictures = chain.Subpictures;
    nav.IsEntry = chain.IsEntry();
    for (const IfoCell& cell : chain.Cells) {
      const std::uint8_t before = nav.Cells.empty() ? std::uint8_t{0} : nav.Cells.back().Angle;
      nav.Cells.push_back(CellOf(cell, fmt::format("{} cell {}", name, cell.Number)));
      const unsigned mode = cell.BlockMode();
      nav.Cells.back().Angle = static_cast<std::uint8_t>(mode == 0 ? 0U : mode == 1 ? 1U : before + 1U);
    }
    return nav;
  }

  [[nodiscard]] std::vector<NavMenus> Menus(const std::string& table) const {
    std::vector<NavMenus> menus;
    for (const IfoLanguage& unit : tables_->Languages) {
      NavMenus& nav = menus.emplace_back();
      nav.Language = unit.Language;
      for (const IfoChain& chain : unit.Chains) {
        nav.Chains.push_back(ChainOf(chain, fmt::format("{} {} {} PGC {}", tables_->Name, table,
                                                        LanguageLetters(unit.Language), chain.Number)));
        nav.Chains.back().MenuId = chain.IsEntry() ? chain.Category & 0x0FU : 0;
      }
    }
    return menus;
  }

 private:
  [[nodiscard]] NavCell CellOf(const IfoCell& cell, const std::string& name) const {
    NavCell nav{.Name = name, .StillTime = cell.StillTime, .Command = cell.Command};
    const auto first = std::ranges::lower_bound(facts_->Vobus, cell.First, {}, &VobuFacts::Sector);
    const auto last = std::ranges::lower_bound(facts_->Vobus, cell.LastVobu, {}, &VobuFacts::Sector);
    if (first == facts_->Vobus.end() || last == facts_->Vobus.end() || last->EndPtm < first->StartPtm) {
      return nav;
    }
    nav.Ticks = last->EndPtm - first->StartPtm;
    nav.UserOperations = first->UserOperations;
    AddPages(nav, cell, first->StartPtm);
    return nav;
  }

  void AddPages(NavCell& nav, const IfoCell& cell, std::uint32_t start) const {
    auto page = std::ranges::lower_bound(facts_->Highlights, cell.First, {}, &HighlightFacts::Sector);
    for (; page != facts_->Highlights.end() && page->Sector <= cell.Last; ++page) {
      if (page->VobId != cell.VobId || page->CellId != cell.CellId) {
        continue;
      }
      const ByteView hli = page->Hli;
      const auto from = static_cast<std::uint32_t>(GetBytes(hli, ShowsFrom, 4));
      // They are of no use once they cannot be chosen.
      const auto until =
          static_cast<std::uint32_t>(std::min(GetBytes(hli, ShowsUntil, 4), GetBytes(hli, ChosenUntil, 4)));
      NavPage shown = PageOf(hli, nav.Name);
      shown.Start = from > start ? from - start : 0;
      // One that lasts as long as the cell stays during its still, too.
      const bool stays = until == NavForEver || until < start || until - start >= nav.Ticks;
      AddPage(nav, std::move(shown), stays ? NavForEver : until - start);
    }
  }

  const IfoTables* tables_;
  const VobSetFacts* facts_;
};

NavSet SetOf(const VerifiedSet& set) {
  NavSet nav;
  nav.Menus = DomainReader(set.Tables, set.Menus).Menus("VTSM_PGCI_UT");
  const DomainReader titles(set.Tables, set.Titles);
  for (const IfoChain& chain : set.Tables.Chains) {
    nav.Titles.push_back(
        titles.ChainOf(chain, fmt::format("{} VTS_PGCIT PGC {}", set.Tables.Name, chain.Number)));
    nav.Titles.back().Title = chain.Category & 0x7FU;
  }
  for (const auto& parts : set.Tables.Parts) {
    auto& list = nav.Parts.emplace_back();
    for (const IfoPart& part : parts) {
      list.push_back({part.Chain, static_cast<std::uint8_t>(part.Program)});
    }
  }
  return nav;
}

}  // namespace

NavDisc NavOfDisc(const VerifyResult& disc) {
  NavDisc nav;
  if (disc.Sets.empty()) {
    return nav;
  }
  const VerifiedSet& manager = disc.Sets.front();
  if (manager.Tables.Data.size() > vmgi::RegionMask.Offset) {
    const unsigned allowed = ~unsigned{manager.Tables.Data[vmgi::RegionMask.Offset]} & 0xFFU;
    nav.Region = static_cast<std::uint8_t>(allowed == 0 ? 1U : allowed & (~allowed + 1U));
  }
  const DomainReader menus(manager.Tables, manager.Menus);
  if (manager.Tables.FirstPlay) {
    nav.FirstPlay = menus.ChainOf(*manager.Tables.FirstPlay, manager.Tables.Name + " FP_PGC");
  }
  nav.Menus = menus.Menus("VMGM_PGCI_UT");
  for (std::size_t i = 0; i < manager.Tables.Titles.size(); ++i) {
    const IfoTitle& title = manager.Tables.Titles[i];
    nav.Titles.push_back({fmt::format("{} TT_SRPT title {}", manager.Tables.Name, i + 1),
                          static_cast<std::uint8_t>(title.Set), static_cast<std::uint8_t>(title.InSet),
                          static_cast<std::uint8_t>(title.PlaybackType & 3U)});
  }
  for (std::size_t i = 1; i < disc.Sets.size(); ++i) {
    nav.Sets.push_back(SetOf(disc.Sets[i]));
  }
  return nav;
}

}  // namespace quorvelant
