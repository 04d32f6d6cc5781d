// Writing the keys of an item by their rows.
#pragma once

#include <initializer_list>

#include "script/key.h"
#include "script/script_text.h"

namespace quorvelant {

// What the rows cannot see of the item that is written.
struct WriteContext {
  int FramesPerSecond = 25;
  Written Holds = Written::Always;
};

// Writes the value of a row, by the field's type, into a line that has begun.
template <class Item>
struct FieldWriter {
  ScriptText& Text;
  const Item& Source;
  const Key<Item>& Row;
  std::size_t Entry;

  void operator()(std::string Item::*field) const { Text.Put(WrittenText(Row.Value, Source.*field)); }
  void operator()(std::int32_t Item::*field) const {
    if (Row.OnOff != nullptr) {
      PutSwitch(Source.*field == 1);
    } else {
      PutEntry(Source.*field);
    }
  }
  void operator()(bool Item::*field) const { PutSwitch(Source.*field); }
  void operator()(Color Item::*field) const { PutEntry(Source.*field); }
  void operator()(PlayBack Item::*field) const {
    const auto mode = static_cast<std::size_t>(Source.*field);
    Text.Put(PlayBackWords[mode < PlayBackWords.size() ? mode : 0]);
  }
  void operator()(const Numbers<Item>& fields) const {
    for (std::size_t i = 0; i < fields.Count; ++i) {
      Text.Put(i == 0 ? "" : ",");
      PutEntry(Source.*fields.Fields[i]);
    }
  }
  // Held as E2, E1, P, Bg; written from the background on.
  void operator()(ColorQuad Item::*field) const {
    const ColorQuad& quad = Source.*field;
    PutFour({quad[3], quad[2], quad[0], quad[1]});
  }
  template <class Value, std::size_t Count>
  void operator()(std::array<Value, Count> Item::*field) const {
    PutEntry((Source.*field)[Entry]);
  }

 private:
  void PutSwitch(bool on) const {
    const Switch& words = Row.OnOff != nullptr ? *Row.OnOff : YesNo;
    Text.Put(on ? words.On : words.Off);
  }
  void PutFour(std::initializer_list<std::int32_t> numbers) const {
    std::string_view separator;
    for (const std::int32_t number : numbers) {
      Text.Put(separator).Put(std::int64_t{number});
      separator = ", ";
    }
  }
  void PutEntry(const std::string& entry) const { Text.Put(entry); }
  void PutEntry(std::int32_t entry) const { Text.Put(std::int64_t{entry}); }
  void PutEntry(bool entry) const { PutSwitch(entry); }
  void PutEntry(Color entry) const {
    Text.Put(std::int64_t{entry & 255U}).Put(',').Put(std::int64_t{entry >> 8U & 255U}).Put(',');
    Text.Put(std::int64_t{entry >> 16U & 255U});
  }
  void PutEntry(const HighlightArea& area) const { PutFour({area.X1, area.Y1, area.X2, area.Y2}); }
};

// Whether the switch of a row is on; other values count as off.
template <class Item>
bool IsOn(const Key<Item>& row, const Item& item) {
  if (const auto* flag = std::get_if<bool Item::*>(&row.Field)) {
    return item.**flag;
  }
  const auto* number = std::get_if<std::int32_t Item::*>(&row.Field);
  return number != nullptr && item.**number == 1;
}

template <class Item>
bool IsWritten(const Key<Item>& row, const Item& item, Written holds) {
  return row.When == Written::Always ||
         (Has(holds | Written::IfOn, row.When) && (!Has(row.When, Written::IfOn) || IsOn(row, item)));
}

// One entry of a row with several.
template <class Item>
void WriteEntry(ScriptText& text, const Key<Item>& row, const Item& item, std::size_t entry) {
  std::visit(FieldWriter<Item>{text.BeginNumbered(row.Name, row.First + entry), item, row, entry}, row.Field);
  text.End();
}

template <class Item>
void WriteKey(ScriptText& text, const Key<Item>& row, const Item& item, const WriteContext& context = {}) {
  if (!IsWritten(row, item, context.Holds)) {
    return;
  }
  if (row.Show != nullptr) {
    text.Value(row.Name, row.Show(item, context.FramesPerSecond));
    return;
  }
  if (row.Entries > 1) {
    for (std::size_t entry = 0; entry < row.Entries; ++entry) {
      WriteEntry(text, row, item, entry);
    }
    return;
  }
  std::visit(FieldWriter<Item>{text.BeginValue(row.Name), item, row, 0}, row.Field);
  text.End();
}

// All keys of a table, in its order.
template <class Table, class Item>
void WriteKeys(ScriptText& text, const Table& table, const Item& item, const WriteContext& context = {}) {
  for (const Key<Item>& row : table) {
    WriteKey(text, row, item, context);
  }
}

}  // namespace quorvelant
