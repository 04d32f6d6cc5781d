// Files that are dragged into the window from outside.
#pragma once

#include <QMimeData>
#include <string>
#include <vector>

#include "base/message.h"

namespace quorvelant {

[[nodiscard]] bool HoldsFiles(const QMimeData& data);
// The paths of this system; what lies elsewhere is told.
[[nodiscard]] std::vector<std::string> PathsIn(const QMimeData& data, std::vector<Message>& told);

}  // namespace quorvelant
