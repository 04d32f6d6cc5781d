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

// Two bytes from `at` on take the low 16 bits.
void PutWord(CommandBytes& b, std::size_t at, std::uint32_t value) {
  b[at] = LowByte(value >> 8U);
  b[at + 1] = LowByte(value);
}

std::uint32_t CompareCode(std::string_view op) {
  const auto* const found = std::find_if(CompareOperators.begin(), CompareOperators.end(),
                                         [op](const CompareOperator& known) { return known.Text == op; });
  return found == CompareOperators.end() ? 0 : found->Code;
}

enum class Immediate { Never, ByRightSide };

// Operator and immediate bit above a low nibble. Without a known operator the nibble is lost as well.
std::uint8_t CompareByte(const ParsedCommand& c, std::uint32_t lowNibble, Immediate immediate) {
  const std::uint32_t code = CompareCode(c.CompareOp);
  if (code == 0) {
    return 0;
  }
  const std::uint32_t bit = immediate == Immediate::ByRightSide && c.RightIsNumber ? 8 : 0;
  return LowByte(((code + bit) << 4U) + lowNibble);
}

std::uint32_t RightWord(const ParsedCommand& c) {
  if (c.RightIsGprm) {
    return Low32(c.RightGprm);
  }
  return c.RightIsSprm ? Low32(c.RightSprm) + SystemRegisterBase : Low32(c.RightNumber);
}

// Groups 0 and 1: the comparison stands in bytes 3 to 5.
void PutEarlyCompare(CommandBytes& b, const ParsedCommand& c, std::uint32_t sub) {
  b[1] = LowByte(sub);
  if (c.HasCompare) {
    b[1] = CompareByte(c, sub, Immediate::ByRightSide);
    b[3] = LowByte(Low32(c.CompareLeft));
    PutWord(b, 4, RightWord(c));
  }
}

// Group 0: no jump.
bool EncodeFlow(CommandBytes& b, const ParsedCommand& c) {
  if (c.Name == word::Nop) {
    PutEarlyCompare(b, c, 0);
  } else if (c.Name == word::GoTo) {
    PutEarlyCompare(b, c, 1);
    b[7] = LowByte(Low32(c.GotoLine));
  } else if (c.Name == word::Break) {
    PutEarlyCompare(b, c, 2);
  } else if (c.Name == word::SetTmpPml) {
    PutEarlyCompare(b, c, 3);
    b[6] = LowByte(Low32(c.ParentalLevel));
    b[7] = LowByte(Low32(c.GotoLine));
  } else {
    return false;
  }
  return true;
}

// Group 1: links.
bool EncodeLink(CommandBytes& b, const ParsedCommand& c) {
  const auto* const sub = std::find_if(SubInstructions.begin(), SubInstructions.end(),
                                       [&c](const SubInstruction& known) { return known.Name == c.Name; });
  const auto* const link = std::find_if(NamedLinks.begin(), NamedLinks.end(),
                                        [&c](const NamedLink& known) { return known.Name == c.Name; });
  if (sub == SubInstructions.end() && link == NamedLinks.end()) {
    return false;
  }
  b[0] = 0x20;
  b[6] = LowByte(Low32(c.ButtonBits));
  if (sub != SubInstructions.end()) {
    PutEarlyCompare(b, c, 1);
    b[7] = LowByte(Low32(sub->Code));
    return true;
  }
  PutEarlyCompare(b, c, Low32(link->SubCode));
  if (c.Name == word::LinkPgcn) {
    PutWord(b, 6, Low32(c.PgcNumber));
  } else if (c.Name == word::LinkPtt) {
    const LinkBytes packed = PackPttLink(c.ButtonBits, c.PgNumber);
    b[6] = LowByte(Low32(packed.High));
    b[7] = LowByte(Low32(packed.Low));
  } else {
    b[7] = LowByte(Low32(c.Name == word::LinkPgn ? c.PgNumber : c.CellNumber));
  }
  return true;
}

// The domain byte of a jump or call: what it leads to.
constexpr std::uint8_t ToFirstPlay = 0x00;
constexpr std::uint8_t ToTitleMenu = 0x42;
constexpr std::uint32_t ToSetMenu = 0x80;
constexpr std::uint8_t ToVmgPgc = 0xC0;

void PutVmgPgc(CommandBytes& b, const ParsedCommand& c) {
  PutWord(b, 2, c.PgcNumber < 1 ? 1 : Low32(c.PgcNumber));
  b[5] = ToVmgPgc;
}

