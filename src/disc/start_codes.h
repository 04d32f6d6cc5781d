// The start codes of MPEG streams: the byte that follows 00 00 01.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorvelant {

inline constexpr std::uint32_t StartCodePrefix = 0x00000100;  // with the value in its last byte
inline constexpr std::size_t StartCodeBytes = 4;

namespace start_code {

// Video (ISO/IEC 13818-2 table 6-1).
inline constexpr std::uint8_t Picture = 0x00;
inline constexpr std::uint8_t FirstSlice = 0x01;
inline constexpr std::uint8_t LastSlice = 0xAF;
inline constexpr std::uint8_t UserData = 0xB2;
inline constexpr std::uint8_t Sequence = 0xB3;
inline constexpr std::uint8_t Extension = 0xB5;
inline constexpr std::uint8_t SequenceEnd = 0xB7;
inline constexpr std::uint8_t Group = 0xB8;

// Systems (ISO/IEC 13818-1 tables 2-18 and 2-33). From `Pack` on no value belongs to video.
inline constexpr std::uint8_t Pack = 0xBA;
inline constexpr std::uint8_t SystemHeader = 0xBB;
inline constexpr std::uint8_t PrivateStream1 = 0xBD;
inline constexpr std::uint8_t PaddingStream = 0xBE;
inline constexpr std::uint8_t PrivateStream2 = 0xBF;
inline constexpr std::uint8_t VideoStream = 0xE0;

constexpr bool IsSlice(unsigned code) {
  return code >= FirstSlice && code <= LastSlice;
}

}  // namespace start_code

// extension_start_code_identifier: the upper four bits of the byte after an extension's start code
// (ISO/IEC 13818-2 table 6-2).
namespace extension_id {
inline constexpr unsigned Sequence = 1;
inline constexpr unsigned SequenceDisplay = 2;
inline constexpr unsigned QuantMatrix = 3;
inline constexpr unsigned PictureDisplay = 7;
inline constexpr unsigned PictureCoding = 8;
}  // namespace extension_id

}  // namespace quorvelant
