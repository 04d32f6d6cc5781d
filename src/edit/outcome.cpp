#include "edit/outcome.h"

#include "base/user_interface.h"

namespace quorvelant {

Outcome Carry(UserInterface& ui, const std::function<Outcome(Consent)>& operation) {
  Outcome outcome = operation(Consent::None);
  if (outcome.Result == Outcome::Kind::Asks && ui.Ask(outcome.Words.Title, outcome.Words.Text, false)) {
    outcome = operation(Consent::Given);
  }
  if (outcome.Result == Outcome::Kind::Refused) {
    ui.Tell(outcome.Words);
  }
  return outcome;
}

}  // namespace quorvelant
