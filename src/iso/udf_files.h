// The files and folders of UDF (ECMA-167 part 4, as UDF 1.02 narrows it).
#pragma once

#include <cstddef>
#include <string_view>

#include "base/bytes.h"
#include "iso/image_layout.h"
#include "iso/image_time.h"

namespace quorvelant::udf {

// What one name takes in a folder: 38 bytes and the identifier, rounded up to four. A disc's names have
// twelve letters, after one byte that tells their width; the folder above has no name.
inline constexpr std::size_t ParentNameBytes = 40;
inline constexpr std::size_t FileNameBytes = 52;

// The blocks of the partition up to the first file: file set, folders, and an entry for each file.
[[nodiscard]] Bytes FileStructure(const ImageLayout& layout, std::string_view label, const ImageTime& time);

}  // namespace quorvelant::udf
