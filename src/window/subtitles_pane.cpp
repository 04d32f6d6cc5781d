#include "window/subtitles_pane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "check/track_times.h"
#include "edit/messages.h"
#include "model/chain_palette.h"
#include "model/keys.h"
#include "model/walk.h"
#include "window/cell_table.h"
#include "window/subtitle_colors.h"
#include "window/subtitle_stream_box.h"

namespace quorvelant {

namespace {

// The palette by which a track's subtitles show: that of the first PGC that plays it.
std::array<Color, 16> PaletteFor(const Project& project, std::size_t track) {
  const Palette_P* palette = nullptr;
  for (const auto& at : LivePgcs(project)) {
    const auto cells = LiveCells(*at.Chain);
    const bool plays = std::ranges::any_of(
        cells, [track](const Cell_P* cell) { return std::cmp_equal(cell->SegmentUsed, track); });
    if (plays) {
      palette = PaletteOf(*at.Chain, project);
      break;
    }
  }
  if (const auto live = Live(project.Palettes); palette == nullptr && !live.empty()) {
    palette = live.front();
  }
  return palette == nullptr ? LegiblePalette : palette->PaletteColors;
}

}  // namespace

SubtitlesPane::SubtitlesPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent), parts_(parts), editor_(parts) {
  setAccessibleName(tr("Subtitles"));
  Build();
  HandleActions();
  connect(&parts_.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this, &SubtitlesPane::FollowChange);
  connect(&parts_.Chosen, &Selection::KeyChanged, this, &SubtitlesPane::FollowKey);
  connect(&parts_.View, &Viewer::StateMoved, this, &SubtitlesPane::FollowViewer);
  connect(&model_, &SubtitleModel::TickWanted, this, &SubtitlesPane::Tick);
  FollowViewer();
}

void SubtitlesPane::Build() {
  streams_ = new SubtitleStreamBox;
  auto* const label = new QLabel(tr("Stream"));
  auto* const tools = new QHBoxLayout;
  tools->addWidget(label);
  tools->addWidget(streams_, 1);
  for (const ActionId id : {ActionId::NewSubtitle, ActionId::ReplaceBitmap}) {
    auto* const button = new QToolButton;
    button->setDefaultAction(parts_.Commands.Of(id));
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::TabFocus);
    tools->addWidget(button);
  }
  auto* const showColors = new QToolButton;
  showColors->setText(tr("Colours"));
  showColors->setCheckable(true);
  showColors->setFocusPolicy(Qt::TabFocus);
  tools->addWidget(showColors);

  table_ = new CellTable(tr("Subtitles of the stream"));
  table_->setModel(&model_);
  table_->TakeSteps();
  connect(table_, &CellTable::StepWanted, this,
          [this](bool forwards) { parts_.View.Move(forwards ? ViewerMove::NextGop : ViewerMove::PrevGop); });
  const QString time = QStringLiteral("00:00:00:00");
  table_->SetWidths(
      {QStringLiteral("00000"), time, time, time, {}, QStringLiteral("0000000000"), tr("Forced"), tr("Used")},
      SubtitleModel::Bitmap);
  table_->setItemDelegate(
      new CellEditor([this](const QModelIndex& index, const QString& text) { return Commit(index, text); },
                     [this](const Message& words) { parts_.Doc.Speaks().Tell(words); }, table_));
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& now, const QModelIndex&) { ChooseRow(now.row()); });
  connect(streams_, &SubtitleStreamBox::StreamChosen, this, [this](std::size_t stream) {
    if (shown_) {
      parts_.View.ToStream(stream);
      ShowStream(StreamPlace{shown_->Track, stream});
    }
  });
  colors_ = new SubtitleColors(parts_);
  colors_->hide();
  connect(showColors, &QToolButton::toggled, colors_, &QWidget::setVisible);

  auto* const row = new QHBoxLayout;
  row->addWidget(table_, 1);
  row->addWidget(colors_);
  auto* const whole = new QVBoxLayout(this);
  whole->addLayout(tools);
  whole->addLayout(row, 1);
}

