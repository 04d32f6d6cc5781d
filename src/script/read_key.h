// Reading a line by its key's row.
#pragma once

#include "script/key.h"
#include "script/open_item.h"
#include "script/script_reader.h"

namespace quorvelant {

// Puts a value into the field of a row, by the field's type. False, and `SkipReason` says why, where the disc
// has no such entry.
template <class Item>
struct FieldReader {
  ReaderState& State;
  Item& Target;
  const Key<Item>& Row;
  std::string_view Value;
  std::size_t Number;

  bool operator()(std::string Item::*field) const {
    if (Row.Value == Takes::Anything) {
      Target.*field = Value;
    } else {
      Target.*field = TextOf(Row.Value, WordOf(Value), State.Traits.IsScenarist);
    }
    return true;
  }
  bool operator()(std::int32_t Item::*field) const {
    if (Row.OnOff != nullptr || (Row.Value == Takes::YesOrNumber && IsOn(Value))) {
      Target.*field = IsOn(Value, Row.OnOff != nullptr ? *Row.OnOff : YesNo) ? 1 : 0;
    } else {
      Target.*field = LeadingNumber(Value);
    }
    return true;
  }
  bool operator()(bool Item::*field) const {
    Target.*field = IsOn(Value, Row.OnOff != nullptr ? *Row.OnOff : YesNo);
    return true;
  }
  bool operator()(Color Item::*field) const {
    Target.*field = CommaColor(Value);
    return true;
  }
  bool operator()(PlayBack Item::*field) const {
    for (std::size_t mode = 0; mode < PlayBackWords.size(); ++mode) {
      if (IsWord(Value, PlayBackWords[mode])) {
        Target.*field = static_cast<PlayBack>(mode);
      }
    }
    return true;
  }
  bool operator()(const Numbers<Item>& fields) const {
    const auto numbers = CommaNumbers<4>(Value);
    for (std::size_t i = 0; i < fields.Count; ++i) {
      Target.*fields.Fields[i] = numbers[i];
    }
    return true;
  }
  // Four numbers from the background on; without a comma the word opens a quad that lines of its own fill.
  bool operator()(ColorQuad Item::*field) const {
    if constexpr (std::is_same_v<Item, ColorScheme>) {
      if (!Contains(Value, ",")) {
        State.Overlay.Quad = {.OfSubtitle = nullptr, .OfScheme = field};
        return true;
      }
    }
    const auto [bg, p, e2, e1] = CommaNumbers<4>(Value);
    Target.*field = {e2, e1, p, bg};
    return true;
  }
  template <class Entry, std::size_t Count>
  bool operator()(std::array<Entry, Count> Item::*field) const {
    const std::size_t entry = EntryOf(field);
    if (entry >= Count) {
      State.Outcome.SkipReason = NumberTooLarge;
      return false;
    }
    ReadEntry((Target.*field)[entry]);
    return true;
  }
  bool operator()(std::array<HighlightArea, 3> Item::*field) const {
    const std::size_t entry = Number - Row.First;
    if (entry >= (Target.*field).size()) {
      return false;
    }
    State.Overlay.Area = entry;
    if (Contains(Value, ",")) {
      const auto [x1, y1, x2, y2] = CommaNumbers<4>(Value);
      (Target.*field)[entry] = {.X1 = x1, .X2 = x2, .Y1 = y1, .Y2 = y2};
    }
    return true;
  }
  // Without a comma lines of its own give the bytes.
  bool operator()(std::array<Color, 16> Item::*field) const {
    const std::size_t entry = Number - Row.First;
    State.Overlay.Color = {.OfSubtitle = nullptr, .OfPalette = entry};
    if (Contains(Value, ",")) {
      (Target.*field)[entry] = CommaColor(Value);
    }
    return true;
  }

 private:
  template <class Entry, std::size_t Count>
  std::size_t EntryOf(std::array<Entry, Count> Item::* /*field*/) const {
    return Number - Row.First;
  }
  // In the block of a stream the number may be left out.
  std::size_t EntryOf(std::array<std::int32_t, SubStreamCount> Item::* /*field*/) const {
    return Number != 0 ? Number : State.Disc.DecodingBlock;
  }
  std::string_view WordOf(std::string_view value) const {
    return State.Rules.BlanksAroundWords ? Trim(value) : value;
  }
  void ReadEntry(std::string& entry) const { entry = WordOf(Value); }
  void ReadEntry(std::int32_t& entry) const { entry = LeadingNumber(Value); }
  void ReadEntry(bool& entry) const { entry = IsOn(Value, *Row.OnOff); }
};

// Reads a line by its row, where the row's place is open. False when its item is not.
template <class Item>
bool ReadKey(ReaderState& state, const Key<Item>& row, std::string_view value, std::size_t number) {
  if (row.Reader != nullptr) {
    return row.Reader(state, value, number);
  }
  Item* item = OpenItem(state);
  if (item == nullptr || !std::visit(FieldReader<Item>{state, *item, row, value, number}, row.Field)) {
    return false;
  }
  if (row.Then != nullptr) {
    row.Then(state, *item);
  }
  return true;
}

}  // namespace quorvelant
