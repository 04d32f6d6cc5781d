// How commands are written in a table.
#pragma once

#include <functional>

#include "ui/document.h"
#include "window/cell_editor.h"

namespace quorvelant {

// A list below the line offers what the command can go on with at its place. Down or Ctrl+Space opens it.
class CommandEditor : public CellEditor {
  Q_OBJECT
 public:
  // `keyOf` gives the key of the PGC or cell of a row.
  CommandEditor(Document& document, std::function<std::string(const QModelIndex&)> keyOf, CommitCell commit,
                QObject* parent);

 protected:
  [[nodiscard]] QLineEdit* MakeLine(QWidget* parent, const QModelIndex& index) const override;

 private:
  Document& document_;
  std::function<std::string(const QModelIndex&)> keyOf_;
};

// Why a text is not right at the place of a key: nothing where it is.
[[nodiscard]] std::optional<CellRefusal> CommandRefusal(const EditSession& session, const QString& text);

}  // namespace quorvelant
