#include "window/commands_pane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "edit/change.h"
#include "edit/command_lists.h"
#include "edit/element_names.h"
#include "ui/shown_text.h"
#include "window/cell_table.h"
#include "window/command_editor.h"

namespace quorvelant {

CommandsPane::CommandsPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Commands"));
  Build();
  HandleActions();
  connect(&parts_.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this](const ChangeEvent& event) {
            if (event.TouchesDisc()) {
              FollowKey();
              TakeRows(event.Replaced);
            }
          });
  connect(&parts_.Chosen, &Selection::KeyChanged, this, &CommandsPane::FollowKey);
  connect(&parts_.Chosen, &Selection::WentTo, this, &CommandsPane::GoTo);
  FollowKey();
}

void CommandsPane::Build() {
  title_ = new QLabel;
  title_->setTextFormat(Qt::PlainText);
  auto* const tools = new QHBoxLayout;
  tools->addWidget(title_, 1);
  for (const ActionId id : {ActionId::InsertCommand, ActionId::MoveCommandUp, ActionId::MoveCommandDown}) {
    auto* const button = new QToolButton;
    button->setDefaultAction(parts_.Commands.Of(id));
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::TabFocus);
    tools->addWidget(button);
  }
  auto* const remove = new QToolButton;
  remove->setText(tr("Remove Command"));
  remove->setFocusPolicy(Qt::TabFocus);
  connect(remove, &QToolButton::clicked, this, &CommandsPane::RemoveRow);
  tools->addWidget(remove);

  table_ = new CellTable(tr("Commands of the PGC or cell"));
  table_->setModel(&model_);
  table_->TakeRemove();
  table_->SetWidths(
      {tr("button of %1").arg(QStringLiteral("Cell1 -> Name")), {}, QStringLiteral("0000000000000000")},
      CommandModel::Text);
  table_->SetEmptyWords(
      tr("The commands of a PGC or cell stand here. Choose First Play, a title, a PGC or a cell in Disc."));
  table_->setItemDelegate(new CommandEditor(
      parts_.Doc,
      [this](const QModelIndex& index) {
        return model_.Rows().at(static_cast<std::size_t>(index.row())).Place.Key;
      },
      [this](const QModelIndex& index, const QString& text) { return Commit(index, text); }, table_));
  connect(table_, &CellTable::RemoveWanted, this, &CommandsPane::RemoveRow);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { parts_.Commands.Refresh(); });
  auto* const whole = new QVBoxLayout(this);
  whole->addLayout(tools);
  whole->addWidget(table_, 1);
}

void CommandsPane::HandleActions() {
  Actions& actions = parts_.Commands;
  actions.Handle(
      ActionId::InsertCommand, [this] { Insert(); }, [this] { return !owner_.empty(); });
  actions.Handle(
      ActionId::MoveCommandUp, [this] { Move(-1); },
      [this] {
        const CommandRow* const row = Current();
        return row != nullptr && !row->IsNew && row->Place.Position > 0;
      });
  actions.Handle(
      ActionId::MoveCommandDown, [this] { Move(1); },
      [this] {
        const CommandRow* const row = Current();
        const CommandList* const list = row == nullptr ? nullptr : CommandsAt(parts_.Doc.Work(), row->Place);
        return list != nullptr && !row->IsNew && row->Place.Position + 1 < list->size();
      });
}

void CommandsPane::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  ResolveSoon();
}

// --- following ---

void CommandsPane::FollowKey() {
  std::string owner = CommandOwner(parts_.Doc.Work(), parts_.Chosen.Key());
  // Source material has no commands: those that stand here stay, as long as their place does.
  if (owner.empty() && !CommandRowsOf(parts_.Doc.Work(), owner_).empty()) {
    owner = owner_;
  }
  if (owner != owner_) {
    owner_ = std::move(owner);
    TakeRows(true);
  }
}

