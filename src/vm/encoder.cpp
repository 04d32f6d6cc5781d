#include "vm/encoder.h"

#include <algorithm>

#include "vm/command_words.h"

namespace quorvelant {

namespace {

constexpr std::uint32_t Low32(std::int32_t value) {
  return static_cast<std::uint32_t>(value);
}
constexpr std::uint8_t LowByte(std::uint32_t value) {
  return static_cast<std::uint8_t>(value & 0xFFU);
}
constexpr std::uint8_t LowByte(std::int32_t value) {
  return LowByte(Low32(value));
}

// Two bytes from `at` on take the low 16 bits.
void PutWord(CommandBytes& b, std::size_t at, std::uint32_t value) {
  b[at] = LowByte(value >> 8U);
  b[at + 1] = LowByte(value);
}

// An operand as a word holds it: system registers stand after the general ones.
std::uint32_t WordOf(const Operand& operand) {
  return Low32(operand.Number) + (operand.Is(OperandKind::Sprm) ? SystemRegisterBase : 0);
}

enum class Immediate { Never, ByRightSide };

// Operator and immediate bit above a low nibble. Without an operator the nibble is lost as well.
std::uint8_t CompareByte(const Comparison& compare, std::uint32_t lowNibble, Immediate immediate) {
  if (compare.Operation == CompareOperation::None) {
    return 0;
  }
  const bool number = immediate == Immediate::ByRightSide && compare.Right.Is(OperandKind::Number);
  return LowByte(((static_cast<std::uint32_t>(compare.Operation) + (number ? 8U : 0U)) << 4U) + lowNibble);
}

// Types 0 and 1: the comparison stands in bytes 3 to 5.
void PutEarlyCompare(CommandBytes& b, const ParsedCommand& c, std::uint32_t sub) {
  b[1] = LowByte(sub);
  if (c.Compare) {
    b[1] = CompareByte(*c.Compare, sub, Immediate::ByRightSide);
    b[3] = LowByte(c.Compare->LeftGprm);
    PutWord(b, 4, WordOf(c.Compare->Right));
  }
}

// Type 0: no jump.
CommandBytes EncodeFlow(const ParsedCommand& c, std::uint32_t sub) {
  CommandBytes b{};
  PutEarlyCompare(b, c, sub);
  b[6] = LowByte(c.ParentalLevel);
  b[7] = LowByte(c.Line);
  return b;
}

// The last two bytes of a link. A part has ten bits, and a PGC's number takes the place of the button.
void PutLink(CommandBytes& b, const LinkTarget& link) {
  const std::uint32_t button = LowByte(Low32(link.Button) * Low32(ButtonUnit));
  const std::uint32_t number = Low32(link.Number);
  if (link.Kind == LinkKind::Pgc) {
    PutWord(b, 6, number);
  } else if (link.Kind == LinkKind::Part) {
    PutWord(b, 6, button << 8U | (number & 0x3FFU));
  } else {
    PutWord(b, 6, button << 8U | LowByte(number));
  }
}

// Type 1: links.
CommandBytes EncodeLink(const ParsedCommand& c) {
  CommandBytes b{0x20};
  PutEarlyCompare(b, c, static_cast<std::uint32_t>(c.Link.Kind));
  PutLink(b, c.Link);
  return b;
}

// The domain byte of JumpSS and CallSS, and the PGC of the Video Manager.
void PutSpace(CommandBytes& b, const ParsedCommand& c) {
  switch (c.Space) {
    case SystemSpace::FirstPlay:
      break;
    case SystemSpace::TitleMenu:
      b[5] = 0x42;
      break;
    case SystemSpace::SetMenu:
      b[5] = LowByte(c.MenuId + 0x80);
      break;
    case SystemSpace::VmgPgc:
      PutWord(b, 2, Low32(std::max(c.Pgc, 1)));
      b[5] = 0xC0;
      break;
  }
}

void PutJumpOperands(CommandBytes& b, const ParsedCommand& c) {
  switch (c.What) {
    case Instruction::JumpVtsPtt:
      PutWord(b, 2, Low32(c.Part));
      [[fallthrough]];
    case Instruction::JumpTt:
    case Instruction::JumpVtsTt:
      b[5] = LowByte(c.Title);
      break;
    case Instruction::JumpSs:
      b[3] = LowByte(c.Title);
      b[4] = LowByte(c.TitleSet);
      PutSpace(b, c);
      break;
    case Instruction::CallSs:
      b[4] = LowByte(c.ResumeCell);
      PutSpace(b, c);
      break;
    default:
      break;
  }
}

// Type 1 with bit 4: jumps and calls. Their comparison has one byte for the right side.
CommandBytes EncodeJump(const ParsedCommand& c, std::uint32_t sub) {
  CommandBytes b{0x30, LowByte(sub)};
  PutJumpOperands(b, c);
  if (c.Compare) {
    b[1] = CompareByte(*c.Compare, sub, Immediate::ByRightSide);
    b[6] = LowByte(c.Compare->LeftGprm);
    b[7] = LowByte(WordOf(c.Compare->Right));
  }
  return b;
}

void PutLinkAfterSet(CommandBytes& b, const ParsedCommand& c) {
  if (c.LinkAfterSet) {
    b[1] = static_cast<std::uint8_t>(c.LinkAfterSet->Kind);
    PutLink(b, *c.LinkAfterSet);
  }
}

// A byte of 0 leaves its stream alone; the top bit says that it is set. `added` goes on top of the code.
void PutStream(std::uint8_t& byte, const Operand& stream, std::int32_t first, std::int32_t added = 0) {
  const std::int32_t code = StreamCode(stream, first);
  if (!stream.Is(OperandKind::None) && code >= first) {
    byte = LowByte(code + added);
  }
}

void PutStreams(CommandBytes& b, const ParsedCommand& c) {
  constexpr std::int32_t OnBit = 0x40;
  PutStream(b[3], c.Audio, FirstAudioCode);
  PutStream(b[5], c.Angle, FirstAngleCode);
  const bool byNumber = !c.StreamsByRegister;
  if (byNumber && c.Subpicture == Operand{OperandKind::Number, DummySubpicture}) {
    b[4] = c.SubpictureOn ? 255 : 128;
  } else {
    PutStream(b[4], c.Subpicture, FirstSubpictureCode, byNumber && c.SubpictureOn ? OnBit : 0);
  }
}

void PutSystemOperands(CommandBytes& b, const ParsedCommand& c) {
  switch (c.What) {
    case Instruction::SetStn:
      PutStreams(b, c);
      break;
    case Instruction::SetNvtmr:
      PutWord(b, 2, Low32(c.Source.Number));
      PutWord(b, 4, Low32(c.Pgc));
      break;
    case Instruction::SetGprmMd: {
      constexpr std::uint32_t CounterBit = 0x80;
      PutWord(b, 2, Low32(c.Source.Number));
      b[5] = LowByte((Low32(c.Destination) & 0x7FU) | (c.RegisterMode ? 0 : CounterBit));
      break;
    }
    case Instruction::SetAmxmd:
      b[4] = LowByte(c.ChannelMix[0]);
      b[5] = LowByte(c.Source.Is(OperandKind::Gprm) ? c.Source.Number : c.ChannelMix[1]);
      break;
    case Instruction::SetHlBtnn:
      if (c.Source.Is(OperandKind::Gprm)) {
        b[5] = LowByte(c.Source.Number);
      } else {
        PutWord(b, 4, Low32(c.Source.Number) << 10U);
      }
      break;
    default:
      break;
  }
}

// Type 2: system sets. They compare registers only; a number on the right of the four words other than
// SetSTN comes out as system register 0.
CommandBytes EncodeSystem(const ParsedCommand& c, std::uint32_t sub) {
  const bool byRegister =
      c.What == Instruction::SetStn ? c.StreamsByRegister : c.Source.Is(OperandKind::Gprm);
  CommandBytes b{LowByte((byRegister ? 0x40U : 0x50U) + sub)};
  PutSystemOperands(b, c);
  if (!c.Compare) {
    PutLinkAfterSet(b, c);
    return b;
  }
  const Operand& right = c.Compare->Right;
  const bool lost =
      c.What != Instruction::SetStn && !right.Is(OperandKind::Gprm) && !right.Is(OperandKind::Sprm);
  b[1] = CompareByte(*c.Compare, 0, Immediate::Never);
  b[6] = LowByte(c.Compare->LeftGprm);
  b[7] = LowByte(lost ? SystemRegisterBase : WordOf(right));
  return b;
}

// The first byte of a set: the type, whether the source is a number, and the operation.
std::uint8_t SetByte(std::uint32_t type, const ParsedCommand& c) {
  constexpr std::uint32_t NumberBit = 0x10;
  return LowByte(type + (c.Source.Is(OperandKind::Number) ? NumberBit : 0) +
                 static_cast<std::uint32_t>(c.Operation));
}

// Type 3: register arithmetic.
CommandBytes EncodeSet(const ParsedCommand& c) {
  CommandBytes b{SetByte(0x60, c)};
  b[3] = LowByte(c.Destination);
  if (c.Compare) {
    b[1] = CompareByte(*c.Compare, 0, Immediate::ByRightSide);
    b[2] = LowByte(c.Compare->LeftGprm);
    PutWord(b, 6, WordOf(c.Compare->Right));
  } else {
    PutLinkAfterSet(b, c);
  }
  if (c.Source.Is(OperandKind::Number)) {
    PutWord(b, 4, Low32(c.Source.Number));
  } else {
    b[5] = LowByte(WordOf(c.Source));
  }
  return b;
}

// Types 4 to 6: set, comparison and link in one command.
CommandBytes EncodeCompound(const ParsedCommand& c, std::uint32_t type) {
  const Comparison compare = c.Compare.value_or(Comparison{});
  const bool number = c.Source.Is(OperandKind::Number);
  const bool setFirst = c.What == Instruction::SetCompareLink;
  CommandBytes b{SetByte(type, c), CompareByte(compare, Low32(c.Destination), Immediate::ByRightSide)};
  if (number) {
    PutWord(b, 2, Low32(c.Source.Number));
  } else {
    b[setFirst ? 3 : 2] = LowByte(WordOf(c.Source));
  }
  if (setFirst) {
    PutWord(b, 4, WordOf(compare.Right));
  } else if (number) {
    b[4] = LowByte(compare.LeftGprm);
    b[5] = LowByte(WordOf(compare.Right));
  } else {
    b[3] = LowByte(compare.LeftGprm);
    PutWord(b, 4, WordOf(compare.Right));
  }
  PutLink(b, c.LinkAfterSet.value_or(LinkTarget{}));
  return b;
}

constexpr std::string_view Digits = "0123456789ABCDEF";

// The value of a digit, 16 for any other byte.
std::uint8_t DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') {
    return static_cast<std::uint8_t>(digit - '0');
  }
  const auto upper = static_cast<char>(digit >= 'a' && digit <= 'f' ? digit - 32 : digit);
  return upper >= 'A' && upper <= 'F' ? static_cast<std::uint8_t>(upper - 'A' + 10) : 16;
}

}  // namespace

