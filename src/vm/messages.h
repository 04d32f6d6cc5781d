// The messages about navigation commands. Each takes the command's text.
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
    "\"{}\": the comparison behind a set always takes the register just set"};
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
    "\"{}\": what stands behind the set is no link (LinkTopC, LinkPGCN, RSM, ...)"};
inline constexpr MessageKind CommandRegisterBeyondRange{
    "command-register-beyond-range", Severity::Warning, "Command Warning",
    "\"{}\": registers are GPRM0 to GPRM15 and SPRM0 to SPRM23"};

}  // namespace quorvelant::message
