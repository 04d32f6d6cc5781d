#include "ui/tree_model.h"

#include <QMimeData>
#include <algorithm>
#include <utility>

#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

// A node of the mirror. Nodes that are left out have no place of their own; what is below them stands among
// the rows of the nearest node above that is shown.
struct TreeModel::Row {
  std::string Key;
  std::string_view Kind;
  bool IsShown = true;
  Row* Parent = nullptr;
  std::vector<std::unique_ptr<Row>> Children;
  std::vector<Row*> Rows;  // of a shown node: the shown ones below it
  int Place = 0;           // among the rows of the node that shows it
  RowFacts Facts;

  [[nodiscard]] Row& Shower() const {
    Row* above = Parent;
    while (!above->IsShown) {
      above = above->Parent;
    }
    return *above;
  }

  // The rows that the node makes among those of the node that shows it.
  void AppendRows(std::vector<Row*>& rows) {
    if (IsShown) {
      rows.push_back(this);
      return;
    }
    for (const auto& child : Children) {
      child->AppendRows(rows);
    }
  }

  void Number(std::size_t from) {
    for (std::size_t i = from; i < Rows.size(); ++i) {
      Rows[i]->Place = static_cast<int>(i);
    }
  }
};

std::vector<std::string> KeysIn(const QMimeData& data) {
  std::vector<std::string> keys;
  for (const QByteArray& line : data.data(QString::fromLatin1(KeysMimeType)).split('\n')) {
    if (!line.isEmpty()) {
      keys.push_back(line.toStdString());
    }
  }
  return keys;
}

TreeModel::TreeModel(Document& document, QStringList headers, std::vector<std::string_view> leftOut)
    : document_(document),
      headers_(std::move(headers)),
      leftOut_(std::move(leftOut)),
      root_(std::make_unique<Row>()) {}

TreeModel::~TreeModel() = default;

void TreeModel::Begin() {
  connect(&document_, qOverload<const ChangeEvent&>(&Document::Changed), this, &TreeModel::Take);
  Reset();
}

// --- the mirror ---

std::unique_ptr<TreeModel::Row> TreeModel::Mirrored(const TreeNode& node) {
  auto row = std::make_unique<Row>();
  row->Key = node.Key;
  row->Kind = node.Kind;
  row->IsShown = std::ranges::find(leftOut_, node.Kind) == leftOut_.end();
  row->Facts.Shown = row->Facts.Name = Shown(node.Text);
  row->Facts.Kind = Shown(node.Kind);
  for (const TreeNode& child : node.Children) {
    row->Children.push_back(Mirrored(child));
    row->Children.back()->Parent = row.get();
  }
  if (row->IsShown) {
    for (const auto& child : row->Children) {
      child->AppendRows(row->Rows);
    }
    row->Number(0);
  }
  rows_.erase(row->Key);
  rows_.emplace(row->Key, row.get());
  return row;
}

void TreeModel::Forget(const Row& row) {
  rows_.erase(row.Key);
  for (const auto& child : row.Children) {
    Forget(*child);
  }
}

void TreeModel::Reset() {
  isMoving_ = true;
  beginResetModel();
  rows_.clear();
  root_ = Mirrored(TreeOf(document_.Work()));
  if (!root_->IsShown) {  // the root has no index; its rows are the top
    root_->IsShown = true;
    for (const auto& child : root_->Children) {
      child->AppendRows(root_->Rows);
    }
    root_->Number(0);
  }
  TellFacts({.Tree = {}, .Parts = {}, .Replaced = true},
            [this](const std::string& key, RowFacts facts) { TakeFacts(key, std::move(facts), false); });
  endResetModel();
  isMoving_ = false;
  emit Applied();
}

void TreeModel::Take(const ChangeEvent& event) {
  if (event.Replaced) {
    Reset();
    return;
  }
  isMoving_ = true;
  for (const TreeChange& change : event.Tree) {
    Apply(change);
  }
  TellFacts(event,
            [this](const std::string& key, RowFacts facts) { TakeFacts(key, std::move(facts), true); });
  isMoving_ = false;
  emit Applied();
}

void TreeModel::Apply(const TreeChange& change) {
  if (change.Kind == TreeChange::What::Insert) {
    if (Row* const parent = Find(change.Parent)) {
      Insert(*parent, std::min(change.Row, parent->Children.size()), change.Node);
    }
    return;
  }
  Row* const row = Find(change.Node.Key);
  if (row == nullptr || row == root_.get()) {
    return;  // of the other tree
  }
  if (change.Kind == TreeChange::What::Remove) {
    Remove(*row);
  }  // new texts come with the facts
}

void TreeModel::Insert(Row& parent, std::size_t at, const TreeNode& node) {
  std::unique_ptr<Row> row = Mirrored(node);
  row->Parent = &parent;
  std::vector<Row*> added;
  row->AppendRows(added);
  Row& shower = parent.IsShown ? parent : parent.Shower();
  const auto place = parent.Children.begin() + static_cast<std::ptrdiff_t>(at);
  if (added.empty()) {
    parent.Children.insert(place, std::move(row));
    return;
  }
  parent.Children.insert(place, std::move(row));
  // Where the rows belong is seen from all that are below the node that shows them.
  std::vector<Row*> now;
  for (const auto& child : shower.Children) {
    child->AppendRows(now);
  }
  const auto found = std::ranges::find(now, added.front());
  const auto begin = static_cast<std::size_t>(found - now.begin());
  const int last = static_cast<int>(begin + added.size()) - 1;
  beginInsertRows(IndexAt(shower), static_cast<int>(begin), last);
  shower.Rows = std::move(now);
  shower.Number(begin);
  endInsertRows();
}

