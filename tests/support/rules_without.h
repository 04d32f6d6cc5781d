// The rules of players but for one.
#pragma once

#include "base/rules.h"

namespace quorvelant {

inline Rules PlayersWithout(bool Rules::*flag) {
  Rules rules = Rules::Players;
  rules.*flag = false;
  return rules;
}

}  // namespace quorvelant
