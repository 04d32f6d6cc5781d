// The tables of an IFO file, one after the other, each on a sector of its own.
#pragma once

#include "disc/record.h"

namespace quorvelant {

class TableChain {
 public:
  // `head` is the file's first table, padded to a sector; it takes the pointers of the others.
  explicit TableChain(Bytes head) : bytes_(std::move(head)) { Pad(); }

  // Appends a table and stores its sector in the head. A table without bytes takes no room and leaves
  // its pointer 0.
  void Add(const disc::Field<disc::Sectors, 4>& pointer, const Bytes& table) {
    if (table.empty()) {
      return;
    }
    Put(bytes_, pointer, SectorCount());
    bytes_.insert(bytes_.end(), table.begin(), table.end());
    Pad();
  }
  disc::Sectors SectorCount() const { return {static_cast<std::uint32_t>(bytes_.size() / SectorBytes)}; }
  ByteSpan Head() { return bytes_; }
  Bytes Take() { return std::move(bytes_); }

 private:
  void Pad() { bytes_.resize((bytes_.size() + SectorBytes - 1) / SectorBytes * SectorBytes); }

  Bytes bytes_;
};

}  // namespace quorvelant
