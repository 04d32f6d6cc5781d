#include "window/tool_actions.h"

#include "window/error_list_window.h"
#include "window/map_window.h"
#include "window/settings_dialog.h"

namespace quorvelant {

namespace {

template <class Kind>
void ShowOneOf(WindowParts& parts, QWidget* window) {
  Kind* shown = window->findChild<Kind*>(QString(), Qt::FindDirectChildrenOnly);
  shown = shown == nullptr ? new Kind(parts, window) : shown;
  shown->show();
  shown->raise();
  shown->activateWindow();
}

}  // namespace

void HandleTools(WindowParts& parts, QWidget* window) {
  parts.Commands.Handle(ActionId::Settings, [&parts, window] { ShowOneOf<SettingsDialog>(parts, window); });
  parts.Commands.Handle(ActionId::ShowMap, [&parts, window] { ShowOneOf<MapWindow>(parts, window); });
  parts.Commands.Handle(ActionId::ErrorList, [&parts, window] { ShowOneOf<ErrorListWindow>(parts, window); });
}

}  // namespace quorvelant
