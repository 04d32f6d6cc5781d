// Builds MPEG elementary streams whose headers are real and whose slices are filler, with exact control
// over every field that a scanner or the multiplexer looks at (ISO/IEC 13818-2 6.2).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"

namespace quorvelant {

struct SequenceFields {
  int Width = 720;
  int Height = 576;
  int AspectCode = 2;                              // 2: 4:3, 3: 16:9
  int FrameRateCode = 3;                           // 1: 23.976, 3: 25, 4: 29.97
  int BitRate = 9800000;                           // bit/s, held in units of 400
  bool Mpeg2 = true;                               // a sequence extension follows
  int ChromaFormat = 1;                            // 1: 4:2:0, 2: 4:2:2
  std::optional<int> DisplayWidth = std::nullopt;  // a sequence display extension follows
  bool ColourDescription = false;                  // ... with its three colour bytes
};

struct GroupFields {
  int Hours = 0, Minutes = 0, Seconds = 0, Pictures = 0;
  bool Closed = true;
};

enum class PictureStructure { TopField = 1, BottomField = 2, Frame = 3 };

struct PictureFields {
  char Type = 'I';  // 'I', 'P', 'B'
  int TemporalReference = 0;
  std::size_t TotalBytes = 0;  // from its start code to the end of its slices; 0: headers and short slices
  PictureStructure Structure = PictureStructure::Frame;
  bool TopFieldFirst = true;
  bool RepeatFirstField = false;
  bool ProgressiveFrame = true;
  bool Mpeg2 = true;              // a picture coding extension follows
  bool DisplayExtension = false;  // a picture display extension follows
};

class StreamBuilder {
 public:
  StreamBuilder& Sequence(const SequenceFields& fields = {});
  StreamBuilder& Group(const GroupFields& fields = {});
  StreamBuilder& Picture(const PictureFields& fields = {});
  StreamBuilder& SequenceEnd();
  StreamBuilder& Raw(ByteView bytes);

  // Bytes written so far: the offset of what comes next.
  std::size_t Size() const { return bytes_.size(); }
  const Bytes& Data() const { return bytes_; }
  std::string Text() const { return {bytes_.begin(), bytes_.end()}; }

 private:
  Bytes bytes_;
  int height_ = 576;  // of the latest sequence
};

// A whole stream of equal GOPs, each after a sequence header, in coded order.
struct GopPlan {
  SequenceFields Sequence = {};
  int Gops = 4;
  int GopLength = 12;  // pictures; the last B run is cut so that the GOP ends with a reference picture
  int BFrames = 2;
  bool Closed = true;          // an open GOP starts with B pictures shown before its I picture
  bool FieldPictures = false;  // each frame as two field pictures
  bool Pulldown = false;       // repeat_first_field on every second displayed frame
  std::size_t BytesI = 40000, BytesP = 15000, BytesB = 6000;
  bool EndCode = true;
};
Bytes BuildStream(const GopPlan& plan);

std::string TextOf(ByteView bytes);
// The head of an AC3 frame, by its bytes of sample rate and size, of version and service, and of channels.
std::string Ac3Head(std::uint8_t rateAndSize, std::uint8_t channels = 0x40, std::uint8_t version = 0x40);

}  // namespace quorvelant
