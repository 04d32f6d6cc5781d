// The messages about navigation commands, each of which takes the command's text, and about the names by
// which they lead to elements.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind CommandUnknown{"command-unknown", Severity::Warning, "Command Warning",
                                            "\"{}\" is no command; it stands as NOP"};
inline constexpr MessageKind CommandNameTakenForWord{
    "command-name-taken-for-word", Severity::Warning, "Command Warning",
    "\"{}\": a name in it holds a command word and is taken for that command; rename the target"};
inline constexpr MessageKind CommandNumberNotComparable{
    "command-number-not-comparable", Severity::Warning, "Command Warning",
    "\"{}\": this command can compare with a register only; players will not compare with the number"};
inline constexpr MessageKind CommandLinkNotCarried{
    "command-link-not-carried", Severity::Warning, "Command Warning",
    "\"{}\": a compound command can carry a sub-instruction only (LinkTopC, RSM, ...); the target is lost"};
inline constexpr MessageKind CommandComparesSetRegister{
    "command-compares-set-register", Severity::Warning, "Command Warning",
    "\"{}\": the comparison after a set always takes the register just set"};
inline constexpr MessageKind CommandWithoutOperator{
    "command-without-operator", Severity::Warning, "Command Warning",
    "\"{}\": the comparison has no operator; players will do nothing"};
inline constexpr MessageKind CommandMixesStreamValues{
    "command-mixes-stream-values", Severity::Warning, "Command Warning",
    "\"{}\": SetSTN takes numbers or registers, not both in one command"};
inline constexpr MessageKind CommandSetNotCarried{
    "command-set-not-carried", Severity::Warning, "Command Warning",
    "\"{}\": a compound command can set registers only; the set is lost"};
inline constexpr MessageKind CommandMenuUnknown{"command-menu-unknown", Severity::Warning, "Command Warning",
                                                "\"{}\" names no menu that a title set can have"};
inline constexpr MessageKind CommandLinkUnknown{
    "command-link-unknown", Severity::Warning, "Command Warning",
    "\"{}\": what stands after the set is no link (LinkTopC, LinkPGCN, RSM, ...)"};
inline constexpr MessageKind CommandRegisterBeyondRange{
    "command-register-beyond-range", Severity::Warning, "Command Warning",
    "\"{}\": registers are GPRM0 to GPRM15 and SPRM0 to SPRM23"};

inline constexpr MessageKind CommandNumberBeyondField{
    "command-number-beyond-field", Severity::Warning, "Command Warning",
    "\"{}\": a number in it is larger than its command holds, and players see another; registers hold 0 to "
    "65535, jumps compare with 0 to 255, buttons are 1 to 36, lines 1 to 128"};
inline constexpr MessageKind CommandStreamBeyondDisc{"command-stream-beyond-disc", Severity::Warning,
                                                     "Command Warning",
                                                     "\"{}\": a disc has audio streams 1 to 8, subpicture "
                                                     "streams 1 to 32 and angles 1 to 9; players do not find "
                                                     "the one that is set"};
inline constexpr MessageKind CommandLeftNoRegister{"command-left-no-register", Severity::Warning,
                                                   "Command Warning",
                                                   "\"{}\": the left side of a comparison is a GPRM; players "
                                                   "compare another register. Bring the value into a "
                                                   "GPRM first: Mov GPRM1, SPRM3"};
inline constexpr MessageKind CommandSetsNothing{
    "command-sets-nothing", Severity::Warning, "Command Warning",
    "\"{}\" sets nothing as it is written: its words stand without blanks, as in SetSTN audio=1, "
    "subpicture=1:on, angle=1"};
inline constexpr MessageKind CommandLinkLost{
    "command-link-lost", Severity::Warning, "Command Warning",
    "\"{}\": this command carries no link, so what stands after its \";\" is lost; write it as a command of "
    "its own"};

inline constexpr MessageKind CommandLeadsNowhere{"command-leads-nowhere", Severity::Error, "Command Error",
                                                 "There is no \"{}\" to which such a command can lead"};

// Each takes the name; the second the element that has it.
inline constexpr MessageKind NameEmpty{"name-empty", Severity::Error, "Name Error", "A name is needed"};
inline constexpr MessageKind NameInUse{"name-in-use", Severity::Error, "Name Error",
                                       "The name \"{}\" is in use: {} has it"};
inline constexpr MessageKind NameReserved{"name-reserved", Severity::Error, "Name Error",
                                          "\"{}\" cannot be a name: it stands for no PGC at all"};
inline constexpr MessageKind NameBreaksLine{
    "name-breaks-line", Severity::Error, "Name Error",
    R"("{}" cannot be a name: ";", tabs and line ends part the texts in which names stand)"};
inline constexpr MessageKind NameIsNumber{"name-is-number", Severity::Error, "Name Error",
                                          "\"{}\" cannot be a name: commands would take it for a number"};
inline constexpr MessageKind NameNotCarried{
    "name-not-carried", Severity::Error, "Name Error",
    R"("{}" cannot be a name: commands would read something else in it ("{}"))"};

}  // namespace quorvelant::message
