// An action pressed and done: what it does comes from the event loop.
#pragma once

#include <QAction>
#include <QCoreApplication>

namespace quorvelant {

inline void Press(QAction& action) {
  action.trigger();
  QCoreApplication::sendPostedEvents();
}

}  // namespace quorvelant