CommandBytes EncodeCommandBytes(const ParsedCommand& c) {
  switch (c.What) {
    case Instruction::None:
      return {};
    case Instruction::Nop:
      return EncodeFlow(c, 0);
    case Instruction::GoTo:
      return EncodeFlow(c, 1);
    case Instruction::Break:
      return EncodeFlow(c, 2);
    case Instruction::SetTmpPml:
      return EncodeFlow(c, 3);
    case Instruction::Link:
      return EncodeLink(c);
    case Instruction::Exit:
      return EncodeJump(c, 1);
    case Instruction::JumpTt:
      return EncodeJump(c, 2);
    case Instruction::JumpVtsTt:
      return EncodeJump(c, 3);
    case Instruction::JumpVtsPtt:
      return EncodeJump(c, 5);
    case Instruction::JumpSs:
      return EncodeJump(c, 6);
    case Instruction::CallSs:
      return EncodeJump(c, 8);
    case Instruction::SetStn:
      return EncodeSystem(c, 1);
    case Instruction::SetNvtmr:
      return EncodeSystem(c, 2);
    case Instruction::SetGprmMd:
      return EncodeSystem(c, 3);
    case Instruction::SetAmxmd:
      return EncodeSystem(c, 4);
    case Instruction::SetHlBtnn:
      return EncodeSystem(c, 6);
    case Instruction::Set:
      return EncodeSet(c);
    case Instruction::SetCompareLink:
      return EncodeCompound(c, 0x80);
    case Instruction::CompareSetAndLink:
      return EncodeCompound(c, 0xA0);
    case Instruction::CompareSetThenLink:
      return EncodeCompound(c, 0xC0);
  }
  return {};
}

std::string EncodeCommand(const ParsedCommand& command) {
  return HexOfCommand(EncodeCommandBytes(command));
}

std::string HexOfCommand(const CommandBytes& bytes) {
  std::string hex;
  hex.reserve(2 * bytes.size());
  for (const std::uint8_t byte : bytes) {
    hex.push_back(Digits[byte >> 4U]);
    hex.push_back(Digits[byte & 15U]);
  }
  return hex;
}

bool IsCommandHex(std::string_view hex) {
  return hex.size() == 16 && std::all_of(hex.begin(), hex.end(), [](char c) { return DigitValue(c) < 16; });
}

}  // namespace quorvelant
