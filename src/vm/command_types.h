// The commands as an editor offers them: the types of its list with the words it shows, what operands each
// has, and what an operand may be so that the bytes do what the text says.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "vm/command_parser.h"
#include "vm/parsed_command.h"

namespace quorvelant {

// In the order of the list.
enum class CommandType : std::uint8_t {
  NoOperation,
  GoTo,
  Break,
  Exit,
  JumpTitle,
  JumpPart,
  JumpSystemSpace,
  LinkPgc,
  LinkProgram,
  LinkCell,
  LinkPart,
  SubInstruction,
  SetStreams,
  SetGprm,
  ChangeGprmMode,
  SetButton,
  SetTimer,
  SetMixing,
  SetParentalLevel,
  Compound
};

// The operands that a type has, as bits. Every type but a compound may stand after a comparison.
namespace operand {
inline constexpr std::uint32_t Line = 1U << 0U;
inline constexpr std::uint32_t Target = 1U << 1U;  // a name, of the kind that `TargetKindOf` tells
inline constexpr std::uint32_t Button = 1U << 2U;  // selected on arrival
inline constexpr std::uint32_t Space = 1U << 3U;   // a row of `SystemSpaceTargets`, and what it needs
inline constexpr std::uint32_t SubInstruction = 1U << 4U;
inline constexpr std::uint32_t Streams = 1U << 5U;
inline constexpr std::uint32_t Destination = 1U << 6U;  // the GPRM that is set
inline constexpr std::uint32_t Operation = 1U << 7U;    // of arithmetic
inline constexpr std::uint32_t Source = 1U << 8U;       // of a kind that `SourceKindsOf` tells
inline constexpr std::uint32_t Mode = 1U << 9U;         // register or counter
inline constexpr std::uint32_t Mix = 1U << 10U;         // of karaoke, or the register that holds it
inline constexpr std::uint32_t Level = 1U << 11U;
inline constexpr std::uint32_t Link = 1U << 12U;  // may go on to a link, where nothing is compared
inline constexpr std::uint32_t Shape =
    1U << 13U;  // a row of `CompoundShapes`; comparison and link are always there
}  // namespace operand

struct CommandTypeRow {
  CommandType Type;
  std::string_view Title;
  std::uint32_t Operands;
};
inline constexpr std::array CommandTypes{
    CommandTypeRow{CommandType::NoOperation, "No Operation", 0},
    CommandTypeRow{CommandType::GoTo, "GoTo", operand::Line},
    CommandTypeRow{CommandType::Break, "Break", 0},
    CommandTypeRow{CommandType::Exit, "Exit", 0},
    CommandTypeRow{CommandType::JumpTitle, "Jump to Title", operand::Target},
    CommandTypeRow{CommandType::JumpPart, "Jump to PartOfTitle in VTS", operand::Target},
    CommandTypeRow{CommandType::JumpSystemSpace, "Jump to PGC in System Space", operand::Space},
    CommandTypeRow{CommandType::LinkPgc, "Jump to PGC", operand::Target},
    CommandTypeRow{CommandType::LinkProgram, "Jump to Program", operand::Target | operand::Button},
    CommandTypeRow{CommandType::LinkCell, "Jump to Cell", operand::Target | operand::Button},
    CommandTypeRow{CommandType::LinkPart, "Jump to PartOfTitle in Title", operand::Target | operand::Button},
    CommandTypeRow{CommandType::SubInstruction, "Jump to Sub-Instructions",
                   operand::SubInstruction | operand::Button},
    CommandTypeRow{CommandType::SetStreams, R"(Set Angle\Audio\SubPicture)",
                   operand::Streams | operand::Link},
    CommandTypeRow{CommandType::SetGprm, "Set to GPRM",
                   operand::Operation | operand::Destination | operand::Source | operand::Link},
    CommandTypeRow{CommandType::ChangeGprmMode, "Change GPRM Mode",
                   operand::Mode | operand::Destination | operand::Source | operand::Link},
    CommandTypeRow{CommandType::SetButton, "Set Highlighted Button", operand::Source | operand::Link},
    CommandTypeRow{CommandType::SetTimer, "Set Navigation Timer",
                   operand::Source | operand::Target | operand::Link},
    CommandTypeRow{CommandType::SetMixing, "Set Audio Mixing Mode for Karaoke", operand::Mix | operand::Link},
    CommandTypeRow{CommandType::SetParentalLevel, "Set temporary Parental Level",
                   operand::Level | operand::Line},
    CommandTypeRow{CommandType::Compound, "Type 3 Command",
                   operand::Shape | operand::Operation | operand::Destination | operand::Source},
};

// Of a command that `FieldsOf` gives. No instruction counts as no operation.
[[nodiscard]] CommandType TypeOf(const ParsedCommand& command);

// Entry i is the title of `SubInstructions` i.
inline constexpr std::array<std::string_view, 13> SubInstructionTitles{
    "No Jump",         "Current Cell", "Next Cell",        "Previous Cell",
    "Current Program", "Next Program", "Previous Program", "Current PGC",
    "Next PGC",        "Previous PGC", "GoUp PGC",         "Post Commands of Current PGC",
    "Resume"};

struct CompoundShape {
  Instruction What;
  std::string_view Title;
};
inline constexpr std::array CompoundShapes{
    CompoundShape{Instruction::SetCompareLink, "Set Compare LinkSins"},
    CompoundShape{Instruction::CompareSetAndLink, "Compare & Set-LinkSins"},
    CompoundShape{Instruction::CompareSetThenLink, "Compare-Set & LinkSins"},
};

struct SystemSpaceTarget {
  std::string_view Title;
  SystemSpace Space;
  std::int32_t MenuId = 0;  // of a title set's menu
};
inline constexpr std::array SystemSpaceTargets{
    SystemSpaceTarget{"First Play PGC", SystemSpace::FirstPlay},
    SystemSpaceTarget{"Title Menu PGC", SystemSpace::TitleMenu},
    SystemSpaceTarget{"Root Menu PGC", SystemSpace::SetMenu, 3},
    SystemSpaceTarget{"SubPicture Menu PGC", SystemSpace::SetMenu, 4},
    SystemSpaceTarget{"Audio Menu PGC", SystemSpace::SetMenu, 5},
    SystemSpaceTarget{"Angle Menu PGC", SystemSpace::SetMenu, 6},
    SystemSpaceTarget{"Part of Title PGC", SystemSpace::SetMenu, 7},
    SystemSpaceTarget{"PGC in Video Manager", SystemSpace::VmgPgc},
};

// What an operand may be.
struct OperandKinds {
  bool Gprm = true;
  bool Sprm = false;
  bool Number = false;

