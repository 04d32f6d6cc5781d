#include "subpicture/unit_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quorvelant {

namespace {

// A view that gives 0 beyond its end.
struct UnitBytes {
  ByteView Bytes;

  [[nodiscard]] unsigned At(std::size_t place) const { return place < Bytes.size() ? Bytes[place] : 0U; }
  [[nodiscard]] unsigned U16(std::size_t place) const { return At(place) << 8U | At(place + 1); }
  [[nodiscard]] unsigned Nibble(std::size_t place) const {
    return place % 2 == 0 ? At(place / 2) >> 4U : At(place / 2) & 15U;
  }
};

ColorQuad QuadAt(const UnitBytes& unit, std::size_t place) {
  const unsigned packed = unit.U16(place);
  ColorQuad quad{};
  for (std::size_t i = 0; i < quad.size(); ++i) {
    quad.at(i) = static_cast<std::int32_t>(packed >> (12 - 4 * i) & 15U);
  }
  return quad;
}

// Two values of 12 bits.
std::array<int, 2> PairAt(const UnitBytes& unit, std::size_t place) {
  const unsigned packed = unit.At(place) << 16U | unit.At(place + 1) << 8U | unit.At(place + 2);
  return {static_cast<int>(packed >> 12U), static_cast<int>(packed & 0xFFFU)};
}

// The sequence of commands that starts the display.
class StartSequence {
 public:
  StartSequence(const UnitBytes& unit, ShownUnit& shown) : unit_(unit), shown_(shown) {}

  // False where a command is unknown.
  bool Read(std::size_t at) {
    at += 4;
    for (unsigned command = unit_.At(at++); command != 0xFF; command = unit_.At(at++)) {
      if (at >= unit_.Bytes.size() || !Take(command, at)) {
        return false;
      }
    }
    return true;
  }

  [[nodiscard]] const std::array<std::size_t, 2>& Fields() const { return fields_; }

 private:
  // `at` is the place after the command's byte, and moves on.
  bool Take(unsigned command, std::size_t& at) {
    switch (command) {
      case 0x00:
        shown_.Forced = true;
        return true;
      case 0x01:
      case 0x02:
        return true;
      case 0x03:
        shown_.ColorIndexes = QuadAt(unit_, at);
        at += 2;
        return true;
      case 0x04:
        shown_.Contrasts = QuadAt(unit_, at);
        at += 2;
        return true;
      case 0x05: {
        const auto columns = PairAt(unit_, at);
        const auto lines = PairAt(unit_, at + 3);
        shown_.Area = {.X1 = columns[0], .X2 = columns[1], .Y1 = lines[0], .Y2 = lines[1]};
        at += 6;
        return true;
      }
      case 0x06:
        fields_ = {unit_.U16(at), unit_.U16(at + 2)};
        at += 4;
        return true;
      default:
        return false;
    }
  }

  const UnitBytes& unit_;
  ShownUnit& shown_;
  std::array<std::size_t, 2> fields_{};
};

// One row; `nibble` moves on to the next row, which begins on a whole byte.
void ReadRow(const UnitBytes& unit, std::size_t& nibble, PixelCode* row, int width) {
  int column = 0;
  while (column < width && nibble / 2 < unit.Bytes.size()) {
    unsigned code = unit.Nibble(nibble++);
    for (const unsigned least : {4U, 16U, 64U}) {
      if (code >= least) {
        break;
      }
      code = code << 4U | unit.Nibble(nibble++);
    }
    const int length = code >> 2U == 0 ? width : static_cast<int>(code >> 2U);
    const int end = std::min(column + length, width);
    std::fill(row + column, row + end, static_cast<PixelCode>(code & 3U));
    column = end;
  }
  nibble += nibble % 2;
}

}  // namespace

PixelCode ShownUnit::At(int column, int line) const {
  const bool inside = column >= Area.X1 && column <= Area.X2 && line >= Area.Y1 && line <= Area.Y2;
  return inside ? Pixels[static_cast<std::size_t>(line - Area.Y1) * static_cast<std::size_t>(Width()) +
                         static_cast<std::size_t>(column - Area.X1)]
                : PixelCode::Background;
}

std::optional<ShownUnit> ReadUnit(ByteView bytes) {
  const UnitBytes unit{bytes};
  const std::size_t sequence = unit.U16(2);
  if (bytes.size() < 4 || unit.U16(0) > bytes.size() || sequence + 4 > bytes.size()) {
    return std::nullopt;
  }
  ShownUnit shown;
  StartSequence start(unit, shown);
  if (!start.Read(sequence) || shown.Width() <= 0 || shown.Height() <= 0) {
    return std::nullopt;
  }
  if (const std::size_t next = unit.U16(sequence + 2); next != sequence) {
    shown.StopDelay = unit.U16(next);
  }
  shown.Pixels.resize(static_cast<std::size_t>(shown.Width()) * static_cast<std::size_t>(shown.Height()));
  std::array<std::size_t, 2> nibbles{2 * start.Fields()[0], 2 * start.Fields()[1]};
  for (int line = 0; line < shown.Height(); ++line) {
    ReadRow(unit, nibbles.at(static_cast<std::size_t>(line) % 2),
            shown.Pixels.data() + static_cast<std::size_t>(line) * static_cast<std::size_t>(shown.Width()),
            shown.Width());
  }
  return shown;
}

}  // namespace quorvelant
