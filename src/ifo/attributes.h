// Stream attributes and colours as the information files hold them.
#pragma once

#include <cstdint>
#include <string_view>

#include "disc/record.h"
#include "model/project.h"
#include "model/stream_maps.h"

namespace quorvelant {

// V_ATR, two bytes. A domain in which no track was placed has those of a 4:3 picture of full size in
// the project's standard.
disc::Number VideoAttributes(const VTS_P& entry, Domain domain, std::string_view projectStandard);

// AST_ATR, eight bytes. A menu stream has neither language nor extension.
disc::Number AudioAttributes(const AudioMapRow& row, Domain domain, const Rules& rules);

// SPST_ATR, six bytes.
disc::Number SubpictureAttributes(const SubMapRow& row);

// A palette entry: 0, Y, Cr, Cb, a byte each (ITU-R BT.601, studio range).
disc::Number PaletteEntry(Color color);

}  // namespace quorvelant
