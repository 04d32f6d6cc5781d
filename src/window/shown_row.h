// The chosen row of a list stays in sight.
#pragma once

#include <QAbstractItemView>

namespace quorvelant {

// Also when the room for the list becomes smaller, or its rows others. The view has its model by now.
void KeepChosenRowShown(QAbstractItemView& view);

}  // namespace quorvelant
