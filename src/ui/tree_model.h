// A tree of the project for views.
#pragma once

#include <QAbstractItemModel>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "edit/tree.h"
#include "ui/document.h"

namespace quorvelant {

// What drags of project elements carry: their keys, one a line, UTF-8.
inline constexpr const char* KeysMimeType = "application/x-quorvelant-keys";
[[nodiscard]] std::vector<std::string> KeysIn(const QMimeData& data);

// What a row says besides its text in the tree.
struct RowFacts {
  QString Kind;         // as `check --tree` has it: "title", "file"
  QString Name;         // likewise
  QString Shown;        // in the first column
  QString Former;       // what an editor starts with; null where the row cannot be renamed
  QStringList Columns;  // those after the first
  bool operator==(const RowFacts&) const = default;
};

// Keeps a mirror of the tree, to which changes are applied one by one; never looks into the project while
// rows move. Rows are known by their keys. Kinds of nodes can be left out: their children stand in their
// place. The first column is a name, the others are facts, worked out anew for the parts that change.
class TreeModel : public QAbstractItemModel {
  Q_OBJECT
 public:
  enum Role { KeyRole = Qt::UserRole, KindRole };

  ~TreeModel() override;

  [[nodiscard]] QModelIndex IndexOf(const std::string& key) const;  // invalid where no row has it
  [[nodiscard]] std::string KeyOf(const QModelIndex& index) const;
  // While rows move, what views say of their current row is not what a user chose.
  [[nodiscard]] bool IsMoving() const { return isMoving_; }

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override { return {QString::fromLatin1(KeysMimeType)}; }
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
  Qt::DropActions supportedDropActions() const override { return Qt::CopyAction; }

 signals:
  void Applied();  // a step of the project has been taken in, or another project

 protected:
  using FactTaker = std::function<void(const std::string& key, RowFacts facts)>;

  TreeModel(Document& document, QStringList headers, std::vector<std::string_view> leftOut);
  // To be called by the constructor of the last class: takes the project in and hears the document.
  void Begin();

  [[nodiscard]] Document& Doc() const { return document_; }
  [[nodiscard]] virtual TreeNode TreeOf(const Project& project) const = 0;
  // The facts of all rows, or of those that a step may have changed.
  virtual void TellFacts(const ChangeEvent& event, const FactTaker& take) const = 0;
  [[nodiscard]] virtual bool CanDrag(const std::string& key, std::string_view kind) const = 0;
  [[nodiscard]] virtual bool CanDropOn(std::string_view kind) const = 0;

 private:
  struct Row;

  void Take(const ChangeEvent& event);
  void Reset();
  void Apply(const TreeChange& change);
  void Insert(Row& parent, std::size_t at, const TreeNode& node);
  void Remove(Row& row);
  void TakeFacts(const std::string& key, RowFacts facts, bool isTold);
  std::unique_ptr<Row> Mirrored(const TreeNode& node);
  void Forget(const Row& row);
  [[nodiscard]] Row* RowAt(const QModelIndex& index) const;
  [[nodiscard]] Row* Find(const std::string& key) const;
  [[nodiscard]] QModelIndex IndexAt(const Row& row, int column = 0) const;

  Document& document_;
  QStringList headers_;
  std::vector<std::string_view> leftOut_;
  std::unique_ptr<Row> root_;
  std::unordered_map<std::string_view, Row*> rows_;  // by the keys that the rows hold
  bool isMoving_ = false;
};

}  // namespace quorvelant
