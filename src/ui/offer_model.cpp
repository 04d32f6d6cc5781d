#include "ui/offer_model.h"

#include <utility>

#include "ui/shown_text.h"

namespace quorvelant {

void OfferModel::Show(std::vector<CommandOffer> offers) {
  if (offers == offers_) {
    return;
  }
  beginResetModel();
  offers_ = std::move(offers);
  endResetModel();
}

int OfferModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(offers_.size());
}

QVariant OfferModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  const CommandOffer& offer = offers_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::EditRole:
      return Shown(offer.Text);
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return QStringLiteral("%1  ·  %2").arg(Shown(offer.Text), Shown(offer.Note));
    default:
      return {};
  }
}

}  // namespace quorvelant
