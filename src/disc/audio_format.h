// The kinds of sound that a disc carries, by the names of their files.
#pragma once

#include <string>
#include <string_view>

namespace quorvelant {

// By the file's name alone: "AC3" for ".ac3", "PCM" for ".wav", "DTS" for ".dts", in any case; else empty.
std::string GetAudioType(std::string_view fileName);

}  // namespace quorvelant
