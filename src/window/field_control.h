// Controls for the fields of elements.
#pragma once

#include <functional>

#include "desk/element_field.h"

class QWidget;

namespace quorvelant {

// A control of a form. `Show` brings another value of the same field into it and tells nobody.
struct FieldControl {
  QWidget* Widget = nullptr;
  std::function<void(const ElementField& field)> Show;
};

// The control that fits the field's kind, with its label as accessible name. `want` is called with what a
// user enters; the field may come back with another value.
[[nodiscard]] FieldControl MakeFieldControl(const ElementField& field,
                                            const std::function<void(const nlohmann::json& value)>& want);

}  // namespace quorvelant