void CommandsPane::GoTo(const GoToPlace& place) {
  if (!place.Command) {
    return;
  }
  FollowKey();
  // A place of a cell's buttons tells no play: its number counts through all of them.
  CommandPlace wanted = *place.Command;
  while (wanted.List == ListKind::Button) {
    const CommandList* const list = CommandsAt(parts_.Doc.Work(), wanted);
    if (list == nullptr || wanted.Position < list->size()) {
      break;
    }
    CommandPlace next = wanted;
    next.Position -= list->size();
    ++next.Play;
    if (CommandsAt(parts_.Doc.Work(), next) == nullptr) {
      break;
    }
    wanted = std::move(next);
  }
  table_->setCurrentIndex(model_.IndexOf(wanted));
  table_->setFocus();
}

void CommandsPane::TakeRows(bool isOther) {
  std::vector<CommandRow> rows = CommandRowsOf(parts_.Doc.Work(), owner_);
  isOther ? model_.Show(std::move(rows)) : model_.Take(std::move(rows));
  title_->setText(owner_.empty() ? QString() : Shown(NameOfElement(parts_.Doc.Work(), owner_)));
  parts_.Commands.Refresh();
  ResolveSoon();
}

void CommandsPane::ResolveSoon() {
  if (isDue_ || owner_.empty() || !isVisible()) {
    return;
  }
  isDue_ = true;
  const auto now = [this] {
    isDue_ = false;
    static_cast<void>(parts_.Doc.Session().Commands());
    model_.Take(CommandRowsOf(parts_.Doc.Work(), owner_));
  };
  QMetaObject::invokeMethod(this, now, Qt::QueuedConnection);
}

// --- what users do ---

const CommandRow* CommandsPane::Current() const {
  const int row = table_->CurrentRow();
  return row >= 0 && std::cmp_less(row, model_.Rows().size()) ? &model_.Rows()[static_cast<std::size_t>(row)]
                                                              : nullptr;
}

std::optional<CellRefusal> CommandsPane::Commit(const QModelIndex& index, const QString& text) {
  const CommandRow row = model_.Rows().at(static_cast<std::size_t>(index.row()));
  if (auto refusal = CommandRefusal(parts_.Doc.Session(), text)) {
    return refusal;
  }
  const std::string bytes = text.toStdString();
  return RefusalOf(parts_.Doc.Try([&](EditSession& session) {
    if (!row.IsNew) {
      return SetCommand(session, row.Place, bytes);
    }
    Change change(session, "New Command");
    if (Outcome outcome = InsertCommand(session, row.Place); !outcome.IsDone()) {
      return outcome;
    }
    if (Outcome outcome = SetCommand(session, row.Place, bytes); !outcome.IsDone()) {
      return outcome;
    }
    return change.Commit(row.Place.Key);
  }));
}

void CommandsPane::Insert() {
  if (Current() == nullptr) {
    table_->GoToRow(0);
  }
  const CommandRow* const row = Current();
  if (row == nullptr) {
    return;
  }
  const CommandPlace place = row->Place;
  const auto key =
      parts_.Doc.Do([&](EditSession& session, Consent) { return InsertCommand(session, place); });
  if (key && isVisible()) {
    table_->setCurrentIndex(model_.IndexOf(place));
    table_->setFocus();
    table_->edit(table_->currentIndex());
  }
}

void CommandsPane::Move(int by) {
  const CommandRow* const row = Current();
  if (row == nullptr || row->IsNew) {
    return;
  }
  CommandPlace place = row->Place;
  const std::size_t to = place.Position + static_cast<std::size_t>(static_cast<std::ptrdiff_t>(by));
  const auto key =
      parts_.Doc.Do([&](EditSession& session, Consent) { return MoveCommand(session, place, to); });
  if (key) {
    place.Position = to;
    table_->setCurrentIndex(model_.IndexOf(place));
  }
}

void CommandsPane::RemoveRow() {
  const CommandRow* const row = Current();
  if (row != nullptr && !row->IsNew) {
    const CommandPlace place = row->Place;
    parts_.Doc.Do([&](EditSession& session, Consent) { return RemoveCommand(session, place); });
  }
}

}  // namespace quorvelant
