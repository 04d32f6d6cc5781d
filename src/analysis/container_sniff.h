// What a file is by its first bytes, whatever its name says.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace quorvelant {

enum class SourceKind {
  Video,  // an MPEG-1 or MPEG-2 elementary stream
  Ac3,
  Dts,
  Wave,
  Bitmap,
  // Containers and codings that no disc is made of.
  ProgramStream,
  TransportStream,
  Mp4,
  Matroska,
  Ogg,
  Avi,
  Asf,
  Flac,
  Aiff,
  MpegAudio,
  Aac,
  AdvancedVideo,
  Empty,
  Unknown
};

// As many of a file as are looked at. A program stream shows its video within them.
inline constexpr std::size_t SniffBytes = std::size_t{64} << 10;

SourceKind SniffSource(ByteView head);
// The same of a file; `Unknown` when it cannot be read.
SourceKind SniffFile(const std::string& file);

// Of a kind that no disc is made of, what it is, as in "an MPEG program stream"; empty for the others.
std::string_view ForeignKindText(SourceKind kind);
// Whether the kind may hold several streams, from which one is taken.
bool IsContainer(SourceKind kind);

// Whether a foreign file's head shows MPEG-2 video of a size that a disc carries, which can be taken as it
// is.
bool ShowsDiscVideo(SourceKind kind, ByteView head);

}  // namespace quorvelant
