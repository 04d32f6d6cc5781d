// `quorvelant wizard`: from films to a project with menus.
#pragma once

#include <CLI/CLI.hpp>

#include "app/command_form.h"

namespace quorvelant {

// quorvelant wizard FILE ... -o PROJECT.qvp [--author FOLDER] [--rules players|classic] [--auto] [--force]
//                   [--preview DIR] [--theme NAME] [--menus WORDS] [--labels LANGUAGE] [--play WORD]
void AddWizardCommand(CLI::App& program, CommandContext& context);

}  // namespace quorvelant
