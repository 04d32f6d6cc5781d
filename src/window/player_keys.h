// Keys of the keyboard as those of a player's remote.
#pragma once

#include <QKeyEvent>
#include <QString>
#include <cstdint>
#include <optional>
#include <span>

#include "player/nav_machine.h"

namespace quorvelant {

// What a remote can be asked for.
enum class RemoteOrder : std::uint8_t {
  Press,  // `NavKey`
  Next,   // the next stream, `NavKey`
  GoOn,
  Play,  // time runs, or stands
  StartAnew,
};

// A key of the remote as the window offers it.
struct RemoteKey {
  RemoteOrder Order;
  NavKey Key;
  const char* Name;  // for people, to be translated
  const char* Sign;  // on the key
  Qt::Key Pressed;
  int Row;  // of the remote
  int Column;
};
[[nodiscard]] std::span<const RemoteKey> RemoteKeys();

// Nothing for keys that a remote does not have, or with others held.
[[nodiscard]] const RemoteKey* RemoteKeyOf(const QKeyEvent& event);
[[nodiscard]] std::optional<int> DigitOf(const QKeyEvent& event);

}  // namespace quorvelant
