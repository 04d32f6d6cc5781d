// Small files, whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/disk.h"

namespace quorvelant {

// Writes `content` beside `path`, onto the disk, and renames it, so that nobody ever sees half of it and a
// failed write leaves what was there. A link keeps being one, and what it points at is replaced, with its
// mode kept. Only a plain file is replaced (EISDIR, ENOTSUP). 0, or the errno value of what the system
// refused.
[[nodiscard]] int WriteAside(const std::string& path, std::string_view content, Disk& disk = SystemDisk());

// The bytes of a plain file of at most `mostBytes`; nothing when it is missing, no plain file or larger.
std::optional<std::string> ReadWhole(const std::string& path, std::uint64_t mostBytes);

// The first bytes of a plain file, at most `mostBytes`; nothing when it cannot be read.
std::optional<std::string> ReadHead(const std::string& path, std::uint64_t mostBytes);

// Why `path` is no plain file, as in "it is a folder, not a file"; empty where it is one.
std::string_view WhyNotPlainFile(const std::string& path);

}  // namespace quorvelant
