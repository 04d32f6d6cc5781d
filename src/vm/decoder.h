// The eight bytes of the disc back to text.
#pragma once

#include <string>
#include <string_view>

#include "vm/encoder.h"

namespace quorvelant {

struct DecodedCommand {
  bool Known = false;
  std::string Text;  // in the command language; empty where the bytes are no command of it
};

// The inverse of the encoder: the text, read with `NumericTargets::First` and no project, gives
// the same bytes again. Names are unknown here, so targets stand as numbers:
//   LinkPGCN 3   LinkPGN 2, button=1   LinkCN 4, button=1   LinkPTT 5, button=1   JumpTT 2
//   JumpVTS_TT 1   JumpVTS_PTT ptt_2 @ vts_ttn_1   JumpSS pgc_3   CallSS RSM=4,, pgc_3
//   SetNVTMR NV_TMR=60, TT_PGCN=2
// Where several texts share their bytes the plainest is given ("subpicture=1:OFF" for the dummy stream
// switched off). A compound command whose last bytes are no sub-instruction is said with "LinkPGCN", which
// makes those bytes though players run none of it: `TextFault::LinkNotCarried` tells. Bytes that the encoder
// never makes from a well-formed text are not known.
DecodedCommand DecodeCommand(const CommandBytes& bytes);
DecodedCommand DecodeCommand(std::string_view hex);

}  // namespace quorvelant
