// Fixed records of the disc, declared once as rows: offset, width, unit. The rows of a record are
// proven at compile time to tile it, and a value of the wrong unit does not compile.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>

#include "base/bytes.h"

namespace quorvelant::disc {

// Units. A plain count, index, flag or code is a `Number`.
struct Number {
  std::uint64_t Value = 0;
};
// Sectors of 2048 bytes: an address, a distance or a count of them.
struct Sectors {
  std::uint32_t Value = 0;
};
// A byte offset or a last-byte address within a table.
struct ByteOffset {
  std::uint32_t Value = 0;
};
// 90 kHz ticks.
struct Ticks {
  std::uint32_t Value = 0;
};
// Hours, minutes, seconds, frames in BCD with the rate in the two top bits of the frames.
struct BcdTime {
  std::uint32_t Value = 0;
};
// Two letters of ISO 639.
struct LanguageCode {
  std::uint16_t Value = 0;
};
// 0 where the text has not two bytes.
constexpr LanguageCode LanguageCodeOf(std::string_view letters) {
  return letters.size() == 2
             ? LanguageCode{static_cast<std::uint16_t>(static_cast<unsigned char>(letters[0]) << 8U |
                                                       static_cast<unsigned char>(letters[1]))}
             : LanguageCode{};
}

// One row. `Count` items of `Width` bytes stand at `Offset`, one after the other.
template <class Unit, unsigned Width, unsigned Count = 1>
struct Field {
  std::string_view Name;
  std::size_t Offset;

  static constexpr std::size_t Bytes = std::size_t{Width} * Count;
};

// A gap that the format reserves; it stays zero.
struct ReservedUnit {};
template <unsigned Width>
using Reserved = Field<ReservedUnit, Width>;

// A row as readers and dumps see it.
struct RowView {
  std::string_view Name;
  std::size_t Offset;
  std::size_t Width;
  std::size_t Count;
};

// The rows of a record of `Size` bytes in the format's order. Does not compile unless they tile it.
template <std::size_t Size, class... Unit, unsigned... Width, unsigned... Count>
consteval std::array<RowView, sizeof...(Unit)> Layout(const Field<Unit, Width, Count>&... rows) {
  const std::array<RowView, sizeof...(Unit)> views{RowView{rows.Name, rows.Offset, Width, Count}...};
  std::size_t at = 0;
  for (const RowView& row : views) {
    if (row.Offset != at) {
      throw "a row leaves a gap or overlaps the row ahead of it";
    }
    at += row.Width * row.Count;
  }
  if (at != Size) {
    throw "the rows do not end where the record ends";
  }
  return views;
}

// Stores `value` into item `index` of a row of the record that starts at `record[0]`.
template <class Unit, unsigned Width, unsigned Count>
void Put(ByteSpan record, const Field<Unit, Width, Count>& row, Unit value, std::size_t index = 0) {
  PutBytes(record, row.Offset + index * Width, Width, value.Value);
}

// Reads item `index` of a row.
template <class Unit, unsigned Width, unsigned Count>
Unit Get(ByteView record, const Field<Unit, Width, Count>& row, std::size_t index = 0) {
  return Unit{static_cast<decltype(Unit::Value)>(GetBytes(record, row.Offset + index * Width, Width))};
}

}  // namespace quorvelant::disc
