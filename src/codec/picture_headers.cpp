#include "codec/picture_headers.h"

#include "codec/bit_reader.h"
#include "disc/start_code_search.h"

namespace quorvelant {
namespace {

// The offset of the next start code that has its value, or the size of the stream.
std::size_t FindUnit(ByteView stream) {
  const std::size_t at = FindStartCode(stream);
  return at == NoStartCode || stream.size() - at < StartCodeBytes ? stream.size() : at;
}

// Matrices travel in zigzag order whatever scan the picture uses. A weight of 0 is forbidden; it reads
// as 1.
Matrix ReadMatrix(BitReader& reader) {
  Matrix weights{};
  for (const std::uint8_t place : ZigzagScan) {
    const std::uint32_t weight = reader.Get(8);
    weights[ColumnMajor(place)] = static_cast<std::uint8_t>(weight == 0 ? 1 : weight);
  }
  return weights;
}

Matrix DefaultWeights() {
  Matrix weights{};
  for (unsigned place = 0; place < weights.size(); ++place) {
    weights[ColumnMajor(place)] = DefaultIntraMatrix[place];
  }
  return weights;
}

}  // namespace

UnitReader::UnitReader(ByteView stream) : rest_(stream.subspan(FindUnit(stream))) {}

bool UnitReader::Next(StreamUnit& unit) {
  if (rest_.size() < StartCodeBytes) {
    return false;
  }
  unit.Code = rest_[3];
  rest_ = rest_.subspan(StartCodeBytes);
  const std::size_t payloadBytes = FindUnit(rest_);
  unit.Payload = rest_.first(payloadBytes);
  rest_ = rest_.subspan(payloadBytes);
  return true;
}

void PictureHeaders::Take(const StreamUnit& unit) {
  if (unit.Code == start_code::Sequence) {
    TakeSequence(unit.Payload);
  } else if (unit.Code == start_code::Picture) {
    TakePicture(unit.Payload);
  } else if (unit.Code == start_code::Extension && Mpeg2) {
    TakeExtension(unit.Payload);
  }
}

void PictureHeaders::TakeSequence(ByteView payload) {
  BitReader reader(payload);
  Width = reader.Get(12);
  Height = reader.Get(12);
  reader.Skip(4 + 4 + 18 + 1 + 10 + 1);  // aspect, frame rate, bit rate, marker, VBV size, constrained
  LumaWeights = reader.GetFlag() ? ReadMatrix(reader) : DefaultWeights();
  ChromaWeights = LumaWeights;
  Chroma = ChromaFormat::Yuv420;
}

void PictureHeaders::TakePicture(ByteView payload) {
  BitReader reader(payload);
  reader.Skip(10);  // temporal reference
  PictureType = reader.Get(3);
}

void PictureHeaders::TakeExtension(ByteView payload) {
  BitReader reader(payload);
  switch (reader.Get(4)) {
    case extension_id::Sequence: {
      reader.Skip(8 + 1);  // profile and level, progressive sequence
      const unsigned format = reader.Get(2);
      Chroma = format == 0 ? ChromaFormat::Yuv420 : static_cast<ChromaFormat>(format);
      Width = (Width & 0xFFF) | reader.Get(2) << 12;
      Height = (Height & 0xFFF) | reader.Get(2) << 12;
      break;
    }
    case extension_id::QuantMatrix:
      if (reader.GetFlag()) {
        LumaWeights = ReadMatrix(reader);
        ChromaWeights = LumaWeights;
      }
      if (reader.GetFlag()) {
        ReadMatrix(reader);  // non-intra
      }
      if (reader.GetFlag()) {
        ChromaWeights = ReadMatrix(reader);
      }
      break;
    case extension_id::PictureCoding: {
      ForwardFCodes = {reader.Get(4), reader.Get(4)};
      reader.Skip(8);  // backward
      DcPrecision = reader.Get(2);
      const unsigned structure = reader.Get(2);
      Structure = structure == 0 ? PictureStructure::Frame : static_cast<PictureStructure>(structure);
      reader.Skip(1);  // top field first
      FramePredFrameDct = reader.GetFlag();
      ConcealmentVectors = reader.GetFlag();
      NonLinearScale = reader.GetFlag();
      TableB15 = reader.GetFlag();
      AlternateScan = reader.GetFlag();
      break;
    }
    default:
      break;
  }
}

}  // namespace quorvelant
