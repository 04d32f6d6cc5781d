// What a command can lead to from where it stands.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "model/project.h"
#include "model/walk.h"
#include "vm/command_builder.h"
#include "vm/command_domains.h"
#include "vm/command_parser.h"
#include "vm/command_types.h"
#include "vm/name_index.h"

namespace quorvelant {

// The PGC in whose lists, or on whose cells' buttons, a command stands. First Play has no entry.
using CommandStand = PlacedPgc<const PGC_P>;
// By the key of the PGC or of anything in it; nothing where there is none or it is removed. The project must
// outlive the answer.
[[nodiscard]] std::optional<CommandStand> StandOf(const Project& project, std::string_view key);
[[nodiscard]] CommandDomain DomainOf(const CommandStand& stand);

// Whether a command that names this element leads to it, and not to another of the same name, nor by a
// command word in the name to another command. `name` is the element's own: it is known by its address.
[[nodiscard]] bool LeadsTo(NameIndex& names, TargetKind kind, const std::string& name);

// The command that names a target of the kind and nothing else.
[[nodiscard]] CommandFields FieldsTo(TargetKind kind, const std::string& name);

// The names that a target of the kind can have there, in the order of the disc; none where players do not
// take such a command. A PGC of the title set's titles or of the own language, a program or cell of the own
// PGC, a title or part of the own set, any title or PGC of the Video Manager.
[[nodiscard]] std::vector<std::string> TargetsFor(const Project& project, const Rules& rules,
                                                  const CommandStand& stand, TargetKind kind);

// The jumps, or in titles calls, that lead to First Play, to menus that some language has, and to PGCs of the
// Video Manager, in the order of `SystemSpaceTargets`. Title sets are numbered as on the disc; calls come
// back to where they were.
[[nodiscard]] std::vector<CommandFields> SystemSpaceChoices(const Project& project, const Rules& rules,
                                                            const CommandStand& stand);

// What a command of a type starts with: the first target of its place, the first register, the lowest number.
// Nothing where the place has no target for it.
[[nodiscard]] std::optional<CommandFields> DefaultFields(const Project& project, const Rules& rules,
                                                         const CommandStand& stand, CommandType type);

}  // namespace quorvelant
