// The rooms that the switch form calls, wired for a real run.
#pragma once

#include "app/switch_form.h"
#include "base/user_interface.h"

namespace quorvelant {

// Everything is told through `ui`, which must outlive the services.
[[nodiscard]] BatchServices MakeBatchServices(UserInterface& ui);

}  // namespace quorvelant
