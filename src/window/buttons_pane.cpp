#include "window/buttons_pane.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <nlohmann/json.hpp>
#include <utility>

#include "base/message_error.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "desk/json_field.h"
#include "edit/button_rules.h"
#include "edit/button_sets.h"
#include "model/highlight_groups.h"
#include "subpicture/spu_timing.h"
#include "ui/shown_text.h"
#include "vm/command_place.h"
#include "window/cell_table.h"
#include "window/command_editor.h"
#include "window/time_text.h"

namespace quorvelant {

namespace {

// "left, top, right, bottom". Raises a MessageError where the text is none.
HighlightArea AreaIn(const QString& text) {
  std::array<std::int32_t, 4> edges{};
  const QStringList parts = text.split(u',');
  bool isArea = parts.size() == 4;
  for (std::size_t i = 0; isArea && i < edges.size(); ++i) {
    edges.at(i) = parts.at(static_cast<qsizetype>(i)).trimmed().toInt(&isArea);
  }
  if (!isArea) {
    const nlohmann::json value = text.toStdString();
    JsonField("area", value).Refuse("left, top, right and bottom with commas between");
  }
  return {.X1 = edges[0], .X2 = edges[2], .Y1 = edges[1], .Y2 = edges[3]};
}

const QString& NoButton() {
  static const QString words = ButtonsPane::tr("(none)");
  return words;
}

QString CommandOf(const Project& project, std::size_t track, const ButtonPlace& place) {
  const auto places = CommandsOfButton(project, track, place);
  if (places.empty()) {
    return {};
  }
  const VMICommand_P* const command = FindCommand(project, places.front());
  return command == nullptr ? QStringLiteral("NOP") : Shown(command->FullCommand);
}

}  // namespace

ButtonsPane::ButtonsPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Buttons"));
  Build();
  connect(&parts_.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this, &ButtonsPane::FollowChange);
  connect(&parts_.View, &Viewer::StateMoved, this, &ButtonsPane::FollowViewer);
  connect(&parts_.View, &Viewer::ButtonChosen, this, &ButtonsPane::FollowButton);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& now, const QModelIndex&) { ChooseRow(now.row()); });
  connect(table_, &QTableView::clicked, this, [this](const QModelIndex& at) { ChooseRow(at.row()); });
  connect(&model_, &ButtonModel::TickWanted, this, [this](int row, bool on) {
    if (shown_) {
      parts_.Doc.Do([&](EditSession& session, Consent) {
        return SetButton(session, shown_->Track, {shown_->Set, static_cast<std::size_t>(row)},
                         [on](HighlightButton& button) { button.AutoAction = on; });
      });
    }
  });
  ShowSet(std::nullopt);
  FollowViewer();
}

QLayout* ButtonsPane::BuildTools() {
  auto* const tools = new QHBoxLayout;
  const auto add = [tools](const QString& words, const QString& name, QWidget* control) {
    control->setAccessibleName(name);
    control->setToolTip(name);
    auto* const label = new QLabel(words);
    label->setBuddy(control);
    tools->addWidget(label);
    tools->addWidget(control, 1);
  };
  sets_ = new QComboBox;
  start_ = new QLineEdit;
  duration_ = new QLineEdit;
  select_ = new QComboBox;
  action_ = new QComboBox;
  for (QLineEdit* const time : {start_, duration_}) {
    time->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00:00:00:00__")));
  }
  add(tr("Set"), tr("Set"), sets_);
  add(tr("Start"), tr("Start"), start_);
  add(tr("Duration"), tr("Duration"), duration_);
  add(tr("Selected"), tr("Selected at first"), select_);
  add(tr("Activated"), tr("Activated at the end"), action_);
  auto* const remove = new QToolButton;
  remove->setText(tr("Remove"));
  remove->setAccessibleName(tr("Remove Button"));
  remove->setToolTip(tr("Remove Button"));
  remove->setFocusPolicy(Qt::TabFocus);
  connect(remove, &QToolButton::clicked, this, &ButtonsPane::RemoveRow);
  tools->addWidget(remove);
  connect(sets_, &QComboBox::activated, this, [this](int at) { ChooseSet(static_cast<std::size_t>(at)); });
  connect(start_, &QLineEdit::editingFinished, this, &ButtonsPane::SetTimes);
  connect(duration_, &QLineEdit::editingFinished, this, &ButtonsPane::SetTimes);
  connect(select_, &QComboBox::activated, this, [this] { SetForced(Force::Select, *select_); });
  connect(action_, &QComboBox::activated, this, [this] { SetForced(Force::Action, *action_); });
  return tools;
}

