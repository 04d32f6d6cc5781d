#include "intra_stream_maker.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <random>

#include "codec/bit_writer.h"
#include "codec/tables.h"

namespace quorvelant {
namespace {

class Maker {
 public:
  Maker(const IntraStreamShape& shape, unsigned seed) : shape_(shape), random_(seed) {}

  Bytes Make() {
    PutSequence();
    if (shape_.FieldPictures) {
      PutPicture(1);
      PutPicture(2);
    } else {
      PutPicture(3);
    }
    writer_.StartCode(0xB7);
    return writer_.Take();
  }

 private:
  unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
  void Put(Vlc word) { writer_.Put(word.Bits, word.Code); }

  void PutSequence() {
    writer_.StartCode(0xB3);
    writer_.Put(12, shape_.Width);
    writer_.Put(12, shape_.Height);
    writer_.Put(8, shape_.Mpeg2 ? 0x23 : 0x13);
    writer_.Put(32, 0x13882380);
    if (shape_.Mpeg2) {
      writer_.StartCode(0xB5);
      writer_.Put(12, shape_.ChromaFormat == 1 ? 0x148 : 0x185);  // main or 4:2:2 profile
      writer_.Put(4, shape_.ChromaFormat << 1);                   // interlaced
      writer_.Put(32, 0x00010000);
    }
    writer_.StartCode(0xB8);
    writer_.Put(32, 0x00080040);
  }

  void PutPicture(unsigned structure) {
    writer_.StartCode(0x00);
    writer_.Put(32, 0x000FFFF8);
    if (shape_.Mpeg2) {
      PutCodingExtension(structure);
    }
    const unsigned columns = (shape_.Width + 15) / 16;
    const unsigned fields = shape_.FieldPictures ? 2 : 1;
    const unsigned rows = shape_.Mpeg2 ? (shape_.Height + 31) / 32 * 2 / fields : (shape_.Height + 15) / 16;
    frameDct_ = structure == 3 && shape_.FieldDct;
    fieldVectors_ = structure != 3;
    for (unsigned row = 0; row < rows; ++row) {
      for (unsigned column = 0; column < columns;) {
        column = PutSlice(row, column, columns);
      }
    }
  }

  void PutCodingExtension(unsigned structure) {
    writer_.StartCode(0xB5);
    writer_.Put(4, 8);
    writer_.Put(8, 0x24);  // f_codes 2 and 4
    writer_.Put(8, 0xFF);
    writer_.Put(2, shape_.DcPrecision);
    writer_.Put(2, structure);
    writer_.Put(1, structure == 3 ? 1 : 0);  // top field first
    writer_.Put(1, shape_.FieldDct || structure != 3 ? 0 : 1);
    writer_.Put(1, shape_.ConcealmentVectors);
    writer_.Put(1, shape_.NonLinearScale);
    writer_.Put(1, shape_.TableB15);
    writer_.Put(1, shape_.AlternateScan);
    writer_.Put(10, 0);
    if (shape_.OwnMatrix) {
      writer_.StartCode(0xB5);
      writer_.Put(4, 3);
      writer_.Put(1, 1);
      for (unsigned i = 0; i < 64; ++i) {
        matrix_[ZigzagScan[i]] = static_cast<std::uint8_t>(i == 0 ? 8 : 10 + Below(40));
        writer_.Put(8, matrix_[ZigzagScan[i]]);
      }
      writer_.Put(3, 0);
      writer_.Align();
    }
  }

  unsigned PutSlice(unsigned row, unsigned column, unsigned columns) {
    const unsigned end = std::min(columns, column + 1 + Below(columns));
    writer_.StartCode(static_cast<std::uint8_t>(row + 1));
    PutScale();
    if (Below(4) == 0) {
      writer_.Put(9, 0x155);  // extra_bit_slice and a byte of extra information
    }
    writer_.Put(1, 0);
    predictors_.fill(1 << (7 + shape_.DcPrecision));
    if (!shape_.Mpeg2 && Below(2) == 0) {
      Put(MacroblockStuffing);
    }
    Put(AddressIncrement[column]);
    for (; column < end; ++column) {
      PutMacroblock();
      if (column + 1 < end) {
        Put(AddressIncrement[0]);
      }
    }
    writer_.Align();
    return end;
  }

