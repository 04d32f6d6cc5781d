// Properties: the fields of the chosen element.
#pragma once

#include <QWidget>

#include "window/window_parts.h"

namespace quorvelant {

class PropertiesPane : public QWidget {
  Q_OBJECT
 public:
  explicit PropertiesPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  WindowParts& parts_;
};

}  // namespace quorvelant
