#include "window/player_keys.h"

#include <algorithm>
#include <array>

namespace quorvelant {

namespace {

constexpr std::array Keys{RemoteKey{NavKey::Up, "Up", Qt::Key_Up},
                          RemoteKey{NavKey::Down, "Down", Qt::Key_Down},
                          RemoteKey{NavKey::Left, "Left", Qt::Key_Left},
                          RemoteKey{NavKey::Right, "Right", Qt::Key_Right},
                          RemoteKey{NavKey::Activate, "OK", Qt::Key_Return},
                          RemoteKey{NavKey::RootMenu, "Menu", Qt::Key_M},
                          RemoteKey{NavKey::TitleMenu, "Title", Qt::Key_T},
                          RemoteKey{NavKey::Return, "Return", Qt::Key_Backspace},
                          RemoteKey{NavKey::Resume, "Resume", Qt::Key_R},
                          RemoteKey{NavKey::PreviousPart, "Previous Chapter", Qt::Key_PageUp},
                          RemoteKey{NavKey::NextPart, "Next Chapter", Qt::Key_PageDown},
                          RemoteKey{NavKey::Audio, "Audio", Qt::Key_A},
                          RemoteKey{NavKey::Subpicture, "Subtitles", Qt::Key_S},
                          RemoteKey{NavKey::Wait, "Go On", Qt::Key_Space}};

}  // namespace

std::span<const RemoteKey> RemoteKeys() {
  return Keys;
}

std::optional<NavEvent> RemoteKeyOf(const QKeyEvent& event) {
  const auto held = event.modifiers() & ~Qt::KeypadModifier;
  if (held != Qt::NoModifier) {
    return std::nullopt;
  }
  if (event.key() >= Qt::Key_1 && event.key() <= Qt::Key_9) {
    return NavEvent{NavKey::Number, static_cast<std::uint16_t>(event.key() - Qt::Key_0)};
  }
  const int key = event.key() == Qt::Key_Enter ? static_cast<int>(Qt::Key_Return) : event.key();
  const auto* const row =
      std::ranges::find_if(Keys, [key](const RemoteKey& one) { return one.Pressed == key; });
  return row == Keys.end() ? std::nullopt : std::optional(NavEvent{row->Key, 0});
}

}  // namespace quorvelant
