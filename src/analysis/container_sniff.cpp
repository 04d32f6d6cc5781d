#include "analysis/container_sniff.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ranges>

#include "analysis/disc_fit.h"
#include "base/file_text.h"
#include "disc/start_code_search.h"
#include "disc/start_codes.h"
#include "disc/video_standard.h"

namespace quorvelant {

namespace {

using namespace std::string_view_literals;

bool Has(ByteView head, std::size_t at, std::string_view text) {
  return head.size() >= at + text.size() &&
         std::ranges::equal(text, head.subspan(at, text.size()),
                            [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

struct Signature {
  SourceKind Kind;
  std::size_t At;
  std::string_view Text;
};

constexpr std::array Signatures{
    Signature{SourceKind::Ac3, 0, "\x0B\x77"sv},
    Signature{SourceKind::Dts, 0, "\x7F\xFE\x80\x01"sv},
    Signature{SourceKind::Bitmap, 0, "BM"sv},
    Signature{SourceKind::Bitmap, 0, "\x89PNG"sv},
    Signature{SourceKind::Bitmap, 0, "\xFF\xD8\xFF"sv},
    Signature{SourceKind::Mp4, 4, "ftyp"sv},
    Signature{SourceKind::Mp4, 4, "moov"sv},
    Signature{SourceKind::Mp4, 4, "mdat"sv},
    Signature{SourceKind::Mp4, 4, "wide"sv},
    Signature{SourceKind::Matroska, 0, "\x1A\x45\xDF\xA3"sv},
    Signature{SourceKind::Ogg, 0, "OggS"sv},
    Signature{SourceKind::Flac, 0, "fLaC"sv},
    Signature{SourceKind::Asf, 0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv},
    Signature{SourceKind::Aiff, 0, "FORM"sv},
    Signature{SourceKind::MpegAudio, 0, "ID3"sv},
};

// RIFF holds a form: sound unless it is known to be another.
SourceKind RiffKind(ByteView head) {
  if (Has(head, 8, "AVI ")) {
    return SourceKind::Avi;
  }
  return Has(head, 8, "CDXA") ? SourceKind::ProgramStream : SourceKind::Wave;
}

// Packets of 188 bytes, or of 192 with an arrival time before each (ISO/IEC 13818-1 2.4.3.2).
bool IsTransportStream(ByteView head) {
  constexpr std::uint8_t Sync = 0x47;
  const auto syncsEvery = [head](std::size_t bytes) {
    const std::size_t first = bytes - 188;
    return head.size() > first + 2 * bytes && head[first] == Sync && head[first + bytes] == Sync &&
           head[first + 2 * bytes] == Sync;
  };
  return syncsEvery(188) || syncsEvery(192);
}

// The first frame of MPEG audio (ISO/IEC 11172-3 2.4.1.3), or of AAC, whose layer is 0 (ISO/IEC 13818-7 6.2).
SourceKind MpegAudioKind(ByteView head) {
  if (head.size() < 4 || head[0] != 0xFF || (head[1] & 0xE0) != 0xE0 || (head[1] & 0x18) == 0x08) {
    return SourceKind::Unknown;
  }
  if ((head[1] & 0x06) == 0) {
    return (head[1] & 0xF0) == 0xF0 ? SourceKind::Aac : SourceKind::Unknown;
  }
  const bool rates = (head[2] & 0xF0) != 0xF0 && (head[2] & 0x0C) != 0x0C;
  return rates ? SourceKind::MpegAudio : SourceKind::Unknown;
}

// By the first start code that tells: MPEG-2 has no slices below line 36 at a disc's sizes, so the parameter
// sets of later codings stand out.
SourceKind StartCodeKind(ByteView head) {
  for (std::size_t at = FindStartCode(head); at != NoStartCode && at + 3 < head.size();
       at = FindStartCode(head, at + 1)) {
    const unsigned code = head[at + 3];
    if (code >= start_code::Pack) {
      return SourceKind::ProgramStream;
    }
    if (code == start_code::Sequence || code == start_code::Group || code == start_code::Picture) {
      return SourceKind::Video;
    }
    if (code == 0x67 || code == 0x27 || Has(head, at + 3, "\x40\x01"sv)) {
      return SourceKind::AdvancedVideo;
    }
  }
  return SourceKind::Unknown;
}

struct FrameSize {
  int Width;
  int Height;
};

// Of the first sequence header that an MPEG-2 extension follows.
std::optional<FrameSize> FirstMpeg2Size(ByteView head) {
  std::optional<FrameSize> size;
  for (std::size_t at = FindStartCode(head); at != NoStartCode && at + 6 < head.size();
       at = FindStartCode(head, at + 1)) {
    if (!size && head[at + 3] == start_code::Sequence) {
      size = {(head[at + 4] << 4) | (head[at + 5] >> 4), ((head[at + 5] & 0xF) << 8) | head[at + 6]};
    } else if (size && head[at + 3] == start_code::Extension && head[at + 4] >> 4 == extension_id::Sequence) {
      return size;
    }
  }
  return std::nullopt;
}

}  // namespace

SourceKind SniffSource(ByteView head) {
  if (head.empty()) {
    return SourceKind::Empty;
  }
  if (Has(head, 0, "RIFF") || Has(head, 0, "RF64")) {
    return RiffKind(head);
  }
  for (const Signature& signature : Signatures) {
    if (Has(head, signature.At, signature.Text)) {
      return signature.Kind;
    }
  }
  if (IsTransportStream(head)) {
    return SourceKind::TransportStream;
  }
  const SourceKind audio = MpegAudioKind(head);
  return audio == SourceKind::Unknown ? StartCodeKind(head) : audio;
}

SourceKind SniffFile(const std::string& file) {
  const auto head = ReadHead(file, SniffBytes);
  return head ? SniffSource({reinterpret_cast<const std::uint8_t*>(head->data()), head->size()})
              : SourceKind::Unknown;
}

std::string_view ForeignKindText(SourceKind kind) {
  switch (kind) {
    case SourceKind::ProgramStream:
      return "an MPEG program stream";
    case SourceKind::TransportStream:
      return "an MPEG transport stream";
    case SourceKind::Mp4:
      return "an MP4 or MOV file";
    case SourceKind::Matroska:
      return "a Matroska or WebM file";
    case SourceKind::Ogg:
      return "an Ogg file";
    case SourceKind::Avi:
      return "an AVI file";
    case SourceKind::Asf:
      return "an ASF file (WMV, WMA)";
    case SourceKind::Flac:
      return "FLAC sound";
    case SourceKind::Aiff:
      return "an AIFF file";
    case SourceKind::MpegAudio:
      return "MPEG sound (MP2 or MP3)";
    case SourceKind::Aac:
      return "AAC sound";
    case SourceKind::AdvancedVideo:
      return "H.264 or H.265 video";
    default:
      return {};
  }
}

bool IsContainer(SourceKind kind) {
  return kind >= SourceKind::ProgramStream && kind <= SourceKind::Asf;
}

bool ShowsDiscVideo(SourceKind kind, ByteView head) {
  if (kind != SourceKind::ProgramStream && kind != SourceKind::TransportStream &&
      kind != SourceKind::Matroska) {
    return false;
  }
  const auto size = FirstMpeg2Size(head);
  return size &&
         (IsDiscSize("PAL", size->Width, size->Height) || IsDiscSize("NTSC", size->Width, size->Height));
}

}  // namespace quorvelant
