// Damage in the pictures of a video file that the multiplexer carries on: what a decoder won't show whole.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/message.h"

namespace quorvelant {

// One kind of damage in one file.
struct DamageRecord {
  const MessageKind* Kind;  // its text takes the path and the count
  std::size_t File;         // index in the track's video list
  std::uint64_t Offset;     // of the first, in the file
  std::size_t Count;
};

// Judges pictures from their start codes (ISO/IEC 13818-2 6.1): each has a slice in every row of
// macroblocks, a GOP numbers its frames from 0 without a gap, fields come in pairs.
class VideoDamage {
 public:
  // What a picture's headers say of it.
  struct Picture {
    unsigned CodingType = 0;  // as it stands in the stream: 1 to 3 are legal
    int TemporalReference = 0;
    bool IsField = false;
    int ShownFields = 2;
    bool OpensSequence = false;  // a sequence header leads it
    bool Cut = false;            // the end of its file cuts it, which is told by itself
  };

  VideoDamage(bool mpeg2, int mostGopFields) : mpeg2_(mpeg2), mostGopFields_(mostGopFields) {}

  void Height(int rows);  // of the picture in pixels, from its sequence header
  void Slice(unsigned code) { rows_.set(code & 0xFFU); }
  // A GOP header, and the whole of a picture with the slices since the former one. `offset` counts in the
  // file.
  void Group(std::size_t file, std::uint64_t offset);
  void EndPicture(std::size_t file, std::uint64_t offset, const Picture& picture);
  void EndFile();

  const std::vector<DamageRecord>& Records() const { return records_; }

 private:
  void Note(const MessageKind& kind, std::size_t file, std::uint64_t offset);
  void JudgeRows(std::size_t file, std::uint64_t offset, const Picture& picture);
  bool EndFieldPair(const Picture& picture);
  void EndGroup();

  bool mpeg2_;
  int mostGopFields_;
  std::vector<DamageRecord> records_;

  int height_ = 0;
  std::bitset<256> rows_;     // slices of the coming picture, by their start code
  bool groupHeader_ = false;  // one stands before the coming picture
  bool fieldOpen_ = false;    // a first field waits for its second
  int openReference_ = 0;     // its temporal_reference

  // The GOP being read.
  bool inGroup_ = false;
  std::size_t groupFile_ = 0;
  std::uint64_t groupOffset_ = 0;
  std::size_t groupFrames_ = 0;
  int groupFields_ = 0;
  std::bitset<1024> references_;  // temporal_reference has 10 bits
  bool repeated_ = false;         // one of them was met twice
};

}  // namespace quorvelant
