#include "codec/intra_decoder.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "codec/colors.h"
#include "codec/picture_headers.h"
#include "codec/slice_decoder.h"

namespace quorvelant {
namespace {

// The frame under construction and the slices of the picture at work.
class FrameDecoder {
 public:
  explicit FrameDecoder(bool isMpeg2) { headers_.Mpeg2 = isMpeg2; }

  // Takes the next unit. False when the frame is complete.
  bool Take(const StreamUnit& unit);
  // The frame cut to the size shown; nothing if its size never became known.
  std::optional<Planes> Finish();

 private:
  bool SizeUsable() const;
  void StartFrame();
  void EndPicture();
  void CopyField(unsigned fromLine);

  std::optional<SliceDecoder> picture_;
  Planes frame_;
  PictureHeaders headers_;
  PictureHeaders frameHeaders_;    // as they stood when the frame began: its size and chroma format
  PictureHeaders pictureHeaders_;  // as they stood before the picture's first slice
  bool started_ = false;
  bool topDone_ = false;
  bool bottomDone_ = false;
};

bool FrameDecoder::SizeUsable() const {
  return headers_.Width > 0 && headers_.Height > 0 && headers_.Width <= LargestPictureSide &&
         headers_.Height <= LargestPictureSide;
}

void FrameDecoder::StartFrame() {
  const auto wholeMacroblocks = [](unsigned size, unsigned unit) { return (size + unit - 1) / unit * unit; };
  // Twice a macroblock's height holds whole macroblocks in each field as well.
  const unsigned width = wholeMacroblocks(headers_.Width, 16);
  const unsigned height = wholeMacroblocks(headers_.Height, 32);
  const unsigned across = headers_.Chroma == ChromaFormat::Yuv444 ? 1 : 2;
  const unsigned down = headers_.Chroma == ChromaFormat::Yuv420 ? 2 : 1;
  frame_.Y() = Plane(width, height, BlackLuma);
  frame_.Of[1] = Plane(width / across, height / down, NeutralChroma);
  frame_.Of[2] = frame_.Of[1];
  frameHeaders_ = headers_;
  started_ = true;
}

bool FrameDecoder::Take(const StreamUnit& unit) {
  const bool isSlice = start_code::IsSlice(unit.Code);
  if (!isSlice) {
    if (picture_ && unit.Code != start_code::Extension) {
      EndPicture();
    }
    // After the first field only an intra field of the other lines is of use.
    if (started_ && (unit.Code == start_code::Sequence || (topDone_ && bottomDone_))) {
      return false;
    }
    headers_.Take(unit);
    return !started_ || unit.Code != start_code::Picture || headers_.PictureType == IntraPictureType;
  }
  if (headers_.PictureType != IntraPictureType || !SizeUsable()) {
    return true;
  }
  if (!started_) {
    StartFrame();
  }
  if (!picture_) {
    const bool again = headers_.Structure == PictureStructure::TopField      ? topDone_
                       : headers_.Structure == PictureStructure::BottomField ? bottomDone_
                                                                             : topDone_ || bottomDone_;
    if (again || !headers_.SameShape(frameHeaders_)) {
      return false;
    }
    pictureHeaders_ = headers_;
    picture_.emplace(pictureHeaders_, frame_);
  }
  picture_->Decode(unit.Code, unit.Payload);
  return true;
}

void FrameDecoder::EndPicture() {
  picture_->ConcealMissing();
  picture_.reset();
  topDone_ = topDone_ || pictureHeaders_.Structure != PictureStructure::BottomField;
  bottomDone_ = bottomDone_ || pictureHeaders_.Structure != PictureStructure::TopField;
}

// Shows each line of one field on the line of the other beside it.
void FrameDecoder::CopyField(unsigned fromLine) {
  for (Plane& plane : frame_.Of) {
    for (unsigned y = 0; y < plane.Height; y += 2) {
      std::copy_n(plane.Row(y + fromLine), plane.Width, plane.Row(y + 1 - fromLine));
    }
  }
}

Plane CutTo(Plane plane, unsigned width, unsigned height) {
  if (plane.Width == width) {
    plane.Samples.resize(std::size_t{width} * height);
    plane.Height = height;
    return plane;
  }
  Plane cut(width, height, 0);
  for (unsigned y = 0; y < height; ++y) {
    std::copy_n(plane.Row(y), width, cut.Row(y));
  }
  return cut;
}

std::optional<Planes> FrameDecoder::Finish() {
  if (!started_) {
    if (!SizeUsable()) {
      return std::nullopt;
    }
    StartFrame();
  }
  if (picture_) {
    EndPicture();
  }
  if (topDone_ != bottomDone_) {
    CopyField(topDone_ ? 0 : 1);
  }
  const unsigned across = frame_.Y().Width / frame_.Of[1].Width;
  const unsigned down = frame_.Y().Height / frame_.Of[1].Height;
  const unsigned width = frameHeaders_.Width;
  const unsigned height = frameHeaders_.Height;
  frame_.Y() = CutTo(std::move(frame_.Y()), width, height);
  for (std::size_t i = 1; i < 3; ++i) {
    frame_.Of[i] = CutTo(std::move(frame_.Of[i]), (width + across - 1) / across, (height + down - 1) / down);
  }
  return std::move(frame_);
}

}  // namespace

std::optional<Planes> DecodeIntraPicture(ByteView streamBytes, bool isMpeg2) {
  FrameDecoder decoder(isMpeg2);
  UnitReader units(streamBytes);
  StreamUnit unit{};
  while (units.Next(unit) && decoder.Take(unit)) {
  }
  return decoder.Finish();
}

Bytes DecodeIFrame(ByteView streamBytes, bool isMpeg2) {
  const std::optional<Planes> planes = DecodeIntraPicture(streamBytes, isMpeg2);
  return planes ? BitmapFromPlanes(*planes) : Bytes();
}

}  // namespace quorvelant
