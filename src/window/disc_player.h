// The player that is installed.
#pragma once

#include <QString>

namespace quorvelant {

// Starts it on a VIDEO_TS folder, or on the folder that holds one. False where there is none.
bool PlayDisc(const QString& folder);

}  // namespace quorvelant
