// What a command can go on with, as a list.
#pragma once

#include <QAbstractListModel>
#include <vector>

#include "vm/command_completion.h"

namespace quorvelant {

// `Qt::EditRole` is the text to write, `Qt::DisplayRole` says what it is as well.
class OfferModel : public QAbstractListModel {
  Q_OBJECT
 public:
  using QAbstractListModel::QAbstractListModel;

  void Show(std::vector<CommandOffer> offers);
  [[nodiscard]] const std::vector<CommandOffer>& Offers() const { return offers_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::vector<CommandOffer> offers_;
};

}  // namespace quorvelant
