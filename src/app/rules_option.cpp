#include "app/rules_option.h"

namespace quorvelant {

void AddRulesOption(CLI::App& command, RulesOption& option, const std::string& decides) {
  command.add_option("--rules", option.Name, decides + ": players or classic")
      ->check(CLI::IsMember({"players", "classic"}))
      ->capture_default_str();
}

}  // namespace quorvelant
