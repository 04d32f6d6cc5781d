#include "player/nav_command.h"

#include <algorithm>
#include <limits>

#include "player/command_view.h"

namespace quorvelant {

std::uint16_t NavRegisters::ByCode(std::uint8_t code) const {
  constexpr std::uint8_t SystemBit = 0x80;
  if ((code & SystemBit) == 0) {
    return General.at(code & 0x0FU);
  }
  const std::size_t number = code & 0x7FU;
  return number < System.size() ? System.at(number) : std::uint16_t{0};
}

namespace {

constexpr std::uint16_t Most = std::numeric_limits<std::uint16_t>::max();

bool Holds(unsigned operation, std::uint16_t left, std::uint16_t right) {
  switch (operation) {
    case 1:
      return (left & right) != 0;
    case 2:
      return left == right;
    case 3:
      return left != right;
    case 4:
      return left >= right;
    case 5:
      return left > right;
    case 6:
      return left <= right;
    case 7:
      return left < right;
    default:
      return true;  // no comparison
  }
}

// Comparisons by where their operands stand.
bool HoldsEarly(const CommandView& view, const NavRegisters& registers) {  // bytes 3 and 4, 5
  const std::uint16_t right = view.ComparesNumber() ? view.Word(4) : registers.ByCode(view.Byte(5));
  return Holds(view.CompareOperation(), registers.ByCode(view.Byte(3)), right);
}
bool HoldsLate(const CommandView& view, const NavRegisters& registers) {  // bytes 6 and 7
  return Holds(view.CompareOperation(), registers.ByCode(view.Byte(6)), registers.ByCode(view.Byte(7)));
}
bool HoldsForSet(const CommandView& view, const NavRegisters& registers) {  // bytes 2 and 6, 7
  const std::uint16_t right = view.ComparesNumber() ? view.Word(6) : registers.ByCode(view.Byte(7));
  return Holds(view.CompareOperation(), registers.ByCode(view.Byte(2)), right);
}

std::uint8_t ButtonOf(const CommandView& view) {
  return static_cast<std::uint8_t>(view.Byte(6) >> 2U);
}

NavLead SubLink(const CommandView& view) {
  using Kind = NavLead::Kind;
  NavLead lead{.What = Kind::NoLink, .Button = ButtonOf(view)};
  switch (view.Byte(7) & 0x1FU) {
    case 1:
      lead.What = Kind::TopCell;
      break;
    case 2:
      lead.What = Kind::NextCell;
      break;
    case 3:
      lead.What = Kind::PreviousCell;
      break;
    case 5:
      lead.What = Kind::TopProgram;
      break;
    case 6:
      lead.What = Kind::NextProgram;
      break;
    case 7:
      lead.What = Kind::PreviousProgram;
      break;
    case 9:
      lead.What = Kind::TopChain;
      break;
    case 10:
      lead.What = Kind::NextChain;
      break;
    case 11:
      lead.What = Kind::PreviousChain;
      break;
    case 12:
      lead.What = Kind::GoUpChain;
      break;
    case 13:
      lead.What = Kind::TailChain;
      break;
    case 16:
      lead.What = Kind::Resume;
      break;
    default:
      break;
  }
  return lead;
}

NavLead Link(const CommandView& view) {
  using Kind = NavLead::Kind;
  switch (view.Branch()) {
    case 1:
      return SubLink(view);
    case 4:
      return {.What = Kind::Chain, .Number = static_cast<std::uint16_t>(view.Word(6) & 0x7FFFU)};
    case 5:
      return {.What = Kind::Part,
              .Number = static_cast<std::uint16_t>(view.Word(6) & 0x3FFU),
              .Button = ButtonOf(view)};
    case 6:
      return {.What = Kind::Program,
              .Number = static_cast<std::uint16_t>(view.Byte(7) & 0x7FU),
              .Button = ButtonOf(view)};
    case 7:
      return {.What = Kind::Cell, .Number = view.Byte(7), .Button = ButtonOf(view)};
    default:
      return {};
  }
}

NavLead SystemSpaceLead(const CommandView& view, bool isCall) {
  using Kind = NavLead::Kind;
  NavLead lead{.ResumeCell = isCall ? view.Byte(4) : std::uint8_t{0}};
  switch (view.Byte(5) >> 6U) {
    case 0:
      lead.What = isCall ? Kind::CallFirstPlay : Kind::JumpFirstPlay;
      break;
    case 1:
      lead.What = isCall ? Kind::CallManagerMenu : Kind::JumpManagerMenu;
      lead.Number = view.Byte(5) & 0x0FU;
      break;
    case 2:
      lead.What = isCall ? Kind::CallSetMenu : Kind::JumpSetMenu;
      lead.Number = view.Byte(5) & 0x0FU;
      lead.Set = isCall ? std::uint8_t{0} : view.Byte(4);
      lead.Title = isCall ? std::uint8_t{0} : view.Byte(3);
      break;
    default:
      lead.What = isCall ? Kind::CallManagerChain : Kind::JumpManagerChain;
      lead.Number = static_cast<std::uint16_t>(view.Word(2) & 0x7FFFU);
  }
  return lead;
}

NavLead Jump(const CommandView& view) {
  using Kind = NavLead::Kind;
  const auto title = static_cast<std::uint16_t>(view.Byte(5) & 0x7FU);
  switch (view.Branch()) {
    case 1:
      return {.What = Kind::Exit};
    case 2:
      return {.What = Kind::JumpTitle, .Number = title};
    case 3:
      return {.What = Kind::JumpTitleOfSet, .Number = title};
    case 5:
      return {.What = Kind::JumpPart,
              .Number = static_cast<std::uint16_t>(view.Word(2) & 0x3FFU),
              .Title = static_cast<std::uint8_t>(title)};
    case 6:
      return SystemSpaceLead(view, false);
    case 8:
      return SystemSpaceLead(view, true);
    default:
      return {};
  }
}

NavLead Flow(const CommandView& view) {
  using Kind = NavLead::Kind;
  switch (view.Branch()) {
    case 1:
      return {.What = Kind::GoTo, .Number = view.Byte(7)};
    case 2:
      return {.What = Kind::Break};
    case 3:  // a level that nobody has to confirm: the jump is taken
      return {.What = Kind::GoTo, .Number = view.Byte(7)};
    default:
      return {};
  }
}

// Results stay within 16 bits; a division by zero gives the largest value.
std::uint16_t Computed(unsigned operation, std::uint32_t left, std::uint32_t right, const NavRandom& random) {
  const auto fit = [](std::uint32_t value) {
    return static_cast<std::uint16_t>(std::min<std::uint32_t>(value, Most));
  };
  switch (operation) {
    case 1:
      return fit(right);
    case 3:
      return fit(left + right);
    case 4:
      return fit(left > right ? left - right : 0);
    case 5:
      return fit(left * right);
    case 6:
      return right == 0 ? Most : fit(left / right);
    case 7:
      return right == 0 ? Most : fit(left % right);
    case 8:
      return right == 0 ? std::uint16_t{0} : random(fit(right));
    case 9:
      return fit(left & right);
    case 10:
      return fit(left | right);
    case 11:
      return fit(left ^ right);
    default:
      return fit(left);
  }
}

void SetGeneral(unsigned operation, std::size_t target, std::uint16_t value, std::uint8_t sourceCode,
                bool byNumber, NavRegisters& registers, const NavRandom& random) {
  constexpr unsigned Swap = 2;
  std::uint16_t& place = registers.General.at(target);
  if (operation == Swap) {
    if (!byNumber && sourceCode < registers.General.size()) {
      std::swap(place, registers.General.at(sourceCode));
    }
    return;
  }
  place = Computed(operation, place, value, random);
}

void SetStreams(const CommandView& view, NavRegisters& registers) {
  constexpr std::uint8_t IsSet = 0x80;
  constexpr std::array<Sprm, 3> Targets{Sprm::Audio, Sprm::Subpicture, Sprm::Angle};
  for (std::size_t i = 0; i < Targets.size(); ++i) {
    const std::uint8_t byte = view.Byte(3 + i);
    if ((byte & IsSet) != 0) {
      registers.Put(Targets.at(i), view.SetsByNumber() ? static_cast<std::uint16_t>(byte & 0x7FU)
                                                       : registers.General.at(byte & 0x0FU));
    }
  }
}

void SetSystem(const CommandView& view, NavRegisters& registers) {
  const std::uint16_t value = view.SetsByNumber() ? view.Word(2) : registers.General.at(view.Byte(3) & 0x0FU);
  switch (view.SetOperation()) {
    case 1:
      SetStreams(view, registers);
      break;
    case 2:
      registers.Put(Sprm::Timer, value);
      registers.Put(Sprm::TimerChain, view.Word(4) & 0x7FFFU);
      break;
    case 3: {
      const std::size_t target = view.Byte(5) & 0x0FU;
      registers.Counts.at(target) = (view.Byte(5) & 0x80U) != 0;
      registers.General.at(target) = value;
      break;
    }
    case 6:
      registers.Put(Sprm::Button, view.SetsByNumber() ? static_cast<std::uint16_t>(view.Word(4) & 0xFC00U)
                                                      : registers.General.at(view.Byte(5) & 0x0FU));
      break;
    default:
      break;
  }
}

// Types 4 to 6: the set writes to the register of byte 1.
void SetOfCompound(const CommandView& view, NavRegisters& registers, const NavRandom& random) {
  const std::uint8_t code = view.Byte(view.SourceAt());
  const std::uint16_t value = view.SetsByNumber() ? view.Word(2) : registers.ByCode(code);
  SetGeneral(view.SetOperation(), view.Byte(1) & 0x0FU, value, code, view.SetsByNumber(), registers, random);
}

bool HoldsInCompound(const CommandView& view, const NavRegisters& registers) {
  if (view.SetsByNumber()) {
    return Holds(view.CompareOperation(), registers.ByCode(view.Byte(4)), registers.ByCode(view.Byte(5)));
  }
  const std::uint16_t right = view.ComparesNumber() ? view.Word(4) : registers.ByCode(view.Byte(5));
  return Holds(view.CompareOperation(), registers.ByCode(view.Byte(3)), right);
}

}  // namespace

NavLead LeadOf(const NavCommand& command) {
  const CommandView view{command};
  switch (view.Type()) {
    case 0:
      return Flow(view);
    case 1:
      return view.SetsByNumber() ? Jump(view) : Link(view);
    case 2:
    case 3:
      return view.CompareOperation() == 0 ? Link(view) : NavLead{};
    case 4:
    case 5:
    case 6:
      return SubLink(view);
    default:
      return {.What = NavLead::Kind::Unknown};
  }
}

NavLead RunNavCommand(const NavCommand& command, NavRegisters& registers, const NavRandom& random) {
  const CommandView view{command};
  switch (view.Type()) {
    case 0:
      return HoldsEarly(view, registers) ? Flow(view) : NavLead{};
    case 1:
      if (view.SetsByNumber()) {
        return HoldsLate(view, registers) ? Jump(view) : NavLead{};
      }
      return HoldsEarly(view, registers) ? Link(view) : NavLead{};
    case 2:
      if (HoldsLate(view, registers)) {
        SetSystem(view, registers);
        return view.CompareOperation() == 0 ? Link(view) : NavLead{};
      }
      return {};
    case 3:
      if (HoldsForSet(view, registers)) {
        const std::uint16_t value =
            view.SetsByNumber() ? view.Word(4) : registers.ByCode(view.Byte(view.SourceAt()));
        SetGeneral(view.SetOperation(), view.Byte(3) & 0x0FU, value, view.Byte(view.SourceAt()),
                   view.SetsByNumber(), registers, random);
        return view.CompareOperation() == 0 ? Link(view) : NavLead{};
      }
      return {};
    case 4: {
      SetOfCompound(view, registers, random);
      const std::uint16_t right = view.ComparesNumber() ? view.Word(4) : registers.ByCode(view.Byte(5));
      const bool holds = Holds(view.CompareOperation(), registers.General.at(view.Byte(1) & 0x0FU), right);
      return holds ? SubLink(view) : NavLead{};
    }
    case 5:
      if (HoldsInCompound(view, registers)) {
        SetOfCompound(view, registers, random);
        return SubLink(view);
      }
      return {};
    case 6:
      if (HoldsInCompound(view, registers)) {
        SetOfCompound(view, registers, random);
      }
      return SubLink(view);
    default:
      return {.What = NavLead::Kind::Unknown};
  }
}

}  // namespace quorvelant
