#include "ui/command_model.h"

#include <QFontDatabase>

#include "edit/live_elements.h"
#include "model/walk.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

// The commands of a list, and the line for a new one.
void AddList(const CommandList& commands, CommandPlace place, const QString& name,
             std::vector<CommandRow>& rows) {
  for (std::size_t i = 0; i < commands.size(); ++i) {
    place.Position = i;
    rows.push_back({place, name, commands[i].FullCommand, commands[i].CommandHex});
  }
  place.Position = commands.size();
  rows.push_back({.Place = std::move(place), .List = name, .Text = {}, .Digits = {}, .IsNew = true});
}

void AddButtons(const Cell_P& cell, const QString& name, std::vector<CommandRow>& rows) {
  for (std::size_t play = 0; play < std::max<std::size_t>(cell.ButtonCommands.size(), 1); ++play) {
    const bool isThere = play < cell.ButtonCommands.size();
    AddList(isThere ? cell.ButtonCommands[play].Commands : CommandList(),
            {.Key = cell.Key, .List = ListKind::Button, .Play = play}, name, rows);
  }
}

template <class Unit>
std::string FirstPgc(const Unit& unit) {
  const auto live = Live(unit.PGC);
  return live.empty() ? std::string() : live.front()->Key;
}

QString ListText(const CommandRow& row) {
  return row.IsNew ? CommandModel::tr("%1 +").arg(row.List)
                   : QStringLiteral("%1 %2").arg(row.List).arg(row.Place.Position + 1);
}

}  // namespace

std::string CommandOwner(const Project& project, const std::string& key) {
  if (LivePgc(project, key) != nullptr || LiveCell(project, key) != nullptr) {
    return key;
  }
  if (const Title_P* title = LiveTitle(project, key)) {
    return FirstPgc(*title);
  }
  if (const Lang_P* language = LiveLanguage(project, key)) {
    return FirstPgc(*language);
  }
  return LiveProgram(project, key) != nullptr ? key.substr(0, key.rfind('.')) : std::string();
}

std::vector<CommandRow> CommandRowsOf(const Project& project, const std::string& owner) {
  std::vector<CommandRow> rows;
  if (const Cell_P* cell = LiveCell(project, owner)) {
    AddButtons(*cell, CommandModel::tr("button"), rows);
    return rows;
  }
  const PGC_P* const chain = LivePgc(project, owner);
  if (chain == nullptr) {
    return rows;
  }
  AddList(chain->PreCommands, {.Key = owner, .List = ListKind::Pre}, CommandModel::tr("pre"), rows);
  if (owner == FirstPgcKey) {
    return rows;  // it plays nothing
  }
  AddList(chain->PostCommands, {.Key = owner, .List = ListKind::Post}, CommandModel::tr("post"), rows);
  AddList(chain->CellCommands, {.Key = owner, .List = ListKind::Cell}, CommandModel::tr("cell"), rows);
  for (const Cell_P* cell : LiveCells(*chain)) {
    if (!cell->ButtonCommands.empty()) {
      AddButtons(*cell, CommandModel::tr("button of %1").arg(Shown(cell->CellName)), rows);
    }
  }
  return rows;
}

CommandModel::CommandModel(QObject* parent)
    : MirrorTable({tr("List"), tr("Command"), tr("Digits")}, parent) {}

QModelIndex CommandModel::IndexOf(const CommandPlace& place) const {
  const auto row = std::ranges::find(Rows(), place, &CommandRow::Place);
  return row == Rows().end() ? QModelIndex() : index(static_cast<int>(row - Rows().begin()), Text);
}

QVariant CommandModel::data(const QModelIndex& index, int role) const {
  const CommandRow* const row = RowAt(index);
  if (row == nullptr) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return index.column() == List   ? ListText(*row)
             : index.column() == Text ? Shown(row->Text)
             : row->Digits.empty() && !row->IsNew && role == Qt::DisplayRole
                 ? tr("no target")  // a name in it leads nowhere
                 : Shown(row->Digits);
    case Qt::FontRole:
      return index.column() == Digits ? QVariant(QFontDatabase::systemFont(QFontDatabase::FixedFont))
                                      : QVariant();
    case Qt::AccessibleTextRole:
      return index.column() == List ? QStringLiteral("%1, %2").arg(ListText(*row), Shown(row->Text))
                                    : data(index, Qt::DisplayRole);
    default:
      return {};
  }
}

Qt::ItemFlags CommandModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.column() == Text ? flags | Qt::ItemIsEditable : flags;
}

}  // namespace quorvelant
