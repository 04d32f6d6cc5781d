// Keys of the keyboard as those of a player's remote.
#pragma once

#include <QKeyEvent>
#include <QString>
#include <optional>
#include <span>

#include "player/nav_machine.h"

namespace quorvelant {

// A key of the remote as the window offers it.
struct RemoteKey {
  NavKey Key;
  const char* Name;  // for people, to be translated
  Qt::Key Pressed;
};
[[nodiscard]] std::span<const RemoteKey> RemoteKeys();

// Nothing for keys that a remote does not have. Digits choose and press the button of that number.
[[nodiscard]] std::optional<NavEvent> RemoteKeyOf(const QKeyEvent& event);

}  // namespace quorvelant