  [[nodiscard]] constexpr bool Has(OperandKind kind) const {
    return (kind == OperandKind::Gprm && Gprm) || (kind == OperandKind::Sprm && Sprm) ||
           (kind == OperandKind::Number && Number);
  }
};

// Entry i has code i + 1. An exchange writes both of its operands, so it has registers only.
struct ArithmeticRow {
  Arithmetic Operation;
  std::string_view Title;
  OperandKinds Sources;
};
inline constexpr OperandKinds RegistersOnly{};
inline constexpr OperandKinds RegistersAndNumbers{.Number = true};
inline constexpr OperandKinds AnySource{.Sprm = true, .Number = true};
inline constexpr std::array ArithmeticRows{
    ArithmeticRow{Arithmetic::Mov, "Assign", AnySource},
    ArithmeticRow{Arithmetic::Swp, "Exchange", RegistersOnly},
    ArithmeticRow{Arithmetic::Add, "Add", RegistersAndNumbers},
    ArithmeticRow{Arithmetic::Sub, "Subtract", RegistersAndNumbers},
    ArithmeticRow{Arithmetic::Mul, "Multiply", RegistersAndNumbers},
    ArithmeticRow{Arithmetic::Div, "Divide", RegistersAndNumbers},
    ArithmeticRow{Arithmetic::Mod, "Remainder", RegistersAndNumbers},
    ArithmeticRow{Arithmetic::Rnd, "Random Value", RegistersAndNumbers},
    ArithmeticRow{Arithmetic::And, "Bitwise Product", AnySource},
    ArithmeticRow{Arithmetic::Or, "Bitwise Sum", AnySource},
    ArithmeticRow{Arithmetic::Xor, "Exclusive OR", AnySource},
};

// Of `ParsedCommand::Source`. Where SetAMXMD has no register, it has the switches of both channels.
[[nodiscard]] OperandKinds SourceKindsOf(const ParsedCommand& command);
// Of the right side of a comparison.
[[nodiscard]] OperandKinds RightKindsOf(const ParsedCommand& command);
// Set, comparison and link in one.
[[nodiscard]] bool IsCompound(const ParsedCommand& command);
// Jumps, calls and system sets, and the later compounds with a number as their source.
[[nodiscard]] bool ComparesRegistersOnly(const ParsedCommand& command);
// What the command's own target is; nothing where it names none.
[[nodiscard]] std::optional<TargetKind> TargetKindOf(const ParsedCommand& command);

// What the numbers go from and to.
struct NumberRange {
  std::int32_t Least;
  std::int32_t Most;
};
namespace range {
inline constexpr NumberRange Gprm{0, 15};
inline constexpr NumberRange Sprm{0, 23};
inline constexpr NumberRange Register{0, 65535};  // what one holds
inline constexpr NumberRange Line{1, 128};
inline constexpr NumberRange Level{1, 8};
inline constexpr NumberRange LinkButton{0, 36};  // 0 for the one that is selected
inline constexpr NumberRange SetButton{1, 36};
inline constexpr NumberRange Angle{1, 9};
inline constexpr NumberRange Audio{1, 8};        // and `NoAudio`
inline constexpr NumberRange Subpicture{1, 32};  // and `DummySubpicture`
}  // namespace range

// The choice of the list of resume cells that comes back to where the call was.
inline constexpr std::string_view DefaultChoice = "<<<<< Default >>>>>";

}  // namespace quorvelant
