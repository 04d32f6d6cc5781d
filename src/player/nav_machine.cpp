#include "player/nav_machine.h"

#include <algorithm>
#include <array>

#include "player/nav_lookup.h"
#include "player/nav_run.h"

namespace quorvelant {

namespace {

// User operations by their bits in PGC_UOP_CTL.
enum class Uop : std::uint8_t {
  PartPlay = 1,
  TitlePlay = 2,
  GoUp = 4,
  PreviousPart = 6,
  NextPart = 7,
  TitleMenu = 10,
  RootMenu = 11,
  SubpictureMenu = 12,
  AudioMenu = 13,
  AngleMenu = 14,
  PartMenu = 15,
  Resume = 16,
  Button = 17,
  StillOff = 18,
  Audio = 20,
  Subpicture = 21,
  Angle = 22,
};

struct MenuKey {
  NavKey Key;
  std::uint8_t Id;
  Uop Needs;
};
constexpr std::array MenuKeys{
    MenuKey{NavKey::TitleMenu, 2, Uop::TitleMenu},           MenuKey{NavKey::RootMenu, 3, Uop::RootMenu},
    MenuKey{NavKey::SubpictureMenu, 4, Uop::SubpictureMenu}, MenuKey{NavKey::AudioMenu, 5, Uop::AudioMenu},
    MenuKey{NavKey::AngleMenu, 6, Uop::AngleMenu},           MenuKey{NavKey::PartMenu, 7, Uop::PartMenu}};

// One key pressed.
class Press {
 public:
  Press(const NavDisc& disc, NavRun& run, const NavEvent& event) : disc_(disc), run_(run), event_(event) {}

  void Carry() {
    const bool isDone = Allowed() && Did();
    if (!isDone) {
      run_.Note(NavHappening::Kind::Refused);
    }
  }

 private:
  [[nodiscard]] NavState& State() { return run_.State(); }
  [[nodiscard]] bool InTitle() { return State().At.Domain == NavDomain::Title; }

  [[nodiscard]] bool Permits(Uop operation) {
    const NavChain* chain = run_.Chain();
    const NavCell* cell = run_.Cell();
    const std::uint32_t forbidden =
        (chain == nullptr ? 0 : chain->UserOperations) | (cell == nullptr ? 0 : cell->UserOperations);
    return chain != nullptr && (forbidden >> static_cast<unsigned>(operation) & 1U) == 0;
  }

  bool Allowed() {
    switch (event_.Key) {
      case NavKey::Up:
      case NavKey::Down:
      case NavKey::Left:
      case NavKey::Right:
      case NavKey::Activate:
      case NavKey::Number:
      case NavKey::Select:
        return Permits(Uop::Button);
      case NavKey::Return:
        return Permits(Uop::GoUp);
      case NavKey::Resume:
        return Permits(Uop::Resume);
      case NavKey::NextPart:
        return Permits(Uop::NextPart);
      case NavKey::PreviousPart:
      case NavKey::TopPart:
        return Permits(Uop::PreviousPart);
      case NavKey::Title:
        return Permits(Uop::TitlePlay);
      case NavKey::Part:
        return Permits(Uop::PartPlay);
      case NavKey::Audio:
        return Permits(Uop::Audio);
      case NavKey::Subpicture:
        return Permits(Uop::Subpicture);
      case NavKey::Angle:
        return Permits(Uop::Angle);
      case NavKey::StopStill:
        return Permits(Uop::StillOff);
      case NavKey::Wait:
      case NavKey::TimeOver:
        return true;
      default: {
        const auto* const row = std::ranges::find(MenuKeys, event_.Key, &MenuKey::Key);
        return row != MenuKeys.end() && Permits(row->Needs);
      }
    }
  }

