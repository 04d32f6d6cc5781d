#include "vm/decoder.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "vm/command_builder.h"
#include "vm/command_words.h"
#include "vm/resolver.h"

namespace quorvelant {

namespace {

using Fields = std::optional<CommandFields>;

constexpr unsigned ImmediateBit = 8;

std::int32_t Signed(unsigned value) {
  return static_cast<std::int32_t>(value);
}

unsigned Word(const CommandBytes& b, std::size_t at) {
  return static_cast<unsigned>(b[at] << 8U) + b[at + 1];
}

unsigned LowNibble(const CommandBytes& b) {
  return b[1] & 15U;
}

Operand NumberOperand(unsigned value) {
  return {OperandKind::Number, Signed(value)};
}
Operand GprmOperand(unsigned value) {
  return {OperandKind::Gprm, Signed(value)};
}
// A number, or the general register that holds it.
Operand GeneralOperand(bool isNumber, unsigned value) {
  return isNumber ? NumberOperand(value) : GprmOperand(value);
}

// A number, or a register as a byte holds it, general or system.
Operand Source(bool isNumber, unsigned value) {
  constexpr unsigned Base = SystemRegisterBase;
  const bool system = !isNumber && value >= Base && value < 2 * Base;
  return system ? Operand{OperandKind::Sprm, Signed(value - Base)} : GeneralOperand(isNumber, value);
}

// With the operator and immediate bit of byte 1; nothing where nothing is compared.
std::optional<Comparison> Compared(const CommandBytes& b, unsigned left, unsigned right) {
  const auto operation = static_cast<CompareOperation>(static_cast<unsigned>(b[1] >> 4U) & 7U);
  const bool isNumber = ((b[1] >> 4U) & ImmediateBit) != 0;
  return operation == CompareOperation::None
             ? std::nullopt
             : std::optional(Comparison{operation, Signed(left), Source(isNumber, right)});
}

std::string NameOf(unsigned number) {
  return fmt::format("{}", number);
}
std::string PgcName(unsigned number) {
  return fmt::format("pgc_{}", number);
}

Fields FlowFields(const CommandBytes& b) {
  constexpr std::array Words{Instruction::Nop, Instruction::GoTo, Instruction::Break, Instruction::SetTmpPml};
  if (LowNibble(b) >= Words.size()) {
    return std::nullopt;
  }
  CommandFields fields;
  ParsedCommand& c = fields.Command;
  c.What = Words.at(LowNibble(b));
  c.Compare = Compared(b, b[3], Word(b, 4));
  c.Line = b[7];
  c.ParentalLevel = b[6];
  return fields;
}

// A link with the number of what it names.
struct NumberedLink {
  LinkTarget Link;
  std::string Name;
};

// The link of a sub-code and the command's last two bytes; nothing where there is none.
std::optional<NumberedLink> LinkOf(unsigned subCode, unsigned high, unsigned low) {
  const auto kind = static_cast<LinkKind>(subCode);
  const std::int32_t button = Signed(high / ButtonUnit);
  switch (kind) {
    case LinkKind::SubInstruction: {
      const bool known = std::ranges::any_of(
          SubInstructions, [low](const SubInstruction& sub) { return sub.Code == Signed(low); });
      return known ? std::optional(NumberedLink{{kind, Signed(low), button}, {}}) : std::nullopt;
    }
    case LinkKind::Pgc:
      return NumberedLink{{kind, 0, 0}, NameOf(high * 256 + low)};
    case LinkKind::Part:
      return NumberedLink{{kind, 0, button}, NameOf((high % ButtonUnit) * 256 + low)};
    case LinkKind::Program:
    case LinkKind::Cell:
      return NumberedLink{{kind, 0, button}, NameOf(low)};
    default:
      return std::nullopt;
  }
}

Fields LinkFields(const CommandBytes& b) {
  auto link = LinkOf(LowNibble(b), b[6], b[7]);
  if (!link) {
    return std::nullopt;
  }
  CommandFields fields;
  fields.Command.What = Instruction::Link;
  fields.Command.Compare = Compared(b, b[3], Word(b, 4));
  fields.Command.Link = link->Link;
  fields.Target = std::move(link->Name);
  return fields;
}

// Where a jump or call across the disc leads. Menus beyond those of a title set are not known.
bool ReadSpace(const CommandBytes& b, CommandFields& fields) {
  ParsedCommand& c = fields.Command;
  constexpr unsigned MenuBits = 64;
  switch (b[5]) {
    case 0:
      c.Space = SystemSpace::FirstPlay;
      return true;
    case 0x42:
      c.Space = SystemSpace::TitleMenu;
      return true;
    case 0xC0:
      c.Space = SystemSpace::VmgPgc;
      fields.Target = PgcName(Word(b, 2));
      return true;
    default:
      c.Space = SystemSpace::SetMenu;
      c.MenuId = Signed(b[5] % MenuBits);
      c.TitleSet = b[4];
      c.Title = b[3];
      return c.MenuId >= FirstMenuId && std::cmp_less(c.MenuId - FirstMenuId, MenuWords.size());
  }
}

Fields JumpFields(const CommandBytes& b) {
  CommandFields fields;
  ParsedCommand& c = fields.Command;
  c.Compare = Compared(b, b[6], b[7]);
  switch (LowNibble(b)) {
    case 1:
      c.What = Instruction::Exit;
      return fields;
    case 2:
      c.What = Instruction::JumpTt;
      fields.Target = NameOf(b[5]);
      return fields;
    case 3:
      c.What = Instruction::JumpVtsTt;
      fields.Target = NameOf(b[5]);
      return fields;
    case 5:
      c.What = Instruction::JumpVtsPtt;
      fields.Target = fmt::format("ptt_{} @ vts_ttn_{}", Word(b, 2), b[5]);
      return fields;
    case 6:
      c.What = Instruction::JumpSs;
      return ReadSpace(b, fields) ? Fields(fields) : std::nullopt;
    case 8:
      c.What = Instruction::CallSs;
      fields.Resume = NameOf(b[4]);
      return ReadSpace(b, fields) ? Fields(fields) : std::nullopt;
    default:
      return std::nullopt;
  }
}

// A stream byte back to the number whose code it is; 0 leaves the stream alone.
Operand Stream(unsigned byte, bool isNumber, std::int32_t firstNumber) {
  constexpr unsigned Codes = 256;
  const std::int32_t first = isNumber ? firstNumber : FirstRegisterCode;
  return byte == 0 ? Operand()
                   : GeneralOperand(isNumber, (byte + Codes - static_cast<unsigned>(first)) % Codes);
}

void ReadSubpicture(unsigned byte, ParsedCommand& c) {
  constexpr unsigned SetBit = 0x80;
  constexpr std::int32_t OnBit = 0x40;
  constexpr unsigned DummyOn = 255;
  c.SubpictureOn = (byte & SetBit) == 0 || (byte & OnBit) != 0;
  c.Subpicture = byte == DummyOn ? NumberOperand(DummySubpicture)
                                 : Stream(byte, true, FirstSubpictureCode + (c.SubpictureOn ? OnBit : 0));
}

void ReadStreams(const CommandBytes& b, bool isNumber, ParsedCommand& c) {
  c.Angle = Stream(b[5], isNumber, FirstAngleCode);
  c.Audio = Stream(b[3], isNumber, FirstAudioCode);
  if (isNumber) {
    ReadSubpicture(b[4], c);
  } else {
    c.Subpicture = Stream(b[4], false, 0);
  }
}

bool ReadSystemSet(const CommandBytes& b, bool isNumber, CommandFields& fields) {
  ParsedCommand& c = fields.Command;
  constexpr unsigned CounterBit = 0x80;
  switch (b[0] & 15U) {
    case 1:
      c.What = Instruction::SetStn;
      ReadStreams(b, isNumber, c);
      return true;
    case 2:
      c.What = Instruction::SetNvtmr;
      c.Source = GeneralOperand(isNumber, Word(b, 2));
      fields.Target = NameOf(Word(b, 4));
      return true;
    case 3:
      c.What = Instruction::SetGprmMd;
      c.RegisterMode = (b[5] & CounterBit) == 0;
      c.Destination = Signed(b[5] & ~CounterBit);
      c.Source = GeneralOperand(isNumber, Word(b, 2));
      return true;
    case 4:
      c.What = Instruction::SetAmxmd;
      c.Source = isNumber ? Operand() : GprmOperand(b[5]);
      c.ChannelMix = {b[4], b[5]};
      return true;
    case 6:
      c.What = Instruction::SetHlBtnn;
      c.Source = isNumber ? NumberOperand(Word(b, 4) >> 10U) : GprmOperand(b[5]);
      return true;
    default:
      return false;
  }
}

// A set alone, after a comparison, or with a link.
bool ReadLinkAfterSet(const CommandBytes& b, CommandFields& fields) {
  if (fields.Command.Compare || LowNibble(b) == 0) {
    return true;
  }
  auto link = LinkOf(LowNibble(b), b[6], b[7]);
  if (link) {
    fields.Command.LinkAfterSet = link->Link;
    fields.LinkTarget = std::move(link->Name);
  }
  return link.has_value();
}

Fields SystemFields(const CommandBytes& b, bool isNumber) {
  CommandFields fields;
  fields.Command.Compare = Compared(b, b[6], b[7]);
  return ReadSystemSet(b, isNumber, fields) && ReadLinkAfterSet(b, fields) ? Fields(fields) : std::nullopt;
}

Fields RegisterFields(const CommandBytes& b, bool isNumber) {
  CommandFields fields;
  ParsedCommand& c = fields.Command;
  c.What = Instruction::Set;
  c.Compare = Compared(b, b[2], Word(b, 6));
  c.Operation = static_cast<Arithmetic>(b[0] & 15U);
  c.Destination = b[3];
  c.Source = Source(isNumber, isNumber ? Word(b, 4) : b[5]);
  return ReadLinkAfterSet(b, fields) ? Fields(fields) : std::nullopt;
}

// The link of a compound command. Only sub-instructions work there; two other bytes come from a text that
// named a PGC, a program or a cell, and stand as the PGC number that makes them.
NumberedLink CompoundLink(const CommandBytes& b) {
  auto sub = b[6] % ButtonUnit == 0 ? LinkOf(static_cast<unsigned>(LinkKind::SubInstruction), b[6], b[7])
                                    : std::nullopt;
  return sub ? *sub : *LinkOf(static_cast<unsigned>(LinkKind::Pgc), b[6], b[7]);
}

Fields CompoundFields(const CommandBytes& b, unsigned type, bool isNumber) {
  CommandFields fields;
  ParsedCommand& c = fields.Command;
  c.What = static_cast<Instruction>(static_cast<unsigned>(Instruction::SetCompareLink) + type - 4);
  c.Operation = static_cast<Arithmetic>(b[0] & 15U);
  c.Destination = Signed(LowNibble(b));
  const bool setFirst = c.What == Instruction::SetCompareLink;
  c.Source = Source(isNumber, isNumber ? Word(b, 2) : b[setFirst ? 3 : 2]);
  if (setFirst) {
    c.Compare = Compared(b, LowNibble(b), Word(b, 4));
  } else {
    c.Compare = isNumber ? Compared(b, b[4], b[5]) : Compared(b, b[3], Word(b, 4));
  }
  NumberedLink link = CompoundLink(b);
  c.LinkAfterSet = link.Link;
  fields.LinkTarget = std::move(link.Name);
  return fields;
}

// The operands by the three bits of the command's type; bit 4 marks a number as the operand (jumps within
// the link type).
Fields FieldsOfBytes(const CommandBytes& b) {
  const unsigned type = b[0] >> 5U;
  const bool bit4 = (b[0] & 0x10U) != 0;
  switch (type) {
    case 0:
      return FlowFields(b);
    case 1:
      return bit4 ? JumpFields(b) : LinkFields(b);
    case 2:
      return SystemFields(b, bit4);
    case 3:
      return RegisterFields(b, bit4);
    case 4:
    case 5:
    case 6:
      return CompoundFields(b, type, bit4);
    default:
      return std::nullopt;
  }
}

}  // namespace

DecodedCommand DecodeCommand(const CommandBytes& bytes) {
  const std::optional<CommandFields> fields = FieldsOfBytes(bytes);
  std::string text = fields ? CommandText(*fields) : std::string();
  // A text that does not lead back to the same bytes says something else than they do.
  if (text.empty() ||
      ResolveText(text, {}, nullptr, {.Numbers = NumericTargets::First}).Hex != HexOfCommand(bytes)) {
    return {};
  }
  return {true, std::move(text)};
}

DecodedCommand DecodeCommand(std::string_view hex) {
  return IsCommandHex(hex) ? DecodeCommand(ParseCommandHex(hex)) : DecodedCommand{};
}

}  // namespace quorvelant