void SubtitlesPane::HandleActions() {
  Actions& actions = parts_.Commands;
  const auto hasEntry = [this] { return CurrentPlace().has_value(); };
  actions.Handle(
      ActionId::SubtitleStart, [this] { SetHere(false, false); }, hasEntry);
  actions.Handle(
      ActionId::SubtitleEnd, [this] { SetHere(true, false); }, hasEntry);
  actions.Handle(
      ActionId::SubtitleStartAlong, [this] { SetHere(false, true); }, hasEntry);
  actions.Handle(
      ActionId::SubtitleEndAlong, [this] { SetHere(true, true); }, hasEntry);
  actions.Handle(
      ActionId::NewSubtitle, [this] { AddHere(); }, [this] { return parts_.View.TrackIndex().has_value(); });
  actions.Handle(
      ActionId::ReplaceBitmap, [this] { ReplaceHere(); }, [this] { return Stream() != nullptr; });
  for (const ActionId id : {ActionId::FirstSubtitle, ActionId::PreviousSubtitle, ActionId::NextSubtitle,
                            ActionId::LastSubtitle}) {
    connect(actions.Of(id), &QAction::triggered, this, &SubtitlesPane::GoToShown, Qt::QueuedConnection);
  }
  connect(&parts_.Chosen, &Selection::WentTo, this, [this](const GoToPlace& place) {
    if (place.SubEntry) {
      FollowKey();
      table_->GoToRow(static_cast<int>(*place.SubEntry));
    }
  });
}

const SubtitleStream* SubtitlesPane::Stream() const {
  const Project& project = parts_.Doc.Work();
  const bool isThere = shown_ && shown_->Track < project.Tracks.Count() &&
                       !project.Tracks[shown_->Track].Removed &&
                       shown_->Stream < project.Tracks[shown_->Track].SubStreams.size() &&
                       !project.Tracks[shown_->Track].SubStreams[shown_->Stream].Removed;
  return isThere ? &project.Tracks[shown_->Track].SubStreams[shown_->Stream] : nullptr;
}

std::optional<SubtitlePlace> SubtitlesPane::CurrentPlace() const {
  const SubtitleStream* const stream = Stream();
  const int row = table_->CurrentRow();
  const bool isThere = stream != nullptr && row >= 0 && std::cmp_less(row, stream->SubPlays.size());
  return isThere ? std::optional(SubtitlePlace{shown_->Track, shown_->Stream, static_cast<std::size_t>(row)})
                 : std::nullopt;
}

// --- following ---

void SubtitlesPane::FollowChange(const ChangeEvent& event) {
  if (event.Replaced) {
    ShowStream(std::nullopt);
  } else if (shown_ && event.TouchesTrack(shown_->Track)) {
    if (Stream() == nullptr) {
      ShowStream(std::nullopt);
      FollowViewer();
    } else {
      FillStreams();
      TakeRows(false);
    }
  } else if (!shown_) {
    FollowViewer();
  }
  if (shown_ && event.TouchesDisc()) {
    model_.SetPalette(PaletteFor(parts_.Doc.Work(), shown_->Track));
  }
  parts_.Commands.Refresh();
}

void SubtitlesPane::FollowKey() {
  const auto source = ParseSourceKey(parts_.Chosen.Key());
  if (source && source->Kind == SourceKey::Node::SubStream) {
    ShowStream(StreamPlace{source->Track, source->Number - 1});
  }
}

void SubtitlesPane::FollowViewer() {
  const auto track = parts_.View.TrackIndex();
  if (!track) {
    ShowStream(std::nullopt);
    return;
  }
  const ViewerState& state = parts_.View.State();
  if (state.Stream) {
    ShowStream(StreamPlace{*track, *state.Stream});
  } else if (!shown_ || shown_->Track != *track) {
    const auto live = LiveWithIndex(parts_.Doc.Work().Tracks[*track].SubStreams);
    ShowStream(live.empty() ? std::nullopt : std::optional(StreamPlace{*track, live.front().first}));
  }
  const bool isOurs = shown_ && shown_->Track == *track && state.Stream == shown_->Stream;
  const auto entry = isOurs ? state.Entry : std::nullopt;
  model_.Mark(entry);
  if (table_->CurrentRow() < 0) {
    GoToShown();
  }
  parts_.Commands.Refresh();
}

// The row does not follow the viewer by itself: a user looks for the moment at which the chosen subtitle is
// to start or end, and may come by others.
void SubtitlesPane::GoToShown() {
  const ViewerState& state = parts_.View.State();
  if (shown_ && parts_.View.TrackIndex() == shown_->Track && state.Stream == shown_->Stream && state.Entry) {
    const bool before = std::exchange(isChoosing_, true);  // the viewer is there already
    table_->GoToRow(static_cast<int>(*state.Entry));
    isChoosing_ = before;
  }
}