  bool Did() {
    switch (event_.Key) {
      case NavKey::Up:
        return Move(&NavButton::Up);
      case NavKey::Down:
        return Move(&NavButton::Down);
      case NavKey::Left:
        return Move(&NavButton::Left);
      case NavKey::Right:
        return Move(&NavButton::Right);
      case NavKey::Activate:
        return Activate(State().Registers.Button());
      case NavKey::Number:
        return ByNumber();
      case NavKey::Select:
        return Select(event_.Number);
      case NavKey::Wait:
        return Wait();
      case NavKey::StopStill:
        return EndStill();
      case NavKey::TimeOver:
        return TimeOver();
      case NavKey::Return:
        return Link(NavLead::Kind::GoUpChain);
      case NavKey::Resume:
        return !InTitle() && State().Resume && Link(NavLead::Kind::Resume);
      case NavKey::NextPart:
        return NextPart();
      case NavKey::PreviousPart:
        return PreviousPart();
      case NavKey::TopPart:
        return Link(NavLead::Kind::TopProgram);
      case NavKey::Title:
        return ToTitle();
      case NavKey::Part:
        return ToPart();
      case NavKey::Audio:
        return Choose(Sprm::Audio);
      case NavKey::Subpicture:
        return Choose(Sprm::Subpicture);
      case NavKey::Angle:
        return Choose(Sprm::Angle);
      default:
        return Menu();
    }
  }

  bool Move(std::uint8_t NavButton::*way) {
    const NavPage* page = PageAt(disc_, State());
    const int now = State().Registers.Button();
    if (page == nullptr || now < 1 || now > static_cast<int>(page->Buttons.size())) {
      return false;
    }
    const int to = page->Buttons[static_cast<std::size_t>(now) - 1].*way;
    return to != now && Select(to);
  }

  bool Select(int number) {
    const NavPage* page = PageAt(disc_, State());
    if (page == nullptr || number < 1 || number > static_cast<int>(page->Buttons.size())) {
      return false;
    }
    run_.SelectButton(number);
    if (page->Buttons[static_cast<std::size_t>(number) - 1].ActsWhenSelected) {
      run_.RunButton(*page, number);
    }
    return true;
  }

  bool Activate(int number) {
    const NavPage* page = PageAt(disc_, State());
    if (page == nullptr || number < 1 || number > static_cast<int>(page->Buttons.size())) {
      return false;
    }
    run_.RunButton(*page, number);
    return true;
  }

  bool ByNumber() {
    const NavPage* page = PageAt(disc_, State());
    if (page == nullptr) {
      return false;
    }
    const int number = event_.Number - page->Offset;
    if (number < 1 || number > page->ByNumber || number > static_cast<int>(page->Buttons.size())) {
      return false;
    }
    run_.SelectButton(number);
    run_.RunButton(*page, number);
    return true;
  }

  bool Wait() {
    const NavCell* cell = run_.Cell();
    const NavChain* chain = run_.Chain();
    switch (State().Phase) {
      case NavPhase::Playing:
        run_.NextPage();
        return true;
      case NavPhase::CellStill:
        if (cell == nullptr || cell->StillTime == StillForEver) {
          return false;
        }
        run_.EndCell();
        return true;
      case NavPhase::ChainStill:
        if (chain == nullptr || chain->StillTime == StillForEver) {
          return false;
        }
        run_.EndChain();
        return true;
      case NavPhase::Stopped:
        return false;
    }
    return false;
  }

  bool TimeOver() {
    const bool runs = State().Registers.Of(Sprm::Timer) != 0 && State().At.Set != 0;
    if (runs) {
      run_.ToTimerChain();
    }
    return runs;
  }

  bool EndStill() {
    if (State().Phase == NavPhase::CellStill) {
      run_.EndCell();
      return true;
    }
    if (State().Phase == NavPhase::ChainStill) {
      run_.EndChain();
      return true;
    }
    return false;
  }

  // A key does what the link does, where it leads somewhere.
  bool Link(NavLead::Kind kind) {
    const NavChain* chain = run_.Chain();
    if (chain == nullptr || (kind == NavLead::Kind::GoUpChain &&
                             (chain->GoUp == NoChain || (chain->GoUp == GoUpResumes && !State().Resume)))) {
      return false;
    }
    run_.Follow({.What = kind}, NavList::Button, 0);
    return true;
  }

  // From a chain's last part to whatever follows the chain, if anything does.
  bool NextPart() {
    const NavChain* chain = run_.Chain();
    const bool isLast = chain != nullptr && State().At.Program >= chain->Programs.size();
    return (!isLast || !chain->Post.empty() || chain->Next != NoChain) && Link(NavLead::Kind::NextProgram);
  }