void ButtonsPane::Build() {
  table_ = new CellTable(tr("Buttons of the set"));
  table_->setModel(&model_);
  table_->TakeRemove();
  const QString area = QStringLiteral("000, 000, 000, 000");
  const QString name = QStringLiteral("Button_00");
  table_->SetWidths({QStringLiteral("00"),
                     QStringLiteral("Button_000000"),
                     tr("Scheme"),
                     tr("Auto action"),
                     area,
                     area,
                     area,
                     name,
                     name,
                     name,
                     name,
                     {}},
                    ButtonModel::Command);
  table_->SetEmptyWords(
      tr("The buttons of the moment that is shown stand here. New Button puts one onto the "
         "picture; a title dragged from Disc onto the picture makes one with its command."));
  auto* const editor = new CommandEditor(
      parts_.Doc, [this](const QModelIndex& index) { return CommandKey(index); },
      [this](const QModelIndex& index, const QString& text) { return Commit(index, text); }, table_);
  editor->SetChoices([this](const QModelIndex& index) { return ChoicesOf(index); });
  table_->setItemDelegate(editor);
  connect(table_, &CellTable::RemoveWanted, this, &ButtonsPane::RemoveRow);
  auto* const whole = new QVBoxLayout(this);
  whole->addLayout(BuildTools());
  whole->addWidget(table_, 1);
}

const HighlightPlay* ButtonsPane::Set() const {
  const Project& project = parts_.Doc.Work();
  const bool isThere = shown_ && shown_->Track < project.Tracks.Count() &&
                       !project.Tracks[shown_->Track].Removed &&
                       shown_->Set < project.Tracks[shown_->Track].HighlightPlays.size();
  return isThere ? &project.Tracks[shown_->Track].HighlightPlays[shown_->Set] : nullptr;
}

void ButtonsPane::FollowChange(const ChangeEvent& event) {
  if (event.Replaced) {
    ShowSet(std::nullopt);
  } else if (!shown_ || Set() == nullptr) {
    ShowSet(std::nullopt);
    FollowViewer();
  } else if (event.TouchesTrack(shown_->Track) || event.TouchesDisc()) {
    TakeRows(false);
  }
}

void ButtonsPane::FollowViewer() {
  const auto track = parts_.View.TrackIndex();
  if (!track) {
    ShowSet(std::nullopt);
    return;
  }
  const auto set = SetAt(parts_.Doc.Work().Tracks[*track], parts_.View.State().Frame);
  if (set) {
    ShowSet(SetPlace{*track, *set});
  } else if (!shown_ || shown_->Track != *track) {
    const bool hasSets = !parts_.Doc.Work().Tracks[*track].HighlightPlays.empty();
    ShowSet(hasSets ? std::optional(SetPlace{*track, 0}) : std::nullopt);
  }
}

void ButtonsPane::ShowSet(std::optional<SetPlace> place) {
  if (place == shown_ && place) {
    return;
  }
  shown_ = place;
  if (Set() == nullptr) {
    shown_.reset();
  }
  TakeRows(true);
}