// Group 2: the operands of a jump; the sub-code, or 0 for any other word.
std::uint32_t EncodeJumpOperands(CommandBytes& b, const ParsedCommand& c) {
  if (c.Name == word::Exit) {
    return 1;
  }
  if (c.Name == word::JumpTt || c.Name == word::JumpVtsTt) {
    b[5] = LowByte(Low32(c.TitleNumber));
    return c.Name == word::JumpTt ? 2 : 3;
  }
  if (c.Name == word::JumpVtsPtt) {
    PutWord(b, 2, Low32(c.PgNumber));
    b[5] = LowByte(Low32(c.TitleNumber));
    return 5;
  }
  if (c.Name == word::JumpSsFp) {
    b[5] = ToFirstPlay;
  } else if (c.Name == word::JumpSsTitleMenu) {
    b[5] = ToTitleMenu;
  } else if (c.Name == word::JumpSs) {
    b[3] = LowByte(Low32(c.TitleNumber));
    b[4] = LowByte(Low32(c.VtsNumber));
    b[5] = LowByte(Low32(c.MenuId) + ToSetMenu);
  } else if (c.Name == word::JumpSsVmgm) {
    PutVmgPgc(b, c);
  } else {
    return 0;
  }
  return 6;
}

// Group 2: the operands of a call; the sub-code, or 0 for any other word.
std::uint32_t EncodeCallOperands(CommandBytes& b, const ParsedCommand& c) {
  if (c.Name == word::CallSsTitleMenu) {
    b[5] = ToTitleMenu;
  } else if (c.Name == word::CallSsVtsm) {
    b[5] = LowByte(Low32(c.MenuId) + ToSetMenu);
  } else if (c.Name == word::CallSsFp) {
    b[5] = ToFirstPlay;
  } else if (c.Name == word::CallSsVmgm) {
    PutVmgPgc(b, c);
  } else {
    return 0;
  }
  b[4] = LowByte(Low32(c.ResumeCell));
  return 8;
}

// Group 2: jumps and calls. Their comparison has one byte for the right side.
bool EncodeJump(CommandBytes& b, const ParsedCommand& c) {
  std::uint32_t sub = EncodeJumpOperands(b, c);
  sub = sub == 0 ? EncodeCallOperands(b, c) : sub;
  if (sub == 0) {
    return false;
  }
  b[0] = 0x30;
  b[1] = LowByte(sub);
  if (c.HasCompare) {
    b[1] = CompareByte(c, sub, Immediate::ByRightSide);
    b[6] = LowByte(Low32(c.CompareLeft));
    b[7] = LowByte(RightWord(c));
  }
  return true;
}

void PutLinkPart(CommandBytes& b, const ParsedCommand& c) {
  b[1] = LowByte(Low32(c.LinkSubCode));
  b[6] = LowByte(Low32(c.LinkButton));
  b[7] = LowByte(Low32(c.LinkTarget));
}

// A byte of 0 leaves its stream alone; the top bit says that it is set.
void PutStreams(CommandBytes& b, const ParsedCommand& c) {
  if (c.AudioValue > 0) {
    b[3] = LowByte(Low32(c.AudioValue) + 126);
  }
  if (c.AngleValue > 0) {
    b[5] = LowByte(Low32(c.AngleValue) + 127);
  }
  if (c.SubpictureValue <= 0) {
    return;
  }
  if (c.StreamByGprm) {
    b[4] = LowByte(Low32(c.SubpictureValue) + 126);
  } else if (c.SubpictureValue == DummySubpicture) {
    b[4] = c.SubpictureOn ? 255 : 128;
  } else {
    b[4] = LowByte(Low32(c.SubpictureValue) + (c.SubpictureOn ? 190 : 126));
  }
}

// Group 3: the operands of a system set; the first byte, or 0 for any other word.
std::uint8_t EncodeSystemOperands(CommandBytes& b, const ParsedCommand& c) {
  if (c.Name == word::SetStn) {
    PutStreams(b, c);
    return c.StreamByGprm ? 0x41 : 0x51;
  }
  if (c.Name == word::SetNvtmr) {
    PutWord(b, 2, Low32(c.FirstValue));
    PutWord(b, 4, Low32(c.PgcNumber));
    return c.ValueIsGprm ? 0x42 : 0x52;
  }
  if (c.Name == word::SetGprmMd) {
    constexpr std::uint32_t CounterBit = 0x80;
    PutWord(b, 2, Low32(c.SecondValue));
    b[5] = LowByte((Low32(c.FirstValue) & 0x7FU) | (c.RegisterMode ? 0 : CounterBit));
    return c.ValueIsGprm ? 0x43 : 0x53;
  }
  if (c.Name == word::SetAmxmd) {
    b[4] = LowByte(Low32(c.ChannelMix0));
    b[5] = LowByte(Low32(c.ChannelMix1));
    return c.ValueIsGprm ? 0x44 : 0x54;
  }
  if (c.Name == word::SetHlBtnn) {
    if (c.ButtonByGprm) {
      b[5] = LowByte(Low32(c.ButtonBits));
    } else {
      PutWord(b, 4, Low32(c.ButtonBits) << 10U);
    }
    return c.ButtonByGprm ? 0x46 : 0x56;
  }
  return 0;
}

