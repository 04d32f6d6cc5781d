// Log: everything that was told.
#pragma once

#include <QTableView>
#include <QWidget>

#include "ui/message_list.h"
#include "window/window_parts.h"

namespace quorvelant {

class LogPane : public QWidget {
  Q_OBJECT
 public:
  explicit LogPane(WindowParts& parts, QWidget* parent = nullptr);

 private:
  MessageList* told_;
  QTableView* table_;
};

}  // namespace quorvelant
