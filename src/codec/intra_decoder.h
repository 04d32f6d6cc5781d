// Decodes single intra pictures for thumbnails and viewers.
#pragma once

#include <optional>

#include "base/bytes.h"
#include "codec/planes.h"

namespace quorvelant {

// The largest side of a picture that is decoded, which bounds the memory taken for a lying header.
inline constexpr unsigned LargestPictureSide = 4096;

// The first I picture of a stream that begins with a sequence header. MPEG-1 and MPEG-2, any chroma
// format; of two fields the second is decoded too if it is intra, otherwise the first is shown on its
// lines as well. Damage leaves a damaged picture: what is missing is taken from the macroblock above,
// or is black. Nothing comes back only where no sequence header gives a size of up to
// `LargestPictureSide`.
std::optional<Planes> DecodeIntraPicture(ByteView streamBytes, bool isMpeg2);

// The same as a whole Windows bitmap file, empty where there is no picture.
Bytes DecodeIFrame(ByteView streamBytes, bool isMpeg2);

}  // namespace quorvelant
