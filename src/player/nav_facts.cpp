// Commands by what they touch, without running them.
#include "player/command_view.h"
#include "player/nav_command.h"

namespace quorvelant {

namespace {

NavRegisterSet BitOfCode(std::uint8_t code) {
  constexpr std::uint8_t SystemBit = 0x80;
  constexpr unsigned SystemCount = 24;
  if ((code & SystemBit) == 0) {
    return NavRegisterSet{1} << (code & 0x0FU);
  }
  return (code & 0x7FU) < SystemCount ? NavRegisterSet{1} << (16U + (code & 0x7FU)) : 0;
}

NavRegisterSet ComparesEarly(const CommandView& view) {
  return BitOfCode(view.Byte(3)) | (view.ComparesNumber() ? 0 : BitOfCode(view.Byte(5)));
}
NavRegisterSet ComparesLate(const CommandView& view) {
  return BitOfCode(view.Byte(6)) | BitOfCode(view.Byte(7));
}
NavRegisterSet ComparesForSet(const CommandView& view) {
  return BitOfCode(view.Byte(2)) | (view.ComparesNumber() ? 0 : BitOfCode(view.Byte(7)));
}
NavRegisterSet ComparesInCompound(const CommandView& view) {
  return view.SetsByNumber() ? BitOfCode(view.Byte(4)) | BitOfCode(view.Byte(5)) : ComparesEarly(view);
}

void AddGeneral(const CommandView& view, std::uint8_t target, NavFacts& facts) {
  const std::uint8_t source = view.Byte(view.SourceAt());
  constexpr unsigned Plain = 1;
  constexpr unsigned Swap = 2;
  const NavRegisterSet bit = NavRegisterSet{1} << (target & 0x0FU);
  const unsigned operation = view.SetOperation();
  if (operation == 0) {
    return;
  }
  facts.Writes |= bit;
  facts.Reads |= view.SetsByNumber() ? 0 : BitOfCode(source);
  facts.Reads |= operation == Plain ? 0 : bit;
  facts.Writes |= operation == Swap ? BitOfCode(source) : 0;
}

void AddSystem(const CommandView& view, NavFacts& facts) {
  const auto source = [&](std::uint8_t code) {
    facts.Reads |= view.SetsByNumber() ? 0 : NavRegisterSet{1} << (code & 0x0FU);
  };
  switch (view.SetOperation()) {
    case 1:
      for (unsigned i = 0; i < 3; ++i) {
        if ((view.Byte(3 + i) & 0x80U) != 0) {
          facts.Writes |= NavRegisterSet{1} << (17U + i);
          source(view.Byte(3 + i));
        }
      }
      break;
    case 2:
      facts.Writes |= BitOf(Sprm::Timer) | BitOf(Sprm::TimerChain);
      facts.TimerChain = view.Word(4) & 0x7FFFU;
      source(view.Byte(3));
      break;
    case 3:
      facts.Writes |= NavRegisterSet{1} << (view.Byte(5) & 0x0FU);
      source(view.Byte(3));
      break;
    case 6:
      facts.Writes |= BitOf(Sprm::Button);
      source(view.Byte(5));
      break;
    default:
      break;
  }
}

}  // namespace

NavFacts FactsOf(const NavCommand& command) {
  const CommandView view{command};
  const bool compares = view.CompareOperation() != 0;
  NavFacts facts;
  facts.Lead = LeadOf(command);
  facts.WritesAlways = facts.LeadsAlways = !compares;
  facts.SetsByNumber = view.SetsByNumber();
  NavRegisterSet compared = 0;
  switch (view.Type()) {
    case 0:
      compared = ComparesEarly(view);
      break;
    case 1:
      compared = view.SetsByNumber() ? ComparesLate(view) : ComparesEarly(view);
      break;
    case 2:
      compared = ComparesLate(view);
      AddSystem(view, facts);
      break;
    case 3:
      compared = ComparesForSet(view);
      AddGeneral(view, view.Byte(3), facts);
      break;
    case 4:
      compared = (NavRegisterSet{1} << (view.Byte(1) & 0x0FU)) |
                 (view.ComparesNumber() ? 0 : BitOfCode(view.Byte(5)));
      AddGeneral(view, view.Byte(1), facts);
      facts.WritesAlways = true;
      break;
    case 5:
      compared = ComparesInCompound(view);
      AddGeneral(view, view.Byte(1), facts);
      break;
    case 6:
      compared = ComparesInCompound(view);
      AddGeneral(view, view.Byte(1), facts);
      facts.LeadsAlways = true;
      break;
    default:
      break;
  }
  facts.Reads |= compares ? compared : 0;
  // One that finds nothing to resume is passed over.
  facts.LeadsAlways = facts.LeadsAlways && facts.Lead.What != NavLead::Kind::Resume &&
                      facts.Lead.What != NavLead::Kind::GoUpChain;
  return facts;
}

}  // namespace quorvelant
