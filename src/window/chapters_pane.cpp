#include "window/chapters_pane.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/message_error.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "model/keys.h"
#include "window/cell_table.h"
#include "window/time_text.h"

namespace quorvelant {

ChaptersPane::ChaptersPane(WindowParts& parts, QWidget* parent) : QWidget(parent), parts_(parts) {
  setAccessibleName(tr("Chapters"));
  Build();
  HandleActions();
  connect(&parts_.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this](const ChangeEvent& event) {
            if (event.Replaced || !track_ || event.TouchesTrack(*track_)) {
              Follow(event.Replaced);
            }
          });
  connect(&parts_.View, &Viewer::PicturesChanged, this, [this] { Follow(false); });
  connect(&parts_.View, &Viewer::StateMoved, this, [this] {
    if (parts_.View.TrackIndex() != track_) {
      Follow(true);
    }
  });
  connect(&parts_.Chosen, &Selection::KeyChanged, this, &ChaptersPane::FollowKey);
  Follow(true);
}

void ChaptersPane::Build() {
  table_ = new CellTable(tr("Chapters of the track"));
  table_->setModel(&model_);
  table_->TakeRemove();
  const QString time = QStringLiteral("00:00:00:00");
  table_->SetWidths({QStringLiteral("000"),
                     QStringLiteral("Name_of_a_film_Scene00"),
                     time,
                     time + tr(", 00 frames earlier"),
                     {}},
                    ChapterModel::Operations);
  table_->SetEmptyWords(tr("The chapters of a track stand here. Choose one in Media."));
  table_->setItemDelegate(
      new CellEditor([this](const QModelIndex& index, const QString& text) { return Commit(index, text); },
                     [this](const Message& words) { parts_.Doc.Speaks().Tell(words); }, table_));
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& now, const QModelIndex&) { ChooseRow(now.row()); });
  connect(table_, &CellTable::RemoveWanted, this, &ChaptersPane::RemoveRow);
  auto* const tools = new QHBoxLayout;
  for (const ActionId id : {ActionId::NewChapter, ActionId::ImportChapters, ActionId::MoveChapters}) {
    auto* const button = new QToolButton;
    button->setDefaultAction(parts_.Commands.Of(id));
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::TabFocus);
    tools->addWidget(button);
  }
  auto* const remove = new QToolButton;
  remove->setText(tr("Remove Chapter"));
  remove->setFocusPolicy(Qt::TabFocus);
  connect(remove, &QToolButton::clicked, this, &ChaptersPane::RemoveRow);
  tools->addWidget(remove);
  tools->addStretch(1);
  auto* const whole = new QVBoxLayout(this);
  whole->addLayout(tools);
  whole->addWidget(table_, 1);
}

void ChaptersPane::HandleActions() {
  const auto hasTrack = [this] { return track_.has_value(); };
  parts_.Commands.Handle(
      ActionId::NewChapter, [this] { AddHere(); }, hasTrack);
  parts_.Commands.Handle(
      ActionId::ImportChapters, [this] { Import(); }, hasTrack);
  parts_.Commands.Handle(
      ActionId::MoveChapters, [this] { MoveOntoPictures(); },
      [this] { return track_.has_value() && !parts_.View.Pictures().empty(); });
}

void ChaptersPane::Follow(bool isOther) {
  const auto track = parts_.View.TrackIndex();
  isOther = isOther || track != track_;
  track_ = track;
  const Track* const shown = parts_.View.Shown();
  std::vector<ChapterRow> rows =
      shown == nullptr ? std::vector<ChapterRow>() : ChapterRowsOf(*shown, parts_.View.Pictures());
  isOther ? model_.Show(std::move(rows)) : model_.Take(std::move(rows));
  parts_.Commands.Refresh();
}

void ChaptersPane::FollowKey() {
  const auto source = ParseSourceKey(parts_.Chosen.Key());
  if (!isChoosing_ && source && source->Kind == SourceKey::Node::Scene && source->Track == track_) {
    isChoosing_ = true;
    table_->GoToRow(static_cast<int>(source->Number) - 1);
    isChoosing_ = false;
  }
}

void ChaptersPane::ChooseRow(int row) {
  if (isChoosing_ || !track_ || row < 0) {
    return;
  }
  isChoosing_ = true;
  // The viewer follows.
  parts_.Chosen.Choose(SceneKey(*track_, static_cast<std::size_t>(row) + 1));
  isChoosing_ = false;
}

std::optional<CellRefusal> ChaptersPane::Commit(const QModelIndex& index, const QString& text) {
  if (!track_) {
    return std::nullopt;
  }
  const TrackTimes times(parts_.Doc.Work().Tracks[*track_]);
  const std::int64_t former = model_.Rows().at(static_cast<std::size_t>(index.row())).Scene.Frame;
  std::string time;
  try {
    time = times.Timecode(FramesIn(text, former, times.FramesPerSecond));
  } catch (const MessageError& trouble) {
    return CellRefusal{trouble.What()};
  }
  const std::string key = SceneKey(*track_, static_cast<std::size_t>(index.row()) + 1);
  const Outcome outcome = parts_.Doc.Try([&](EditSession& session) { return MoveScene(session, key, time); });
  if (const auto moved = outcome.IsDone() ? ParseSourceKey(outcome.Key) : std::nullopt) {
    table_->GoToRow(static_cast<int>(moved->Number) - 1);
  }
  return RefusalOf(outcome);
}

void ChaptersPane::AddHere() {
  if (!track_) {
    return;
  }
  const TrackTimes times(parts_.Doc.Work().Tracks[*track_]);
  const auto text = parts_.Answers.AskText("New Chapter", "When does the chapter start?",
                                           times.Timecode(parts_.View.State().Frame));
  if (!text) {
    return;
  }
  const auto key = parts_.Doc.Do([&](EditSession& session, Consent) {
    try {
      const std::int64_t frame =
          FramesIn(QString::fromStdString(*text), parts_.View.State().Frame, times.FramesPerSecond);
      return NewScene(session, TrackKey(*track_), times.Timecode(frame));
    } catch (const MessageError& trouble) {
      return Outcome::Refused(trouble.What());
    }
  });
  if (const auto made = key ? ParseSourceKey(*key) : std::nullopt) {
    table_->GoToRow(static_cast<int>(made->Number) - 1);
  }
}

void ChaptersPane::Import() {
  const auto files = parts_.Answers.FilesToOpen(
      "Import Chapters", {{"Chapter lists", {"txt", "chp"}}, {"All files", {}}}, false);
  if (track_ && !files.empty()) {
    parts_.Doc.Do([&](EditSession& session, Consent) {
      return ImportChapters(session, TrackKey(*track_), parts_.Doc.AsScriptHolds(files.front()),
                            parts_.Doc.Speaks());
    });
  }
}

void ChaptersPane::MoveOntoPictures() {
  if (track_) {
    parts_.Doc.Do([&](EditSession& session, Consent consent) {
      return Analyse(session, TrackKey(*track_), parts_.Doc.Speaks(), consent);
    });
  }
}

void ChaptersPane::RemoveRow() {
  const int row = table_->CurrentRow();
  if (track_ && row >= 0) {
    const std::string key = SceneKey(*track_, static_cast<std::size_t>(row) + 1);
    parts_.Doc.Do([&](EditSession& session, Consent consent) { return RemoveSource(session, key, consent); });
  }
}

}  // namespace quorvelant