void TreeModel::Remove(Row& row) {
  std::vector<Row*> gone;
  row.AppendRows(gone);
  Row& parent = *row.Parent;
  const auto unlink = [this, &parent, &row] {
    Forget(row);
    std::erase_if(parent.Children, [&row](const auto& child) { return child.get() == &row; });
  };
  if (gone.empty()) {
    unlink();
    return;
  }
  Row& shower = row.Shower();
  const int first = gone.front()->Place;
  const int last = gone.back()->Place;
  beginRemoveRows(IndexAt(shower), first, last);
  shower.Rows.erase(shower.Rows.begin() + first, shower.Rows.begin() + last + 1);
  shower.Number(static_cast<std::size_t>(first));
  unlink();
  endRemoveRows();
}

void TreeModel::TakeFacts(const std::string& key, RowFacts facts, bool isTold) {
  Row* const row = Find(key);
  if (row == nullptr || row->Facts == facts) {
    return;
  }
  row->Facts = std::move(facts);
  if (isTold && row->IsShown && row != root_.get()) {
    emit dataChanged(IndexAt(*row), IndexAt(*row, columnCount() - 1));
  }
}

TreeModel::Row* TreeModel::Find(const std::string& key) const {
  const auto found = rows_.find(key);
  return found == rows_.end() ? nullptr : found->second;
}

// --- as views see it ---

TreeModel::Row* TreeModel::RowAt(const QModelIndex& index) const {
  return index.isValid() ? static_cast<Row*>(index.internalPointer()) : root_.get();
}

QModelIndex TreeModel::IndexAt(const Row& row, int column) const {
  return &row == root_.get() ? QModelIndex() : createIndex(row.Place, column, &row);
}

QModelIndex TreeModel::IndexOf(const std::string& key) const {
  const Row* row = Find(key);
  while (row != nullptr && !row->IsShown) {
    row = row->Parent;
  }
  return row == nullptr ? QModelIndex() : IndexAt(*row);
}

std::string TreeModel::KeyOf(const QModelIndex& index) const {
  return index.isValid() ? RowAt(index)->Key : std::string();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
  return hasIndex(row, column, parent) ? IndexAt(*RowAt(parent)->Rows[static_cast<std::size_t>(row)], column)
                                       : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
  return child.isValid() ? IndexAt(RowAt(child)->Shower()) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(RowAt(parent)->Rows.size());
}

int TreeModel::columnCount(const QModelIndex& /*parent*/) const {
  return static_cast<int>(headers_.size());
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const Row& row = *RowAt(index);
  if (role == KeyRole) {
    return QString::fromStdString(row.Key);
  }
  if (role == KindRole) {
    return row.Facts.Kind;
  }
  if (index.column() > 0) {
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole || role == Qt::AccessibleTextRole;
    const QString words = row.Facts.Columns.value(index.column() - 1);
    return isText ? QVariant(role == Qt::ToolTipRole ? PlainToolTip(words) : words) : QVariant();
  }
  const auto named = [&row] {
    return row.Facts.Name.isEmpty() ? row.Facts.Kind
                                    : QStringLiteral("%1 \"%2\"").arg(row.Facts.Kind, row.Facts.Name);
  };
  switch (role) {
    case Qt::DisplayRole:
      return row.Facts.Shown;
    case Qt::EditRole:
      return row.Facts.Former.isNull() ? row.Facts.Shown : row.Facts.Former;
    case Qt::AccessibleTextRole:
      return named();
    case Qt::AccessibleDescriptionRole: {
      QStringList facts = row.Facts.Columns;
      facts.removeAll(QString());
      return facts.join(QStringLiteral(", "));
    }
    case Qt::ToolTipRole:
      return PlainToolTip(QStringLiteral("%1 [%2]").arg(named(), QString::fromStdString(row.Key)));
    default:
      return {};
  }
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool isText = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
  return isText && orientation == Qt::Horizontal ? QVariant(headers_.value(section)) : QVariant();
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) {
    return Qt::NoItemFlags;
  }
  const Row& row = *RowAt(index);
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  flags.setFlag(Qt::ItemIsEditable, index.column() == 0 && !row.Facts.Former.isNull());
  flags.setFlag(Qt::ItemIsDragEnabled, CanDrag(row.Key, row.Kind));
  flags.setFlag(Qt::ItemIsDropEnabled, CanDropOn(row.Kind));
  return flags;
}

QMimeData* TreeModel::mimeData(const QModelIndexList& indexes) const {
  QByteArray keys;
  for (const QModelIndex& index : indexes) {
    if (index.column() == 0) {
      keys.append(KeyOf(index)).append('\n');
    }
  }
  if (keys.isEmpty()) {
    return nullptr;
  }
  auto* const data = new QMimeData;  // NOLINT(cppcoreguidelines-owning-memory): the drag takes it
  data->setData(QString::fromLatin1(KeysMimeType), keys);
  return data;
}

}  // namespace quorvelant
