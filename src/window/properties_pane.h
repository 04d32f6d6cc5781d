// Properties: the fields of the chosen element.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "window/field_control.h"
#include "window/window_parts.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace quorvelant {

class PaletteEditor;

// A form from the table that `quorvelant edit` sets fields by. It is built for an element and follows its
// values; what is being written stays until it is entered.
class PropertiesPane : public QWidget {
  Q_OBJECT
 public:
  explicit PropertiesPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  void FollowKey();
  void Follow(const ChangeEvent& event);
  void BuildForm(const std::vector<ElementField>& fields);
  // The name, where the element has one that can be changed.
  [[nodiscard]] std::optional<ElementField> NameField() const;
  [[nodiscard]] std::vector<ElementField> Fields() const;
  void ShowFields(const std::vector<ElementField>& fields);
  void Set(const std::string& field, const nlohmann::json& value);

  WindowParts& parts_;
  QLabel* title_;
  QScrollArea* area_;
  QWidget* form_;
  QVBoxLayout* inside_ = nullptr;
  PaletteEditor* palettes_;
  std::string key_;
  std::vector<std::string> names_;  // of the fields in the form
  std::vector<FieldControl> controls_;
};

}  // namespace quorvelant
