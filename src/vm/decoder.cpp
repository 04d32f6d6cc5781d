#include "vm/decoder.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "vm/command_words.h"
#include "vm/resolver.h"

namespace quorvelant {

namespace {

constexpr unsigned ImmediateBit = 8;

unsigned Word(const CommandBytes& b, std::size_t at) {
  return static_cast<unsigned>(b[at] << 8U) + b[at + 1];
}

// A register as a byte holds it, general or system.
std::string Register(unsigned value) {
  constexpr unsigned Base = SystemRegisterBase;
  return value >= Base && value < 2 * Base ? fmt::format("SPRM{}", value - Base)
                                           : fmt::format("GPRM{}", value);
}

std::string Source(bool isNumber, unsigned value) {
  return isNumber ? fmt::format("{}", value) : Register(value);
}

// "If ( GPRM1 == 3 ) ", with the operator and immediate bit of byte 1; empty where nothing is compared.
std::string Comparison(const CommandBytes& b, unsigned left, unsigned right) {
  const unsigned code = static_cast<unsigned>(b[1] >> 4U) & 7U;
  const bool isNumber = ((b[1] >> 4U) & ImmediateBit) != 0;
  const auto* const op = std::find_if(
      CompareOperators.begin(), CompareOperators.end(),
      [code](const CompareOperator& known) { return static_cast<unsigned>(known.Operation) == code; });
  return op == CompareOperators.end()
             ? std::string()
             : fmt::format("If ( GPRM{} {} {} ) ", left, op->Text, Source(isNumber, right));
}

unsigned LowNibble(const CommandBytes& b) {
  return b[1] & 15U;
}

std::string FlowText(const CommandBytes& b) {
  const std::string head = Comparison(b, b[3], Word(b, 4));
  switch (LowNibble(b)) {
    case 0:
      return head + "NOP";
    case 1:
      return fmt::format("{}GoTo {}", head, b[7]);
    case 2:
      return head + "Break";
    case 3:
      return fmt::format("{}SetTmpPML parental:{} command:{}", head, b[6], b[7]);
    default:
      return {};
  }
}

// The link of a sub-code and the command's last two bytes; empty where there is none.
std::string LinkText(unsigned subCode, unsigned high, unsigned low) {
  if (subCode == static_cast<unsigned>(LinkKind::SubInstruction)) {
    const auto* const sub =
        std::find_if(SubInstructions.begin(), SubInstructions.end(),
                     [low](const SubInstruction& known) { return static_cast<unsigned>(known.Code) == low; });
    if (sub == SubInstructions.end()) {
      return {};
    }
    const bool bare = sub->Read == word::Rsm && high == 0;
    return bare ? std::string(sub->Shown) : fmt::format("{}, button={}", sub->Shown, high / ButtonUnit);
  }
  switch (static_cast<LinkKind>(subCode)) {
    case LinkKind::Pgc:
      return fmt::format("LinkPGCN {}", high * 256 + low);
    case LinkKind::Part:
      return fmt::format("LinkPTT {}, button={}", (high % ButtonUnit) * 256 + low, high / ButtonUnit);
    case LinkKind::Program:
      return fmt::format("LinkPGN {}, button={}", low, high / ButtonUnit);
    case LinkKind::Cell:
      return fmt::format("LinkCN {}, button={}", low, high / ButtonUnit);
    default:
      return {};
  }
}

std::string MenuText(unsigned domain) {
  const unsigned menu = domain % 64 - FirstMenuId;
  return menu < MenuWords.size() ? std::string(MenuWords[menu].Shown) : std::string();
}

std::string JumpSsText(const CommandBytes& b) {
  if (b[5] == 0) {
    return "JumpSS FP_DOM";
  }
  if (b[5] == 0x42) {
    return "JumpSS TitleMenu";
  }
  if (b[5] == 0xC0) {
    return fmt::format("JumpSS pgc_{}", Word(b, 2));
  }
  const std::string menu = MenuText(b[5]);
  return menu.empty() ? menu : fmt::format("JumpSS vts_{}, vts_ttn_{} : {}", b[4], b[3], menu);
}

std::string CallSsText(const CommandBytes& b) {
  const std::string resume = fmt::format("CallSS RSM={},", b[4]);
  if (b[5] == 0) {
    return resume + "FP_DOM";
  }
  if (b[5] == 0x42) {
    return resume + "TitleMenu";
  }
  if (b[5] == 0xC0) {
    return fmt::format("{}, pgc_{}", resume, Word(b, 2));
  }
  const std::string menu = MenuText(b[5]);
  return menu.empty() ? menu : resume + menu;
}

std::string JumpText(const CommandBytes& b) {
  const std::string head = Comparison(b, b[6], b[7]);
  switch (LowNibble(b)) {
    case 1:
      return head + "Exit";
    case 2:
      return fmt::format("{}JumpTT {}", head, b[5]);
    case 3:
      return fmt::format("{}JumpVTS_TT {}", head, b[5]);
    case 5:
      return fmt::format("{}JumpVTS_PTT ptt_{} @ vts_ttn_{}", head, Word(b, 2), b[5]);
    case 6:
      return head + JumpSsText(b);
    case 8:
      return head + CallSsText(b);
    default:
      return {};
  }
}

// A stream byte back to the number whose code it is.
unsigned StreamNumber(unsigned byte, unsigned offset) {
  return (byte + 256 - offset) % 256;
}

std::string SubpictureText(unsigned byte) {
  constexpr unsigned SetBit = 0x80;
  constexpr unsigned OnBit = 0x40;
  constexpr unsigned DummyOn = 255;
  if (byte == DummyOn) {
    return "subpicture=63 Dummy:ON";
  }
  return (byte & SetBit) != 0 && (byte & OnBit) == 0
             ? fmt::format("subpicture={}:OFF", StreamNumber(byte, 127))
             : fmt::format("subpicture={}:ON", StreamNumber(byte, 191));
}

std::string StreamsText(const CommandBytes& b, bool isNumber) {
  std::string text = "SetSTN ";
  const auto add = [&text](const std::string& part) {
    text.append(text.ends_with(' ') ? "" : ", ").append(part);
  };
  if (b[5] != 0) {
    add(fmt::format("angle={}{}", isNumber ? "" : "GPRM", StreamNumber(b[5], 128)));
  }
  if (b[3] != 0) {
    constexpr unsigned NoAudio = 0x8F;
    const bool none = isNumber && b[3] == NoAudio;
    add(none       ? std::string("audio=16:None")
        : isNumber ? fmt::format("audio={}", StreamNumber(b[3], 127))
                   : fmt::format("audio=GPRM{}", StreamNumber(b[3], 128)));
  }
  if (b[4] != 0) {
    add(isNumber ? SubpictureText(b[4]) : fmt::format("subpicture=GPRM{}", StreamNumber(b[4], 128)));
  }
  return text;
}

std::string MixText(unsigned channel, unsigned mix) {
  const auto state = [mix](unsigned bit) { return (mix & bit) != 0 ? "ON" : "OFF"; };
  return fmt::format("ACH{}(4:{},3:{},2:{})", channel, state(16), state(8), state(4));
}

std::string SystemSetText(const CommandBytes& b, bool isNumber) {
  const std::string_view prefix = isNumber ? "" : "GPRM";
  switch (b[0] & 15U) {
    case 1:
      return StreamsText(b, isNumber);
    case 2:
      return fmt::format("SetNVTMR NV_TMR={}{}, TT_PGCN={}", prefix, Word(b, 2), Word(b, 4));
    case 3:
      return fmt::format("SetGPRMMD {}GPRM{}={}{}", (b[5] & 0x80U) != 0 ? "CounterMode" : "RegisterMode",
                         b[5] & 0x7FU, prefix, Word(b, 2));
    case 4:
      return isNumber ? fmt::format("SetAMXMD {}, {}", MixText(0, b[4]), MixText(1, b[5]))
                      : fmt::format("SetAMXMD GPRM{}", b[5]);
    case 6:
      return isNumber ? fmt::format("SetHL_BTNN HL_BTTN={}", Word(b, 4) >> 10U)
                      : fmt::format("SetHL_BTNN HL_BTTN=GPRM{}", b[5]);
    default:
      return {};
  }
}

// A set alone, after a comparison, or with a link; `head` is the comparison.
std::string SetShape(const CommandBytes& b, const std::string& head, const std::string& set) {
  if (!head.empty() || LowNibble(b) == 0) {
    return head + set;
  }
  return fmt::format("{{ {} ; {} }}", set, LinkText(LowNibble(b), b[6], b[7]));
}

std::string ArithmeticText(const CommandBytes& b, unsigned destination, bool isNumber, unsigned value) {
  const unsigned op = (b[0] & 15U) - 1;
  return op < ArithmeticWords.size()
             ? fmt::format("{} GPRM{}, {}", ArithmeticWords[op], destination, Source(isNumber, value))
             : std::string();
}

std::string SetRegisterText(const CommandBytes& b, bool isNumber) {
  return SetShape(b, Comparison(b, b[2], Word(b, 6)),
                  ArithmeticText(b, b[3], isNumber, isNumber ? Word(b, 4) : b[5]));
}

// The link of a compound command. Only sub-instructions work there; two other bytes come from a text that
// named a PGC, a program or a cell, and stand as the PGC number that makes them.
std::string CompoundLink(const CommandBytes& b) {
  const std::string sub = b[6] % ButtonUnit == 0
                              ? LinkText(static_cast<unsigned>(LinkKind::SubInstruction), b[6], b[7])
                              : std::string();
  return sub.empty() ? LinkText(static_cast<unsigned>(LinkKind::Pgc), b[6], b[7]) : sub;
}

std::string CompoundText(const CommandBytes& b, unsigned shape, bool isNumber) {
  const std::string link = CompoundLink(b);
  if (shape == 4) {
    return fmt::format("{} ; {}{}", ArithmeticText(b, LowNibble(b), isNumber, isNumber ? Word(b, 2) : b[3]),
                       Comparison(b, LowNibble(b), Word(b, 4)), link);
  }
  const std::string set = ArithmeticText(b, LowNibble(b), isNumber, isNumber ? Word(b, 2) : b[2]);
  const std::string head = isNumber ? Comparison(b, b[4], b[5]) : Comparison(b, b[3], Word(b, 4));
  return shape == 5 ? fmt::format("{}{{ {} ; {} }}", head, set, link)
                    : fmt::format("{}{{ {} ; }} {}", head, set, link);
}

// The text by the three bits of the command's type; bit 4 marks a number as the operand (jumps within
// the link type).
std::string TextOf(const CommandBytes& b) {
  const unsigned type = b[0] >> 5U;
  const bool bit4 = (b[0] & 0x10U) != 0;
  switch (type) {
    case 0:
      return FlowText(b);
    case 1:
      return bit4 ? JumpText(b) : Comparison(b, b[3], Word(b, 4)) + LinkText(LowNibble(b), b[6], b[7]);
    case 2:
      return SetShape(b, Comparison(b, b[6], b[7]), SystemSetText(b, bit4));
    case 3:
      return SetRegisterText(b, bit4);
    case 4:
    case 5:
    case 6:
      return CompoundText(b, type, bit4);
    default:
      return {};
  }
}

}  // namespace

DecodedCommand DecodeCommand(const CommandBytes& bytes) {
  std::string text = TextOf(bytes);
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
