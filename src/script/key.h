// One key of a script as a row: its words, the field that it fills, what its value looks like. The reader,
// the writer and the judge of odd values share the rows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "script/reader_state.h"
#include "script/values.h"

namespace quorvelant {

// Several numbers of one item in one value, `Count` of them.
template <class Item>
struct Numbers {
  std::array<std::int32_t Item::*, 4> Fields;
  std::size_t Count = 4;
};

template <class Item>
using KeyField =
    std::variant<std::string Item::*, std::int32_t Item::*, bool Item::*, Color Item::*, PlayBack Item::*,
                 Numbers<Item>, ColorQuad Item::*,
                 // One line an entry.
                 std::array<std::string, 3> Item::*, std::array<HighlightArea, 3> Item::*,
                 std::array<Color, 16> Item::*, std::array<bool, AudioStreamCount> Item::*,
                 std::array<bool, SubStreamCount> Item::*, std::array<std::int32_t, AudioStreamCount> Item::*,
                 std::array<std::int32_t, SubStreamCount> Item::*>;

// When a key is written: where all of these hold.
enum class Written : unsigned {
  Always = 0,
  IfOn = 1,      // its switch is on
  OfPcm = 2,     // the stream is PCM
  OfSlides = 4,  // the play lasts as long as the script says
  OfTitles = 8,  // the PGC is a title's
  OfMenus = 16,
  OfWideBitmaps = 64,  // the track is of bitmaps in 16:9
  Never = 32           // the writer leaves it to the order of the items
};
constexpr Written operator|(Written a, Written b) {
  return static_cast<Written>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr bool Has(Written all, Written part) {
  return (static_cast<unsigned>(all) & static_cast<unsigned>(part)) == static_cast<unsigned>(part);
}

// Reads a key by code. `number` is what stands in the place of a "*" or after a "#". False when the line has
// no meaning where it stands.
using KeyReader = bool (*)(ReaderState& state, std::string_view value, std::size_t number);

// How many entries a key has, a line each; 1 for a plain value.
template <class Item>
struct EntryCounter {
  template <class Member>
  constexpr std::size_t operator()(Member Item::* /*field*/) const {
    return 1;
  }
  template <class Entry, std::size_t Count>
  constexpr std::size_t operator()(std::array<Entry, Count> Item::* /*field*/) const {
    return std::is_same_v<std::array<Entry, Count>, ColorQuad> ? 1 : Count;
  }
  constexpr std::size_t operator()(const Numbers<Item>& /*fields*/) const { return 1; }
};

template <class Item>
struct Key {
  template <class Member>
  constexpr Key(std::string_view words, Member field, Takes takes = Takes::Anything,
                Written written = Written::Always)
      : Words(words),
        Name(words.substr(0, words.find('|'))),
        Field(field),
        Value(takes),
        When(written),
        Entries(std::visit(EntryCounter<Item>(), Field)) {}

  std::string_view Words;  // all that are read, in any case, between "|"
  std::string_view Name;   // the first of them, as it is written
  KeyField<Item> Field;
  Takes Value;
  Written When;
  std::size_t Entries;                                     // lines of its own: more than 1 for an array
  const Switch* OnOff = nullptr;                           // of a number that is a switch, too
  std::size_t First = 0;                                   // number of the first entry of an array
  Segment Place = Segment::None;                           // where the item alone is not enough
  void (*Then)(ReaderState& state, Item& item) = nullptr;  // what else reading it does
  KeyReader Reader = nullptr;                              // reads it in place of all this
  std::string (*Show)(const Item& item, int framesPerSecond) = nullptr;  // its text, in place of the field's

  constexpr Key Switched(const Switch& words) const { return With(&Key::OnOff, &words); }
  constexpr Key From(std::size_t first) const { return With(&Key::First, first); }
  constexpr Key In(Segment place) const { return With(&Key::Place, place); }
  constexpr Key After(void (*then)(ReaderState&, Item&)) const { return With(&Key::Then, then); }
  constexpr Key ReadBy(KeyReader reader) const { return With(&Key::Reader, reader); }
  constexpr Key ShownBy(std::string (*show)(const Item&, int)) const { return With(&Key::Show, show); }

 private:
  template <class Member>
  constexpr Key With(Member Key::*field, Member value) const {
    Key key = *this;
    key.*field = value;
    return key;
  }
};
template <class Item, class Member, class... Rest>
Key(std::string_view, Member Item::*, Rest...) -> Key<Item>;
template <class Item, class... Rest>
Key(std::string_view, Numbers<Item>, Rest...) -> Key<Item>;

}  // namespace quorvelant
