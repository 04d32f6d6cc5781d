// Sizes for people.
#pragma once

#include <cstdint>
#include <string>

namespace quorvelant {

// "4.37 GB", "1.2 MB", "512 bytes"; a GB is 10^9 bytes.
[[nodiscard]] std::string SizeText(std::uint64_t bytes);

}  // namespace quorvelant
