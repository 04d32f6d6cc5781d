// The words of the command language with their codes, shared by reader, encoder and decoder.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "vm/parsed_command.h"

namespace quorvelant {

// The words by which a command is known, in lower case.
namespace word {
inline constexpr std::string_view Nop = "nop";
inline constexpr std::string_view GoTo = "goto";
inline constexpr std::string_view Break = "break";
inline constexpr std::string_view Exit = "exit";
inline constexpr std::string_view SetTmpPml = "settmppml";
inline constexpr std::string_view LinkPgcn = "linkpgcn";
inline constexpr std::string_view LinkPtt = "linkptt";
inline constexpr std::string_view LinkPgn = "linkpgn";
inline constexpr std::string_view LinkCn = "linkcn";
inline constexpr std::string_view Rsm = "rsm";
inline constexpr std::string_view JumpTt = "jumptt";
inline constexpr std::string_view JumpVtsTt = "jumpvts_tt";
inline constexpr std::string_view JumpVtsPtt = "jumpvts_ptt";
inline constexpr std::string_view JumpSsFp = "jumpss fp";
inline constexpr std::string_view JumpSsTitleMenu = "jumpss titlemenu";
inline constexpr std::string_view JumpSs = "jumpss";
inline constexpr std::string_view CallSs = "callss";
inline constexpr std::string_view SetStn = "setstn";
inline constexpr std::string_view SetNvtmr = "setnvtmr nv_tmr";
inline constexpr std::string_view SetGprmMd = "setgprmmd";
inline constexpr std::string_view SetAmxmd = "setamxmd";
inline constexpr std::string_view SetHlBtnn = "sethl_btnn";
}  // namespace word

// A link sub-instruction: as it is read, as it is shown, and its code on the disc.
struct SubInstruction {
  std::string_view Read;
  std::string_view Shown;
  std::int32_t Code;
};
inline constexpr std::array SubInstructions{
    SubInstruction{"linknolink", "LinkNoLink", 0},
    SubInstruction{"linktopc", "LinkTopC", 1},
    SubInstruction{"linknextc", "LinkNextC", 2},
    SubInstruction{"linkprevc", "LinkPrevC", 3},
    SubInstruction{"linktoppg", "LinkTopPG", 5},
    SubInstruction{"linknextpg", "LinkNextPG", 6},
    SubInstruction{"linkprevpg", "LinkPrevPG", 7},
    SubInstruction{"linktoppgc", "LinkTopPGC", 9},
    SubInstruction{"linknextpgc", "LinkNextPGC", 10},
    SubInstruction{"linkprevpgc", "LinkPrevPGC", 11},
    SubInstruction{"linkgouppgc", "LinkGoUpPGC", 12},
    SubInstruction{"linktailpgc", "LinkTailPGC", 13},
    SubInstruction{word::Rsm, "RSM", 16},
};

// The links that name their target.
struct NamedLink {
  std::string_view Name;
  std::string_view Shown;
  LinkKind Kind;
};
inline constexpr std::array NamedLinks{
    NamedLink{word::LinkPgcn, "LinkPGCN", LinkKind::Pgc},
    NamedLink{word::LinkPtt, "LinkPTT", LinkKind::Part},
    NamedLink{word::LinkPgn, "LinkPGN", LinkKind::Program},
    NamedLink{word::LinkCn, "LinkCN", LinkKind::Cell},
};

// Comparison operators in the order in which they are searched.
struct CompareOperator {
  std::string_view Text;
  CompareOperation Operation;
};
inline constexpr std::array CompareOperators{
    CompareOperator{"&", CompareOperation::AnyBit},
    CompareOperator{"==", CompareOperation::Equal},
    CompareOperator{"!=", CompareOperation::NotEqual},
    CompareOperator{">=", CompareOperation::GreaterOrEqual},
    CompareOperator{">", CompareOperation::Greater},
    CompareOperator{"<=", CompareOperation::LessOrEqual},
    CompareOperator{"<", CompareOperation::Less},
};

// Arithmetic words; entry i has code i + 1.
inline constexpr std::array<std::string_view, 11> ArithmeticWords{"mov", "swp", "add", "sub", "mul", "div",
                                                                  "mod", "rnd", "and", "or",  "xor"};

// The menus of a title set; entry i has number i + 3.
struct MenuWord {
  std::string_view Read;
  std::string_view Shown;
};
inline constexpr std::int32_t FirstMenuId = 3;
inline constexpr std::array MenuWords{
    MenuWord{"rootmenu", "RootMenu"},   MenuWord{"sub-picturemenu", "Sub-pictureMenu"},
    MenuWord{"audiomenu", "AudioMenu"}, MenuWord{"anglemenu", "AngleMenu"},
    MenuWord{"ptt_menu", "PTT_Menu"},
};

// A system register stands after the general ones where a byte may hold either.
inline constexpr std::int32_t SystemRegisterBase = 128;
// The number of "16:None" in SetSTN.
inline constexpr Operand NoAudio{OperandKind::Number, 16};
// The number that "63 Dummy" reads as in SetSTN. No disc has a stream of this number.
inline constexpr std::int32_t DummySubpicture = 254;
// What a byte of SetSTN holds: codes count up from the one of stream 0, those of registers from the one of
// GPRM0. A code below the first leaves the stream alone.
inline constexpr std::int32_t FirstAudioCode = 127;
inline constexpr std::int32_t FirstSubpictureCode = 127;
inline constexpr std::int32_t FirstAngleCode = 128;
inline constexpr std::int32_t FirstRegisterCode = 128;
constexpr std::int32_t StreamCode(const Operand& stream, std::int32_t first) {
  return stream.Number + (stream.Is(OperandKind::Gprm) ? FirstRegisterCode : first);
}

// The button number stands in the upper six bits of its byte.
inline constexpr std::int32_t ButtonUnit = 4;

}  // namespace quorvelant
