#include "desk/version.h"

#include <array>
#include <string>

#include "base/text.h"

namespace quorvelant {

std::string_view ProgramVersion() {
  return QUORVELANT_VERSION;
}

std::string VersionCaption() {
  std::array<std::string, 3> numbers{"0", "0", "0"};  // major, minor, revision
  std::size_t count = 0;
  for (const std::string_view number : Split(ProgramVersion(), ".")) {
    if (count < numbers.size()) {
      numbers[count++] = number;
    }
  }
  return "Quorvelant Ondra Version " + numbers[0] + "." + numbers[1] + ".0." + numbers[2];
}

}  // namespace quorvelant
