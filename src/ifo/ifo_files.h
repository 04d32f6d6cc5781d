// The information files on disk: small, read and written whole.
#pragma once

#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/random.h"
#include "ifo/fix_up.h"

namespace quorvelant {

// The regular files of a folder by name; empty where it cannot be listed.
std::vector<DiscFile> ListFiles(const std::string& folder);

// The whole of a file. Raises FileError.
Bytes ReadWhole(const std::string& path, Random& files);

// Replaces `base`.IFO and `base`.BUP by `ifo`. Raises FileError.
void WriteIfoAndBackup(const std::string& base, ByteView ifo, Random& files);

}  // namespace quorvelant