  // From a chain's first part to the last one of the chain before.
  bool PreviousPart() {
    const NavChain* chain = run_.Chain();
    if (chain == nullptr || (State().At.Program <= 1 && chain->Previous == NoChain)) {
      return false;
    }
    if (State().At.Program > 1) {
      return Link(NavLead::Kind::PreviousProgram);
    }
    run_.ToLastProgram(chain->Previous);
    return true;
  }

  bool ToTitle() {
    if (event_.Number < 1 || event_.Number > disc_.Titles.size()) {
      return false;
    }
    run_.ToTitle(event_.Number);
    return true;
  }

  bool ToPart() {
    const std::size_t title = State().Registers.Of(Sprm::TitleOfSet);
    const std::size_t set = State().At.Set;
    constexpr std::uint8_t NoPartPlay = 2;
    const std::size_t ofDisc = State().Registers.Of(Sprm::Title);
    const bool isForbidden = ofDisc >= 1 && ofDisc <= disc_.Titles.size() &&
                             (disc_.Titles[ofDisc - 1].Restrictions & NoPartPlay) != 0;
    const bool isThere = !isForbidden && InTitle() && set >= 1 && set <= disc_.Sets.size() && title >= 1 &&
                         title <= disc_.Sets[set - 1].Parts.size() && event_.Number >= 1 &&
                         event_.Number <= disc_.Sets[set - 1].Parts[title - 1].size();
    if (isThere) {
      run_.ToPart(static_cast<std::uint8_t>(title), event_.Number);
    }
    return isThere;
  }

  bool Choose(Sprm number) {
    State().Registers.Put(number, event_.Number);
    return true;
  }

  bool Menu() {
    const auto* const row = std::ranges::find(MenuKeys, event_.Key, &MenuKey::Key);
    const bool ofManager = event_.Key == NavKey::TitleMenu;
    if (!ofManager && State().At.Domain == NavDomain::FirstPlay) {
      return false;
    }
    return run_.CallMenu(ofManager ? NavDomain::ManagerMenu : NavDomain::SetMenu, row->Id);
  }

  const NavDisc& disc_;
  NavRun& run_;
  const NavEvent& event_;
};

}  // namespace

NavRegisters FreshRegisters(std::uint16_t language) {
  constexpr std::uint16_t NoAudio = 15;
  constexpr std::uint16_t NoSubpicture = 62;
  constexpr std::uint16_t NoLevel = 15;
  constexpr std::uint16_t PanScan = 0x0100;  // on a screen of 4:3
  constexpr std::uint16_t AnyAudio = 0x7CFC;
  NavRegisters registers;
  registers.Put(Sprm::MenuLanguage, language);
  registers.Put(Sprm::Audio, NoAudio);
  registers.Put(Sprm::Subpicture, NoSubpicture);
  registers.Put(Sprm::Angle, 1);
  registers.Put(Sprm::Title, 1);
  registers.Put(Sprm::TitleOfSet, 1);
  registers.Put(Sprm::Part, 1);
  registers.PutButton(1);
  registers.Put(Sprm::ParentalLevel, NoLevel);
  registers.Put(Sprm::VideoPreference, PanScan);
  registers.Put(Sprm::AudioCapability, AnyAudio);
  registers.Put(Sprm::AudioLanguage, language);
  registers.Put(Sprm::SubpictureLanguage, language);
  return registers;
}

NavOutcome InsertDisc(const NavDisc& disc, const NavRegisters& registers, const NavRandom& random,
                      NavRedraws redraws) {
  NavState state;
  state.Registers = registers;
  if (registers.Of(Sprm::Region) == 0) {
    state.Registers.Put(Sprm::Region, disc.Region);
  }
  NavRun run(disc, state, random, redraws);
  // A disc without First Play starts with its first title.
  run.Follow({.What = disc.FirstPlay ? NavLead::Kind::JumpFirstPlay : NavLead::Kind::JumpTitle, .Number = 1},
             NavList::Pre, 0);
  return run.Take();
}

NavOutcome NavStep(const NavDisc& disc, const NavState& state, const NavEvent& event, const NavRandom& random,
                   NavRedraws redraws) {
  NavRun run(disc, state, random, redraws);
  if (state.Phase != NavPhase::Stopped) {
    Press(disc, run, event).Carry();
  }
  return run.Take();
}

}  // namespace quorvelant
