#include "window/help_actions.h"

#include <string_view>

#include "window/about_box.h"
#include "window/manual_window.h"
#include "window/shortcut_sheet.h"

namespace quorvelant {

namespace {

// The one of its kind that the window has.
template <typename Kind>
Kind* OneOf(QWidget* window) {
  auto* there = window->findChild<Kind*>(QString(), Qt::FindDirectChildrenOnly);
  return there == nullptr ? new Kind(window) : there;
}

template <typename Kind>
void ShowOneOf(QWidget* window) {
  auto* shown = OneOf<Kind>(window);
  shown->show();
  shown->raise();
  shown->activateWindow();
}

}  // namespace

void HandleHelp(Actions& actions, QWidget* window) {
  const auto open = [window](std::string_view page) { OneOf<ManualWindow>(window)->Open(page); };
  actions.Handle(ActionId::Manual, [open] { open(FirstManualPage); });
  actions.Handle(ActionId::ChangeLog, [open] { open(ChangeLogPage); });
  actions.Handle(ActionId::Shortcuts, [window] { ShowOneOf<ShortcutSheet>(window); });
  actions.Handle(ActionId::About, [window, open] {
    auto* box = OneOf<AboutBox>(window);
    QObject::disconnect(box, &AboutBox::ChangeLogWanted, window, nullptr);
    QObject::connect(box, &AboutBox::ChangeLogWanted, window, [open] { open(ChangeLogPage); });
    ShowOneOf<AboutBox>(window);
  });
}

}  // namespace quorvelant
