// Reading an IFO: bytes within bounds, and findings with the byte they stand at.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "disc/record.h"
#include "verify/disc_finding.h"
#include "verify/messages.h"

namespace quorvelant {

// A table within an IFO. What lies outside reads as 0.
class IfoView {
 public:
  IfoView(ByteView ifo, std::size_t base, std::size_t size)
      : ifo_(ifo), base_(std::min(base, ifo.size())), size_(std::min(size, ifo.size() - base_)) {}

  [[nodiscard]] std::size_t Size() const { return size_; }
  [[nodiscard]] std::uint32_t At(std::size_t offset = 0) const {
    return static_cast<std::uint32_t>(base_ + offset);
  }
  [[nodiscard]] bool Has(std::size_t offset, std::size_t count) const {
    return offset <= size_ && count <= size_ - offset;
  }
  [[nodiscard]] std::uint64_t Get(std::size_t offset, unsigned width) const {
    return Has(offset, width) ? GetBytes(ifo_, base_ + offset, width) : 0;
  }
  [[nodiscard]] unsigned Byte(std::size_t offset) const { return static_cast<unsigned>(Get(offset, 1)); }
  [[nodiscard]] std::uint16_t Word(std::size_t offset) const {
    return static_cast<std::uint16_t>(Get(offset, 2));
  }
  [[nodiscard]] std::uint32_t Long(std::size_t offset) const {
    return static_cast<std::uint32_t>(Get(offset, 4));
  }
  [[nodiscard]] IfoView Sub(std::size_t offset, std::size_t size) const {
    const std::size_t start = std::min(offset, size_);
    return {ifo_, base_ + start, std::min(size, size_ - start)};
  }
  [[nodiscard]] IfoView Sub(std::size_t offset) const { return Sub(offset, size_); }

 private:
  ByteView ifo_;
  std::size_t base_;
  std::size_t size_;
};

// Tells findings in one IFO.
class IfoTeller {
 public:
  // `isOurs`: this program made the disc, which leaves nothing open that others may.
  IfoTeller(std::string file, DiscFindings& findings, bool isOurs = false)
      : file_(std::move(file)), findings_(&findings), isOurs_(isOurs) {}

  template <class Expected, class Seen>
  void Tell(const MessageKind& kind, std::uint32_t at, const std::string& table, std::string_view field,
            const Expected& expected, const Seen& seen) const {
    findings_->Add(kind, {.File = file_, .Sector = at / SectorBytes, .Offset = at}, table, field,
                   fmt::format("{}", expected), fmt::format("{}", seen));
  }
  // What a record reserves is zero, but for bytes from `upTo` on.
  template <class Rows>
  void CheckReserved(const Rows& rows, const IfoView& record, const std::string& table,
                     std::size_t upTo = SIZE_MAX) const {
    for (const disc::RowView& row : rows) {
      for (std::size_t i = 0; row.Name == "reserved" && i < row.Width; ++i) {
        if (row.Offset + i < upTo && record.Byte(row.Offset + i) != 0) {
          Tell(message::ReservedSet, record.At(row.Offset + i), table,
               fmt::format("reserved byte {}", row.Offset + i), 0, record.Byte(row.Offset + i));
          break;
        }
      }
    }
  }
  // A table ends with its last entry. Too short is an error; longer wastes space only, which this program
  // does not.
  void CheckEnd(const IfoView& table, std::size_t lastAt, std::size_t bytes, const std::string& name) const {
    const std::uint64_t said = std::uint64_t{table.Long(lastAt)} + 1;
    if (said != bytes) {
      Tell(said < bytes || isOurs_ ? message::TableBroken : message::TableLoose, table.At(lastAt), name,
           "end_address", bytes - 1, said - 1);
    }
  }

  [[nodiscard]] bool IsOurs() const { return isOurs_; }
  [[nodiscard]] const std::string& File() const { return file_; }
  [[nodiscard]] DiscFindings& Findings() const { return *findings_; }

 private:
  std::string file_;
  DiscFindings* findings_;
  bool isOurs_;
};

}  // namespace quorvelant
