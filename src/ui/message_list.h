// Messages as a table.
#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/message.h"

namespace quorvelant {

// Level, text and place.
class MessageList : public QAbstractTableModel {
  Q_OBJECT
 public:
  enum Column : std::uint8_t { Level, Text, Place, ColumnCount };

  explicit MessageList(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  // At most so many; the oldest go.
  void Append(Message message, std::size_t most);
  // Rows that stay as they are stay chosen.
  void Replace(std::vector<Message> messages);
  void Clear() { Replace({}); }

  [[nodiscard]] const std::vector<Message>& All() const { return messages_; }
  [[nodiscard]] const Message* At(int row) const;
  [[nodiscard]] QString PlaceWords(int row) const;
  // Names for places ("Track.0" is "Film 1"); empty for none.
  void NamePlaces(std::function<QString(const std::string& place)> names) { names_ = std::move(names); }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<Message> messages_;
  std::vector<QString> places_;
  std::function<QString(const std::string& place)> names_;
};

[[nodiscard]] QString LevelWords(Severity level);

}  // namespace quorvelant