  void PutScale() {
    const unsigned code = 1 + Below(3);
    scale_ = static_cast<int>(shape_.NonLinearScale ? NonLinearScale[code] : code * 2);
    writer_.Put(5, code);
  }

  void PutMacroblock() {
    const bool newScale = Below(3) == 0;
    writer_.Put(newScale ? 2 : 1, 1);
    if (frameDct_) {
      writer_.Put(1, Below(2));
    }
    if (newScale) {
      PutScale();
    }
    if (shape_.ConcealmentVectors) {
      PutVector();
    }
    const unsigned blocks = shape_.ChromaFormat == 1 ? 6 : shape_.ChromaFormat == 2 ? 8 : 12;
    for (unsigned block = 0; block < blocks; ++block) {
      PutDc(block < 4 ? 0 : 1 + block % 2);
      PutCoefficients();
    }
  }

  void PutVector() {
    if (fieldVectors_) {
      writer_.Put(1, Below(2));
    }
    for (const unsigned residualBits : {1U, 3U}) {  // of f_codes 2 and 4
      const unsigned code = Below(4);
      Put(MotionCode[code]);
      if (code != 0) {
        writer_.Put(1, Below(2));
        writer_.Put(residualBits, Below(2));
      }
    }
    writer_.Put(1, 1);
  }

  void PutDc(unsigned component) {
    const int range = 256 << shape_.DcPrecision;
    const int level = range / 4 + static_cast<int>(Below(static_cast<unsigned>(range / 2)));
    const int difference = level - predictors_[component];
    predictors_[component] = level;
    const auto magnitude = static_cast<unsigned>(std::abs(difference));
    const auto size = static_cast<unsigned>(std::bit_width(magnitude));
    Put(component == 0 ? DcSizeLuma[size] : DcSizeChroma[size]);
    writer_.Put(size, difference < 0 ? (1U << size) - 1 - magnitude : magnitude);
  }

  void PutCoefficients() {
    const DctTable& table = shape_.TableB15 ? DctTableB15 : DctTableB14;
    const Matrix& scan = shape_.AlternateScan ? AlternateScan : ZigzagScan;
    const Matrix& weights = shape_.OwnMatrix ? matrix_ : DefaultIntraMatrix;
    unsigned position = 0;
    for (unsigned left = Below(6); left > 0; --left) {
      const bool escape = Below(6) == 0;
      const RunLevelVlc code = table.Codes[Below(static_cast<unsigned>(table.Codes.size()))];
      const unsigned run = escape ? Below(12) : code.Run;
      const unsigned level = escape ? 1 + Below(300) : code.Level;
      const bool negative = Below(2) == 0;
      if (position + run + 1 >= 64) {
        continue;
      }
      if (static_cast<int>(level) * weights[scan[position + run + 1]] * scale_ / 16 > 250) {
        continue;
      }
      position += run + 1;
      if (escape) {
        PutEscape(run, level, negative);
      } else {
        Put(code.Word);
        writer_.Put(1, negative);
      }
    }
    Put(table.EndOfBlock);
  }

  void PutEscape(unsigned run, unsigned level, bool negative) {
    Put(DctEscape);
    writer_.Put(6, run);
    const unsigned value = negative ? 0U - level : level;
    if (shape_.Mpeg2) {
      writer_.Put(12, value & 0xFFF);
    } else if (level < 128) {
      writer_.Put(8, value & 0xFF);
    } else {
      writer_.Put(8, negative ? 0x80 : 0);
      writer_.Put(8, std::min(level, 255U) == level ? value & 0xFF : negative ? 1 : 255);
    }
  }

  const IntraStreamShape& shape_;
  std::mt19937 random_;
  BitWriter writer_;
  Matrix matrix_{};
  bool frameDct_ = false;
  bool fieldVectors_ = false;
  int scale_ = 2;
  std::array<int, 3> predictors_{};
};

}  // namespace

Bytes MakeIntraStream(const IntraStreamShape& shape, unsigned seed) {
  return Maker(shape, seed).Make();
}

}  // namespace quorvelant
