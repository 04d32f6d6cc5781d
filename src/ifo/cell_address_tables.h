// Where the cells and VOBUs of a domain lie.
#pragma once

#include "base/bytes.h"
#include "disc/vob_records.h"

namespace quorvelant {

// VTS_C_ADT, VTSM_C_ADT, VMGM_C_ADT; empty for a domain without VOBs. The head counts VOBs, not entries.
Bytes BuildCellAddressTable(const VobSetRecords& records);

// VTS_VOBU_ADMAP, VTSM_VOBU_ADMAP, VMGM_VOBU_ADMAP; empty for a domain without VOBs.
Bytes BuildVobuMap(const VobSetRecords& records);

}  // namespace quorvelant