// Group 3: system sets. They compare registers only; a number on the right of the four words other than
// SetSTN comes out as system register 0.
bool EncodeSystem(CommandBytes& b, const ParsedCommand& c) {
  b[0] = EncodeSystemOperands(b, c);
  if (b[0] == 0) {
    return false;
  }
  if (c.HasCompare) {
    b[1] = CompareByte(c, 0, Immediate::Never);
    b[6] = LowByte(Low32(c.CompareLeft));
    const bool plainRight = c.RightIsGprm || c.Name == word::SetStn;
    b[7] = LowByte(plainRight ? RightWord(c) : Low32(c.RightSprm) + SystemRegisterBase);
  } else if (c.HasLink) {
    PutLinkPart(b, c);
  }
  return true;
}

// A register as a source, general or system.
std::uint32_t SourceRegister(const ParsedCommand& c) {
  return Low32(c.SetSource) + (c.SourceIsSprm ? SystemRegisterBase : 0);
}

// Group 4: register arithmetic.
bool EncodeSet(CommandBytes& b, const ParsedCommand& c) {
  if (c.Name != word::Set) {
    return false;
  }
  b[3] = LowByte(Low32(c.SetDest));
  if (c.HasCompare) {
    b[1] = CompareByte(c, 0, Immediate::ByRightSide);
    b[2] = LowByte(Low32(c.CompareLeft));
    PutWord(b, 6, RightWord(c));
  } else if (c.HasLink) {
    PutLinkPart(b, c);
  }
  if (c.SourceIsNumber) {
    b[0] = LowByte(Low32(c.SetOp) + 0x70);
    PutWord(b, 4, Low32(c.SetSource));
  } else {
    b[0] = LowByte(Low32(c.SetOp) + 0x60);
    b[5] = LowByte(SourceRegister(c));
  }
  return true;
}

// Group 5: set, comparison and link in one command.
bool EncodeCompound(CommandBytes& b, const ParsedCommand& c) {
  const bool number = c.SourceIsNumber;
  const bool setFirst = c.Name == word::Type3v1;
  if (setFirst) {
    b[0] = LowByte(Low32(c.SetOp) + (number ? 0x90 : 0x80));
  } else if (c.Name == word::Type3v2) {
    b[0] = LowByte(Low32(c.SetOp) + (number ? 0xB0 : 0xA0));
  } else if (c.Name == word::Type3v3) {
    b[0] = LowByte(Low32(c.SetOp) + (number ? 0xD0 : 0xC0));
  } else {
    return false;
  }
  b[1] = CompareByte(c, Low32(c.SetDest), Immediate::ByRightSide);
  if (number) {
    PutWord(b, 2, Low32(c.SetSource));
  } else {
    b[setFirst ? 3 : 2] = LowByte(SourceRegister(c));
  }
  if (setFirst) {
    PutWord(b, 4, RightWord(c));
  } else if (number) {
    b[4] = LowByte(Low32(c.CompareLeft));
    b[5] = LowByte(RightWord(c));
  } else {
    b[3] = LowByte(Low32(c.CompareLeft));
    PutWord(b, 4, RightWord(c));
  }
  b[6] = LowByte(Low32(c.LinkButton));
  b[7] = LowByte(Low32(c.LinkTarget));
  return true;
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

LinkBytes PackPttLink(std::int32_t buttonBits, std::int32_t pgNumber) {
  const std::uint32_t part = Low32(pgNumber) & 0x3FFU;
  return {static_cast<std::int32_t>((Low32(buttonBits) & 0xFCU) | (part >> 8U)),
          static_cast<std::int32_t>(part & 0xFFU)};
}

CommandBytes EncodeCommandBytes(const ParsedCommand& command) {
  using Group = bool (*)(CommandBytes&, const ParsedCommand&);
  constexpr std::array<Group, 6> Groups{EncodeFlow,   EncodeLink, EncodeJump,
                                        EncodeSystem, EncodeSet,  EncodeCompound};
  for (const Group encode : Groups) {
    CommandBytes bytes{};
    if (encode(bytes, command)) {
      return bytes;
    }
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

CommandBytes BytesOfCommand(std::string_view hex) {
  CommandBytes bytes{};
  if (IsCommandHex(hex)) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = static_cast<std::uint8_t>(DigitValue(hex[2 * i]) * 16 + DigitValue(hex[2 * i + 1]));
    }
  }
  return bytes;
}

}  // namespace quorvelant
