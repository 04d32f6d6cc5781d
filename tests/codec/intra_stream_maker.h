// Makes valid streams of one intra picture with any of the modes that the syntax allows.
#pragma once

#include <string>

#include "base/bytes.h"

namespace quorvelant {

struct IntraStreamShape {
  std::string Name = {};
  bool Mpeg2 = true;
  unsigned Width = 96;
  unsigned Height = 64;
  unsigned ChromaFormat = 1;  // 4:2:0, 4:2:2, 4:4:4
  unsigned DcPrecision = 0;
  bool FieldPictures = false;  // two intra fields
  bool FieldDct = false;       // dct_type in macroblocks
  bool ConcealmentVectors = false;
  bool NonLinearScale = false;
  bool TableB15 = false;
  bool AlternateScan = false;
  bool OwnMatrix = false;
};

// Headers, then slices of random macroblocks: new scales, every code of the tables, escapes, slices that
// begin and end within a row. Coefficients keep samples near their range.
Bytes MakeIntraStream(const IntraStreamShape& shape, unsigned seed);

}  // namespace quorvelant