void ButtonsPane::TakeRows(bool isOther) {
  FillTools();
  std::vector<ButtonRow> rows = RowsOfSet();
  const bool before = std::exchange(isFollowing_, true);
  isOther ? model_.Show(std::move(rows)) : model_.Take(std::move(rows));
  isFollowing_ = before;
  FollowButton();
  if (!shown_) {
    return;
  }
  const Track& track = parts_.Doc.Work().Tracks[shown_->Track];
  for (int place = 0; place < 3; ++place) {
    const auto groups = ButtonGroupsOf(*Set(), track.Aspect, track.DisplayMode);
    const bool isUsed = std::ranges::any_of(
        groups, [place](const ButtonGroup& group) { return std::cmp_equal(group.AreaPlace, place); });
    table_->setColumnHidden(ButtonModel::Area + place, !isUsed);
  }
}

std::vector<ButtonRow> ButtonsPane::RowsOfSet() const {
  std::vector<ButtonRow> rows;
  if (const HighlightPlay* const set = Set()) {
    for (std::size_t i = 0; i < set->Buttons.size(); ++i) {
      rows.push_back({set->Buttons[i], CommandOf(parts_.Doc.Work(), shown_->Track, {shown_->Set, i})});
    }
  }
  return rows;
}

void ButtonsPane::FillTools() {
  const HighlightPlay* const set = Set();
  for (QWidget* control : std::initializer_list<QWidget*>{sets_, start_, duration_, select_, action_}) {
    control->setEnabled(set != nullptr);
  }
  sets_->clear();
  select_->clear();
  action_->clear();
  start_->setText(set == nullptr ? QString() : Shown(set->StartTimeToVideo));
  duration_->setText(set == nullptr ? QString() : Shown(set->Duration));
  if (set == nullptr) {
    return;
  }
  for (const HighlightPlay& one : parts_.Doc.Work().Tracks[shown_->Track].HighlightPlays) {
    sets_->addItem(QStringLiteral("%1: %2").arg(sets_->count() + 1).arg(Shown(one.StartTimeToVideo)));
  }
  sets_->setCurrentIndex(static_cast<int>(shown_->Set));
  for (const auto& [box, number] :
       {std::pair(select_, set->ForcedSelect), std::pair(action_, set->ForcedAction)}) {
    box->addItem(NoButton());
    for (const HighlightButton& button : set->Buttons) {
      box->addItem(Shown(button.Name));
      if (button.Number == number) {
        box->setCurrentIndex(box->count() - 1);
      }
    }
  }
}

void ButtonsPane::ChooseSet(std::size_t set) {
  if (!shown_) {
    return;
  }
  ShowSet(SetPlace{shown_->Track, set});
  if (Set() != nullptr && parts_.View.TrackIndex() == shown_->Track) {
    const int rate = TrackTimes(parts_.Doc.Work().Tracks[shown_->Track]).FramesPerSecond;
    parts_.View.ToFrame(SpanOf(*Set(), rate).Start);
  }
}

