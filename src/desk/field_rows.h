// The table by which the fields of elements are set and shown.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/message_error.h"
#include "desk/element_field.h"
#include "desk/json_field.h"
#include "desk/messages.h"
#include "model/project.h"

namespace quorvelant {

// Where the element stands.
struct FieldPlace {
  const Project& Work;
  const std::string& Key;
};

template <class Element>
struct FieldRow {
  std::string_view Name;
  std::string_view Label;
  void (*Set)(const FieldPlace& at, Element& element, const JsonField& value);
  void (*Show)(const FieldPlace& at, const Element& element, ElementField& field);  // all but name and label
};

template <class>
struct MemberOf;
template <class Value, class Owner>
struct MemberOf<Value Owner::*> {
  using Element = Owner;
};

// A row whose value stands in one member. `Kind` reads it from what a user wrote, given what it was before,
// and shows it.
template <auto Member, class Kind>
constexpr auto FieldRowOf(std::string_view name, std::string_view label) {
  using Element = typename MemberOf<decltype(Member)>::Element;
  return FieldRow<Element>{name, label,
                           [](const FieldPlace& at, Element& element, const JsonField& value) {
                             element.*Member = Kind::Read(at, value, element.*Member);
                           },
                           [](const FieldPlace& at, const Element& element, ElementField& field) {
                             Kind::Show(at, element.*Member, field);
                           }};
}

[[noreturn]] inline void RefuseField(const std::string& key, const std::string& name,
                                     const std::vector<std::string_view>& names) {
  throw MessageError(MessageOf(message::EditFieldUnknown, key, key, name, fmt::join(names, ", ")));
}

// Sets each field by the row of its name in one of the tables.
template <class Element>
void SetEach(const FieldPlace& at, Element& element, const JsonField& fields,
             std::initializer_list<std::span<const FieldRow<Element>>> tables) {
  for (const JsonField& field : fields.Fields()) {
    const FieldRow<Element>* found = nullptr;
    std::vector<std::string_view> names;
    for (const auto table : tables) {
      const auto row = std::ranges::find(table, field.Name(), &FieldRow<Element>::Name);
      found = found == nullptr && row != table.end() ? &*row : found;
      std::ranges::transform(table, std::back_inserter(names), &FieldRow<Element>::Name);
    }
    if (found == nullptr) {
      RefuseField(at.Key, field.Name(), names);
    }
    found->Set(at, element, field);
  }
}

template <class Element>
std::vector<ElementField> ShowEach(const FieldPlace& at, const Element& element,
                                   std::initializer_list<std::span<const FieldRow<Element>>> tables) {
  std::vector<ElementField> fields;
  for (const auto table : tables) {
    for (const FieldRow<Element>& row : table) {
      ElementField& field = fields.emplace_back();
      field.Name = row.Name;
      field.Label = row.Label;
      row.Show(at, element, field);
    }
  }
  return fields;
}

}  // namespace quorvelant
