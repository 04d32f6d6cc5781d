// Commands with names become commands with numbers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/my_dvd.h"
#include "vm/command_parser.h"
#include "vm/name_index.h"

namespace quorvelant {

// What a number in the place of a target's name is ("LinkCN 2", "JumpVTS_PTT ptt_2 @ vts_ttn_1").
enum class NumericTargets {
  Refused,      // a name like any other; only a resume cell may be a number that names nothing
  BehindNames,  // stands for itself where nothing bears it as its name
  First         // the same, and "JumpSS pgc_3" is the third PGC whatever bears that name
};

struct ResolveOptions {
  NumericTargets Numbers = NumericTargets::Refused;
};

// What one text came to.
struct Resolution {
  std::string Hex;   // 16 digits, also when a target is missing: number 1 stands in for it
  std::string Text;  // as given; with a stored target that was found, the text names that target
  std::string Naming;
  std::string LinkNaming;
  bool TargetMissing = false;
  std::vector<std::string> MissingNames;  // in lower case
  TextFault Faults = TextFault::None;
};

// Parses, resolves and encodes a text. `target` is the name to point at whatever the text says, or empty.
// `names` may be nullptr where there is no project: then every name is missing.
Resolution ResolveText(std::string_view text, std::string_view target, NameIndex* names,
                       const ResolveOptions& options = {});

// Resolves a command of a project in place, by its text and its `To_Action`. When a target is missing the
// command keeps the digits and references it had. Gives what the text came to.
Resolution ResolveCommand(VMICommand_P& command, NameIndex& names, const ResolveOptions& options = {});

}  // namespace quorvelant
