// The words of the command language with their codes, shared by reader, encoder and decoder.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvelant {

// What `ParsedCommand::Name` may hold.
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
inline constexpr std::string_view JumpSsVmgm = "jumpss vmgm";
inline constexpr std::string_view CallSs = "callss";
inline constexpr std::string_view CallSsFp = "callss fp_dom";
inline constexpr std::string_view CallSsTitleMenu = "callss titlemenu";
inline constexpr std::string_view CallSsVtsm = "callss vtsm";
inline constexpr std::string_view CallSsVmgm = "callss vmgm";
inline constexpr std::string_view SetStn = "setstn";
inline constexpr std::string_view SetNvtmr = "setnvtmr nv_tmr";
inline constexpr std::string_view SetGprmMd = "setgprmmd";
inline constexpr std::string_view SetAmxmd = "setamxmd";
inline constexpr std::string_view SetHlBtnn = "sethl_btnn";
inline constexpr std::string_view Set = "set";
inline constexpr std::string_view Type3v1 = "type3v1";
inline constexpr std::string_view Type3v2 = "type3v2";
inline constexpr std::string_view Type3v3 = "type3v3";
}  // namespace word

// A link sub-instruction: as it is read, as it is kept, as it is shown, and its code on the disc.
struct SubInstruction {
  std::string_view Read;
  std::string_view Name;
  std::string_view Shown;
  std::int32_t Code;
};
inline constexpr std::array SubInstructions{
    SubInstruction{"linknolink", "linknolink", "LinkNoLink", 0},
    SubInstruction{"linktopc", "linktopcell", "LinkTopC", 1},
    SubInstruction{"linknextc", "linknextcell", "LinkNextC", 2},
    SubInstruction{"linkprevc", "linkprevcell", "LinkPrevC", 3},
    SubInstruction{"linktoppg", "linktoppg", "LinkTopPG", 5},
    SubInstruction{"linknextpg", "linknextpg", "LinkNextPG", 6},
    SubInstruction{"linkprevpg", "linkprevpg", "LinkPrevPG", 7},
    SubInstruction{"linktoppgc", "linktoppgc", "LinkTopPGC", 9},
    SubInstruction{"linknextpgc", "linknextpgc", "LinkNextPGC", 10},
    SubInstruction{"linkprevpgc", "linkprevpgc", "LinkPrevPGC", 11},
    SubInstruction{"linkgouppgc", "linkgouppgc", "LinkGoUpPGC", 12},
    SubInstruction{"linktailpgc", "linktailpgc", "LinkTailPGC", 13},
    SubInstruction{"rsm", "rsm", "RSM", 16},
};

// The links that name their target, with the sub-code of each.
struct NamedLink {
  std::string_view Name;
  std::string_view Shown;
  std::int32_t SubCode;
};
inline constexpr std::array NamedLinks{
    NamedLink{word::LinkPgcn, "LinkPGCN", 4},
    NamedLink{word::LinkPtt, "LinkPTT", 5},
    NamedLink{word::LinkPgn, "LinkPGN", 6},
    NamedLink{word::LinkCn, "LinkCN", 7},
};

// Comparison operators in the order in which they are searched, with their codes.
struct CompareOperator {
  std::string_view Text;
  std::uint32_t Code;
};
inline constexpr std::array CompareOperators{
    CompareOperator{"&", 1}, CompareOperator{"==", 2}, CompareOperator{"!=", 3}, CompareOperator{">=", 4},
    CompareOperator{">", 5}, CompareOperator{"<=", 6}, CompareOperator{"<", 7},
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

// A system register stands behind the general ones where a byte may hold either.
inline constexpr std::int32_t SystemRegisterBase = 128;
// The dummy subpicture stream, as SetSTN keeps it.
inline constexpr std::int32_t DummySubpicture = 255;
// The button number stands in the upper six bits of its byte.
inline constexpr std::int32_t ButtonUnit = 4;

}  // namespace quorvelant
