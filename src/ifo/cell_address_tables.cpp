#include "ifo/cell_address_tables.h"

#include <algorithm>

#include "disc/table_layout.h"

namespace quorvelant {

Bytes BuildCellAddressTable(const VobSetRecords& records) {
  Bytes bytes;
  if (records.Vobs.empty()) {
    return bytes;
  }
  bytes.resize(table_head::Size);
  for (const VobRecord& vob : records.Vobs) {
    for (const CellRecord& cell : vob.Cells) {
      bytes.resize(bytes.size() + cell_address::Size);
      const ByteSpan entry = ByteSpan(bytes).last(cell_address::Size);
      Put(entry, cell_address::VobId, disc::Number{vob.VobId});
      Put(entry, cell_address::CellId, disc::Number{cell.CellId});
      Put(entry, cell_address::Start, disc::Sectors{cell.StartSector});
      Put(entry, cell_address::Last, disc::Sectors{cell.EndSector});
    }
  }
  Put(bytes, table_head::Count, disc::Number{records.Vobs.size()});
  Put(bytes, table_head::Last, disc::ByteOffset{static_cast<std::uint32_t>(bytes.size() - 1)});
  return bytes;
}

Bytes BuildVobuMap(const VobSetRecords& records) {
  if (records.Vobs.empty()) {
    return {};
  }
  const std::size_t count = records.VobuAddressList.size();
  ByteWriter table;
  table.U32(4 * count + 3);  // the last byte's offset
  for (const std::uint32_t sector : records.VobuAddressList) {
    table.U32(sector);
  }
  return table.Take();
}

}  // namespace quorvelant
