#include "window/player_keys.h"

#include <algorithm>
#include <array>

namespace quorvelant {

namespace {

using enum RemoteOrder;

constexpr std::array Keys{
    RemoteKey{Press, NavKey::RootMenu, "Menu", "Menu", Qt::Key_M, 0, 0},
    RemoteKey{Press, NavKey::TitleMenu, "Title", "Title", Qt::Key_T, 0, 1},
    RemoteKey{Press, NavKey::Return, "Return", "Return", Qt::Key_Backspace, 0, 2},
    RemoteKey{Press, NavKey::Resume, "Resume", "Resume", Qt::Key_R, 0, 3},
    RemoteKey{Press, NavKey::PreviousPart, "Previous Chapter", "|◀", Qt::Key_PageUp, 1, 0},
    RemoteKey{Press, NavKey::NextPart, "Next Chapter", "▶|", Qt::Key_PageDown, 1, 1},
    RemoteKey{Next, NavKey::Audio, "Audio", "Audio", Qt::Key_A, 1, 2},
    RemoteKey{Next, NavKey::Subpicture, "Subtitles", "Subtitles", Qt::Key_S, 1, 3},
    RemoteKey{Play, NavKey::Wait, "Play", "Play", Qt::Key_P, 2, 0},
    RemoteKey{GoOn, NavKey::Wait, "Go On", "Go On", Qt::Key_Space, 2, 1},
    RemoteKey{StartAnew, NavKey::Wait, "Start Anew", "Anew", Qt::Key_Home, 2, 2},
    RemoteKey{Press, NavKey::Up, "Up", "▲", Qt::Key_Up, 0, 5},
    RemoteKey{Press, NavKey::Left, "Left", "◀", Qt::Key_Left, 1, 4},
    RemoteKey{Press, NavKey::Activate, "OK", "OK", Qt::Key_Return, 1, 5},
    RemoteKey{Press, NavKey::Right, "Right", "▶", Qt::Key_Right, 1, 6},
    RemoteKey{Press, NavKey::Down, "Down", "▼", Qt::Key_Down, 2, 5}};

bool IsAlone(const QKeyEvent& event) {
  return (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

}  // namespace

std::span<const RemoteKey> RemoteKeys() {
  return Keys;
}

const RemoteKey* RemoteKeyOf(const QKeyEvent& event) {
  const int key = event.key() == Qt::Key_Enter ? static_cast<int>(Qt::Key_Return) : event.key();
  const auto* const row =
      std::ranges::find_if(Keys, [key](const RemoteKey& one) { return one.Pressed == key; });
  return IsAlone(event) && row != Keys.end() ? row : nullptr;
}

std::optional<int> DigitOf(const QKeyEvent& event) {
  return IsAlone(event) && event.key() >= Qt::Key_0 && event.key() <= Qt::Key_9
             ? std::optional(event.key() - Qt::Key_0)
             : std::nullopt;
}

}  // namespace quorvelant
