#include "support/stream_builder.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace quorvelant {

namespace {

// Appends a start code and the fields after it: the width in bits and the value of each in turn.
void Append(Bytes& target, std::uint8_t code, std::initializer_list<int> fields) {
  target.insert(target.end(), {0, 0, 1, code});
  int used = 0;
  for (const int* field = fields.begin(); field != fields.end(); field += 2) {
    for (int bit = field[0]; bit-- > 0; used = (used + 1) % 8) {
      if (used == 0) {
        target.push_back(0);
      }
      target.back() = static_cast<std::uint8_t>(target.back() | (field[1] >> bit & 1) << (7 - used));
    }
  }
}

constexpr std::uint8_t ExtensionCode = 0xB5;

struct PlannedPicture {
  char Type;
  int TemporalReference;
};

// Coded order of one GOP.
std::vector<PlannedPicture> CodedOrder(int gopLength, int bFrames, bool closed) {
  // Display order: an open GOP starts with B pictures, a closed one with its I picture.
  const int firstReference = closed ? 0 : std::min(bFrames, gopLength - 1);
  std::vector<PlannedPicture> order{{'I', firstReference}};
  for (int i = 0; i < firstReference; ++i) {
    order.push_back({'B', i});
  }
  for (int last = firstReference; last < gopLength - 1;) {
    const int next = std::min(last + bFrames + 1, gopLength - 1);
    order.push_back({'P', next});
    for (int i = last + 1; i < next; ++i) {
      order.push_back({'B', i});
    }
    last = next;
  }
  return order;
}

void AddFrame(StreamBuilder& stream, const GopPlan& plan, PlannedPicture coded) {
  PictureFields fields;
  fields.Type = coded.Type;
  fields.TemporalReference = coded.TemporalReference;
  fields.TotalBytes = coded.Type == 'I' ? plan.BytesI : coded.Type == 'P' ? plan.BytesP : plan.BytesB;
  fields.Mpeg2 = plan.Sequence.Mpeg2;
  if (plan.Pulldown) {  // fields of four frames in display order: 3, 2, 3, 2
    fields.RepeatFirstField = coded.TemporalReference % 2 == 0;
    fields.TopFieldFirst = coded.TemporalReference % 4 < 1 || coded.TemporalReference % 4 == 3;
  }
  if (!plan.FieldPictures) {
    stream.Picture(fields);
    return;
  }
  fields.TotalBytes /= 2;
  fields.ProgressiveFrame = fields.TopFieldFirst = false;  // zero for field pictures
  fields.Structure = PictureStructure::TopField;
  stream.Picture(fields);
  fields.Structure = PictureStructure::BottomField;
  fields.Type = coded.Type == 'I' ? 'P' : coded.Type;
  stream.Picture(fields);
}

}  // namespace

StreamBuilder& StreamBuilder::Sequence(const SequenceFields& fields) {
  height_ = fields.Height;
  Append(bytes_, 0xB3,
         {12, fields.Width, 12, fields.Height, 4, fields.AspectCode, 4, fields.FrameRateCode, 18,
          fields.BitRate / 400, 1, 1, 10, 112, 3, 0});  // no constraint, no matrices
  if (fields.Mpeg2) {  // main profile at main level, interlaced, 4:2:0; upper bits of sizes and rates
    Append(bytes_, ExtensionCode, {4, 1, 8, 0x48, 3, fields.ChromaFormat, 16, 0, 1, 1, 16, 0});
  }
  if (fields.DisplayWidth) {
    const int coloured = fields.ColourDescription;
    Append(bytes_, ExtensionCode,
           {4, 2, 3, 5, 1, coloured, 24 * coloured, 0x050505, 14, *fields.DisplayWidth, 1, 1, 14,
            fields.Height});
  }
  return *this;
}

StreamBuilder& StreamBuilder::Group(const GroupFields& fields) {
  Append(bytes_, 0xB8,
         {1, 0, 5, fields.Hours, 6, fields.Minutes, 1, 1, 6, fields.Seconds, 6, fields.Pictures, 1,
          fields.Closed, 1, 0});
  return *this;
}

StreamBuilder& StreamBuilder::Picture(const PictureFields& fields) {
  const std::size_t start = bytes_.size();
  const int motionCode = fields.Mpeg2 ? 7 : 1;
  const int forward = fields.Type != 'I' ? 1 : 0;
  const int backward = fields.Type == 'B' ? 1 : 0;
  Append(bytes_, 0x00,
         {10, fields.TemporalReference, 3, 1 + forward + backward, 16, 0xFFFF, 4 * forward, motionCode,
          4 * backward, motionCode, 1, 0});
  if (fields.Mpeg2) {  // frame_pred_frame_dct and chroma_420_type go with progressive_frame
    const int progressive = fields.ProgressiveFrame;
    const auto structure = static_cast<int>(fields.Structure);
    Append(bytes_, ExtensionCode, {4, 8,
                                   8, forward != 0 ? 0x33 : 0xFF,
                                   8, backward != 0 ? 0x33 : 0xFF,
                                   2, 0,
                                   2, structure,
                                   1, fields.TopFieldFirst,
                                   1, progressive,
                                   4, 0,
                                   1, fields.RepeatFirstField,
                                   1, progressive,
                                   1, progressive,
                                   1, 0});
  }
  if (fields.DisplayExtension) {
    Append(bytes_, ExtensionCode, {4, 7, 16, 0, 1, 1, 16, 0, 1, 1});
  }
  const std::size_t end = start + fields.TotalBytes;
  const int rows = (height_ + 15) / (fields.Structure == PictureStructure::Frame ? 16 : 32);
  for (int row = 1; row <= rows && (row == 1 || fields.TotalBytes == 0 || bytes_.size() + 6 <= end); ++row) {
    Append(bytes_, static_cast<std::uint8_t>(row), {16, 0x5555});
  }
  for (int i = 0; bytes_.size() < end; i = (i + 1) % 97) {
    bytes_.push_back(static_cast<std::uint8_t>(0x55 + i));  // never a zero, so no start code arises
  }
  return *this;
}

StreamBuilder& StreamBuilder::SequenceEnd() {
  Append(bytes_, 0xB7, {});
  return *this;
}

StreamBuilder& StreamBuilder::Raw(ByteView bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

Bytes BuildStream(const GopPlan& plan) {
  StreamBuilder stream;
  const int framesPerSecond = plan.Sequence.FrameRateCode == 3 ? 25 : 30;
  for (int gop = 0; gop < plan.Gops; ++gop) {
    const int frame = gop * plan.GopLength;
    const int seconds = frame / framesPerSecond;
    const bool closed = plan.Closed || gop == 0;
    stream.Sequence(plan.Sequence)
        .Group({seconds / 3600, seconds / 60 % 60, seconds % 60, frame % framesPerSecond, closed});
    for (const PlannedPicture& coded : CodedOrder(plan.GopLength, plan.BFrames, closed)) {
      AddFrame(stream, plan, coded);
    }
  }
  if (plan.EndCode) {
    stream.SequenceEnd();
  }
  return stream.Data();
}

std::string TextOf(ByteView bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string Ac3Head(std::uint8_t rateAndSize, std::uint8_t channels, std::uint8_t version) {
  return TextOf(Bytes{0x0B, 0x77, 0, 0, rateAndSize, version, channels, 0});
}

}  // namespace quorvelant
