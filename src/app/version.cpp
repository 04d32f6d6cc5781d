#include "app/version.h"

namespace quorvelant {

std::string_view ProgramVersion() {
  return QUORVELANT_VERSION;
}

}  // namespace quorvelant