void SubtitlesPane::FillStreams() {
  if (shown_) {
    streams_->Show(parts_.Doc.Work().Tracks[shown_->Track], shown_->Stream);
  } else {
    streams_->clear();
  }
}

void SubtitlesPane::ShowStream(std::optional<StreamPlace> place) {
  if (place == shown_ && (place || model_.rowCount() == 0)) {
    table_->SetEmptyWords(place ? tr("This stream has no subtitles yet. New Subtitle… begins one at the "
                                     "moment that is shown; Import File… takes a list of bitmaps.")
                                : tr("The subtitles of a stream stand here. Choose a track with subtitles in "
                                     "Media, or add a stream: Track, Add Subtitle Stream…"));
    return;
  }
  shown_ = place;
  if (Stream() == nullptr) {
    shown_.reset();
  }
  FillStreams();
  streams_->setEnabled(shown_.has_value());
  TakeRows(true);
  ShowStream(shown_);  // the words of an empty table
  parts_.Commands.Refresh();
}

void SubtitlesPane::TakeRows(bool isOther) {
  const SubtitleStream* const stream = Stream();
  if (stream == nullptr) {
    model_.Mark(std::nullopt);
    model_.Show({});
    colors_->Show(std::nullopt);
    return;
  }
  model_.SetRate(TrackTimes(parts_.Doc.Work().Tracks[shown_->Track]).FramesPerSecond);
  if (isOther) {
    model_.Mark(std::nullopt);
    model_.Show(stream->SubPlays);
    model_.SetPalette(PaletteFor(parts_.Doc.Work(), shown_->Track));
  } else {
    model_.Take(stream->SubPlays);
  }
  colors_->Show(CurrentPlace() ? CurrentPlace()
                               : std::optional(SubtitlePlace{shown_->Track, shown_->Stream, 0}));
}

// --- what users do ---

void SubtitlesPane::ChooseRow(int row) {
  const auto place = CurrentPlace();
  parts_.Commands.Refresh();
  if (!place || row < 0) {
    return;
  }
  colors_->Show(place);
  if (isChoosing_) {
    return;
  }
  isChoosing_ = true;
  std::optional<Message> missing;
  static_cast<void>(parts_.Doc.Try([&](EditSession& session) {
    missing = DeselectMissing(session, *place);
    return Outcome::Done();
  }));
  if (missing) {
    parts_.Doc.Speaks().Tell(*missing);
  }
  if (parts_.View.TrackIndex() == place->Track) {
    if (parts_.View.State().Stream != place->Stream) {
      parts_.View.ToStream(place->Stream);
    }
    parts_.View.ToFrame(editor_.StartOf(*place));
  }
  isChoosing_ = false;
}

void SubtitlesPane::Tick(int row, int column, bool on) {
  if (shown_) {
    editor_.Tick({shown_->Track, shown_->Stream, static_cast<std::size_t>(row)}, column, on);
  }
}

std::optional<CellRefusal> SubtitlesPane::Commit(const QModelIndex& index, const QString& text) {
  const SubtitleStream* const stream = Stream();
  const auto entry = static_cast<std::size_t>(index.row());
  if (stream == nullptr || entry >= stream->SubPlays.size()) {
    return std::nullopt;
  }
  const Outcome outcome = editor_.Retime({shown_->Track, shown_->Stream, entry}, index.column(), text);
  if (outcome.IsDone()) {
    GoToEntry(outcome.Key);
  }
  return RefusalOf(outcome);
}

void SubtitlesPane::SetHere(bool isEnd, bool along) {
  if (const auto place = CurrentPlace()) {
    GoToEntry(editor_.SetHere(*place, isEnd, along).value_or(""));
  }
}

void SubtitlesPane::GoToEntry(const std::string& key) {
  const std::size_t digits = key.find_last_not_of("0123456789") + 1;
  if (digits < key.size()) {
    const bool before = std::exchange(isChoosing_, true);
    table_->GoToRow(std::stoi(key.substr(digits)) - 1);
    isChoosing_ = before;
  }
}

void SubtitlesPane::AddHere() {
  const auto stream = Stream() == nullptr ? std::nullopt : std::optional(shown_->Stream);
  GoToEntry(editor_.AddHere(stream, colors_->Settings()).value_or(""));
}

void SubtitlesPane::ReplaceHere() {
  if (Stream() == nullptr) {
    return;
  }
  const auto place = CurrentPlace();
  editor_.ReplaceAt(
      {shown_->Track, shown_->Stream, place ? editor_.StartOf(*place) : parts_.View.State().Frame});
}

}  // namespace quorvelant
