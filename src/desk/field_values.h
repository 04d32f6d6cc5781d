// The kinds of values that rows of fields hold.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "desk/field_rows.h"
#include "model/uops.h"

namespace quorvelant {

template <std::int64_t LeastOf, std::int64_t MostOf>
struct NumberWithin {
  static std::int32_t Read(const FieldPlace& /*at*/, const JsonField& value, std::int32_t /*held*/) {
    return static_cast<std::int32_t>(value.Number(LeastOf, MostOf));
  }
  static void Show(const FieldPlace& /*at*/, std::int32_t held, ElementField& field) {
    field.Kind = FieldKind::Number;
    field.Value = held;
    field.Least = LeastOf;
    field.Most = MostOf;
  }
};

// Held as a bool, or as a number that is 1 for on.
struct FlagValue {
  template <class Held>
  static Held Read(const FieldPlace& /*at*/, const JsonField& value, const Held& /*held*/) {
    return static_cast<Held>(value.Flag());
  }
  template <class Held>
  static void Show(const FieldPlace& /*at*/, const Held& held, ElementField& field) {
    field.Kind = FieldKind::Flag;
    field.Value = static_cast<bool>(held);
  }
};

// The streams that are not named keep what they have. A menu has one stream of each kind.
struct StreamMapValue {
  template <std::size_t Count>
  static std::array<std::int32_t, Count> Read(const FieldPlace& at, const JsonField& value,
                                              std::array<std::int32_t, Count> held) {
    const auto list = value.List(StreamsOf(at, Count));
    for (std::size_t i = 0; i < list.size(); ++i) {
      held.at(i) = static_cast<std::int32_t>(list[i].Number(0, Count - 1));
    }
    return held;
  }
  template <std::size_t Count>
  static void Show(const FieldPlace& at, const std::array<std::int32_t, Count>& held, ElementField& field) {
    field.Kind = FieldKind::Numbers;
    field.Most = Count - 1;
    field.Value = nlohmann::json::array();
    for (std::size_t i = 0; i < StreamsOf(at, Count); ++i) {
      field.Value.push_back(held.at(i));
    }
  }

 private:
  static std::size_t StreamsOf(const FieldPlace& at, std::size_t count);
};

struct StreamFlagsValue {
  template <std::size_t Count>
  static std::array<bool, Count> Read(const FieldPlace& /*at*/, const JsonField& value,
                                      std::array<bool, Count> held) {
    const auto list = value.List(Count);
    for (std::size_t i = 0; i < list.size(); ++i) {
      held.at(i) = list[i].Flag();
    }
    return held;
  }
  template <std::size_t Count>
  static void Show(const FieldPlace& /*at*/, const std::array<bool, Count>& held, ElementField& field) {
    field.Kind = FieldKind::Flags;
    field.Value = held;
  }
};

// "maximum" or "custom".
struct PolicyValue {
  static bool Read(const FieldPlace& at, const JsonField& value, bool held);
  static void Show(const FieldPlace& at, bool held, ElementField& field);
};

struct UopsValue {
  static UopMask Read(const FieldPlace& at, const JsonField& value, const UopMask& held);
  static void Show(const FieldPlace& at, const UopMask& held, ElementField& field);
};

struct PlaybackValue {
  static PlayBack Read(const FieldPlace& at, const JsonField& value, PlayBack held);
  static void Show(const FieldPlace& at, PlayBack held, ElementField& field);
};

// The number of one of the PGC's cell commands; 0 for none.
struct CellCommandValue {
  static std::int32_t Read(const FieldPlace& at, const JsonField& value, std::int32_t held);
  static void Show(const FieldPlace& at, std::int32_t held, ElementField& field);
};

// Texts that are one of some words. `Read` may refuse, and gives the word as the project holds it.
struct LanguageValue {
  static std::string Read(const FieldPlace& at, const JsonField& value, const std::string& held);
  static void Show(const FieldPlace& at, const std::string& held, ElementField& field);
};
struct AudioExtensionValue {
  static std::string Read(const FieldPlace& at, const JsonField& value, const std::string& held);
  static void Show(const FieldPlace& at, const std::string& held, ElementField& field);
};
struct SubExtensionValue {
  static std::string Read(const FieldPlace& at, const JsonField& value, const std::string& held);
  static void Show(const FieldPlace& at, const std::string& held, ElementField& field);
};
struct SubDisplayModeValue {  // what the track admits is asked where the stream is changed
  static std::string Read(const FieldPlace& at, const JsonField& value, const std::string& held);
  static void Show(const FieldPlace& at, const std::string& held, ElementField& field);
};
struct MenuTypeValue {
  static std::string Read(const FieldPlace& at, const JsonField& value, const std::string& held);
  static void Show(const FieldPlace& at, const std::string& held, ElementField& field);
};
// The name of a PGC to which players can link from the one of the key, or "none": a title's links stay among
// the titles of its set, a menu's among the menus.
struct LinkValue {
  static std::string Read(const FieldPlace& at, const JsonField& value, const std::string& held);
  static void Show(const FieldPlace& at, const std::string& held, ElementField& field);
};
struct PaletteNameValue {
  static std::string Read(const FieldPlace& at, const JsonField& value, const std::string& held);
  static void Show(const FieldPlace& at, const std::string& held, ElementField& field);
};

// Fills a field that is one of some words.
template <class Words>
void ShowChoice(const std::string& held, const Words& words, ElementField& field) {
  field.Kind = FieldKind::Choice;
  field.Value = held;
  field.Choices.assign(std::begin(words), std::end(words));
  // What no list offers may still stand in a project; the form must show it.
  if (std::ranges::find(field.Choices, held) == field.Choices.end()) {
    field.Choices.insert(field.Choices.begin(), held);
  }
}

}  // namespace quorvelant
