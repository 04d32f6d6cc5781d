#include "mux/video_damage.h"

#include <algorithm>

#include "mux/messages.h"

namespace quorvelant {
namespace {

constexpr int RowPixels = 16;  // of a macroblock

constexpr int RowsIn(int pixels) {
  return (pixels + RowPixels - 1) / RowPixels;
}

}  // namespace

void VideoDamage::Note(const MessageKind& kind, std::size_t file, std::uint64_t offset) {
  const auto known = std::ranges::find_if(
      records_, [&](const DamageRecord& record) { return record.Kind == &kind && record.File == file; });
  if (known != records_.end()) {
    ++known->Count;
  } else {
    records_.push_back({&kind, file, offset, 1});
  }
}

void VideoDamage::Height(int rows) {
  height_ = rows;
}

void VideoDamage::Group(std::size_t file, std::uint64_t offset) {
  EndGroup();
  inGroup_ = groupHeader_ = true;
  groupFile_ = file;
  groupOffset_ = offset;
}

// Slices of MPEG-1 may reach over several rows, so there a row without a start code says nothing. Frames
// of interlaced sequences have an even number of rows, whatever the height.
void VideoDamage::JudgeRows(std::size_t file, std::uint64_t offset, const Picture& picture) {
  const int pixels = picture.IsField ? (height_ + 1) / 2 : height_;
  const auto least = static_cast<std::size_t>(RowsIn(pixels));
  const std::size_t most = picture.IsField ? least : static_cast<std::size_t>(2 * RowsIn((height_ + 1) / 2));
  std::size_t met = 0;
  for (std::size_t row = 1; row <= least; ++row) {
    met += rows_.test(row) ? 1U : 0U;
  }
  const bool beyond = (rows_ >> (most + 1)).any();
  if (beyond || (met < least && (mpeg2_ || met == 0))) {
    Note(message::PictureIncomplete, file, offset);
  }
}

// True when the picture is the second field of a frame whose first is known.
bool VideoDamage::EndFieldPair(const Picture& picture) {
  const bool second = fieldOpen_ && picture.IsField && picture.TemporalReference == openReference_;
  fieldOpen_ = picture.IsField && !second;
  openReference_ = picture.TemporalReference;
  return second;
}

void VideoDamage::EndPicture(std::size_t file, std::uint64_t offset, const Picture& picture) {
  if (!picture.Cut) {
    JudgeRows(file, offset, picture);
  }
  rows_.reset();
  if (picture.CodingType < 1 || picture.CodingType > 3) {
    Note(message::PictureTypeUnknown, file, offset);
  } else if (picture.OpensSequence && picture.CodingType != 1) {
    Note(message::SequenceHeaderAstray, file, offset);
  }
  const bool waited = fieldOpen_;
  const bool second = EndFieldPair(picture);
  if (waited && !second) {
    Note(message::FieldUnpaired, file, offset);
  }
  // A sequence header begins a GOP, with a header of its own or without.
  if (picture.OpensSequence && !groupHeader_ && inGroup_) {
    Note(message::SequenceHeaderAstray, file, offset);
  }
  groupHeader_ = false;
  groupFields_ += picture.ShownFields;
  if (!second) {
    const auto reference = static_cast<std::size_t>(picture.TemporalReference) % references_.size();
    repeated_ = repeated_ || references_.test(reference);
    references_.set(reference);
    ++groupFrames_;
  }
}

void VideoDamage::EndGroup() {
  if (inGroup_ && groupFrames_ > 0) {
    if (repeated_ || (references_ >> groupFrames_).any()) {
      Note(message::PicturesMisnumbered, groupFile_, groupOffset_);
    }
    if (groupFields_ > mostGopFields_) {
      Note(message::GopBeyondLimit, groupFile_, groupOffset_);
    }
  }
  inGroup_ = repeated_ = false;
  groupFrames_ = 0;
  groupFields_ = 0;
  references_.reset();
}

void VideoDamage::EndFile() {
  EndGroup();
  fieldOpen_ = groupHeader_ = false;
}

}  // namespace quorvelant
