// Decodes the slices of one intra picture into the planes of a frame.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/bytes.h"
#include "codec/bit_reader.h"
#include "codec/dct.h"
#include "codec/picture_headers.h"
#include "codec/planes.h"
#include "codec/vlc_lookup.h"

namespace quorvelant {

// Works on one picture: a frame, or one field of it. Nothing in a slice can do harm; macroblocks that
// no slice brought whole stay open until `ConcealMissing`.
class SliceDecoder {
 public:
  // The planes have the frame's coded size, whole macroblocks in each field.
  SliceDecoder(const PictureHeaders& headers, Planes& frame);

  // `code` is the start code's value, `payload` what follows it.
  void Decode(std::uint8_t code, ByteView payload);

  // Fills each missing macroblock with the one above it, or below it at the top.
  void ConcealMissing();

 private:
  struct Slice;
  bool DecodeMacroblock(Slice& slice, unsigned address);
  void SkipConcealmentVector(BitReader& reader) const;
  void DecodeBlock(Slice& slice, unsigned component);
  void DecodeCoefficients(Slice& slice, const Matrix& weights);
  void StoreBlock(unsigned address, unsigned block, bool fieldDct);
  void CopyMacroblock(unsigned from, unsigned to);
  std::uint8_t* Line(unsigned component, unsigned x, unsigned y) const;

  const PictureHeaders* headers_;
  Planes* frame_;
  const DctLookup* coefficients_;
  Matrix scan_;           // column-major place by scan position
  unsigned firstLine_;    // of the frame
  unsigned lineStep_;     // 1 for a frame, 2 for a field
  unsigned columns_;      // macroblocks
  unsigned rows_;         // macroblocks, of this picture
  unsigned blockCount_;   // per macroblock: 6, 8 or 12
  unsigned chromaWidth_;  // samples per macroblock: 8 or 16
  unsigned chromaHeight_;
  std::vector<bool> done_;  // by macroblock address
  Block block_;             // the coefficients at work
  Block samples_;
};

}  // namespace quorvelant
