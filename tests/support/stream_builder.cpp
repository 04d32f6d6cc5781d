#include "support/stream_builder.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace quorvelant {

namespace {

// Appends bit fields, most significant bit first.
class BitRun {
 public:
  explicit BitRun(Bytes& target) : target_(&target) {}
  BitRun& Put(unsigned width, unsigned value) {
    for (unsigned i = width; i-- > 0;) {
      if (used_ == 0) {
        target_->push_back(0);
      }
      const unsigned bit = (value >> i) & 1U;
      target_->back() = static_cast<std::uint8_t>(target_->back() | (bit << (7 - used_)));
      used_ = (used_ + 1) % 8;
    }
    return *this;
  }
  BitRun& Put(unsigned width, int value) { return Put(width, static_cast<unsigned>(value)); }
  BitRun& Flag(bool value) { return Put(1, value ? 1U : 0U); }

 private:
  Bytes* target_;
  unsigned used_ = 0;
};

constexpr unsigned PictureCode = 0x00;
constexpr unsigned FirstSliceCode = 0x01;
constexpr unsigned SequenceCode = 0xB3;
constexpr unsigned ExtensionCode = 0xB5;
constexpr unsigned SequenceEndCode = 0xB7;
constexpr unsigned GroupCode = 0xB8;

constexpr unsigned SequenceExtensionId = 1;
constexpr unsigned SequenceDisplayId = 2;
constexpr unsigned PictureDisplayId = 7;
constexpr unsigned PictureCodingId = 8;

}  // namespace

void StreamBuilder::StartCode(unsigned code) {
  bytes_.insert(bytes_.end(), {0, 0, 1, static_cast<std::uint8_t>(code)});
}

// Bytes that never hold a zero, so no start code arises.
void StreamBuilder::Filler(std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i) {
    bytes_.push_back(static_cast<std::uint8_t>(0x55 + i % 97));
  }
}

StreamBuilder& StreamBuilder::Sequence(const SequenceFields& fields) {
  StartCode(SequenceCode);
  BitRun(bytes_)
      .Put(12, fields.Width)
      .Put(12, fields.Height)
      .Put(4, fields.AspectCode)
      .Put(4, fields.FrameRateCode)
      .Put(18, fields.BitRate / 400)
      .Flag(true)
      .Put(10, 112)
      .Put(3, 0);  // constrained_parameters_flag, no matrices
  if (fields.Mpeg2) {
    StartCode(ExtensionCode);
    BitRun(bytes_)
        .Put(4, SequenceExtensionId)
        .Put(8, 0x48)  // main profile at main level
        .Put(3, 1)     // interlaced, 4:2:0
        .Put(16, 0)    // upper bits of the sizes and of the bit rate
        .Flag(true)
        .Put(16, 0);
  }
  if (fields.DisplayWidth) {
    StartCode(ExtensionCode);
    BitRun bits(bytes_);
    bits.Put(4, SequenceDisplayId).Put(3, 5).Flag(fields.ColourDescription);
    if (fields.ColourDescription) {
      bits.Put(24, 0x050505);
    }
    bits.Put(14, *fields.DisplayWidth).Flag(true).Put(14, fields.Height);
  }
  return *this;
}

StreamBuilder& StreamBuilder::Group(const GroupFields& fields) {
  StartCode(GroupCode);
  BitRun(bytes_)
      .Flag(false)  // no drop frames
      .Put(5, fields.Hours)
      .Put(6, fields.Minutes)
      .Flag(true)
      .Put(6, fields.Seconds)
      .Put(6, fields.Pictures)
      .Flag(fields.Closed)
      .Flag(false);
  return *this;
}

StreamBuilder& StreamBuilder::Picture(const PictureFields& fields) {
  const std::size_t start = bytes_.size();
  const unsigned motionCode = fields.Mpeg2 ? 7U : 1U;
  const unsigned type = fields.Type == 'I' ? 1U : fields.Type == 'P' ? 2U : 3U;
  StartCode(PictureCode);
  BitRun header(bytes_);
  header.Put(10, fields.TemporalReference).Put(3, type).Put(16, 0xFFFF);
  for (unsigned direction = 1; direction < type; ++direction) {
    header.Flag(false).Put(3, motionCode);
  }
  header.Flag(false);
  if (fields.Mpeg2) {
    StartCode(ExtensionCode);
    BitRun(bytes_)
        .Put(4, PictureCodingId)
        .Put(8, type > 1 ? 0x33U : 0xFFU)
        .Put(8, type > 2 ? 0x33U : 0xFFU)
        .Put(2, 0)
        .Put(2, static_cast<int>(fields.Structure))
        .Flag(fields.TopFieldFirst)
        .Flag(fields.ProgressiveFrame)  // frame_pred_frame_dct
        .Put(4, 0)
        .Flag(fields.RepeatFirstField)
        .Flag(fields.ProgressiveFrame)  // chroma_420_type
        .Flag(fields.ProgressiveFrame)
        .Flag(false);
  }
  if (fields.DisplayExtension) {
    StartCode(ExtensionCode);
    BitRun(bytes_).Put(4, PictureDisplayId).Put(16, 0).Flag(true).Put(16, 0).Flag(true);
  }
  StartCode(FirstSliceCode);
  const std::size_t sofar = bytes_.size() - start;
  Filler(std::max<std::size_t>(fields.TotalBytes, sofar + 2) - sofar);
  return *this;
}

StreamBuilder& StreamBuilder::SequenceEnd() {
  StartCode(SequenceEndCode);
  return *this;
}

StreamBuilder& StreamBuilder::Raw(ByteView bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

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

namespace {

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
  fields.ProgressiveFrame = false;
  fields.TopFieldFirst = false;  // zero for field pictures
  fields.Structure = PictureStructure::TopField;
  stream.Picture(fields);
  fields.Structure = PictureStructure::BottomField;
  fields.Type = coded.Type == 'I' ? 'P' : coded.Type;
  stream.Picture(fields);
}

}  // namespace

Bytes BuildStream(const GopPlan& plan) {
  StreamBuilder stream;
  const int framesPerSecond = plan.Sequence.FrameRateCode == 3 ? 25 : 30;
  for (int gop = 0; gop < plan.Gops; ++gop) {
    const int frame = gop * plan.GopLength;
    const int seconds = frame / framesPerSecond;
    const bool closed = plan.Closed || gop == 0;
    stream.Sequence(plan.Sequence);
    stream.Group({.Hours = seconds / 3600,
                  .Minutes = seconds / 60 % 60,
                  .Seconds = seconds % 60,
                  .Pictures = frame % framesPerSecond,
                  .Closed = closed});
    for (const PlannedPicture& coded : CodedOrder(plan.GopLength, plan.BFrames, closed)) {
      AddFrame(stream, plan, coded);
    }
  }
  if (plan.EndCode) {
    stream.SequenceEnd();
  }
  return stream.Data();
}

}  // namespace quorvelant
