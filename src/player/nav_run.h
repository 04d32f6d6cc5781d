// The road from one picture to the next: commands, links and jumps until something plays.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "player/nav_lookup.h"
#include "player/nav_machine.h"

namespace quorvelant {

// Proves that commands go round in a circle: they stand where they stood, with the registers as they were,
// and nothing was left to chance since.
class NavCircle {
 public:
  struct Mark {
    NavPoint At;
    NavList List = NavList::Pre;
    std::size_t Place = 0;
    NavRegisters Registers;
    bool operator==(const Mark&) const = default;
  };

  // Before each command; `place` is its number in the list. True once all of the circle has run twice.
  bool Closes(const NavState& state, NavList list, std::size_t place);
  void Forget() { steps_ = nextMark_ = rounds_ = 0; }

 private:
  Mark mark_;
  int steps_ = 0;
  int nextMark_ = 0;
  int rounds_ = 0;
};

// Carries one event out on a state of its own.
class NavRun {
 public:
  NavRun(const NavDisc& disc, const NavState& state, const NavRandom& random, NavRedraws redraws)
      : disc_(disc),
        random_([this, &random, redraws](std::uint16_t bound) {
          circle_.Forget();
          if (redraws == NavRedraws::Stop && IsRedraw()) {
            return std::uint16_t{1};
          }
          return std::clamp<std::uint16_t>(random(bound), 1, std::max<std::uint16_t>(bound, 1));
        }),
        out_{.State = state, .Happened = {}} {}

  NavRun(const NavRun&) = delete;
  NavRun& operator=(const NavRun&) = delete;
  ~NavRun() = default;

  [[nodiscard]] const NavState& State() const { return out_.State; }
  NavState& State() { return out_.State; }
  [[nodiscard]] NavOutcome Take() { return std::move(out_); }

  void Note(NavHappening::Kind what);
  // Goes where a command of a list leads.
  void Follow(NavLead lead, NavList list, std::uint16_t number);
  // Plays on after the present cell, as if its time and its still were over.
  void EndCell();
  // The chain's still is over: its post commands.
  void EndChain();
  // Enters a cell's next page, or ends the cell.
  void NextPage();
  void RunButton(const NavPage& page, int number);
  [[nodiscard]] const NavChain* Chain() const { return ChainAt(disc_, out_.State.At, MenuLanguage()); }
  [[nodiscard]] const NavCell* Cell() const { return CellAt(disc_, out_.State); }
  bool CallMenu(NavDomain domain, std::uint8_t menuId);  // saves where it was; false where there is none
  void ToTitle(std::uint16_t number);
  void ToPart(std::uint8_t title, std::uint16_t part);  // of the set
  void ToLastProgram(std::uint16_t chain);              // of the same domain
  void ToTimerChain();
  void SelectButton(int number);

 private:
  // What to do next; a road is a loop over these, never a recursion.
  enum class Next : std::uint8_t { Done, Chain, Program, Cell, Tail };

  void Go(Next next);
  Next StartChain();
  Next StartProgram();
  Next StartCell();
  Next RunTail();
  Next Obey(const NavLead& lead, NavList list, std::uint16_t number);
  Next ObeyLink(const NavLead& lead);
  Next ObeyJump(const NavLead& lead);
  Next PartOfSet(std::uint8_t title, std::uint16_t part);
  // A link to a part passes by the pre commands of its chain.
  Next LinkedPart(std::uint16_t part);
  Next TitleOfDisc(std::uint16_t number);
  Next ToChain(NavDomain domain, std::uint8_t set, std::uint16_t chain);
  Next Call(const NavLead& lead);
  Next ResumeTitle(const NavLead& lead);
  Next Missing(const NavLead& lead, NavList list, std::uint16_t number);
  Next Stop(NavStop why);
  // The lead of a list; `None` where its end was reached.
  // `before` commands of the list are left out.
  NavLead RunList(std::span<const NavCommand> commands, NavList list, std::uint16_t& number,
                  std::size_t before = 0);
  // False once commands have run too long.
  bool MayGoOn(NavList list, std::size_t place);
  std::uint8_t DrawProgram(const NavChain& chain);
  bool IsRedraw();  // ends the run, too
  // Whether a command would resume where nothing was left: players pass it over.
  [[nodiscard]] bool IsEmptyResume(const NavLead& lead) const;
  void EnterPage(std::uint16_t page);
  void TellPart();
  void SaveResume(std::uint8_t cell);
  [[nodiscard]] std::uint16_t MenuLanguage() const { return State().Registers.Of(Sprm::MenuLanguage); }

  const NavDisc& disc_;
  NavRandom random_;
  NavOutcome out_;
  int commands_ = 0;
  bool isLooping_ = false;
  NavCircle circle_;
  std::pair<NavList, std::size_t> now_;  // what runs
  std::vector<NavCircle::Mark> draws_;
  std::uint8_t entry_ = 1;  // program at which the next chain begins
};

}  // namespace quorvelant
