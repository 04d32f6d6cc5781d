#include "ui/message_list.h"

#include <algorithm>
#include <array>

#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

QString TextOf(const Message& message) {
  QString text = Shown(message.Text);
  return text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

bool AreAlike(const Message& one, const Message& other) {
  return one.Level == other.Level && one.Text == other.Text && one.Place == other.Place &&
         one.Title == other.Title;
}

}  // namespace

QString LevelWords(Severity level) {
  switch (level) {
    case Severity::Error:
      return MessageList::tr("Error");
    case Severity::Warning:
      return MessageList::tr("Warning");
    case Severity::Information:
      break;
  }
  return MessageList::tr("Note");
}

void MessageList::Append(Message message, std::size_t most) {
  if (messages_.size() >= most) {
    beginRemoveRows({}, 0, 0);
    messages_.erase(messages_.begin());
    places_.erase(places_.begin());
    endRemoveRows();
  }
  const int row = static_cast<int>(messages_.size());
  beginInsertRows({}, row, row);
  places_.push_back(names_ ? names_(message.Place) : Shown(message.Place));
  messages_.push_back(std::move(message));
  endInsertRows();
}

// What stands at the beginning and at the end of both stays; the rest between is exchanged.
void MessageList::Replace(std::vector<Message> messages) {
  std::size_t head = 0;
  while (head < messages.size() && head < messages_.size() && AreAlike(messages[head], messages_[head])) {
    ++head;
  }
  std::size_t tail = 0;
  while (tail < std::min(messages.size(), messages_.size()) - head &&
         AreAlike(messages[messages.size() - 1 - tail], messages_[messages_.size() - 1 - tail])) {
    ++tail;
  }
  const auto first = static_cast<std::ptrdiff_t>(head);
  if (messages_.size() > head + tail) {
    beginRemoveRows({}, static_cast<int>(head), static_cast<int>(messages_.size() - tail) - 1);
    messages_.erase(messages_.begin() + first, messages_.end() - static_cast<std::ptrdiff_t>(tail));
    places_.erase(places_.begin() + first, places_.end() - static_cast<std::ptrdiff_t>(tail));
    endRemoveRows();
  }
  if (messages.size() > head + tail) {
    const std::size_t count = messages.size() - head - tail;
    beginInsertRows({}, static_cast<int>(head), static_cast<int>(head + count) - 1);
    std::vector<QString> places;
    for (std::size_t i = head; i < head + count; ++i) {
      places.push_back(names_ ? names_(messages[i].Place) : Shown(messages[i].Place));
    }
    messages_.insert(messages_.begin() + first, messages.begin() + first,
                     messages.begin() + first + static_cast<std::ptrdiff_t>(count));
    places_.insert(places_.begin() + first, places.begin(), places.end());
    endInsertRows();
  }
}

const Message* MessageList::At(int row) const {
  return row >= 0 && static_cast<std::size_t>(row) < messages_.size()
             ? &messages_[static_cast<std::size_t>(row)]
             : nullptr;
}

QString MessageList::PlaceWords(int row) const {
  return At(row) == nullptr ? QString() : places_[static_cast<std::size_t>(row)];
}

int MessageList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(messages_.size());
}

int MessageList::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant MessageList::data(const QModelIndex& index, int role) const {
  const Message* const message = At(index.row());
  if (message == nullptr) {
    return {};
  }
  if (role == Qt::ToolTipRole && index.column() == Text) {
    return PlainToolTip(Shown(message->Text));
  }
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) {
    return {};
  }
  switch (index.column()) {
    case Level:
      return role == Qt::AccessibleTextRole
                 ? QStringLiteral("%1: %2").arg(LevelWords(message->Level), TextOf(*message))
                 : LevelWords(message->Level);
    case Text:
      return TextOf(*message);
    default:
      return PlaceWords(index.row());
  }
}

QVariant MessageList::headerData(int section, Qt::Orientation orientation, int role) const {
  const std::array<QString, ColumnCount> titles{tr("Level"), tr("What"), tr("Where")};
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount) {
    return {};
  }
  return titles.at(static_cast<std::size_t>(section));
}

}  // namespace quorvelant