QStringList ButtonsPane::ChoicesOf(const QModelIndex& index) const {
  const HighlightPlay* const set = Set();
  if (index.column() == ButtonModel::Scheme) {
    return {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")};
  }
  if (set == nullptr || index.column() < ButtonModel::Left || index.column() > ButtonModel::Down) {
    return {};
  }
  QStringList names{NoButton()};
  for (const HighlightButton& button : set->Buttons) {
    names << Shown(button.Name);
  }
  return names;
}

// Of a cell that plays the button; empty for what is no command.
std::string ButtonsPane::CommandKey(const QModelIndex& index) const {
  if (Set() == nullptr || index.column() != ButtonModel::Command) {
    return {};
  }
  const auto places = CommandsOfButton(parts_.Doc.Work(), shown_->Track,
                                       {shown_->Set, static_cast<std::size_t>(index.row())});
  return places.empty() ? std::string() : places.front().Key;
}

std::optional<CellRefusal> ButtonsPane::Commit(const QModelIndex& index, const QString& text) {
  if (Set() == nullptr) {
    return std::nullopt;
  }
  if (!CommandKey(index).empty()) {
    if (auto refusal = CommandRefusal(parts_.Doc.Session(), text)) {
      return refusal;
    }
  }
  try {
    const ButtonPlace place{shown_->Set, static_cast<std::size_t>(index.row())};
    return RefusalOf(
        parts_.Doc.Try([&](EditSession& session) { return Write(session, place, index.column(), text); }));
  } catch (const MessageError& trouble) {
    return CellRefusal{trouble.What()};
  }
}

Outcome ButtonsPane::Write(EditSession& session, const ButtonPlace& place, int column, const QString& text) {
  const std::size_t track = shown_->Track;
  switch (column) {
    case ButtonModel::Name:
      return RenameButton(session, track, place, text.toStdString());
    case ButtonModel::Command:
      return SetButtonCommand(session, track, place, text.toStdString());
    case ButtonModel::Scheme:
      return SetButton(session, track, place,
                       [&](HighlightButton& button) { button.ColorScheme = text.toInt(); });
    case ButtonModel::Area:
    case ButtonModel::Letterbox:
    case ButtonModel::PanScan: {
      const HighlightArea area = AreaIn(text);
      return SetButton(session, track, place, [&](HighlightButton& button) {
        button.Areas.at(static_cast<std::size_t>(column - ButtonModel::Area)) = area;
      });
    }
    default:
      static_assert(ButtonModel::Down - ButtonModel::Left ==
                        static_cast<int>(LinkDirection::Down) - static_cast<int>(LinkDirection::Left),
                    "the columns of links stand in the order of the directions");
      return SetButton(session, track, place, [&](HighlightButton& button) {
        button.*LinkTowards(LinkDirection(column - ButtonModel::Left)) =
            text == NoButton() ? std::string() : text.toStdString();
      });
  }
}

void ButtonsPane::SetTimes() {
  const HighlightPlay* const set = Set();
  if (set == nullptr ||
      (start_->text() == Shown(set->StartTimeToVideo) && duration_->text() == Shown(set->Duration))) {
    return;
  }
  const int rate = TrackTimes(parts_.Doc.Work().Tracks[shown_->Track]).FramesPerSecond;
  const std::int64_t start = TimecodeToFrames(set->StartTimeToVideo, rate);
  const std::int64_t duration = TimecodeToFrames(set->Duration, rate);
  parts_.Doc.Do([&](EditSession& session, Consent) {
    try {
      return SetButtonTimes(session, shown_->Track, shown_->Set, FramesIn(start_->text(), start, rate),
                            FramesIn(duration_->text(), duration, rate));
    } catch (const MessageError& trouble) {
      return Outcome::Refused(trouble.What());
    }
  });
  FillTools();  // a refused time gives way to the one that stands
}

void ButtonsPane::SetForced(Force force, const QComboBox& from) {
  if (Set() != nullptr) {
    const std::string name = from.currentIndex() <= 0 ? std::string() : from.currentText().toStdString();
    parts_.Doc.Do([&](EditSession& session, Consent) {
      return ForceButton(session, shown_->Track, shown_->Set, force, name);
    });
  }
}

void ButtonsPane::FollowButton() {
  const auto button = parts_.View.Button();
  if (button && shown_ && parts_.View.TrackIndex() == shown_->Track &&
      parts_.View.ButtonSet() == shown_->Set && std::cmp_less(*button, model_.rowCount())) {
    const bool before = std::exchange(isFollowing_, true);
    table_->GoToRow(static_cast<int>(*button));
    isFollowing_ = before;
  }
}

void ButtonsPane::ChooseRow(int row) {
  if (isFollowing_ || row < 0 || Set() == nullptr || parts_.View.TrackIndex() != shown_->Track) {
    return;
  }
  const std::size_t set = shown_->Set;
  if (parts_.View.ButtonSet() != set) {  // at its moment it is to be seen
    ChooseSet(set);
  }
  if (parts_.View.ButtonSet() == set) {
    parts_.View.ChooseButton(static_cast<std::size_t>(row));
  }
}

void ButtonsPane::RemoveRow() {
  const int row = table_->CurrentRow();
  if (Set() != nullptr && row >= 0) {
    parts_.Doc.Do([&](EditSession& session, Consent consent) {
      return RemoveButton(session, shown_->Track, {shown_->Set, static_cast<std::size_t>(row)}, consent);
    });
  }
}

}  // namespace quorvelant
