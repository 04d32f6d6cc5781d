// The information files on disk: small, written whole.
#pragma once

#include <string>

#include "base/bytes.h"
#include "base/random.h"

namespace quorvelant {

// Replaces `base`.IFO and `base`.BUP by `ifo`. Raises FileError.
void WriteIfoAndBackup(const std::string& base, ByteView ifo, Random& files);

}  // namespace quorvelant
