// One navigation command, taken apart: what the parser reads, the resolver completes and the encoder writes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace quorvelant {

// What a command does. The groups are those of the encoder, in the order of the bytes' types.
enum class Instruction : std::uint8_t {
  None,  // the text was empty or is no command
  // Flow within a command list.
  Nop,
  GoTo,
  Break,
  SetTmpPml,
  Link,
  // Across the disc.
  Exit,
  JumpTt,
  JumpVtsTt,
  JumpVtsPtt,
  JumpSs,
  CallSs,
  // System sets.
  SetStn,
  SetNvtmr,
  SetGprmMd,
  SetAmxmd,
  SetHlBtnn,
  // Register arithmetic, alone and in the three compound forms.
  Set,
  SetCompareLink,      // set ; if ( ... ) link
  CompareSetAndLink,   // if ( ... ) { set ; link }
  CompareSetThenLink,  // if ( ... ) { set ; } link
};

// A number, or the register that holds it.
enum class OperandKind : std::uint8_t { None, Number, Gprm, Sprm };
struct Operand {
  OperandKind Kind = OperandKind::None;
  std::int32_t Number = 0;

  constexpr bool Is(OperandKind kind) const { return Kind == kind; }
  bool operator==(const Operand&) const = default;
};

// Entry i has code i.
enum class CompareOperation : std::uint8_t {
  None,
  AnyBit,
  Equal,
  NotEqual,
  GreaterOrEqual,
  Greater,
  LessOrEqual,
  Less
};
struct Comparison {
  CompareOperation Operation = CompareOperation::None;
  std::int32_t LeftGprm = 0;
  Operand Right;
  bool operator==(const Comparison&) const = default;
};

// Entry i has code i.
enum class Arithmetic : std::uint8_t { None, Mov, Swp, Add, Sub, Mul, Div, Mod, Rnd, And, Or, Xor };

// A link by its target; the values are the sub-codes of the format.
enum class LinkKind : std::uint8_t { None = 0, SubInstruction = 1, Pgc = 4, Part = 5, Program = 6, Cell = 7 };
struct LinkTarget {
  LinkKind Kind = LinkKind::None;
  std::int32_t Number = 0;  // of what the kind names; the code of a sub-instruction
  std::int32_t Button = 0;  // to be selected on arrival, 0 for none
  bool operator==(const LinkTarget&) const = default;
};

// Where JumpSS and CallSS lead.
enum class SystemSpace : std::uint8_t { FirstPlay, TitleMenu, SetMenu, VmgPgc };

// A plain record. It starts zeroed, and a field that a command does not use stays so.
struct ParsedCommand {
  Instruction What = Instruction::None;
  std::optional<Comparison> Compare;
  LinkTarget Link;                         // of the command itself
  std::optional<LinkTarget> LinkAfterSet;  // what a set goes on to

  std::int32_t Line = 0;           // of the command list, from 1: GoTo, SetTmpPML
  std::int32_t ParentalLevel = 0;  // SetTmpPML

  SystemSpace Space = SystemSpace::FirstPlay;  // JumpSS, CallSS
  std::int32_t TitleSet = 0;                   // whose menu a JumpSS leads to
  std::int32_t Title = 0;                      // of a jump
  std::int32_t Part = 0;                       // JumpVTS_PTT: program of the title
  std::int32_t MenuId = 0;                     // 3 root, 4 subpicture, 5 audio, 6 angle, 7 part of title
  std::int32_t Pgc = 0;                        // JumpSS, CallSS: of the Video Manager; SetNVTMR
  std::int32_t ResumeCell = 0;                 // CallSS, 0 for none

  // SetSTN; a stream of no kind stays as it is.
  Operand Audio;
  Operand Subpicture;
  Operand Angle;
  bool SubpictureOn = false;
  bool StreamsByRegister = false;  // the numbers are read as those of registers

  // Other sets.
  Operand Source;                // arithmetic; SetNVTMR: seconds; SetHL_BTNN: button; SetGPRMMD, SetAMXMD
  std::int32_t Destination = 0;  // the GPRM that arithmetic and SetGPRMMD set
  Arithmetic Operation = Arithmetic::None;
  bool RegisterMode = false;                 // SetGPRMMD; otherwise the register counts seconds
  std::array<std::int32_t, 2> ChannelMix{};  // SetAMXMD: 16, 8 and 4 for the three switches of a channel

  bool operator==(const ParsedCommand&) const = default;
};

}  // namespace quorvelant
