// The commands of a PGC or cell as a table.
#pragma once

#include <QString>
#include <string>

#include "model/project.h"
#include "ui/mirror_table.h"
#include "vm/command_place.h"

namespace quorvelant {

// A command, or the empty line at the end of each list, where a new one is written.
struct CommandRow {
  CommandPlace Place;
  QString List;  // "pre", "button of Cell1"
  std::string Text;
  std::string Digits;
  bool IsNew = false;
  bool operator==(const CommandRow&) const = default;
};

// The PGC or cell whose commands are shown for a key: of a program or title its (first) PGC. Empty for none.
[[nodiscard]] std::string CommandOwner(const Project& project, const std::string& key);
// Of a PGC its pre, post and cell commands, and those of the buttons of its cells; of a cell those of its
// buttons.
[[nodiscard]] std::vector<CommandRow> CommandRowsOf(const Project& project, const std::string& owner);

class CommandModel : public MirrorTable<CommandRow> {
  Q_OBJECT
 public:
  enum Column { List, Text, Digits, ColumnCount };

  explicit CommandModel(QObject* parent = nullptr);

  [[nodiscard]] QModelIndex IndexOf(const CommandPlace& place) const;

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
};

}  // namespace quorvelant
