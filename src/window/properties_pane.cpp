#include "window/properties_pane.h"

namespace quorvelant {

PropertiesPane::PropertiesPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Properties"));
}

}  // namespace quorvelant
