// What stands before the slices of a picture: sequence, quantiser matrices, picture and its flags.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/bytes.h"
#include "codec/tables.h"
#include "disc/start_codes.h"

namespace quorvelant {

// One unit of a stream: the start code value and the bytes after it up to the next start code.
struct StreamUnit {
  std::uint8_t Code;
  ByteView Payload;
};

// Hands out the units of a stream one by one.
class UnitReader {
 public:
  explicit UnitReader(ByteView stream);
  // False at the end of the stream.
  bool Next(StreamUnit& unit);

 private:
  ByteView rest_;
};

enum class ChromaFormat : std::uint8_t { Yuv420 = 1, Yuv422 = 2, Yuv444 = 3 };
enum class PictureStructure : std::uint8_t { TopField = 1, BottomField = 2, Frame = 3 };
inline constexpr unsigned IntraPictureType = 1;

// The state of the headers read so far, with the values of an MPEG-1 stream until an extension changes
// them. Weights stand column by column.
struct PictureHeaders {
  bool Mpeg2 = false;

  unsigned Width = 0;  // pixels; 0 until a sequence header was read
  unsigned Height = 0;
  ChromaFormat Chroma = ChromaFormat::Yuv420;
  Matrix LumaWeights{};
  Matrix ChromaWeights{};

  unsigned PictureType = 0;
  std::array<unsigned, 2> ForwardFCodes{};  // across, down
  unsigned DcPrecision = 0;                 // intra_dc_precision: 8 bits and as many more
  PictureStructure Structure = PictureStructure::Frame;
  bool FramePredFrameDct = true;
  bool ConcealmentVectors = false;
  bool NonLinearScale = false;  // q_scale_type
  bool TableB15 = false;        // intra_vlc_format
  bool AlternateScan = false;

  // Takes in one unit; slices and whatever else does not matter here are passed over.
  void Take(const StreamUnit& unit);

  // Whether frames of both have the same planes.
  bool SameShape(const PictureHeaders& other) const {
    return Width == other.Width && Height == other.Height && Chroma == other.Chroma;
  }

 private:
  void TakeSequence(ByteView payload);
  void TakePicture(ByteView payload);
  void TakeExtension(ByteView payload);
};

}  // namespace quorvelant
