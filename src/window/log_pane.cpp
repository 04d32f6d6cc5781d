#include "window/log_pane.h"

#include <QScrollBar>
#include <QVBoxLayout>

#include "window/message_table.h"

namespace quorvelant {

namespace {

constexpr std::size_t MostTold = 5000;

}  // namespace

LogPane::LogPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent), told_(new MessageList(this)), table_(MakeMessageTable(told_, tr("Log"))) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(table_);
  setFocusProxy(table_);
  connect(&parts.Doc.Speaks(), &Voice::Told, this, [this](const Message& message) {
    const bool isAtEnd = table_->verticalScrollBar()->value() == table_->verticalScrollBar()->maximum();
    told_->Append(message, MostTold);
    if (isAtEnd) {
      table_->scrollToBottom();
    }
  });
  connect(table_, &QTableView::activated, this, [this, &parts](const QModelIndex& index) {
    const Message* const message = told_->At(index.row());
    if (message != nullptr) {
      parts.Chosen.GoTo(message->Place);
    }
  });
}

}  // namespace quorvelant
