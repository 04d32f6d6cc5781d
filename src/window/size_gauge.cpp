#include "window/size_gauge.h"

namespace quorvelant {

SizeGauge::SizeGauge(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Disc size"));
}

}  // namespace quorvelant
